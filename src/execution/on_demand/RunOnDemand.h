// SPDX-License-Identifier: GPL-3.0-or-later
// Runs of a schedule or a package on demand: at once, whatever its dates say. The next run stays where it is.
// No alert about a schedule is sent, because a person is present. The commands of the windows find the key
// and update their window; the run and the handling of its failure are here.
#pragma once

#include <string>

#include "platform/contracts/runtime.h"

namespace Global {

// Runs the schedule with this ReportID, writes its history row and shows a box. Returns false if the format
// word is unknown or if the mail failed, which reports itself; then no row is written and no box is shown.
// Errors pass to the caller: 3021 if no schedule has the key.
bool ExecuteSchedule(const Variant& key);

// Runs the packages with this ReportID, writes a history row for each and shows a box. Returns false if a
// mail failed: the history row and the alert of a failed poll are written, and no box is shown. Errors pass
// to the caller without a history row.
bool ExecutePackage(const std::string& key);

// Writes the history row of a failed run, with an empty status. An error passes to the caller.
void RecordFailedExecution(const Variant& key, const RuntimeError& error);

// Shows "<words><description> [<number>]" in a box.
void ShowFailedExecution(const std::string& words, const RuntimeError& error);

}  // namespace Global
