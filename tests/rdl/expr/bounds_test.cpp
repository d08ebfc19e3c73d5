// SPDX-License-Identifier: GPL-3.0-or-later
// What a hostile expression asks for: whatever it is, the result is small or #Error, and it is there soon.
#include "rdl/expr/fixture.h"

namespace rdl::expr {
namespace {

std::string Why(const std::string& source) {
    const Value value = Result(source);
    return value.IsError() ? std::string(value.AsText()) : "a value";
}

TEST(ExpressionBounds, TextsOfAskedLengthEndAtFourMegabytes) {
    EXPECT_EQ(Show("=Len(Space(4194304))"), "4194304");
    for (const char* source :
         {"=Space(4194305)", "=Space(2000000000)", "=StrDup(2000000000, \"x\")", "=\"a\".PadLeft(2000000000)",
          "=\"a\".PadRight(4194305)", "=LSet(\"a\", 2000000000)", "=New String(\"a\", 2000000000)",
          "=String.Format(\"{0,2000000000}\", 1)"}) {
        EXPECT_EQ(Show(source), "#Error") << source;
    }
}

TEST(ExpressionBounds, TextsThatGrowEndAtFourMegabytes) {
    for (const char* source :
         {"=Space(4000000) & Space(4000000)", "=String.Concat(Space(4000000), Space(4000000))",
          "=Replace(Space(4000000), \" \", StrDup(1000, \"x\"))",
          "=Join(Split(Space(100000), \" \"), StrDup(1000, \"x\"))",
          "=Space(4000000).Insert(1, Space(4000000))", "=Space(4000000).Replace(\" \", \"xxxx\")"}) {
        EXPECT_EQ(Show(source), "#Error") << source;
    }
}

TEST(ExpressionBounds, OneExpressionMakesNoMoreThanAQuarterOfAGigabyte) {
    std::string source = "=Len(Space(4000000))";
    for (int i = 0; i < 80; ++i) {
        source += " + Len(Space(4000000))";
    }
    EXPECT_EQ(Why(source), "The expression makes too much text");
}

TEST(ExpressionBounds, FormatsOfAskedLengthAreNotFollowed) {
    EXPECT_LT(Show("=Format(1.5, \"N999999999\")").size(), 100U);
    EXPECT_LT(Show("=Format(12, \"D999999999\")").size(), 100U);
    EXPECT_LT(Show("=Format(1.5, \"E2147483648\")").size(), 100U);
    EXPECT_LT(Show("=FormatNumber(1.5, 2000000000)").size(), 100U);
}

TEST(ExpressionBounds, DatesOutsideTheCalendarAreErrors) {
    for (const char* source :
         {"=DateAdd(\"yyyy\", 2000000000, #2024-02-29#)", "=DateAdd(\"d\", -9000000, #2024-02-29#)",
          "=DateSerial(2147483647, 1, 1)", "=(#2024-02-29#).AddDays(1E300)", "=(#2024-02-29#).AddYears(8000)",
          "=(#9999-12-31#).AddDays(1)"}) {
        EXPECT_EQ(Show(source), "#Error") << source;
    }
}

}  // namespace
}  // namespace rdl::expr
