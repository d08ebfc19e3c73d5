// SPDX-License-Identifier: GPL-3.0-or-later
// Cultures that the table has no row for.
#include <gtest/gtest.h>

#include <set>
#include <string>

#include "rdl/format/format.h"

namespace rdl {
namespace {

std::string Written(double number, const char* format, const char* culture) {
    return FormatValue(Value::Real(number), format, FindCulture(culture));
}

// No-break spaces, which group, are shown as _.
std::string Number(double number, const char* format, const char* culture) {
    constexpr std::string_view NoBreak = "\xC2\xA0";
    std::string text = Written(number, format, culture);
    for (std::size_t at = text.find(NoBreak); at != std::string::npos; at = text.find(NoBreak)) {
        text.replace(at, NoBreak.size(), "_");
    }
    return text;
}

std::string Moment(const char* format, const char* culture) {
    return FormatValue(Value::DateTime(MakeTicks(2009, 6, 15, 13, 45, 30)), format, FindCulture(culture));
}

struct Money {
    const char *culture, *positive, *negative;
};

TEST(LocaleCulture, MoneyIsThatOfTheRegion) {
    for (const Money& money :
         {Money{"en-IN", "₹12,34,567.50", "-₹1,234.50"}, Money{"hi-IN", "₹12,34,567.50", "-₹1,234.50"},
          Money{"es-AR", "$ 1.234.567,50", "-$ 1.234,50"}, Money{"es-CL", "$1.234.568", "-$1.235"},
          Money{"zh-TW", "$1,234,567.50", "-$1,234.50"}, Money{"zh-HK", "HK$1,234,567.50", "-HK$1,234.50"},
          Money{"en-ZA", "R1_234_567,50", "-R1_234,50"}, Money{"de-LI", "1’234’567.50 CHF", "-1’234.50 CHF"},
          Money{"uk-UA", "1_234_567,50 ₴", "-1_234,50 ₴"}, Money{"hu-HU", "1_234_567,50 Ft", "-1_234,50 Ft"},
          Money{"el-GR", "1.234.567,50 €", "-1.234,50 €"}, Money{"he-IL", "1,234,567.50 ₪", "-1,234.50 ₪"},
          Money{"vi-VN", "1.234.568 ₫", "-1.235 ₫"}, Money{"th-TH", "฿1,234,567.50", "-฿1,234.50"},
          Money{"ro-RO", "1.234.567,50 RON", "-1.234,50 RON"},
          Money{"nl-SR", "$ 1.234.567,50", "$ -1.234,50"},
          Money{"it-CH", "1’234’567.50 CHF", "-1’234.50 CHF"}}) {
        EXPECT_EQ(Number(1234567.5, "C", money.culture), money.positive) << money.culture;
        EXPECT_EQ(Number(-1234.5, "C", money.culture), money.negative) << money.culture;
    }
}

TEST(LocaleCulture, LanguageOfAnotherRegionHasTheMoneyOfTheRegion) {
    EXPECT_EQ(FindCulture("en-FR").name, "en-FR");
    EXPECT_EQ(Number(1234.5, "C", "en-FR"), "€1,234.50");
    EXPECT_EQ(Number(1234.5, "C", "uk-JP"), "1_235 ¥");
    EXPECT_EQ(Moment("D", "en-FR"), "Monday, June 15, 2009");
}

TEST(LocaleCulture, RegionsOfSeveralCountriesHaveNoMoneyOfOne) {
    EXPECT_EQ(Number(1.5, "C", "es-419"), "¤1.50");
    EXPECT_EQ(Number(1.5, "C", "en-150"), "1.50 ¤");
}

TEST(LocaleCulture, GroupsAreThoseOfTheRegionInEveryFormat) {
    EXPECT_EQ(Number(1234567891, "N0", "en-IN"), "1,23,45,67,891");
    EXPECT_EQ(Number(123456, "#,##0.00", "en-IN"), "1,23,456.00");
    EXPECT_EQ(Number(123, "#,##0", "en-IN"), "123");
    EXPECT_EQ(Number(1234, "#,##0", "en-IN"), "1,234");
    EXPECT_EQ(Number(1234567, "N0", "lv-LV"), "1_234_567");
    EXPECT_EQ(Number(1234567, "N0", "de-DE"), "1.234.567");
}

TEST(LocaleCulture, NumbersAreAsciiWhateverTheScript) {
    EXPECT_EQ(Number(-1234567.25, "N2", "ar-EG"), "-1,234,567.25");
    EXPECT_EQ(Number(0.125, "P1", "fa-IR"), "12.5%");
    EXPECT_EQ(Number(-1234.5, "N1", "hr-HR"), "-1.234,5");
    EXPECT_EQ(Number(-1234.5, "N1", "nn-NO"), "-1_234,5");
}

TEST(LocaleCulture, PercentSignStandsWhereTheLanguageHasIt) {
    EXPECT_EQ(Number(0.5, "P0", "en-IN"), "50%");
    EXPECT_EQ(Number(0.5, "P0", "uk-UA"), "50 %");
    EXPECT_EQ(Number(-0.5, "P0", "eu-ES"), "-% 50");
    EXPECT_EQ(Number(0.5, "P0", "hu-HU"), "50%");
}

struct Dates {
    const char *culture, *d, *D, *t, *M, *Y;
};

TEST(LocaleCulture, DatesFollowTheRegion) {
    for (const Dates& dates :
         {Dates{"en-IN", "15/06/2009", "Monday, 15 June, 2009", "1:45 pm", "15 June", "June, 2009"},
          Dates{"es-AR", "15/6/2009", "lunes, 15 de junio de 2009", "13:45", "15 de junio", "junio de 2009"},
          Dates{"zh-TW", "2009/6/15", "2009年6月15日 星期一", "下午1:45", "6月15日", "2009年6月"},
          Dates{"zh-HK", "15/6/2009", "2009年6月15日星期一", "下午1:45", "6月15日", "2009年6月"},
          Dates{"de-LI", "15.06.2009", "Montag, 15. Juni 2009", "13:45", "15. Juni", "Juni 2009"},
          Dates{"uk-UA", "15.06.2009", "понеділок, 15 червня 2009 р.", "13:45", "15 червня",
                "червень 2009 р."},
          Dates{"hu-HU", "2009. 06. 15.", "2009. június 15., hétfő", "13:45", "június 15.", "2009. június"},
          Dates{"el-GR", "15/6/2009", "Δευτέρα 15 Ιουνίου 2009", "1:45 μ.μ.", "15 Ιουνίου", "Ιούνιος 2009"},
          Dates{"sk-SK", "15. 6. 2009", "pondelok 15. júna 2009", "13:45", "15. júna", "jún 2009"},
          Dates{"hr-HR", "15. 06. 2009.", "ponedjeljak, 15. lipnja 2009.", "13:45", "15. lipnja",
                "lipanj 2009."},
          Dates{"lt-LT", "2009-06-15", "2009 m. birželio 15 d., pirmadienis", "13:45", "birželio 15",
                "2009 m. birželis"},
          Dates{"id-ID", "15/06/2009", "Senin, 15 Juni 2009", "13.45", "15 Juni", "Juni 2009"},
          Dates{"he-IL", "15.6.2009", "יום שני, 15 ביוני 2009", "13:45", "15 ביוני", "יוני 2009"},
          Dates{"en-ZA", "2009/06/15", "Monday, 15 June 2009", "13:45", "15 June", "June 2009"},
          Dates{"sr-Latn-RS", "15.6.2009.", "ponedeljak, 15. jun 2009.", "13:45", "15. jun", "jun 2009."}}) {
        EXPECT_EQ(Moment("d", dates.culture), dates.d) << dates.culture;
        EXPECT_EQ(Moment("D", dates.culture), dates.D) << dates.culture;
        EXPECT_EQ(Moment("t", dates.culture), dates.t) << dates.culture;
        EXPECT_EQ(Moment("M", dates.culture), dates.M) << dates.culture;
        EXPECT_EQ(Moment("Y", dates.culture), dates.Y) << dates.culture;
    }
}

TEST(LocaleCulture, LongTimeIsTheShortOneWithSeconds) {
    EXPECT_EQ(Moment("T", "en-IN"), "1:45:30 pm");
    EXPECT_EQ(Moment("T", "zh-TW"), "下午1:45:30");
    EXPECT_EQ(Moment("T", "id-ID"), "13.45.30");
    EXPECT_EQ(Moment("T", "bg-BG"), "13:45:30 ч.");
    EXPECT_EQ(Moment("G", "de-LI"), "15.06.2009 13:45:30");
}

TEST(LocaleCulture, SeparatorsOfCustomFormatsAreTheRegions) {
    EXPECT_EQ(Moment("dd/MM/yyyy HH:mm", "de-LI"), "15.06.2009 13:45");
    EXPECT_EQ(Moment("dd/MM/yyyy HH:mm", "es-CL"), "15-06-2009 13:45");
    EXPECT_EQ(Moment("HH:mm", "id-ID"), "13.45");
    EXPECT_EQ(Moment("MMM ddd", "uk-UA"), "чер пн");
}

TEST(LocaleCulture, NamesAreFoundInEveryForm) {
    EXPECT_EQ(FindCulture("uk").name, "uk-UA");
    EXPECT_EQ(FindCulture("EN_in").name, "en-IN");
    EXPECT_EQ(FindCulture("zh-Hant").name, "zh-TW");
    EXPECT_EQ(FindCulture("zh-CHT").name, "zh-TW");
    EXPECT_EQ(FindCulture("zh-Hant-HK").name, "zh-HK");
    EXPECT_EQ(FindCulture("zh-Hans").name, "zh-CN");
    EXPECT_EQ(FindCulture("no").name, "nb-NO");
    EXPECT_EQ(FindCulture("es-ES_tradnl").name, "es-ES");
    EXPECT_EQ(FindCulture("sr-Latn-RS").name, "sr-Latn-RS");
    for (const char* none : {"C", "POSIX", "-", "_", "xx", "123", "e", "zz-ZZ"}) {
        EXPECT_EQ(FindCulture(none).name, "") << none;
    }
}

TEST(LocaleCulture, CultureStaysWhereItIs) {
    const Culture& first = FindCulture("en-IN");
    std::set<const Culture*> others;
    for (const char* name : {"hu-HU", "uk-UA", "el-GR", "ro-RO", "sk-SK", "bg-BG", "hr-HR", "lt-LT"}) {
        others.insert(&FindCulture(name));
    }
    EXPECT_EQ(others.size(), 8u);
    EXPECT_EQ(&FindCulture("en_in"), &first);
    EXPECT_EQ(first.currencySymbol, "₹");
}

TEST(LocaleCulture, WhatIsWrittenIsReadBack) {
    for (const char* name : {"en-IN", "es-AR", "de-LI", "hu-HU", "el-GR", "sk-SK", "hr-HR", "lt-LT", "ro-RO",
                             "vi-VN", "th-TH", "en-ZA", "uk-UA", "fa-IR", "ar-EG"}) {
        const Culture& culture = FindCulture(name);
        std::int64_t ticks = 0;
        EXPECT_TRUE(ParseDateTime(Moment("d", name), culture, ticks)) << name;
        EXPECT_EQ(ticks, MakeTicks(2009, 6, 15)) << name;
        double number = 0;
        EXPECT_TRUE(ParseNumber(Written(-1234567.25, "C2", name), culture, number)) << name;
        EXPECT_EQ(number, -1234567.25) << name;
    }
}

}  // namespace
}  // namespace rdl
