// SPDX-License-Identifier: GPL-3.0-or-later
// The table of commands. A new command is one row here and its function; the command line and the program
// take both from it.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

#include "tools/oxc_schedule/commands.h"

namespace tools {

enum class Needs { ToRead, ToChange };

// `options` are words with a blank between them. A word that ends in = needs a value; one that ends in =+ can
// be given several times.
struct CommandRow {
    std::string_view words;
    std::size_t least, most;  // names
    std::string_view options;
    void (*run)(const CommandLine& line);  // null: RunScheduleCommand answers it itself
    Needs needs = Needs::ToChange;
};

inline constexpr std::size_t AnyName = 1;

inline constexpr std::array CommandTable = {
    CommandRow{"--help", 0, 0, "", nullptr},
    CommandRow{"--version", 0, 0, "", nullptr},
    CommandRow{"init", 0, 0, "json", ShowPlace},
    CommandRow{"add", 1, 1,
               "folder= title= to=+ subject= message= start= end= at= daily weekdays weekly monthly format= "
               "formula= user= password-stdin p=+ json",
               AddSchedule},
    CommandRow{"set", 0, AnyName,
               "folder= id= title= move-to= to=+ subject= message= at= daily weekdays weekly monthly format= "
               "formula= user= password-stdin no-login p=+ json",
               SetSchedule},
    CommandRow{"list", 0, 0, "folder= json", ListSchedules, Needs::ToRead},
    CommandRow{"show", 0, AnyName, "folder= id= json", ShowSchedule, Needs::ToRead},
    CommandRow{"remove", 0, AnyName, "folder= id= json", RemoveSchedule},
    CommandRow{"run", 0, AnyName, "folder= id= json", RunSchedule},
    CommandRow{"refresh", 0, AnyName, "folder= id= p=+ json", RefreshSchedule},
    CommandRow{"next", 0, 0, "days= json", ShowComingRuns, Needs::ToRead},
    CommandRow{"history", 0, AnyName, "folder= id= limit= json", ShowHistory, Needs::ToRead},
    CommandRow{"package add", 1, 1,
               "report=+ p=+ output= to=+ no-mail subject= message= start= end= at= daily weekly monthly "
               "quarterly format= json",
               AddPackage},
    CommandRow{"package list", 0, 0, "json", ListPackages, Needs::ToRead},
    CommandRow{"package show", 0, AnyName, "id= json", ShowPackage, Needs::ToRead},
    CommandRow{"package set", 0, AnyName, "id= report=+ p=+ json", SetPackage},
    CommandRow{"package remove", 0, AnyName, "id= json", RemovePackage},
    CommandRow{"package run", 0, AnyName, "id= json", RunStoredPackage},
    CommandRow{"package history", 0, AnyName, "id= limit= json", ShowPackageHistory, Needs::ToRead},
    CommandRow{"folder list", 0, 0, "json", ListFolders, Needs::ToRead},
    CommandRow{"folder add", 1, 1, "in= json", AddFolder},
    CommandRow{"folder rename", 2, 2, "json", RenameStoredFolder},
    CommandRow{"folder remove", 1, 1, "json", RemoveFolder},
    CommandRow{"package remove-report", 0, AnyName, "id= report= json", RemovePackageReport},
    CommandRow{"options show", 0, 0, "json", ShowOptions, Needs::ToRead},
    CommandRow{"options set", 0, 0, "poll= alert= json", SetOptions},
    CommandRow{"export", 0, 1, "with-passwords json", ExportAll, Needs::ToRead},
    CommandRow{"import", 1, 1, "dry-run replace json", ImportAll},
    CommandRow{"status", 0, 0, "warn= critical= since= json prometheus", nullptr},
};

// Returns null if no row matches.
constexpr const CommandRow* FindCommand(std::string_view words) {
    const auto* const row = std::find_if(CommandTable.begin(), CommandTable.end(),
                                         [words](const CommandRow& one) { return one.words == words; });
    return row == CommandTable.end() ? nullptr : &*row;
}

// A second row of the same words would never be found.
static_assert(std::all_of(CommandTable.begin(), CommandTable.end(), [](const CommandRow& row) {
    return FindCommand(row.words) == &row &&
           (row.run != nullptr || row.words == "--help" || row.words == "--version" || row.words == "status");
}));

}  // namespace tools
