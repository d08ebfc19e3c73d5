// SPDX-License-Identifier: GPL-3.0-or-later
// The command that copies a changed report file to the cache again.
#include "tools/oxc_schedule/checks.h"
#include "tools/oxc_schedule/command_output.h"
#include "tools/oxc_schedule/commands.h"
#include "tools/oxc_schedule/records.h"
#include "tools/oxc_schedule/schedule_rows.h"

namespace tools {
namespace {

// Their values belong to the former copy.
std::string OthersOf(const StoredSchedule& stored) {
    std::string keys;
    const auto others =
        ReadSchedules("ReportPath = " + SqlText(stored.row.reportPath) + " and ReportID <> " + stored.id);
    for (const StoredSchedule& other : others) {
        keys += (keys.empty() ? "" : ", ") + other.id;
    }
    return others.empty()
               ? ""
               : " The same copy is run by schedule" + std::string(others.size() > 1 ? "s " : " ") + keys +
                     ": refresh " + (others.size() > 1 ? "them" : "it") + ", too.";
}

}  // namespace

// Runs pass the values by position: stored values move to the positions that the parameters have now.
void RefreshSchedule(const CommandLine& line) {
    const StoredSchedule stored = FindSchedule(line);
    const NamedValues values =
        CheckedParameters(OpenReportFile(stored.row.originalPath), GivenParameters(line), stored.parameters);
    InTransaction([&](ADODB::Connection& connection, CacheChange& cache) {
        RefuseChanged(stored);
        cache.Copy(stored.row.originalPath);
        ReplaceValues(connection, stored.id, values);
    });
    PrintChange(
        line,
        "Schedule " + stored.id + ", " + Named(stored.row) + ", is refreshed." + OthersOf(stored) + "\n",
        Result(stored));
}

}  // namespace tools
