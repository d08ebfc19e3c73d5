// The cultures' data as it is told: one row for each region, one for each language. cultures.cpp makes them
// into Culture objects.
#pragma once

#include <cstddef>

namespace rdl {

// Lists are parted by |.
struct LanguageRow {
    const char* code;
    const char* months;
    const char* shortMonths;
    const char* genitiveMonths;  // empty: the same as months
    const char* days;            // from Sunday
    const char* shortDays;
    const char* am;
    const char* pm;
    const char* era;
};

struct RegionRow {
    const char* name;  // the first region of a language is its main one
    const char* decimalSeparator;
    const char* groupSeparator;
    const char* currencyGroupSeparator;
    const char* currencySymbol;
    int currencyDecimals, currencyPositive, currencyNegative, percentPositive, percentNegative,
        numberNegative;
    const char* shortDate;
    const char* longDate;
    const char* shortTime;
    const char* longTime;
    const char* monthDay;
    const char* yearMonth;
    const char* dateSeparator;
    const char* timeSeparator;
    int firstDayOfWeek;
};

extern const LanguageRow LanguageRows[];
extern const std::size_t LanguageRowCount;
extern const RegionRow RegionRows[];
extern const std::size_t RegionRowCount;

}  // namespace rdl
