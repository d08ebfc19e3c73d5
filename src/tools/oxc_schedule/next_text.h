// SPDX-License-Identifier: GPL-3.0-or-later
// When an item runs next, for sentences and lists.
#pragma once

#include <string>

#include "dialogs/PackageRecords.h"
#include "dialogs/ScheduleRecords.h"
#include "scheduler/ComingRuns.h"

namespace tools {

// Return the item as the rules of the polls see it.
Global::RepeatingItem ItemOf(const Global::NewSchedule& row);
Global::RepeatingItem ItemOf(const Global::NewPackage& row);

// Returns a sentence on the first run, such as "It first runs on 2026-11-23 at 07:30.".
std::string FirstRunText(const Global::RepeatingItem& item);

}  // namespace tools
