// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/oxc_schedule/next_text.h"

#include <algorithm>

#include "platform/base/convert.h"
#include "platform/contracts/clock.h"
#include "scheduler/NextRun.h"
#include "store/TextConventions.h"

namespace tools {

Global::RepeatingItem ItemOf(const Global::NewSchedule& row) {
    const auto next = [frequency = row.frequency](DateValue date) {
        DateValue after = date;
        Global::NextSingleRun(frequency, date, after);
        return after;
    };
    return {row.startDate, row.endDate, row.nextRun, row.runAt, next};
}

Global::RepeatingItem ItemOf(const Global::NewPackage& row) {
    const auto next = [frequency = row.frequency](DateValue date) {
        return Global::NextPackageRun(frequency, date);
    };
    return {row.startDate, row.endDate, row.nextRunDate, row.runTime, next};
}

std::string FirstRunText(const Global::RepeatingItem& item) {
    constexpr std::int64_t FirstDays = 2;
    const DateValue now = Now();
    const DateValue until = AddDays(std::max(now, CDate(item.nextRun)), FirstDays);
    const std::vector<Global::ComingRun> runs = Global::ComingRuns(item, now, until);
    if (runs.empty()) {
        return "Its dates are over: it does not run.";
    }
    const Global::ComingRun& first = runs.front();
    return (first.isDue ? "It is due at the next poll"
                        : "It first runs on " + cmFunc::FormatDateText(first.moment) + " at " + item.runAt) +
           (first.count > 1 ? ", and makes up " + std::to_string(first.count) + " runs, one in each poll"
                            : "") +
           ".";
}

}  // namespace tools
