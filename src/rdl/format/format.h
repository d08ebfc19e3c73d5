// Numbers and dates as text by .NET's format strings and a culture's rules.
#pragma once

#include <string>
#include <string_view>

#include "rdl/values/value.h"

namespace rdl {

// What a culture says; by name (en-US, de-DE ...).
struct Culture {
    std::string name;
    std::string decimalSeparator = ".", groupSeparator = ",", negativeSign = "-", percentSymbol = "%";
    std::string currencySymbol, currencyDecimalSeparator = ".", currencyGroupSeparator = ",";
    int currencyDecimals = 2, numberDecimals = 2, percentDecimals = 2;
    int currencyPositivePattern = 0, currencyNegativePattern = 0, percentPositivePattern = 0,
        percentNegativePattern = 0, numberNegativePattern = 1;
    int groupSize = 3, higherGroupSize = 3;  // digits of the group at the point, and of those before it
    std::string shortDate, longDate, shortTime, longTime, monthDay, yearMonth;  // custom patterns
    std::string dateSeparator = "/", timeSeparator = ":", am = "AM", pm = "PM";
    std::string months[12], shortMonths[12], days[7], shortDays[7];  // days from Sunday
    std::string genitiveMonths[12];  // of a month beside its day ("15. června"); the same as months for most
    std::string era = "A.D.";
    int firstDayOfWeek = 0;  // 0 Sunday
};
// A bare language or an unknown region of a known language gives the language's main region, an unknown
// language the invariant culture; case does not count.
const Culture& FindCulture(std::string_view name);

// The text of a value by a format string (standard: C2, N0, P1, d, D, g ...; or custom: #,##0.00;(0),
// dd.MM.yyyy
// ...). An empty format gives ToText. A format that does not fit the value's kind gives ToText as well; Null
// gives "".
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
inline constexpr std::int64_t MaxTicks = 3'155'378'975'999'999'999;  // 9999-12-31 23:59:59.9999999
// Ticks outside the calendar count as its first or last moment.
DateTimeParts SplitTicks(std::int64_t ticks);
// Numbers outside their range carry over (month 14 is February of the next year, day 0 the last of the month
// before); a result outside the calendar is its first or last moment.
std::int64_t MakeTicks(int year, int month, int day, int hour = 0, int minute = 0, int second = 0);
int DaysInMonth(int year, int month);
// Reads a date and/or time: ISO 8601 and the culture's own order. False when it is none. A time alone is on
// the first day of the calendar; a zone is read over, the clock time stands as written; two-digit years up to
// 29 are of this century.
bool ParseDateTime(std::string_view text, const Culture& culture, std::int64_t& ticks);
// By a format string, standard or custom; every character must fit.
bool ParseDateTimeExact(std::string_view text, std::string_view format, const Culture& culture,
                        std::int64_t& ticks);
// [-][d.]hh:mm[:ss[.fffffff]], or days alone. False when it is none.
bool ParseTimeSpan(std::string_view text, std::int64_t& ticks);
// How far the machine's zone is from UTC at that local moment.
int ZoneMinutes(std::int64_t ticks);
// Reads a number with the culture's separators, currency symbol, parentheses; False when it is none.
bool ParseNumber(std::string_view text, const Culture& culture, double& number);

}  // namespace rdl
