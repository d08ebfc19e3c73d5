// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/StartUp.h"

#include <string>

#include "platform/base/convert.h"
#include "platform/base/database_files.h"
#include "platform/base/paths.h"
#include "platform/contracts/registry.h"
#include "shared/Global.h"
#include "shared/ShellMod.h"
#include "store/LiveDatabase.h"

namespace Global {

namespace {

std::string Setting(const char* name, const std::string& defaultText) {
    return ShellMod::RequireSetting(HKEY_LOCAL_MACHINE, ShellMod::SettingsKey, name, defaultText);
}

std::string ConnectionStringWith(const std::string& pairs) {
    return pairs + "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" + AppPath() + "\\" + LiveDatabaseFile +
           ";Persist Security Info=False";
}

void FirstRun() {
    ShellMod::CreateSettingsKey(HKEY_LOCAL_MACHINE, ShellMod::SettingsKey);
    EnsureLiveDatabase();
    ShellMod::WriteSetting(HKEY_LOCAL_MACHINE, ShellMod::AutostartKey, "OXC",
                           "\"" + AppPath() + "\\oxc.exe\" -sched");
    ShellMod::WriteSetting("Poll", "15");
    ShellMod::WriteSetting("Path", AppPath());
    ShellMod::WriteSetting("Output", AppPath() + "\\Output\\");
    ShellMod::WriteSetting("AlertWho", "");
    ShellMod::WriteSetting("DefPath", AppPath());
    ShellMod::WriteSetting("FirstRun", "False");
}

}  // namespace

void TakeFirstSteps() {
    if (CBool(Setting("FirstRun", "True"))) {
        FirstRun();
    }
}

void SetConnectionString() {
    ConnectionString = ConnectionStringWith("");
}

void SetReadingConnectionString() {
    ConnectionString = ConnectionStringWith("Mode=Read;");
}

void ReadSettings() {
    const std::int16_t poll = CInt(Setting("Poll", "15"));
    const std::string output = Setting("Output", AppPath() + "\\Output\\");
    const std::string designer = Setting("CRWPath", "");
    const std::string alertWho = Setting("AlertWho", "");
    const std::string defPath = Setting("DefPath", AppPath());
    PollSeconds = poll;
    OutputPath = output;
    DesignerPath = designer;
    AlertWho = alertWho;
    DefPath = defPath;
    PollCountdown = PollSeconds;
    if (OutputPath.empty() || OutputPath.back() != '\\') {
        OutputPath += '\\';
    }
}

}  // namespace Global
