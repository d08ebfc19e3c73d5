// SPDX-License-Identifier: GPL-3.0-or-later
// The machine's regional settings for dates, from LC_ALL, LC_TIME or LANG.
//
// The date text always has ten characters; the time text always has 24 hours and a leading zero: stored
// moments compare as texts. The order of day, month and year and the separator are those of the region.
#pragma once

#include <string>
#include <string_view>

enum class DateOrder { YearMonthDay, DayMonthYear, MonthDayYear };

struct RegionalSettings {
    DateOrder order = DateOrder::YearMonthDay;
    char dateSeparator = '-';
};

// Returns the settings, read from the environment at the first call. A region whose dates have no form with
// ten characters, and the C locale, give year-month-day.
const RegionalSettings& Regional();
// Returns the language and region of the dates as a tag of BCP 47, such as de-DE; en-US for the C locale and
// for a locale that the machine does not have.
std::string RegionTag();
// Returns the settings for a date pattern of strftime such as "%d.%m.%Y".
RegionalSettings RegionalFromPattern(std::string_view pattern);
// Qt's application object sets the region of the environment for the whole process; database drivers would
// then write 0.3 as 0,3. Call this after the object is made: it restores the decimal point for every library.
void KeepNumbersPlain();
// For tests.
void SetRegional(const RegionalSettings& settings);
