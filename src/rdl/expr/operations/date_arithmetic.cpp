// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/expr/operations/date_arithmetic.h"

#include <algorithm>
#include <cmath>

#include "rdl/expr/operations/convert.h"

namespace rdl::expr {

Value DateOutOfRange() {
    return Value::Error("A date lies outside the years 1 to 9999");
}

bool AddTicks(std::int64_t ticks, std::int64_t more, std::int64_t& result) {
    return !__builtin_add_overflow(ticks, more, &result) && result >= 0 && result <= MaxTicks;
}

bool AddUnits(std::int64_t ticks, double count, std::int64_t ticksEach, std::int64_t& result) {
    const double more = count * static_cast<double>(ticksEach);
    if (!(std::fabs(more) <= static_cast<double>(MaxTicks))) {
        return false;
    }
    // Whole counts stay exact; the product of a fraction is rounded to the tick.
    const bool whole = std::floor(count) == count;
    return AddTicks(ticks, whole ? static_cast<std::int64_t>(count) * ticksEach : std::llround(more), result);
}

bool AddMonths(std::int64_t ticks, std::int64_t months, std::int64_t& result) {
    if (months < -120000 || months > 120000) {
        return false;
    }
    const DateTimeParts parts = SplitTicks(ticks);
    const std::int64_t total = static_cast<std::int64_t>(parts.year) * 12 + parts.month - 1 + months;
    if (total < 12 || total >= 120000) {
        return false;
    }
    const int year = static_cast<int>(total / 12);
    const int month = static_cast<int>(total % 12) + 1;
    result = MakeTicks(year, month, std::min(parts.day, DaysInMonth(year, month))) + ticks % TicksPerDay;
    return true;
}

bool SerialDate(std::int64_t year, std::int64_t month, std::int64_t day, std::int64_t& result) {
    constexpr std::int64_t most = 4'000'000;
    if (std::max({year, month, day}) > most || std::min({year, month, day}) < -most) {
        return false;
    }
    // Years of two digits are those around now, as dates are typed.
    if (year >= 0 && year < 100) {
        year += year < 30 ? 2000 : 1900;
    }
    const std::int64_t total = year * 12 + month - 1;
    if (total < 12 || total >= 120000) {
        return false;
    }
    return AddTicks(MakeTicks(static_cast<int>(total / 12), static_cast<int>(total % 12) + 1, 1),
                    (day - 1) * TicksPerDay, result);
}

}  // namespace rdl::expr
