// SPDX-License-Identifier: GPL-3.0-or-later
#include "scheduler/ComingRuns.h"

#include <algorithm>

#include "platform/base/convert.h"

namespace Global {
namespace {

// Returns the moment of the run with this stored date: the day is not before today and not before the item's
// first day, and the time of day is tested by itself.
DateValue MomentOf(DateValue stored, DateValue firstDay, DateValue time, DateValue now) {
    const DateValue day = std::max({DatePart(stored), firstDay, DatePart(now)});
    return std::max(DateValue::FromSeconds(day.Seconds() + time.SecondOfDay()), now);
}

}  // namespace

std::vector<ComingRun> ComingRuns(const RepeatingItem& item, DateValue now, DateValue until) {
    const DateValue firstDay = DatePart(CDate(item.startDate));
    const DateValue lastDay = DatePart(CDate(item.endDate));
    const DateValue time = TimePart(CDate(item.runAt));
    std::vector<ComingRun> runs;
    DateValue stored = CDate(item.nextRun);
    for (;;) {
        const DateValue moment = MomentOf(stored, firstDay, time, now);
        if (moment > until || DatePart(moment) > lastDay) {
            return runs;
        }
        if (!runs.empty() && runs.back().moment == moment) {
            ++runs.back().count;
        } else {
            runs.push_back({moment, moment == now});
        }
        const DateValue next = item.next(stored);
        if (next <= stored) {
            runs.back().isAtEveryPoll = true;
            return runs;
        }
        stored = next;
    }
}

}  // namespace Global
