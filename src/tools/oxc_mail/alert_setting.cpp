// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/oxc_mail/alert_setting.h"

#include "platform/contracts/registry.h"
#include "shared/ShellMod.h"

namespace tools {

std::string AlertSetting() {
    return ShellMod::ReadSetting(HKEY_LOCAL_MACHINE, ShellMod::SettingsKey, "AlertWho", "");
}

}  // namespace tools
