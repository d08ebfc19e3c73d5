// SPDX-License-Identifier: GPL-3.0-or-later
#include "scheduler/NextRun.h"

#include <gtest/gtest.h>

#include <set>

#include "scheduler/Frequencies.h"
#include "store/TextConventions.h"

namespace {

DateValue Text(int year, int month, int day) {
    return DateSerial(year, month, day);
}

std::string Single(const std::string& word, DateValue stored) {
    DateValue next;
    Global::NextSingleRun(word, stored, next);
    return cmFunc::FormatDateText(next);
}

std::string Package(const std::string& word, DateValue stored) {
    return cmFunc::FormatDateText(Global::NextPackageRun(word, stored));
}

}  // namespace

TEST(NextRun, DailyIsTheNextDay) {
    EXPECT_EQ(Single("Daily", Text(2002, 12, 31)), "2003-01-01");
}

TEST(NextRun, WeeklyIsSevenDaysOn) {
    EXPECT_EQ(Single("Weekly", Text(2002, 12, 28)), "2003-01-04");
}

TEST(NextRun, MonthlyClipsAndStaysClipped) {
    EXPECT_EQ(Single("Monthly", Text(2003, 1, 31)), "2003-02-28");
    EXPECT_EQ(Single("Monthly", Text(2003, 2, 28)), "2003-03-28");
    EXPECT_EQ(Single("Monthly", Text(2004, 1, 31)), "2004-02-29");
    EXPECT_EQ(Single("Monthly", Text(2003, 12, 15)), "2004-01-15");
}

TEST(NextRun, WeekdaysSkipTheWeekend) {
    EXPECT_EQ(Single("Weekdays", Text(2026, 11, 20)), "2026-11-23");  // Friday to Monday
    EXPECT_EQ(Single("Weekdays", Text(2026, 11, 19)), "2026-11-20");  // Thursday to Friday
    EXPECT_EQ(Single("Weekdays", Text(2026, 11, 21)), "2026-11-23");  // Saturday to Monday
    EXPECT_EQ(Single("Weekdays", Text(2026, 11, 22)), "2026-11-23");  // Sunday to Monday
}

TEST(NextRun, WeekendsSkipTheWeek) {
    EXPECT_EQ(Single("Weekends", Text(2026, 11, 20)), "2026-11-21");  // Friday to Saturday
    EXPECT_EQ(Single("Weekends", Text(2026, 11, 21)), "2026-11-22");  // Saturday to Sunday
    EXPECT_EQ(Single("Weekends", Text(2026, 11, 22)), "2026-11-28");  // Sunday to the next Saturday
    EXPECT_EQ(Single("Weekends", Text(2026, 11, 16)), "2026-11-21");  // Monday to that week's Saturday
}

TEST(NextRun, OtherWordsLeaveTheDateOfTheRowBefore) {
    for (const char* word : {"WeekDays", "Quartely", "weekly", "daily", ""}) {
        EXPECT_EQ(Single(word, Text(2026, 11, 20)), "1899-12-30") << word;
        DateValue next = Text(2026, 1, 2);
        Global::NextSingleRun(word, Text(2026, 11, 20), next);
        EXPECT_EQ(cmFunc::FormatDateText(next), "2026-01-02") << word;
    }
}

TEST(NextRun, MonthlyPackageIsFirstMondayOfNextMonth) {
    EXPECT_EQ(Package("Monthly", Text(2003, 1, 15)), "2003-02-03");
    EXPECT_EQ(Package("Monthly", Text(2003, 2, 3)), "2003-03-03");
    EXPECT_EQ(Package("Monthly", Text(2003, 1, 31)), "2003-02-03");
}

TEST(NextRun, MonthlyPackageFallsOnTheFirstWhenThatIsAMonday) {
    EXPECT_EQ(Package("Monthly", Text(2026, 5, 20)), "2026-06-01");
}

TEST(NextRun, WeeklyAndDailyPackages) {
    EXPECT_EQ(Package("Weekly", Text(2026, 11, 21)), "2026-11-28");
    EXPECT_EQ(Package("Daily", Text(2026, 11, 30)), "2026-12-01");
}

TEST(NextRun, QuarterlyPackageClips) {
    EXPECT_EQ(Package("Quartely", Text(2002, 11, 30)), "2003-02-28");
    EXPECT_EQ(Package("Quartely", Text(2002, 1, 15)), "2002-04-15");
}

TEST(NextRun, OtherPackageWordsMoveOnByAMonth) {
    for (const char* word : {"Weekdays", "WeekDays", "Weekends", "weekly", "Quarterly", ""}) {
        EXPECT_EQ(Package(word, Text(2026, 10, 31)), "2026-11-30") << word;
    }
}

// Each word of the table has a rule of its own: no two are alike on a Friday and on a Sunday.
TEST(NextRun, EveryWordOfSchedulesHasItsRule) {
    const auto dates = [](std::string_view word) {
        return Single(std::string(word), Text(2026, 11, 20)) + Single(std::string(word), Text(2026, 11, 22));
    };
    std::set<std::string> all;
    for (const std::string_view word : Global::frequencies::OfSchedules) {
        all.insert(dates(word));
    }
    EXPECT_EQ(Global::frequencies::OfSchedules.size(), 6U);
    EXPECT_EQ(all.size(), 6U);
    EXPECT_EQ(dates("WeekDays"), dates("unknown"));  // sic
}

TEST(NextRun, EveryWordOfPackagesHasItsRule) {
    const DateValue saturday = Text(2026, 10, 31);
    std::set<std::string> dates = {Package("unknown", saturday)};
    for (const std::string_view word : Global::frequencies::OfPackages) {
        dates.insert(Package(std::string(word), saturday));
    }
    EXPECT_EQ(Global::frequencies::OfPackages.size(), 4U);
    EXPECT_EQ(dates.size(), 5U);
}
