// SPDX-License-Identifier: GPL-3.0-or-later
// The rows of schedules, packages and folders as the commands read and find them. Errors of the database pass
// to the caller.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "dialogs/PackageRecords.h"
#include "dialogs/ScheduleRecords.h"
#include "platform/base/marks.h"
#include "platform/contracts/adodb.h"
#include "tools/oxc_schedule/cache_change.h"
#include "tools/oxc_schedule/command_line.h"

namespace tools {

using NamedValues = std::vector<std::pair<std::string, std::string>>;

// The folder of what lies in no folder. It has no row.
inline constexpr const char* RootFolder = "Desktop";

struct StoredSchedule {
    std::string id;
    Global::NewSchedule row;
    NamedValues parameters;  // in the order of the report
};

struct PackageReport {
    std::string detailID, title, path, format;
    std::vector<std::string> values;  // in the order of the report's parameters
};

struct StoredPackage {
    std::string id;
    Global::NewPackage row;
    std::vector<PackageReport> reports;
};

// Return the rows that fulfil the condition, all rows without one: schedules by folder, title and number,
// packages by name and number.
std::vector<StoredSchedule> ReadSchedules(const std::string& condition = {});
std::vector<StoredPackage> ReadPackages(const std::string& condition = {});

// Return the row that the command line names by its name or its --id. A name that no row or several rows have
// is refused.
StoredSchedule FindSchedule(const CommandLine& line);
StoredPackage FindPackage(const CommandLine& line);

struct StoredFolder {
    std::string id, name, parent;  // the name of the folder above
};
// Returns all folders, a folder after the one that holds it, else in the order of the table. A folder whose
// parent is missing is left out, as the windows do.
std::vector<StoredFolder> ReadFolders();

// Returns those that are left out, without the name of the folder above.
std::vector<StoredFolder> ReadLostFolders();

// Returns the name of the folder as it is stored. A name that no folder has is refused.
std::string FindFolder(const std::string& name);

// Runs the body between BeginTrans and CommitTrans on a connection of its own. No other program writes
// meanwhile, so that what the body reads and tests stays true. An error rolls all of it back, puts the copies
// back and passes to the caller.
void InTransaction(const std::function<void(ADODB::Connection& connection)>& body);
void InTransaction(const std::function<void(ADODB::Connection& connection, CacheChange& cache)>& body);

// Returns the key that the next row of the table gets. It stays true as long as a transaction of the caller
// keeps other programs from writing.
std::int64_t NextKey(const std::string& table);

}  // namespace tools
