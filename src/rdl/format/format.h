// SPDX-License-Identifier: GPL-3.0-or-later
// Formats and parses numbers and dates by .NET format strings and the rules of a culture.
#pragma once

#include <string>
#include <string_view>

#include "rdl/values/value.h"

namespace rdl {

// The conventions of a culture, known by its name (en-US, de-DE ...).
struct Culture {
    std::string name;
    std::string decimalSeparator = ".", groupSeparator = ",", negativeSign = "-", percentSymbol = "%";
    std::string currencySymbol, currencyDecimalSeparator = ".", currencyGroupSeparator = ",";
    int currencyDecimals = 2, numberDecimals = 2, percentDecimals = 2;
    int currencyPositivePattern = 0, currencyNegativePattern = 0, percentPositivePattern = 0,
        percentNegativePattern = 0, numberNegativePattern = 1;
    int groupSize = 3,
        higherGroupSize = 3;  // digits of the group next to the decimal point, and of the groups before it
    std::string shortDate, longDate, shortTime, longTime, monthDay, yearMonth;  // custom patterns
    std::string dateSeparator = "/", timeSeparator = ":", am = "AM", pm = "PM";
    std::string months[12], shortMonths[12], days[7], shortDays[7];  // days start at Sunday
    std::string genitiveMonths[12];  // used next to a day ("15. června"); mostly equal to months
    std::string era = "A.D.";
    int firstDayOfWeek = 0;  // 0 Sunday
};
// Returns the culture `name`, without regard to case. A language alone or an unknown region gives the
// language's main region, an unknown language the invariant culture. Valid for the life of the process.
const Culture& FindCulture(std::string_view name);

// Formats a value: standard formats (C2, N0, P1, d, D, g ...) or custom ones (#,##0.00;(0), dd.MM.yyyy ...).
// An empty format, or one that does not fit the value's kind, gives ToText. Null gives "".
std::string FormatValue(const Value& value, std::string_view format, const Culture& culture);

// The default text of a value: numbers in their shortest form, dates as short date and long time (also at
// midnight, as in the report language), True/False, "" for Null, "#Error" for an error, lists joined by ", ".
std::string ToText(const Value& value, const Culture& culture);

// Calendar fields of DateTime ticks, proleptic Gregorian.
struct DateTimeParts {
    int year, month, day, hour, minute, second, fraction /* 100 ns */;
    int dayOfWeek /* 0 Sunday */, dayOfYear;
};
inline constexpr std::int64_t MaxTicks = 3'155'378'975'999'999'999;  // 9999-12-31 23:59:59.9999999
// Ticks outside the calendar are clamped to its first or last moment.
DateTimeParts SplitTicks(std::int64_t ticks);
// Out-of-range parts carry over (month 14 is February of the next year, day 0 the last day of the previous
// month). A result outside the calendar is clamped to its first or last moment.
std::int64_t MakeTicks(int year, int month, int day, int hour = 0, int minute = 0, int second = 0);
// Returns 28 to 31; 0 if `month` is not 1 to 12.
int DaysInMonth(int year, int month);

// If a parser below returns false, its result has no meaning.

// Parses a date, a time or both: ISO 8601 or the culture's own order. Returns false for any other text. A
// time alone is on the first day of the calendar; a zone is skipped and the clock time kept; two-digit years
// up to 29 belong to this century.
bool ParseDateTime(std::string_view text, const Culture& culture, std::int64_t& ticks);
// Parses by a format string, standard or custom. Returns false unless every character matches.
bool ParseDateTimeExact(std::string_view text, std::string_view format, const Culture& culture,
                        std::int64_t& ticks);
// Parses [-][d.]hh:mm[:ss[.fffffff]], or a number of days. Returns false for any other text.
bool ParseTimeSpan(std::string_view text, std::int64_t& ticks);
// Returns the offset of the machine's time zone from UTC in minutes at this local time.
int ZoneMinutes(std::int64_t ticks);
// Parses a number with the culture's separators, currency symbol and parentheses. Returns false for any other
// text.
bool ParseNumber(std::string_view text, const Culture& culture, double& number);
// The same without passing through a double. Also returns false for a number that is too large for a Decimal.
bool ParseNumber(std::string_view text, const Culture& culture, Decimal& number);

}  // namespace rdl
