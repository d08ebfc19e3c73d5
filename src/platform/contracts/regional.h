// The machine's regional settings for dates: from LC_ALL, LC_TIME or LANG.
//
// The date text always has ten characters and the time text always has a leading zero and 24 hours, so that
// stored moments sort; the order of day, month and year and the separator are the region's.
#pragma once

#include <string_view>

enum class DateOrder { YearMonthDay, DayMonthYear, MonthDayYear };

struct RegionalSettings {
    DateOrder order = DateOrder::YearMonthDay;
    char dateSeparator = '-';
};

// Read from the environment once, at the first call. Regions that write dates in no ten-character form, and
// the C locale, give year-month-day.
const RegionalSettings& Regional();
// The settings that a date pattern of strftime stands for, for example "%d.%m.%Y".
RegionalSettings RegionalFromPattern(std::string_view pattern);
// Qt's application object gives the whole process the region of the environment; database drivers would then
// write 0.3 as 0,3. To be called after it is made: numbers have a point again, for every library.
void KeepNumbersPlain();
// For tests.
void SetRegional(const RegionalSettings& settings);
