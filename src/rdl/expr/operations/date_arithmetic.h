// SPDX-License-Identifier: GPL-3.0-or-later
// Date arithmetic of DateAdd and of the members of a date. Dates are ticks of 100 ns since 0001-01-01. Each
// function returns whether the result is within the years 1 to 9999; if not, `result` has no meaning.
#pragma once

#include <cstdint>

#include "rdl/format/format.h"

namespace rdl::expr {

// Returns the error value for a date outside these years.
Value DateOutOfRange();
bool AddTicks(std::int64_t ticks, std::int64_t more, std::int64_t& result);
// Adds `count` units of `ticksEach` ticks. A fractional `count` gives the nearest tick.
bool AddUnits(std::int64_t ticks, double count, std::int64_t ticksEach, std::int64_t& result);
// Adds months and keeps the time of the day. A day after the end of the resulting month becomes its last day.
bool AddMonths(std::int64_t ticks, std::int64_t months, std::int64_t& result);
// Sets `result` to midnight of a day. Month and day may be out of range and carry over; years 0 to 29 are
// 2000 to 2029, years 30 to 99 are 1930 to 1999. Returns false as well if a part is beyond 4,000,000.
bool SerialDate(std::int64_t year, std::int64_t month, std::int64_t day, std::int64_t& result);

}  // namespace rdl::expr
