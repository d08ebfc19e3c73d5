// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/contracts/regional.h"

#include <gtest/gtest.h>
#include <langinfo.h>
#include <locale.h>
#include <stdlib.h>

#include <utility>

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
    EXPECT_EQ(RegionTag(), "en-US");
}

TEST(Regional, TagIsThatOfTheEnvironment) {
    for (const auto& [name, tag] : {std::pair("de_DE.UTF-8", "de-DE"), std::pair("tr_TR.UTF-8", "tr-TR")}) {
        setenv("LC_ALL", name, 1);
        const locale_t known = newlocale(LC_TIME_MASK, name, nullptr);
        EXPECT_EQ(RegionTag(), known == nullptr ? "en-US" : tag) << name;
        if (known != nullptr) {
            freelocale(known);
        }
    }
    setenv("LC_ALL", "no_SUCH", 1);
    EXPECT_EQ(RegionTag(), "en-US");
    setenv("LC_ALL", "C.UTF-8", 1);
}

}  // namespace
