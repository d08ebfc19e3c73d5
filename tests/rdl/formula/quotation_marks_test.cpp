// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/formula/quotation_marks.h"

#include <gtest/gtest.h>

#include "rdl/formula/formula.h"

namespace rdl::formula {
namespace {

TEST(FormulaMarks, TextsStandBetweenDoubleMarks) {
    EXPECT_EQ(WithoutSingleMarks("{a} = 'North' and {b} > 1"), "{a} = \"North\" and {b} > 1");
    EXPECT_EQ(WithoutSingleMarks("{a} in ['x', \"y\"]"), "{a} in [\"x\", \"y\"]");
    EXPECT_EQ(WithoutSingleMarks("'say \"no\"'"), "\"say \"\"no\"\"\"");
    EXPECT_EQ(WithoutSingleMarks("{a} = \"say \"\"no\"\"\""), "{a} = \"say \"\"no\"\"\"");
}

TEST(FormulaMarks, AMarkWithinATextIsItsNumber) {
    EXPECT_EQ(WithoutSingleMarks("{a} = \"O'Brien\""), "{a} = (\"O\" & chr(39) & \"Brien\")");
    EXPECT_EQ(WithoutSingleMarks("{a} = 'O''Brien'"), "{a} = (\"O\" & chr(39) & \"Brien\")");
    EXPECT_EQ(WithoutSingleMarks("\"', Password = \"\"x\"\" --\""),
              "(\"\" & chr(39) & \", Password = \"\"x\"\" --\")");
}

TEST(FormulaMarks, ElsewhereAMarkIsADoubleOne) {
    EXPECT_EQ(WithoutSingleMarks("{a's} = 1 // Ann's\nand {b} = 'x'"),
              "{a\"s} = 1 // Ann\"s\nand {b} = \"x\"");
    EXPECT_EQ(WithoutSingleMarks("{a} = 'x"), "{a} = \"x\"");
    EXPECT_EQ(WithoutSingleMarks("#'"), "#\"");
}

TEST(FormulaMarks, TheFormulaMeansTheSame) {
    struct Nothing : Inputs {
        Value Field(int) override { return Value::Text("O'Brien"); }
        Value Parameter(int) override { return {}; }
        std::int64_t NowTicks() override { return 0; }
        const Culture& CurrentCulture() override { return FindCulture("en-US"); }
    } inputs;
    for (const char* text : {"{a} = \"O'Brien\"", "{a} in ['x', 'O''Brien']", "{a} like 'O''*'",
                             "{a} startswith \"O'\"", "length({a}) = length('O''Brien')"}) {
        EXPECT_TRUE(Formula(text).Selects(inputs)) << text;
        EXPECT_TRUE(Formula(WithoutSingleMarks(text)).Selects(inputs)) << WithoutSingleMarks(text);
    }
}

}  // namespace
}  // namespace rdl::formula
