// The run time's conversions. Each raises RuntimeError 13 "Type mismatch" on what it cannot read,
// 6 "Overflow" on what does not fit, 94 "Invalid use of Null" on Null.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/contracts/dates.h"
#include "platform/contracts/runtime.h"

std::int16_t CInt(const Variant& value);  // rounds halves to even; -32768 to 32767
std::int32_t CLng(const Variant& value);
double CDbl(const Variant& value);
bool CBool(const Variant& value);  // "True"/"False" in any case, or a number
// Reads year-month-day under any regional setting, the regional day/month/year order, times, both
// together, and a number as days.
DateValue CDate(const Variant& value);

// Texts that the run time makes of dates under the machine's regional settings (platform/regional.h).
std::string DateText(DateValue value);
std::string TimeText(DateValue value);
std::string UCase(std::string_view text);
// All occurrences, binary comparison.
std::string Replace(std::string_view text, std::string_view find, std::string_view with);
