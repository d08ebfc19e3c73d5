// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "rdl/format/format.h"

namespace rdl {
namespace {

std::optional<std::int64_t> Date(std::string_view text, const char* culture = "en-US") {
    std::int64_t ticks = 0;
    return ParseDateTime(text, FindCulture(culture), ticks) ? std::optional(ticks) : std::nullopt;
}
std::optional<double> Number(std::string_view text, const char* culture = "en-US") {
    double number = 0;
    return ParseNumber(text, FindCulture(culture), number) ? std::optional(number) : std::nullopt;
}

TEST(ParseDate, ReadsIsoUnderAnyCulture) {
    for (const char* culture : {"", "en-US", "de-DE", "fi-FI"}) {
        EXPECT_EQ(Date("2009-06-15", culture), MakeTicks(2009, 6, 15));
        EXPECT_EQ(Date("2009-06-15T13:45:30", culture), MakeTicks(2009, 6, 15, 13, 45, 30));
        EXPECT_EQ(Date("2009-06-15 13:45", culture), MakeTicks(2009, 6, 15, 13, 45));
        EXPECT_EQ(Date("2009-06-15T13:45:30.1234567Z", culture),
                  MakeTicks(2009, 6, 15, 13, 45, 30) + 1'234'567);
        EXPECT_EQ(Date("2009-06-15T13:45:30+02:00", culture), MakeTicks(2009, 6, 15, 13, 45, 30));
    }
}

TEST(ParseDate, OrderIsTheCultures) {
    EXPECT_EQ(Date("3/4/2009", "en-US"), MakeTicks(2009, 3, 4));
    EXPECT_EQ(Date("3/4/2009", "en-GB"), MakeTicks(2009, 4, 3));
    EXPECT_EQ(Date("3.4.2009", "de-DE"), MakeTicks(2009, 4, 3));
    EXPECT_EQ(Date("09/3/4", "ja-JP"), MakeTicks(2009, 3, 4));
    EXPECT_EQ(Date("13/4/2009", "en-US"), std::nullopt);
}

TEST(ParseDate, ReadsMonthNames) {
    EXPECT_EQ(Date("June 15, 2009"), MakeTicks(2009, 6, 15));
    EXPECT_EQ(Date("15 Jun 2009"), MakeTicks(2009, 6, 15));
    EXPECT_EQ(Date("Monday, June 15, 2009 1:45:30 PM"), MakeTicks(2009, 6, 15, 13, 45, 30));
    EXPECT_EQ(Date("15. März 2009", "de-DE"), MakeTicks(2009, 3, 15));
    EXPECT_EQ(Date("15 июня 2009", "ru-RU"), MakeTicks(2009, 6, 15));
    EXPECT_EQ(Date("June 2009"), MakeTicks(2009, 6, 1));
}

TEST(ParseDate, ReadsTimesAlone) {
    EXPECT_EQ(Date("13:45"), MakeTicks(1, 1, 1, 13, 45));
    EXPECT_EQ(Date("1:45 PM"), MakeTicks(1, 1, 1, 13, 45));
    EXPECT_EQ(Date("3 PM"), MakeTicks(1, 1, 1, 15));
    EXPECT_EQ(Date("12:00 AM"), MakeTicks(1, 1, 1));
}

TEST(ParseDate, TwoDigitYearsUpTo29AreOfThisCentury) {
    EXPECT_EQ(Date("1/2/29"), MakeTicks(2029, 1, 2));
    EXPECT_EQ(Date("1/2/30"), MakeTicks(1930, 1, 2));
}

TEST(ParseDate, RefusesWhatIsNone) {
    for (const char* text :
         {"", " ", "abc", "2009", "2/30/2009", "13:61", "25:00", "6/15/2009 6/15/2009", "1-", "-1/2/2009",
          "1/2/2009x", "99999999999", "1//2/2009", "2009-06-15T", "12.5", "PM", "June June 2009"}) {
        EXPECT_EQ(Date(text), std::nullopt) << text;
    }
}

TEST(ParseDate, WhatIsWrittenIsReadBackInEveryCulture) {
    const std::int64_t moment = MakeTicks(2009, 11, 5, 13, 45, 30);
    for (const char* name : {"",      "en-US", "en-GB", "en-CA", "en-AU", "de-DE", "de-AT", "de-CH", "fr-FR",
                             "fr-CA", "es-ES", "it-IT", "nl-NL", "pt-BR", "pt-PT", "sv-SE", "da-DK", "nb-NO",
                             "fi-FI", "pl-PL", "cs-CZ", "ru-RU", "tr-TR", "ja-JP", "zh-CN"}) {
        const Culture& culture = FindCulture(name);
        EXPECT_EQ(culture.name, name);
        EXPECT_EQ(Date(FormatValue(Value::DateTime(moment), "d", culture), name), MakeTicks(2009, 11, 5))
            << name;
        EXPECT_EQ(Date(FormatValue(Value::DateTime(moment), "G", culture), name), moment) << name;
    }
}

std::optional<std::int64_t> Exact(std::string_view text, std::string_view format, const char* culture = "") {
    std::int64_t ticks = 0;
    return ParseDateTimeExact(text, format, FindCulture(culture), ticks) ? std::optional(ticks)
                                                                         : std::nullopt;
}

TEST(ParseDateExact, EveryCharacterMustFitTheFormat) {
    EXPECT_EQ(Exact("20090615", "yyyyMMdd"), MakeTicks(2009, 6, 15));
    EXPECT_EQ(Exact("15/06/2009 13:45:30", "dd/MM/yyyy HH:mm:ss"), MakeTicks(2009, 6, 15, 13, 45, 30));
    EXPECT_EQ(Exact("15.06.2009", "dd/MM/yyyy", "de-DE"), MakeTicks(2009, 6, 15));
    EXPECT_EQ(Exact("6/5/09 1:05 PM", "M/d/yy h:mm tt", "en-US"), MakeTicks(2009, 6, 5, 13, 5));
    EXPECT_EQ(Exact("12:05 A", "h:mm t", "en-US"), MakeTicks(1, 1, 1, 0, 5));
    EXPECT_EQ(Exact("Mon, 15 Jun 2009 13:45:30 GMT", "r"), MakeTicks(2009, 6, 15, 13, 45, 30));
    EXPECT_EQ(Exact("2009-06-15T13:45:30.1234567", "o"), MakeTicks(2009, 6, 15, 13, 45, 30) + 1'234'567);
    EXPECT_EQ(Exact("15 juin 2009", "d MMMM yyyy", "fr-FR"), MakeTicks(2009, 6, 15));
    EXPECT_EQ(Exact("am 15. Juni", "'am 'd. MMMM", "de-DE"), MakeTicks(1, 6, 15));
    EXPECT_EQ(Exact("30.5", "s.FF"), MakeTicks(1, 1, 1, 0, 0, 30) + 5'000'000);
    EXPECT_EQ(Exact("2009-06-15 +02:00", "yyyy-MM-dd zzz"), MakeTicks(2009, 6, 15));
}

TEST(ParseDateExact, RefusesWhatDoesNotFit) {
    EXPECT_EQ(Exact("2009615", "yyyyMMdd"), std::nullopt);
    EXPECT_EQ(Exact("20090615 ", "yyyyMMdd"), std::nullopt);
    EXPECT_EQ(Exact("20090631", "yyyyMMdd"), std::nullopt);
    EXPECT_EQ(Exact("13:00 PM", "h:mm tt", "en-US"), std::nullopt);
    EXPECT_EQ(Exact("25:00", "H:mm"), std::nullopt);
    EXPECT_EQ(Exact("Tue 15 Jun 2009", "ddd d MMM yyyy"), std::nullopt);
    EXPECT_EQ(Exact("x", "q"), std::nullopt);
    EXPECT_EQ(Exact("", "yyyy"), std::nullopt);
    EXPECT_EQ(Exact("2009", ""), std::nullopt);
}

TEST(ParseTimeSpan, ReadsDaysAndClock) {
    const auto span = [](std::string_view text) {
        std::int64_t ticks = 0;
        return ParseTimeSpan(text, ticks) ? std::optional(ticks) : std::nullopt;
    };
    EXPECT_EQ(span("6"), 6 * TicksPerDay);
    EXPECT_EQ(span("6:12"), 6 * 36'000'000'000 + 12 * 600'000'000ll);
    EXPECT_EQ(span("6:12:14"), 223'340'000'000);
    EXPECT_EQ(span("6.12:14:45"), 6 * TicksPerDay + 440'850'000'000);
    EXPECT_EQ(span("-6.12:14:45.3448"), -(6 * TicksPerDay + 440'853'448'000));
    for (const char* text : {"", "x", "24:00", "1:60", "1.2", "1:2:3:4:5", "1:", "99999999", "1.24:00"}) {
        EXPECT_EQ(span(text), std::nullopt) << text;
    }
}

TEST(ParseNumber, ReadsTheCulturesMarks) {
    EXPECT_EQ(Number("1,234.5"), 1234.5);
    EXPECT_EQ(Number("1.234,5", "de-DE"), 1234.5);
    EXPECT_EQ(Number("1\u00A0"
                     "234,5",
                     "fr-FR"),
              1234.5);
    EXPECT_EQ(Number("1 234,5", "fr-FR"), 1234.5);
    EXPECT_EQ(Number("1\u202F234,5\u202F€", "fr-FR"), 1234.5);
    EXPECT_EQ(Number("$1,234.50"), 1234.5);
    EXPECT_EQ(Number("1.234,50 €", "de-DE"), 1234.5);
    EXPECT_EQ(Number(" -7 "), -7.0);
    EXPECT_EQ(Number("7-"), -7.0);
    EXPECT_EQ(Number("($7.00)"), -7.0);
    EXPECT_EQ(Number("1.5e3"), 1500.0);
    EXPECT_EQ(Number("1e-400"), 0.0);
    EXPECT_EQ(Number(".5"), 0.5);
}

TEST(ParseNumber, RefusesWhatIsNone) {
    for (const char* text : {"", " ", "abc", "1.2.3", "1,2.3,4", "--1", "(1", "1)", "(-1)", "1e", "1e400",
                             "$", "1 2", "0x10", "nan", "inf", "$$1", "-1-", "€1"}) {
        EXPECT_EQ(Number(text), std::nullopt) << text;
    }
    EXPECT_EQ(Number(std::string(10'000, '9')), std::nullopt);
}

}  // namespace
}  // namespace rdl
