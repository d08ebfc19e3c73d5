// Counting with dates: what DateAdd and the members of a date share. Every result outside the years 1 to 9999
// says false.
#pragma once

#include <cstdint>

#include "rdl/format/format.h"

namespace rdl::expr {

int DaysInMonth(int year, int month);
bool AddTicks(std::int64_t ticks, std::int64_t more, std::int64_t& result);
// Of a unit with `ticksEach`; a fraction counts.
bool AddUnits(std::int64_t ticks, double count, std::int64_t ticksEach, std::int64_t& result);
// The day is cut to the month's last.
bool AddMonths(std::int64_t ticks, std::int64_t months, std::int64_t& result);
// Month and day may lie outside their range and are counted on from there.
bool SerialDate(std::int64_t year, std::int64_t month, std::int64_t day, std::int64_t& result);

}  // namespace rdl::expr
