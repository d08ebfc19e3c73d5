// SPDX-License-Identifier: GPL-3.0-or-later
// Which schedule or package runs next.
#pragma once

#include <optional>
#include <string>

#include "platform/contracts/dates.h"
#include "scheduler/RunNotes.h"

namespace Global {

struct NextDue {
    DateValue moment;  // now, if it is due already
    RunKind kind = RunKind::Schedule;
    std::string reportID, title;
};

// Reads both tables. An item whose dates cannot be read is left out. Returns nullopt if nothing is to run any
// more. Errors of the database pass to the caller.
std::optional<NextDue> FindNextDue();

}  // namespace Global
