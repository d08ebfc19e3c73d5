// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/contracts/regional.h"

#include <gtest/gtest.h>
#include <stdlib.h>

namespace {

void ExpectRegion(const char* pattern, DateOrder order, char separator) {
    const RegionalSettings settings = RegionalFromPattern(pattern);
    EXPECT_EQ(settings.order, order) << pattern;
    EXPECT_EQ(settings.dateSeparator, separator) << pattern;
}

TEST(Regional, PatternOfTheRegionGivesOrderAndSeparator) {
    ExpectRegion("%d.%m.%Y", DateOrder::DayMonthYear, '.');
    ExpectRegion("%m/%d/%Y", DateOrder::MonthDayYear, '/');
    ExpectRegion("%Y-%m-%d", DateOrder::YearMonthDay, '-');
    ExpectRegion("%d/%m/%y", DateOrder::DayMonthYear, '/');
    ExpectRegion("%-d.%-m.%Y", DateOrder::DayMonthYear, '.');
    ExpectRegion("%e.%m.%Y", DateOrder::DayMonthYear, '.');
    ExpectRegion("%D", DateOrder::MonthDayYear, '/');
}

TEST(Regional, PatternWithoutTenCharactersGivesYearMonthDay) {
    for (const char* pattern : {"", "%", "%Y. %m. %d.", "%d %b %Y", "%d.%m.%Y.", "%d/%m-%Y", "%x", "%d%m%Y",
                                "abc", "%Od年%Om月%Od日"}) {
        ExpectRegion(pattern, DateOrder::YearMonthDay, '-');
    }
}

// The C locale's own pattern has the American order.
TEST(Regional, EnvironmentWithoutARegionGivesYearMonthDay) {
    setenv("LC_ALL", "C.UTF-8", 1);
    EXPECT_EQ(Regional().order, DateOrder::YearMonthDay);
    EXPECT_EQ(Regional().dateSeparator, '-');
}

}  // namespace
