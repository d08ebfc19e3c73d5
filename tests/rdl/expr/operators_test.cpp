// SPDX-License-Identifier: GPL-3.0-or-later
#include <cmath>

#include "rdl/expr/fixture.h"

namespace rdl::expr {
namespace {

TEST(ExpressionOperators, PrecedenceIsThatOfTheLanguage) {
    EXPECT_EQ(Show("=1 + 2 * 3"), "7");
    EXPECT_EQ(Show("=-2 ^ 2"), "-4");
    EXPECT_EQ(Show("=2 ^ -1"), "0.5");
    EXPECT_EQ(Show("=2 ^ 3 ^ 2"), "64");
    EXPECT_EQ(Show("=7 Mod 4 * 2"), "7");
    EXPECT_EQ(Show("=20 \\ 3 * 2"), "3");
    EXPECT_EQ(Show("=1 & 2 + 3"), "15");
    EXPECT_EQ(Show("=\"a\" & \"b\" = \"ab\""), "True");
    EXPECT_EQ(Show("=Not 1 = 2 And True"), "True");
    EXPECT_EQ(Show("=True Or False And False"), "True");
    EXPECT_EQ(Show("=True Xor True Or True"), "False");
    EXPECT_EQ(Show("=1 << 2 + 1"), "8");
    EXPECT_EQ(Show("=(1 + 2) * 3"), "9");
    EXPECT_EQ(Show("=10 - 4 - 3"), "3");
}

TEST(ExpressionOperators, DivisionKnowsItsKinds) {
    EXPECT_EQ(Show("=7 / 2"), "3.5");
    EXPECT_EQ(Result("=6 / 2").kind(), Kind::Real);
    EXPECT_EQ(Show("=-7 \\ 2"), "-3");
    EXPECT_EQ(Show("=7.5 \\ 2"), "4");
    EXPECT_EQ(Show("=-7 Mod 3"), "-1");
    EXPECT_EQ(Show("=7.5 Mod 2"), "1.5");
    EXPECT_TRUE(std::isinf(Result("=1 / 0").AsReal()));
    EXPECT_TRUE(std::isnan(Result("=0 / 0").AsReal()));
    EXPECT_EQ(Show("=1 \\ 0"), "#Error");
    EXPECT_EQ(Show("=1 Mod 0"), "#Error");
    EXPECT_EQ(Show("=(-9223372036854775807 - 1) \\ -1"), "#Error");
    EXPECT_EQ(Show("=(-9223372036854775807 - 1) Mod -1"), "0");
}

TEST(ExpressionOperators, WholeNumbersDoNotWrapAround) {
    EXPECT_EQ(Show("=9223372036854775807 + 1"), "#Error");
    EXPECT_EQ(Show("=9223372036854775807 * 2"), "#Error");
    EXPECT_EQ(Show("=-9223372036854775807 - 2"), "#Error");
    EXPECT_EQ(Show("=2147483647 + 1"), "2147483648");
}

TEST(ExpressionOperators, TextAndNumbersMeet) {
    EXPECT_EQ(Show("=\"5\" + 3"), "8");
    EXPECT_EQ(Show("=\"5\" + \"3\""), "53");
    EXPECT_EQ(Show("=\"5\" * \"3\""), "15");
    EXPECT_EQ(Show("=\"Total \" + 3"), "Total 3");
    EXPECT_EQ(Show("=\"abc\" * 2"), "#Error");
    EXPECT_EQ(Show("=1 & Nothing & True"), "1True");
    EXPECT_EQ(Show("=\"5\" = 5"), "True");
    EXPECT_EQ(Show("=\"abc\" = 5"), "#Error");
    EXPECT_EQ(Show("=\"1.234,5\" + 1", "de-DE"), "1235,5");
}

TEST(ExpressionOperators, NothingIsTheEmptyValueOfTheOtherSide) {
    EXPECT_EQ(Show("=Nothing = 0"), "True");
    EXPECT_EQ(Show("=Nothing = \"\""), "True");
    EXPECT_EQ(Show("=Nothing = False"), "True");
    EXPECT_EQ(Show("=Nothing = Nothing"), "True");
    EXPECT_EQ(Show("=Nothing < 1"), "True");
    EXPECT_EQ(Show("=Nothing + 5"), "5");
    EXPECT_EQ(Show("=Nothing Is Nothing"), "True");
    EXPECT_EQ(Show("=0 Is Nothing"), "False");
    EXPECT_EQ(Show("=Fields!Name.Value IsNot Nothing"), "True");
}

TEST(ExpressionOperators, TextComparesByCase) {
    EXPECT_EQ(Show("=\"a\" = \"A\""), "False");
    EXPECT_EQ(Show("=\"a\" > \"B\""), "True");
    EXPECT_EQ(Show("=\"abc\" <> \"abd\""), "True");
}

TEST(ExpressionOperators, LogicIsBitByBitForNumbers) {
    EXPECT_EQ(Show("=6 And 3"), "2");
    EXPECT_EQ(Show("=6 Or 3"), "7");
    EXPECT_EQ(Show("=6 Xor 3"), "5");
    EXPECT_EQ(Show("=Not 5"), "-6");
    EXPECT_EQ(Show("=Not True"), "False");
    EXPECT_EQ(Show("=True = -1"), "True");
    EXPECT_EQ(Show("=True + 1"), "0");
}

TEST(ExpressionOperators, AndAlsoStopsAtFalse) {
    EXPECT_EQ(Show("=False AndAlso 1 \\ 0 = 1"), "False");
    EXPECT_EQ(Show("=True OrElse 1 \\ 0 = 1"), "True");
    EXPECT_EQ(Show("=False And 1 \\ 0 = 1"), "#Error");
}

TEST(ExpressionOperators, DatesGiveTimeSpans) {
    EXPECT_EQ(Show("=(#3/1/2024# - #2/28/2024#).TotalDays"), "2");
    EXPECT_EQ(Show("=(Fields!Day.Value + TimeSpan.FromDays(1)).Day"), "1");
    EXPECT_EQ(Show("=(#1/1/2024# - TimeSpan.FromHours(1)).Year"), "2023");
    EXPECT_EQ(Show("=#1/2/2024# > #1/1/2024#"), "True");
    EXPECT_EQ(Show("=#1/2/2024# = \"2024-01-02\""), "True");
    EXPECT_EQ(Show("=#12/31/9999# + TimeSpan.FromDays(2)"), "#Error");
    EXPECT_EQ(Show("=#1/2/2024# * 2"), "#Error");
}

TEST(ExpressionOperators, LikeKnowsItsPattern) {
    EXPECT_EQ(Show("=\"F\" Like \"F\""), "True");
    EXPECT_EQ(Show("=\"F\" Like \"f\""), "False");
    EXPECT_EQ(Show("=\"F\" Like \"[A-Z]\""), "True");
    EXPECT_EQ(Show("=\"F\" Like \"[!A-Z]\""), "False");
    EXPECT_EQ(Show("=\"a2a\" Like \"a#a\""), "True");
    EXPECT_EQ(Show("=\"aM5b\" Like \"a[L-P]#[!c-e]\""), "True");
    EXPECT_EQ(Show("=\"BAT123khg\" Like \"B?T*\""), "True");
    EXPECT_EQ(Show("=\"CAT123khg\" Like \"B?T*\""), "False");
    EXPECT_EQ(Show("=\"a*c\" Like \"a[*]c\""), "True");
    EXPECT_EQ(Show("=\"\" Like \"*\""), "True");
    EXPECT_EQ(Show("=\"a\" Like \"[\""), "#Error");
    EXPECT_EQ(Show("=\"xaybzb\" Like \"*a*b\""), "True");
}

TEST(ExpressionOperators, ErrorsGoThrough) {
    EXPECT_EQ(Show("=1 + 1 \\ 0"), "#Error");
    EXPECT_EQ(Show("=\"a\" & 1 \\ 0"), "#Error");
    EXPECT_EQ(Show("=Len(CStr(CInt(\"x\")))"), "#Error");
}

}  // namespace
}  // namespace rdl::expr
