// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/base/convert.h"
#include "platform/contracts/regional.h"
#include "support/raises.h"

namespace {

constexpr RegionalSettings German{DateOrder::DayMonthYear, '.'};
constexpr RegionalSettings American{DateOrder::MonthDayYear, '/'};
constexpr RegionalSettings Swedish{DateOrder::YearMonthDay, '-'};

class DateReading : public testing::Test {
 protected:
    ~DateReading() override { SetRegional({}); }
};

TEST_F(DateReading, StoredFormIsReadInAnyRegion) {
    for (const RegionalSettings& region : {German, American, Swedish}) {
        SetRegional(region);
        EXPECT_EQ(CDate("2002-03-07"), DateSerial(2002, 3, 7));
        EXPECT_EQ(CDate("3000-12-31"), DateSerial(3000, 12, 31));
        EXPECT_EQ(CDate("1899-12-30"), DateValue());
    }
}

TEST_F(DateReading, RegionDecidesAboutDayAndMonth) {
    SetRegional(German);
    EXPECT_EQ(CDate("07.03.2002"), DateSerial(2002, 3, 7));
    EXPECT_EQ(CDate("7/3/2002"), DateSerial(2002, 3, 7));
    SetRegional(American);
    EXPECT_EQ(CDate("03/07/2002"), DateSerial(2002, 3, 7));
    EXPECT_EQ(CDate("3-7-2002"), DateSerial(2002, 3, 7));
}

TEST_F(DateReading, DayThatIsNoMonthIsADayInEveryRegion) {
    for (const RegionalSettings& region : {German, American, Swedish}) {
        SetRegional(region);
        EXPECT_EQ(CDate("31/12/3000"), DateSerial(3000, 12, 31));
        EXPECT_EQ(CDate("27/02/1977"), DateSerial(1977, 2, 27));
        EXPECT_EQ(CDate("01/01/2002"), DateSerial(2002, 1, 1));
    }
    SetRegional(German);
    EXPECT_EQ(CDate("12/31/2003"), DateSerial(2003, 12, 31));
}

TEST_F(DateReading, TwoDigitsOfAYearMeanTheNearerCentury) {
    SetRegional(German);
    EXPECT_EQ(CDate("1.2.29"), DateSerial(2029, 2, 1));
    EXPECT_EQ(CDate("1.2.30"), DateSerial(1930, 2, 1));
    SetRegional(Swedish);
    EXPECT_EQ(CDate("03-04-05"), DateSerial(2003, 4, 5));
}

TEST_F(DateReading, TimesHaveHoursAndMinutesAndMayHaveSeconds) {
    EXPECT_EQ(CDate("14:05"), TimeSerial(14, 5, 0));
    EXPECT_EQ(CDate("4:05:09"), TimeSerial(4, 5, 9));
    EXPECT_EQ(CDate("00:00"), DateValue());
    EXPECT_EQ(CDate("11:30 PM"), TimeSerial(23, 30, 0));
    EXPECT_EQ(CDate("12:30 am"), TimeSerial(0, 30, 0));
    EXPECT_EQ(CDate("12:00PM"), TimeSerial(12, 0, 0));
    EXPECT_EQ(CDate("9 pm"), TimeSerial(21, 0, 0));
}

TEST_F(DateReading, TimeStandsAfterABlankOrAComma) {
    const DateValue expected = DateValue::FromSeconds(DateSerial(2026, 11, 21).Seconds() + 8 * 3600 + 60);
    EXPECT_EQ(CDate("2026-11-21 08:01:00"), expected);
    EXPECT_EQ(CDate("2026-11-21, 8:01"), expected);
    EXPECT_EQ(CDate("2026-11-21,08:01"), expected);
    EXPECT_EQ(CDate("2026-11-21 8:01 AM"), expected);
}

TEST_F(DateReading, MonthsMayHaveTheirEnglishNames) {
    for (const char* text :
         {"31 December 2003", "December 31, 2003", "Dec 31 2003", "31-Dec-2003", "31 dec 03"}) {
        EXPECT_EQ(CDate(text), DateSerial(2003, 12, 31)) << text;
    }
    EXPECT_EQ(CDate("1 May 2003 10:00"), DateValue::FromSeconds(DateSerial(2003, 5, 1).Seconds() + 36000));
}

TEST_F(DateReading, NumberCountsDays) {
    EXPECT_EQ(CDate("37322"), DateSerial(2002, 3, 7));
    EXPECT_EQ(CDate("0.75"), TimeSerial(18, 0, 0));
    EXPECT_EQ(CDate(37322.5).SecondOfDay(), 43200);
    EXPECT_EQ(CDate(1), DateSerial(1899, 12, 31));
}

TEST_F(DateReading, AnythingElseIsATypeMismatch) {
    const std::vector<std::string> noDates{"",
                                           "abc",
                                           "__:__",
                                           "2002-13-01",
                                           "2002-02-30",
                                           "24:00",
                                           "12:60",
                                           "12:00:60",
                                           "31/12-3000",
                                           "31/12/3000x",
                                           "2002-03-07T1",
                                           "2002-03",
                                           "1:2:3:4",
                                           "13 PM",
                                           "Foo 1 2003",
                                           "2002-03-07,,1",
                                           "1 2 3",
                                           "32.13.2003",
                                           "12345-01-01",
                                           "0099-01-01",
                                           "10:00 XM",
                                           "31 Dec",
                                           "-",
                                           "2002-03-07 ,",
                                           ":",
                                           "5:",
                                           "1e99999999x",
                                           "2002-03-0710:00"};
    for (const std::string& text : noDates) {
        EXPECT_EQ(NumberRaisedBy([&] { CDate(text); }), 13) << text;
    }
    EXPECT_EQ(NumberRaisedBy([] { CDate(std::string(1'000'000, '1') + ":"); }), 13);
}

TEST_F(DateReading, NullAndDaysOutsideTheCalendarHaveTheirOwnErrors) {
    EXPECT_EQ(NumberRaisedBy([] { CDate(Variant()); }), 94);
    EXPECT_EQ(NumberRaisedBy([] { CDate(1e10); }), 6);
    EXPECT_EQ(NumberRaisedBy([] { CDate("20020307"); }), 6);
}

TEST_F(DateReading, EveryTextThatIsWrittenIsReadBack) {
    for (const RegionalSettings& region : {German, American, Swedish}) {
        SetRegional(region);
        for (int day = 0; day < 800; ++day) {
            const DateValue value = AddDays(DateSerial(2003, 1, 1), day);
            ASSERT_EQ(CDate(DateText(value)), value);
            ASSERT_EQ(DateText(value).size(), 10U);
        }
    }
}

}  // namespace
