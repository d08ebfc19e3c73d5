// SPDX-License-Identifier: GPL-3.0-or-later
// Date arithmetic of DateAdd and of the members of a date. Dates are ticks of 100 ns. Each function returns
// false if the result is outside the years 1 to 9999.
#pragma once

#include <cstdint>

#include "rdl/format/format.h"

namespace rdl::expr {

int DaysInMonth(int year, int month);
bool AddTicks(std::int64_t ticks, std::int64_t more, std::int64_t& result);
// Adds `count` units of `ticksEach` ticks; `count` may be fractional.
bool AddUnits(std::int64_t ticks, double count, std::int64_t ticksEach, std::int64_t& result);
// A day after the end of the resulting month becomes its last day.
bool AddMonths(std::int64_t ticks, std::int64_t months, std::int64_t& result);
// Month and day may be out of range and carry over.
bool SerialDate(std::int64_t year, std::int64_t month, std::int64_t day, std::int64_t& result);

}  // namespace rdl::expr
