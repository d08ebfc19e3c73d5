// SPDX-License-Identifier: GPL-3.0-or-later
// Computes when a schedule or a package will run, by the rules of the polls: scheduler/Due and
// scheduler/NextRun.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/contracts/dates.h"

namespace Global {

// An item as its row holds it.
struct RepeatingItem {
    std::string startDate, endDate, nextRun, runAt;
    // Returns the stored date after the given one. An equal date means that the rules do not know the word of
    // the frequency.
    std::function<DateValue(DateValue stored)> next;
};

struct ComingRun {
    DateValue moment;       // `now` for a run that the next poll makes
    bool isDue = false;     // the next poll makes it
    std::size_t count = 1;  // missed runs are made up, one in each poll
    // The rules do not know the word of the frequency: from this run on the item runs at every poll after its
    // time of day, on every day of its dates.
    bool isAtEveryPoll = false;
};

// Returns the runs from `now` to `until`, in the order of time. Raises as CDate for a text that is not a
// date.
std::vector<ComingRun> ComingRuns(const RepeatingItem& item, DateValue now, DateValue until);

}  // namespace Global
