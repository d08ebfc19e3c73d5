// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/contracts/dates.h"

#include <gtest/gtest.h>

#include "support/raises.h"

namespace {

TEST(Dates, ZeroIsTheDayBeforeTheCenturysLast) {
    const DateParts zero = Split(DateValue());
    EXPECT_EQ(zero.year, 1899);
    EXPECT_EQ(zero.month, 12);
    EXPECT_EQ(zero.day, 30);
    EXPECT_EQ(DateSerial(1899, 12, 30), DateValue());
}

TEST(Dates, CountsDaysAsTheDataDoes) {
    EXPECT_EQ(DateSerial(1900, 1, 1).Days(), 2);
    EXPECT_EQ(DateSerial(2002, 3, 7).Days(), 37322);
    EXPECT_EQ(DateSerial(3000, 12, 31).Days(), 402133);
    EXPECT_EQ(DateSerial(100, 1, 1).Days(), -657434);
    EXPECT_EQ(DateSerial(9999, 12, 31).Days(), 2958465);
}

TEST(Dates, EveryDayIsSplitIntoTheDateItWasMadeOf) {
    DateValue day = DateSerial(1895, 1, 1);
    for (int step = 0; step < 80000; ++step, day = AddDays(day, 1)) {
        const DateParts parts = Split(day);
        ASSERT_TRUE(IsValidDate(parts.year, parts.month, parts.day));
        ASSERT_EQ(DateSerial(parts.year, parts.month, parts.day), day);
    }
}

TEST(Dates, MonthAndDayCarryOver) {
    EXPECT_EQ(DateSerial(2003, 14, 1), DateSerial(2004, 2, 1));
    EXPECT_EQ(DateSerial(2003, 0, 1), DateSerial(2002, 12, 1));
    EXPECT_EQ(DateSerial(2003, 3, 0), DateSerial(2003, 2, 28));
    EXPECT_EQ(DateSerial(2004, 2, 30), DateSerial(2004, 3, 1));
}

TEST(Dates, DaysHaveAFractionForTheTime) {
    EXPECT_EQ(DateValue::FromDays(1.5).Seconds(), 86400 + 43200);
    EXPECT_EQ(TimeSerial(18, 0, 0).Days(), 0.75);
    EXPECT_EQ(DateValue::FromDays(2.0 + 1.0 / 86400).SecondOfDay(), 1);
}

TEST(Dates, DaysBeforeTheZeroDayHaveATimeToo) {
    const DateValue evening = DateValue::FromSeconds(-3600);
    EXPECT_EQ(evening.DayNumber(), -1);
    EXPECT_EQ(evening.SecondOfDay(), 82800);
    EXPECT_EQ(Split(evening).hour, 23);
    EXPECT_EQ(TimePart(evening), TimeSerial(23, 0, 0));
    EXPECT_EQ(DatePart(evening), DateSerial(1899, 12, 29));
}

TEST(Dates, NumbersOutsideTheCalendarOverflow) {
    EXPECT_EQ(NumberRaisedBy([] { DateValue::FromDays(2958466); }), 6);
    EXPECT_EQ(NumberRaisedBy([] { DateValue::FromDays(-657435); }), 6);
    EXPECT_EQ(NumberRaisedBy([] { DateValue::FromDays(1e300); }), 6);
    EXPECT_EQ(NumberRaisedBy([] { DateValue::FromDays(0.0 / 0.0); }), 6);
}

TEST(Dates, WeekStartsOnMonday) {
    EXPECT_EQ(WeekdayFromMonday(DateSerial(2026, 11, 16)), 1);
    EXPECT_EQ(WeekdayFromMonday(DateSerial(2026, 11, 21)), 6);
    EXPECT_EQ(WeekdayFromMonday(DateSerial(2026, 11, 22)), 7);
    EXPECT_EQ(WeekdayFromMonday(DateSerial(1899, 12, 29)), 5);
    EXPECT_EQ(WeekdayFromMonday(DateSerial(1753, 1, 1)), 1);
}

TEST(Dates, AddingMonthsStopsAtTheEndOfAShorterMonth) {
    EXPECT_EQ(AddMonths(DateSerial(2003, 1, 31), 1), DateSerial(2003, 2, 28));
    EXPECT_EQ(AddMonths(DateSerial(2004, 1, 31), 1), DateSerial(2004, 2, 29));
    EXPECT_EQ(AddMonths(DateSerial(2003, 3, 31), -1), DateSerial(2003, 2, 28));
    EXPECT_EQ(AddMonths(DateSerial(2003, 11, 15), 14), DateSerial(2005, 1, 15));
    EXPECT_EQ(AddMonths(DateSerial(2004, 2, 29), 12), DateSerial(2005, 2, 28));
}

TEST(Dates, DifferencesCountBoundaries) {
    const DateValue lateEvening = DateValue::FromDays(100 + 23.99 / 24);
    EXPECT_EQ(DiffDays(lateEvening, DateValue::FromDays(101)), 1);
    EXPECT_EQ(DiffHours(lateEvening, DateValue::FromDays(101)), 1);
    EXPECT_EQ(DiffDays(DateValue::FromDays(101), lateEvening), -1);
    EXPECT_EQ(DiffHours(DateSerial(2002, 1, 1), DateSerial(2002, 1, 2)), 24);
    EXPECT_EQ(DiffDays(DateValue::FromDays(-1.5), DateValue::FromDays(0)), 2);
}

TEST(Dates, CenturiesAreLeapYearsEveryFourth) {
    EXPECT_TRUE(IsValidDate(2000, 2, 29));
    EXPECT_FALSE(IsValidDate(1900, 2, 29));
    EXPECT_FALSE(IsValidDate(2003, 2, 29));
    EXPECT_FALSE(IsValidDate(2003, 13, 1));
    EXPECT_FALSE(IsValidDate(2003, 0, 1));
    EXPECT_FALSE(IsValidDate(2003, 4, 31));
    EXPECT_FALSE(IsValidDate(99, 1, 1));
    EXPECT_FALSE(IsValidDate(10000, 1, 1));
}

// Years before and after those that std::chrono holds.
TEST(Dates, DatesFarAwayAreSplitIntoTheDateTheyWereMadeOf) {
    for (const int year : {-400001, -32768, -1, 0, 1, 32768, 400000}) {
        for (const int month : {1, 2, 3, 12}) {
            const DateParts parts = Split(DateSerial(year, month, 28));
            EXPECT_EQ(parts.year, year);
            EXPECT_EQ(parts.month, month);
            EXPECT_EQ(parts.day, 28);
        }
        const bool isLeap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
        EXPECT_EQ(DiffDays(DateSerial(year, 1, 1), DateSerial(year + 1, 1, 1)), isLeap ? 366 : 365) << year;
    }
    EXPECT_EQ(AddMonths(DateSerial(2003, 1, 31), 12 * 100'000 + 1), DateSerial(102003, 2, 28));
}

}  // namespace
