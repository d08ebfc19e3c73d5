// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/oxc_schedule/commands.h"

#include <filesystem>
#include <string>

#include "platform/base/database_files.h"
#include "platform/base/paths.h"
#include "platform/contracts/system_error.h"
#include "platform/posix/app_place.h"
#include "shared/Global.h"
#include "store/LiveDatabase.h"
#include "store/StartUp.h"
#include "tools/console.h"
#include "tools/oxc_schedule/checks.h"
#include "tools/oxc_schedule/command_output.h"
#include "tools/oxc_schedule/command_table.h"

namespace tools {
namespace {

std::filesystem::path LiveDatabase() {
    return AppPlace() / LiveDatabaseFile;
}

// A command that only reads makes nothing, neither a folder nor settings.
void RequireDatabase() {
    std::error_code error;
    const bool isThere = std::filesystem::exists(LiveDatabase(), error);
    if (error) {
        Refuse("The database in " + Quoted(AppPlace().string()) +
               " cannot be read: " + SystemErrorText(error.value()));
    }
    if (!isThere) {
        Refuse("There is no database in " + Quoted(AppPlace().string()) +
               " yet: oxc-schedule init makes it, or the first command that changes something");
    }
}

// The first steps are taken once for a user, who can have several application folders.
void MakeDatabase() {
    const CommandPrompts boxes;
    Global::TakeFirstSteps();
    std::error_code ignored;
    if (!std::filesystem::exists(LiveDatabase(), ignored)) {
        Global::EnsureLiveDatabase();
    }
    if (!std::filesystem::exists(LiveDatabase(), ignored)) {
        Refuse("The database in " + Quoted(AppPlace().string()) + " cannot be made: " + boxes.Complaint(""));
    }
}

void StartUp(Needs needs) {
    if (needs == Needs::ToRead) {
        SetAppPath(paths::FromMachine(AppPlace()));
        RequireDatabase();
        Global::SetReadingConnectionString();
    } else {
        MakeDatabase();
        Global::SetConnectionString();
    }
    Global::MailBatchFlag = "T";
    Global::ReadSettings();
}

// Statements and exports are UTF-8. Names of files of these two commands are not stored.
void RefuseOtherArguments(const CommandLine& line) {
    if (line.command == "import" || line.command == "export") {
        return;
    }
    for (const std::string& name : line.names) {
        RefuseOtherBytes("The argument", name);
    }
    for (const auto& [option, value] : line.options) {
        RefuseOtherBytes("The value", value);
    }
}

// A failure to read is as bad as no poll, and a monitor gets it in its own form.
int PrintStatus(const CommandLine& line) {
    CheckStatusOptions(line);
    try {
        StartUp(Needs::ToRead);
        return ShowStatus(line);
    } catch (const RuntimeError& error) {
        ShowNoStatus(line, TextOf(error));
        return 2;
    }
}

}  // namespace

void ShowPlace(const CommandLine& line) {
    const std::string folder = paths::ForUser(AppPath());
    PrintChange(line, "The application folder is " + folder + ".\n", {{"folder", Json(folder)}});
}

int RunScheduleCommand(const CommandLine& line) {
    if (line.command == "--help") {
        Print(ScheduleUsage());
        return 0;
    }
    if (line.command == "--version") {
        Print("oxc-schedule " OXC_VERSION "\n");
        return 0;
    }
    if (line.command == "status") {
        return PrintStatus(line);
    }
    RefuseOtherArguments(line);
    const CommandRow* const row = FindCommand(line.command);
    if (row == nullptr) {
        throw ScheduleUsageError(Quoted(line.command) + " is no command");
    }
    // A trial changes nothing, and so makes nothing either.
    StartUp(line.Has("dry-run") ? Needs::ToRead : row->needs);
    row->run(line);
    return 0;
}

}  // namespace tools
