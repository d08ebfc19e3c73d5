// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <limits>

#include "rdl/format/format.h"

namespace rdl {
namespace {

TEST(Calendar, BeginsOnAMondayInYearOne) {
    const DateTimeParts first = SplitTicks(0);
    EXPECT_EQ(first.year, 1);
    EXPECT_EQ(first.month, 1);
    EXPECT_EQ(first.day, 1);
    EXPECT_EQ(first.dayOfWeek, 1);
    EXPECT_EQ(first.dayOfYear, 1);
}

TEST(Calendar, KnowsTheUnixEpoch) {
    EXPECT_EQ(MakeTicks(1970, 1, 1), 621'355'968'000'000'000);
}

TEST(Calendar, EndsAtTheLastMomentOf9999) {
    const DateTimeParts last = SplitTicks(MaxTicks);
    EXPECT_EQ(last.year, 9999);
    EXPECT_EQ(last.month, 12);
    EXPECT_EQ(last.day, 31);
    EXPECT_EQ(last.hour, 23);
    EXPECT_EQ(last.fraction, 9'999'999);
    EXPECT_EQ(last.dayOfWeek, 5);
}

TEST(Calendar, TakesTicksOutsideAsFirstOrLastMoment) {
    EXPECT_EQ(SplitTicks(std::numeric_limits<std::int64_t>::min()).year, 1);
    EXPECT_EQ(SplitTicks(std::numeric_limits<std::int64_t>::max()).year, 9999);
}

TEST(Calendar, LeapYearsFollowTheGregorianRule) {
    EXPECT_EQ(DaysInMonth(2024, 2), 29);
    EXPECT_EQ(DaysInMonth(1900, 2), 28);
    EXPECT_EQ(DaysInMonth(2000, 2), 29);
    EXPECT_EQ(DaysInMonth(2023, 4), 30);
    EXPECT_EQ(DaysInMonth(2023, 13), 0);
}

TEST(Calendar, CarriesWhatIsOutOfRange) {
    EXPECT_EQ(MakeTicks(2024, 14, 1), MakeTicks(2025, 2, 1));
    EXPECT_EQ(MakeTicks(2024, 3, 0), MakeTicks(2024, 2, 29));
    EXPECT_EQ(MakeTicks(2024, 1, 1, 25), MakeTicks(2024, 1, 2, 1));
    EXPECT_EQ(MakeTicks(2024, 1, 1, 0, 0, -1), MakeTicks(2023, 12, 31, 23, 59, 59));
    EXPECT_EQ(MakeTicks(2'000'000'000, 1, 1), MaxTicks);
    EXPECT_EQ(MakeTicks(-5, 1, 1), 0);
}

TEST(Calendar, EveryDayOfFourCenturiesSplitsIntoItself) {
    int weekday = SplitTicks(MakeTicks(1799, 12, 31)).dayOfWeek;
    for (int year = 1800; year < 2200; ++year) {
        int dayOfYear = 0;
        for (int month = 1; month <= 12; ++month) {
            for (int day = 1; day <= DaysInMonth(year, month); ++day) {
                const DateTimeParts parts = SplitTicks(MakeTicks(year, month, day));
                weekday = (weekday + 1) % 7;
                ASSERT_TRUE(parts.year == year && parts.month == month && parts.day == day)
                    << year << month << day;
                ASSERT_EQ(parts.dayOfYear, ++dayOfYear);
                ASSERT_EQ(parts.dayOfWeek, weekday);
            }
        }
    }
}

}  // namespace
}  // namespace rdl
