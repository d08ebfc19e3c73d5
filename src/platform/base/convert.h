// SPDX-License-Identifier: GPL-3.0-or-later
// The run time's conversions. Each raises RuntimeError 13 "Type mismatch" for a value that it cannot read, 6
// "Overflow" for a value outside the range, 94 "Invalid use of Null" for Null.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/contracts/dates.h"
#include "platform/contracts/runtime.h"

std::int16_t CInt(const Variant& value);  // rounds halves to even; -32768 to 32767
std::int32_t CLng(const Variant& value);  // rounds in the same way; the range of 32 bits
double CDbl(const Variant& value);
bool CBool(const Variant& value);  // "True"/"False" in any case, or a number
// Reads year-month-day in every region, the region's order of day, month and year, times, date and time
// together, and a number as days since 1899-12-30. ToDateValue in rdl/engine/parameter_values reads dates for
// the parameters of a report in another way: in the invariant culture and never in the region's order,
// because it also reads the default values of report files, which mean the same everywhere.
DateValue CDate(const Variant& value);

// Texts of dates in the machine's region (platform/contracts/regional.h): 2026-03-07 and 09:05:00, in the
// region's order.
std::string DateText(DateValue value);
std::string TimeText(DateValue value);
std::string UCase(std::string_view text);
// Replaces all occurrences, by binary comparison.
std::string Replace(std::string_view text, std::string_view find, std::string_view with);
