// SPDX-License-Identifier: GPL-3.0-or-later
// Culture data: one row for each region and one for each language. cultures.cpp builds Culture objects from
// them.
#pragma once

#include <cstddef>

namespace rdl {

// List items are separated by |.
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
    const char* name;  // the first row of a language is its main region
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
