// SPDX-License-Identifier: GPL-3.0-or-later
// How typed values are shown in words.
#include "dialogs/ValueReading.h"

#include <gtest/gtest.h>

#include "platform/contracts/regional.h"
#include "platform/contracts/report_engine.h"

namespace {

class ValueReading : public testing::Test {
 protected:
    void TearDown() override { SetRegional({DateOrder::YearMonthDay, '-'}); }
    static std::string Date(const std::string& text) { return ReadingOf(report::DateTimeField, text); }
};

}  // namespace

TEST_F(ValueReading, DateInFiguresIsTheDayOfItsRegion) {
    SetRegional({DateOrder::MonthDayYear, '/'});
    EXPECT_EQ(Date("07/03/2026"), "3 July 2026");
    SetRegional({DateOrder::DayMonthYear, '.'});
    EXPECT_EQ(Date("07/03/2026"), "7 March 2026");
    EXPECT_EQ(Date("31.12.2026"), "31 December 2026");
    SetRegional({DateOrder::YearMonthDay, '-'});
    EXPECT_EQ(Date("2026-03-07"), "7 March 2026");
}

TEST_F(ValueReading, TimeIsToldWithItsDayOrAlone) {
    EXPECT_EQ(Date("2026-03-07 14:30"), "7 March 2026, 14:30:00");
    EXPECT_EQ(Date("14:30"), "14:30:00");
    EXPECT_EQ(Date("1899-12-30"), "30 December 1899");
}

TEST_F(ValueReading, NumberIsToldWithAPoint) {
    EXPECT_EQ(ReadingOf(report::NumberField, " 12.50 "), "12.5");
    EXPECT_EQ(ReadingOf(report::NumberField, "-3"), "-3");
}

TEST_F(ValueReading, FractionIsNoReadingWhereOnlyWholeNumbersAreTaken) {
    EXPECT_EQ(ReadingOf(report::NumberField, "12.5", Numbers::Whole), "not a whole number");
    EXPECT_EQ(ReadingOf(report::NumberField, "many", Numbers::Whole), "not a whole number");
    EXPECT_EQ(ReadingOf(report::NumberField, "12.0", Numbers::Whole), "12");
    EXPECT_EQ(ReadingOf(report::NumberField, "-3", Numbers::Whole), "-3");
}

TEST_F(ValueReading, WhatIsNeitherIsSaidSoAndEmptyIsNothing) {
    EXPECT_EQ(Date("soon"), "not a date");
    EXPECT_EQ(Date("2026-02-30x"), "not a date");
    EXPECT_EQ(ReadingOf(report::NumberField, "many"), "not a number");
    EXPECT_EQ(Date(""), "");
    EXPECT_EQ(Date("  "), "");
    EXPECT_EQ(ReadingOf(report::StringField, "2026-03-07"), "");
    EXPECT_EQ(ReadingOf(report::BooleanField, "yes"), "");
}
