// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>

#include "rdl/format/format.h"

namespace rdl {
namespace {

constexpr int DaysBefore[13] = {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334, 365};
constexpr int DaysIn4Years = 1461, DaysIn100Years = 36524, DaysIn400Years = 146097;
constexpr std::int64_t LastDay = MaxTicks / TicksPerDay;

// MakeTicks carries to years beyond those of std::chrono::year.
bool IsLeap(std::int64_t year) {
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

int DaysBeforeMonth(std::int64_t year, int month) {
    return DaysBefore[month - 1] + (month > 2 && IsLeap(year) ? 1 : 0);
}

// Days since 0001-01-01.
std::int64_t DaysBeforeYear(std::int64_t year) {
    const std::int64_t past = year - 1;
    return past * 365 + past / 4 - past / 100 + past / 400;
}

void SplitDay(int day, DateTimeParts& parts) {
    parts.dayOfWeek = (day + 1) % 7;  // the first day of the calendar is a Monday
    const int cycles = day / DaysIn400Years;
    day %= DaysIn400Years;
    const int centuries =
        std::min(day / DaysIn100Years, 3);  // the last day of a cycle belongs to its last century
    day -= centuries * DaysIn100Years;
    const int quads = day / DaysIn4Years;
    day %= DaysIn4Years;
    const int years = std::min(day / 365, 3);
    day -= years * 365;
    parts.year = cycles * 400 + centuries * 100 + quads * 4 + years + 1;
    parts.dayOfYear = day + 1;
    parts.month = std::min(day / 29 + 1, 12);
    while (DaysBeforeMonth(parts.year, parts.month) > day) {
        --parts.month;
    }
    parts.day = day - DaysBeforeMonth(parts.year, parts.month) + 1;
}

}  // namespace

int DaysInMonth(int year, int month) {
    if (month < 1 || month > 12) {
        return 0;
    }
    return DaysBefore[month] - DaysBefore[month - 1] + (month == 2 && IsLeap(year) ? 1 : 0);
}

DateTimeParts SplitTicks(std::int64_t ticks) {
    ticks = std::clamp<std::int64_t>(ticks, 0, MaxTicks);
    DateTimeParts parts{};
    SplitDay(static_cast<int>(ticks / TicksPerDay), parts);
    const std::int64_t time = ticks % TicksPerDay;
    const int seconds = static_cast<int>(time / TicksPerSecond);
    parts.hour = seconds / 3600;
    parts.minute = seconds / 60 % 60;
    parts.second = seconds % 60;
    parts.fraction = static_cast<int>(time % TicksPerSecond);
    return parts;
}

std::int64_t MakeTicks(int year, int month, int day, int hour, int minute, int second) {
    std::int64_t months = std::int64_t{year} * 12 + month - 1;
    if (months < 12) {
        return 0;
    }
    months = std::min<std::int64_t>(months, 12 * std::int64_t{20'000'000});
    const std::int64_t actualYear = months / 12;
    const int actualMonth = static_cast<int>(months % 12) + 1;
    const std::int64_t seconds = std::int64_t{hour} * 3600 + std::int64_t{minute} * 60 + second;
    std::int64_t days = DaysBeforeYear(actualYear) + DaysBeforeMonth(actualYear, actualMonth) + day - 1;
    days += seconds / 86400;
    std::int64_t rest = seconds % 86400;
    if (rest < 0) {
        rest += 86400;
        --days;
    }
    if (days < 0) {
        return 0;
    }
    return days > LastDay ? MaxTicks : days * TicksPerDay + rest * TicksPerSecond;
}

}  // namespace rdl
