// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/oxc_schedule/history_moment.h"

#include "platform/base/date_reader.h"

namespace tools {

std::optional<DateValue> HistoryMoment(const std::string& text, DateValue now) {
    std::vector<DateValue> readings;
    for (const DateOrder order :
         {DateOrder::YearMonthDay, DateOrder::DayMonthYear, DateOrder::MonthDayYear}) {
        if (const auto moment = ReadDateText(text, {.order = order, .dateSeparator = '-'})) {
            readings.push_back(*moment);
        }
    }
    std::sort(readings.begin(), readings.end());
    const DateValue latest = AddDays(now, 1);
    const auto later = std::upper_bound(readings.begin(), readings.end(), latest);
    if (readings.empty()) {
        return std::nullopt;
    }
    return later == readings.begin() ? readings.front() : *(later - 1);
}

}  // namespace tools
