// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <string>

#include "rdl/format/format.h"
#include "support/time_zone.h"

namespace rdl {
namespace {

// Monday, 15 June 2009, 13:45:30.12345
const std::int64_t Moment = MakeTicks(2009, 6, 15, 13, 45, 30) + 1'234'500;

struct Case {
    const char* format;
    const char* culture;
    const char* text;
};

std::string Text(std::int64_t ticks, std::string_view format, const char* culture = "en-US") {
    return FormatValue(Value::DateTime(ticks), format, FindCulture(culture));
}

class DateFormat : public testing::TestWithParam<Case> {};

TEST_P(DateFormat, FollowsThePublishedRules) {
    const Case& c = GetParam();
    EXPECT_EQ(Text(Moment, c.format, c.culture), c.text) << c.format << " " << c.culture;
}

TEST(DateFormatOfAZone, OffsetIsThatOfTheMachineOnTheDay) {
    const auto offset = [](const char* zone, std::int64_t ticks) {
        const TimeZone inZone(zone);
        return Text(ticks, "hh:mm:ss zzz");
    };
    const std::int64_t winter = MakeTicks(2009, 1, 15, 13, 45, 30);
    EXPECT_EQ(offset("Etc/UTC", Moment), "01:45:30 +00:00");
    EXPECT_EQ(offset("America/St_Johns", Moment), "01:45:30 -02:30");
    EXPECT_EQ(offset("America/St_Johns", winter), "01:45:30 -03:30");
    EXPECT_EQ(offset("Asia/Kathmandu", winter), "01:45:30 +05:45");
}

INSTANTIATE_TEST_SUITE_P(
    Standard, DateFormat,
    testing::Values(Case{"d", "en-US", "6/15/2009"}, Case{"d", "fr-FR", "15/06/2009"},
                    Case{"d", "ja-JP", "2009/06/15"}, Case{"d", "de-DE", "15.06.2009"},
                    Case{"d", "sv-SE", "2009-06-15"}, Case{"d", "nl-NL", "15-6-2009"},
                    Case{"d", "", "06/15/2009"}, Case{"D", "en-US", "Monday, June 15, 2009"},
                    Case{"D", "de-DE", "Montag, 15. Juni 2009"}, Case{"D", "fr-FR", "lundi 15 juin 2009"},
                    Case{"D", "es-ES", "lunes, 15 de junio de 2009"}, Case{"D", "ru-RU", "15 июня 2009 г."},
                    Case{"D", "pl-PL", "15 czerwca 2009"}, Case{"D", "ja-JP", "2009年6月15日"},
                    Case{"f", "en-US", "Monday, June 15, 2009 1:45 PM"},
                    Case{"F", "en-US", "Monday, June 15, 2009 1:45:30 PM"},
                    Case{"g", "en-US", "6/15/2009 1:45 PM"}, Case{"G", "en-US", "6/15/2009 1:45:30 PM"},
                    Case{"G", "de-DE", "15.06.2009 13:45:30"}, Case{"M", "en-US", "June 15"},
                    Case{"m", "da-DK", "15. juni"}, Case{"O", "en-US", "2009-06-15T13:45:30.1234500"},
                    Case{"R", "de-DE", "Mon, 15 Jun 2009 13:45:30 GMT"},
                    Case{"s", "fi-FI", "2009-06-15T13:45:30"}, Case{"t", "en-US", "1:45 PM"},
                    Case{"T", "en-GB", "13:45:30"}, Case{"t", "fi-FI", "13.45"},
                    Case{"u", "en-US", "2009-06-15 13:45:30Z"}, Case{"y", "en-US", "June 2009"},
                    Case{"Y", "ru-RU", "Июнь 2009"}, Case{"t", "ko-KR", "오후 1:45"}));

INSTANTIATE_TEST_SUITE_P(
    Custom, DateFormat,
    testing::Values(Case{"%d", "en-US", "15"}, Case{"d ", "en-US", "15 "},
                    Case{"dd ddd dddd", "en-US", "15 Mon Monday"},
                    Case{"M MM MMM MMMM", "en-US", "6 06 Jun June"}, Case{"%y", "en-US", "9"},
                    Case{"yy", "en-US", "09"}, Case{"yyy", "en-US", "2009"}, Case{"yyyyy", "en-US", "02009"},
                    Case{"h hh H HH", "en-US", "1 01 13 13"}, Case{"m:mm:s:ss", "en-US", "45:45:30:30"},
                    Case{"f ff fff ffffff", "en-US", "1 12 123 123450"},
                    Case{"ss.FFFFFFF", "en-US", "30.12345"}, Case{"t tt", "en-US", "P PM"},
                    Case{"yyyy g", "en-US", "2009 A.D."}, Case{"dd/MM/yyyy", "de-DE", "15.06.2009"},
                    Case{"dd.MM.yyyy", "en-US", "15.06.2009"}, Case{"HH:mm", "fi-FI", "13.45"},
                    Case{"'day' d", "en-US", "day 15"}, Case{"\\d d", "en-US", "d 15"},
                    Case{"\"Week\" d", "en-US", "Week 15"}, Case{"MMM dd, yyyy", "en-US", "Jun 15, 2009"},
                    Case{"MMMM", "ru-RU", "Июнь"}, Case{"d MMMM", "cs-CZ", "15 června"},
                    Case{"MMMM yyyy", "fi-FI", "kesäkuu 2009"}, Case{"yyyyMMdd", "en-US", "20090615"}));

TEST(DateTimeFormat, FractionOfNothingTakesItsPointAlong) {
    EXPECT_EQ(Text(MakeTicks(2009, 6, 15, 13, 45, 30), "ss.FFF"), "30");
    EXPECT_EQ(Text(MakeTicks(2009, 6, 15, 13, 45, 30), "ss.fff"), "30.000");
}

TEST(DateTimeFormat, TwelveHourClockHasNoZero) {
    EXPECT_EQ(Text(MakeTicks(2009, 6, 15, 0, 5), "h:mm tt"), "12:05 AM");
    EXPECT_EQ(Text(MakeTicks(2009, 6, 15, 12, 5), "h:mm tt"), "12:05 PM");
}

TEST(DateTimeFormat, FormatsOfNumbersLeaveADateAsItIs) {
    EXPECT_EQ(Text(Moment, "N2"), "6/15/2009 1:45:30 PM");
    EXPECT_EQ(Text(Moment, "#,##0.00"), "6/15/2009 1:45:30 PM");
    EXPECT_EQ(Text(Moment, "x"), "6/15/2009 1:45:30 PM");
}

TEST(TimeSpanFormat, StandardAndCustom) {
    const Value span =
        Value::TimeSpan(TicksPerDay + 2 * 3600 * TicksPerSecond + 3 * 60 * TicksPerSecond + 5'000'000);
    const Culture& english = FindCulture("en-US");
    EXPECT_EQ(FormatValue(span, "", english), "1.02:03:00.5000000");
    EXPECT_EQ(FormatValue(span, "c", english), "1.02:03:00.5000000");
    EXPECT_EQ(FormatValue(span, "g", english), "1:2:03:00.5");
    EXPECT_EQ(FormatValue(span, "G", FindCulture("fr-FR")), "1:02:03:00,5000000");
    EXPECT_EQ(FormatValue(span, "d'd 'hh\\:mm", english), "1d 02:03");
    EXPECT_EQ(FormatValue(Value::TimeSpan(-90 * TicksPerSecond), "", english), "-00:01:30");
    EXPECT_EQ(FormatValue(span, "Q2", english), "1.02:03:00.5000000");
}

TEST(DateTimeFormat, EveryCutOffFormatIsHarmless) {
    const std::string format = "'a'yyyy\"b\"\\ddddd%MMMMM:/fffffffFFFtttzzzgK'";
    for (std::size_t length = 1; length <= format.size(); ++length) {
        Text(Moment, format.substr(0, length));
        Text(Moment, format.substr(format.size() - length));
        FormatValue(Value::TimeSpan(Moment), format.substr(0, length), FindCulture(""));
    }
    EXPECT_EQ(Text(Moment, std::string(5000, 'y')).size(), 20u);
}

// The zone of the process for one test.
class Zone {
 public:
    explicit Zone(const char* zone) : m_before(std::getenv("TZ") ? std::getenv("TZ") : "") { Set(zone); }
    ~Zone() { Set(m_before.c_str()); }
    Zone(const Zone&) = delete;
    Zone& operator=(const Zone&) = delete;

 private:
    static void Set(const char* zone) {
        setenv("TZ", zone, 1);
        tzset();
    }
    const std::string m_before;
};

TEST(DateTimeFormat, ZonesWestOfUtcHaveAMinusInFrontOfHoursAndMinutes) {
    {
        const Zone newfoundland("NST3:30NDT,M3.2.0,M11.1.0");
        EXPECT_EQ(Text(MakeTicks(2009, 1, 15, 12), "zzz"), "-03:30");
        EXPECT_EQ(Text(MakeTicks(2009, 6, 15, 12), "zzz"), "-02:30");
        EXPECT_EQ(Text(MakeTicks(2009, 6, 15, 12), "zz"), "-02");
        EXPECT_EQ(Text(MakeTicks(2009, 6, 15, 12), "%z"), "-2");
    }
    const Zone india("IST-5:30");
    EXPECT_EQ(Text(MakeTicks(2009, 1, 15, 12), "zzz zz"), "+05:30 +05");
}

}  // namespace
}  // namespace rdl
