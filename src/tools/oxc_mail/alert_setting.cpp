#include "tools/oxc_mail/alert_setting.h"

#include "app/ShellMod.h"
#include "platform/registry.h"

namespace tools {

std::string AlertSetting() {
    return ShellMod::ReadSetting(HKEY_LOCAL_MACHINE, ShellMod::SettingsKey, "AlertWho", "");
}

}  // namespace tools
