// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "rdl/layout/model/colors.h"
#include "rdl/layout/model/units.h"
#include "rdl/layout/pages/line_breaker.h"

namespace rdl::layout {
namespace {

TEST(Colors, AreNamesOrHexadecimal) {
    Color color = 0;
    EXPECT_TRUE(ParseColor("LightSteelBlue", color));
    EXPECT_EQ(color, 0xFFB0C4DEU);
    EXPECT_TRUE(ParseColor("#80ff0001", color));
    EXPECT_EQ(color, 0x80FF0001U);
    EXPECT_TRUE(ParseColor("#a1b", color));
    EXPECT_EQ(color, 0xFFAA11BBU);
    EXPECT_TRUE(ParseColor("Transparent", color));
    EXPECT_EQ(color, Transparent);
}

TEST(Colors, WhatIsNoneChangesNothing) {
    Color color = 7;
    for (const char* text : {"", "#12345", "#gggggg", "Blurple", "#123456789"}) {
        EXPECT_FALSE(ParseColor(text, color)) << text;
    }
    EXPECT_EQ(color, 7U);
}

TEST(Sizes, HaveUnits) {
    double points = 0;
    EXPECT_TRUE(ParseSize("2.54cm", points));
    EXPECT_NEAR(points, 72, 1e-9);
    EXPECT_TRUE(ParseSize(" .5 in ", points));
    EXPECT_NEAR(points, 36, 1e-9);
    EXPECT_FALSE(ParseSize("12", points));
    EXPECT_FALSE(ParseSize("1e300in", points));
}

std::string Broken(std::string_view text) {
    std::vector<BreakUnit> units;
    FindBreaks(text, units);
    std::string result;
    for (const BreakUnit& unit : units) {
        result +=
            std::string(text.substr(unit.begin, unit.visibleEnd - unit.begin)) + (unit.hardBreak ? "!" : "/");
    }
    return result;
}

TEST(LineBreaks, StandAfterSpacesAndHyphens) {
    EXPECT_EQ(Broken("a bc  de"), "a/bc/de/");
    EXPECT_EQ(Broken("well-known -5"), "well-/known/-5/");
}

TEST(LineBreaks, LineEndsOfAllKindsAreOne) {
    EXPECT_EQ(Broken("a\r\nb\nc\rd"), "a!b!c!d/");
}

TEST(LineBreaks, IdeographsBreakAnywhereButBeforeClosingMarks) {
    EXPECT_EQ(Broken("日本。語"), "日/本。/語/");
    EXPECT_EQ(Broken("きゃっとキャット"), "きゃっ/と/キャッ/ト/");
    EXPECT_EQ(Broken("ラーメン・佐々木"), "ラー/メ/ン・/佐々/木/");
}

TEST(LineBreaks, FrenchMarksStayWithTheWordBeforeTheirBlank) {
    EXPECT_EQ(Broken("Quoi ? Oui ! a : b ; c"), "Quoi ?/Oui !/a :/b ;/c/");
    EXPECT_EQ(Broken("a . b"), "a/./b/");
}

}  // namespace
}  // namespace rdl::layout
