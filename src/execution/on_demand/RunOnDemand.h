// Runs on demand of a single schedule: at once, whatever its dates say. The next run stays where it is, and
// no alert goes out, since a person is there. The commands of the windows find the key and do what their
// window needs; a run, and the road of its failure, are here.
#pragma once

#include <string>

#include "platform/contracts/runtime.h"

namespace Global {

// Runs the schedule with that key, writes its history row and tells the user. False: its format word is not
// known, or its mail failed and has reported itself; nothing is written and nothing is shown. Errors pass to
// the caller, 3021 when there is no such schedule.
bool ExecuteSchedule(const Variant& key);

// The history row of a failed run. Its status is empty. An error passes to the caller.
void RecordFailedExecution(const Variant& key, const RuntimeError& error);

// "<words><description> [<number>]" in a box.
void ShowFailedExecution(const std::string& words, const RuntimeError& error);

}  // namespace Global
