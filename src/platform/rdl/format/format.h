// Numbers and dates as text by .NET's format strings and a culture's rules.
#pragma once

#include <string>
#include <string_view>

#include "platform/rdl/value.h"

namespace rdl {

// What a culture says; by name (en-US, de-DE ...), unknown names give the invariant culture.
struct Culture {
    std::string name;
    std::string decimalSeparator = ".", groupSeparator = ",", negativeSign = "-", percentSymbol = "%";
    std::string currencySymbol, currencyDecimalSeparator = ".", currencyGroupSeparator = ",";
    int currencyDecimals = 2, numberDecimals = 2, percentDecimals = 2;
    int currencyPositivePattern = 0, currencyNegativePattern = 0, percentPositivePattern = 0,
        percentNegativePattern = 0, numberNegativePattern = 1;
    std::string shortDate, longDate, shortTime, longTime, monthDay, yearMonth;  // custom patterns
    std::string dateSeparator = "/", timeSeparator = ":", am = "AM", pm = "PM";
    std::string months[12], shortMonths[12], days[7], shortDays[7];  // days from Sunday
    int firstDayOfWeek = 0;                                          // 0 Sunday
};
const Culture& FindCulture(std::string_view name);

// The text of a value by a format string (standard: C2, N0, P1, d, D, g ...; or custom: #,##0.00;(0), dd.MM.yyyy
// ...). An empty format gives ToText. A format that does not fit the value's kind gives ToText as well; Null gives "".
std::string FormatValue(const Value& value, std::string_view format, const Culture& culture);

// What concatenation and a text box without format show: numbers in their shortest form, dates as short date
// and long time (time left out at midnight is not: the report language shows it), True/False, "" for Null,
// "#Error" for an error, a list joined by ", ".
std::string ToText(const Value& value, const Culture& culture);

// Calendar of DateTime ticks, proleptic Gregorian.
struct DateTimeParts {
    int year, month, day, hour, minute, second, fraction /* 100 ns */;
    int dayOfWeek /* 0 Sunday */, dayOfYear;
};
DateTimeParts SplitTicks(std::int64_t ticks);
std::int64_t MakeTicks(int year, int month, int day, int hour = 0, int minute = 0, int second = 0);
// Reads a date and/or time: ISO 8601 and the culture's own order. False when it is none.
bool ParseDateTime(std::string_view text, const Culture& culture, std::int64_t& ticks);
// Reads a number with the culture's separators, currency symbol, parentheses; False when it is none.
bool ParseNumber(std::string_view text, const Culture& culture, double& number);

}  // namespace rdl
