// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/oxc_schedule/commands.h"

#include <array>
#include <string_view>

#include "shared/Global.h"
#include "store/StartUp.h"
#include "tools/oxc_schedule/output.h"

namespace tools {
namespace {

struct Handler {
    std::string_view command;
    void (*run)(const CommandLine& line);
};

constexpr std::array Handlers = {
    Handler{"add", AddSchedule},
    Handler{"set", SetSchedule},
    Handler{"refresh", RefreshSchedule},
    Handler{"remove", RemoveSchedule},
    Handler{"run", RunSchedule},
    Handler{"list", ListSchedules},
    Handler{"show", ShowSchedule},
    Handler{"history", ShowHistory},
    Handler{"next", ShowComingRuns},
    Handler{"package add", AddPackage},
    Handler{"package set", SetPackage},
    Handler{"package remove", RemovePackage},
    Handler{"package run", RunStoredPackage},
    Handler{"package history", ShowPackageHistory},
    Handler{"package list", ListPackages},
    Handler{"package show", ShowPackage},
    Handler{"folder list", ListFolders},
    Handler{"folder add", AddFolder},
    Handler{"folder rename", RenameStoredFolder},
    Handler{"folder remove", RemoveFolder},
    Handler{"export", ExportAll},
    Handler{"import", ImportAll},
};

// As the other programs do: a failure to make the live database is a box, and the first statement names it.
void StartUp() {
    const CommandPrompts boxes;
    Global::TakeFirstSteps();
    Global::SetConnectionString();
    Global::MailBatchFlag = "T";
    Global::ReadSettings();
}

}  // namespace

int RunScheduleCommand(const CommandLine& line) {
    if (line.command == "--help") {
        Print(ScheduleUsage());
        return 0;
    }
    if (line.command == "--version") {
        Print("oxc-schedule " OXC_VERSION "\n");
        return 0;
    }
    StartUp();
    for (const Handler& handler : Handlers) {
        if (handler.command == line.command) {
            handler.run(line);
            return 0;
        }
    }
    return ShowStatus(line);
}

}  // namespace tools
