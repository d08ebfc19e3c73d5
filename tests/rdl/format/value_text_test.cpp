// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "rdl/format/format.h"

namespace rdl {
namespace {

const Culture& English() {
    return FindCulture("en-US");
}

TEST(ValueText, EveryKindHasItsOwn) {
    EXPECT_EQ(ToText(Value(), English()), "");
    EXPECT_EQ(ToText(Value::Boolean(true), English()), "True");
    EXPECT_EQ(ToText(Value::Boolean(false), FindCulture("de-DE")), "False");
    EXPECT_EQ(ToText(Value::Integer(-1234567), English()), "-1234567");
    EXPECT_EQ(ToText(Value::Real(1234.5), English()), "1234.5");
    EXPECT_EQ(ToText(Value::Real(1234.5), FindCulture("de-DE")), "1234,5");
    EXPECT_EQ(ToText(Value::Text("as it is"), English()), "as it is");
    EXPECT_EQ(ToText(Value::Error("why"), English()), "#Error");
    EXPECT_EQ(ToText(Value::List({Value::Integer(1), Value::Text("a"), Value()}), English()), "1, a, ");
}

TEST(ValueText, RealsAreAsShortAsFifteenDigitsAllow) {
    EXPECT_EQ(ToText(Value::Real(0.1 + 0.2), English()), "0.3");
    EXPECT_EQ(ToText(Value::Real(1e15), English()), "1E+15");
    EXPECT_EQ(ToText(Value::Real(123456789012345), English()), "123456789012345");
    EXPECT_EQ(ToText(Value::Real(0.0001), English()), "0.0001");
    EXPECT_EQ(ToText(Value::Real(0.00001), English()), "1E-05");
}

TEST(ValueText, DatesAlwaysShowTheirTime) {
    EXPECT_EQ(ToText(Value::DateTime(MakeTicks(2024, 1, 31)), English()), "1/31/2024 12:00:00 AM");
    EXPECT_EQ(ToText(Value::DateTime(MakeTicks(2024, 1, 31, 9, 5)), FindCulture("de-DE")),
              "31.01.2024 09:05:00");
}

TEST(ValueText, FormatsLeaveTextBooleanNullAndErrorAsTheyAre) {
    EXPECT_EQ(FormatValue(Value::Text("12"), "N2", English()), "12");
    EXPECT_EQ(FormatValue(Value::Boolean(true), "N2", English()), "True");
    EXPECT_EQ(FormatValue(Value(), "N2", English()), "");
    EXPECT_EQ(FormatValue(Value::Error("x"), "N2", English()), "#Error");
}

TEST(ValueText, ListsWithinListsEnd) {
    Value nested = Value::Integer(7);
    for (int i = 0; i < 100; ++i) {
        nested = Value::List({nested});
    }
    EXPECT_EQ(ToText(nested, English()), "");
}

TEST(CultureTable, FindsByNameLanguageAndCase) {
    EXPECT_EQ(FindCulture("de").name, "de-DE");
    EXPECT_EQ(FindCulture("DE-at").name, "de-AT");
    EXPECT_EQ(FindCulture("pt_PT").name, "pt-PT");
    EXPECT_EQ(FindCulture("en-ZZ").name, "en-US");
    EXPECT_EQ(FindCulture("xx-YY").name, "");
    EXPECT_EQ(FindCulture("").name, "");
}

TEST(CultureTable, EveryNameIsThere) {
    for (const char* name : {"en", "de", "fr", "es", "it", "nl", "pt", "sv", "da", "nb", "fi", "pl", "cs",
                             "ru", "tr", "ja", "zh", "ko"}) {
        const Culture& culture = FindCulture(name);
        EXPECT_EQ(culture.name.substr(0, 2), name);
        for (int i = 0; i < 12; ++i) {
            EXPECT_FALSE(culture.months[i].empty() || culture.shortMonths[i].empty() ||
                         culture.genitiveMonths[i].empty());
            EXPECT_EQ(culture.months[i].find('|'), std::string::npos);
        }
        for (int i = 0; i < 7; ++i) {
            EXPECT_FALSE(culture.days[i].empty() || culture.shortDays[i].empty());
        }
    }
}

}  // namespace
}  // namespace rdl
