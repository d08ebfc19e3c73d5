// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <string>

#include "rdl/format/format.h"

namespace rdl {
namespace {

struct Case {
    double number;
    const char* format;
    const char* text;
};

std::string Text(double number, const std::string& format, const char* culture = "en-US") {
    return FormatValue(Value::Real(number), format, FindCulture(culture));
}

class CustomNumber : public testing::TestWithParam<Case> {};

TEST_P(CustomNumber, FollowsThePublishedRules) {
    const Case& c = GetParam();
    EXPECT_EQ(Text(c.number, c.format), c.text) << c.number << " by " << c.format;
}

INSTANTIATE_TEST_SUITE_P(Places, CustomNumber,
                         testing::Values(Case{1234.5678, "00000", "01235"}, Case{0.45678, "0.00", "0.46"},
                                         Case{1234.5678, "#####", "1235"}, Case{0.45678, "#.##", ".46"},
                                         Case{0, "#", ""}, Case{0, "$#,###", "$"}, Case{0, "#.##", ""},
                                         Case{123, "#-#-#", "1-2-3"},
                                         Case{1234567890, "(###) ###-####", "(123) 456-7890"},
                                         Case{42, "My Nu\\mber i\\s #", "My Number is 42"},
                                         Case{1.2, "0.00", "1.20"}, Case{1.2, "0.##", "1.2"},
                                         Case{1, "0.##", "1"}, Case{0.05, "#.#0", ".05"}, Case{1.5, "0", "2"},
                                         Case{0.5, "0#", "01"}, Case{12, "0#.#0#", "12.00"},
                                         Case{-5, "00", "-05"}, Case{5, "0.0.0", "5.00"}));

INSTANTIATE_TEST_SUITE_P(Grouping, CustomNumber,
                         testing::Values(Case{1234567890, "#,#", "1,234,567,890"},
                                         Case{1234567890, "#,##0,,", "1,235"}, Case{1234567890, "#,,,", "1"},
                                         Case{1234567890, "#,##0,,.0#", "1,234.57"},
                                         Case{123, "#,##0", "123"}, Case{5, "00,000", "00,005"},
                                         Case{1234.5, "#,##0.00", "1,234.50"},
                                         Case{1e15, "#,##0", "1,000,000,000,000,000"}));

INSTANTIATE_TEST_SUITE_P(
    Scaling, CustomNumber,
    testing::Values(Case{0.086, "#0.##%", "8.6%"}, Case{0.3697, "%#0.00", "%36.97"},
                    Case{0.00354, "#0.00\u2030", "3.54\u2030"}, Case{86000, "0.###E+0", "8.6E+4"},
                    Case{86000, "0.###E+000", "8.6E+004"}, Case{86000, "0.###E-000", "8.6E004"},
                    Case{0.00086, "0.0e-0", "8.6e-4"}, Case{1503.92311, "0.0##e+00", "1.504e+03"},
                    Case{0, "0.0E+00", "0.0E+00"}, Case{12345, "##0.0E+0", "123.5E+2"}));

INSTANTIATE_TEST_SUITE_P(
    Sections, CustomNumber,
    testing::Values(Case{1234, "#,##0.00;(#,##0.00)", "1,234.00"},
                    Case{-1234, "#,##0.00;(#,##0.00)", "(1,234.00)"}, Case{0, "#,##0.00;(#,##0.00);-", "-"},
                    Case{0, "#,##0.00;(#,##0.00)", "0.00"}, Case{-0.001, "0.00;(0.00);nil", "nil"},
                    Case{0.001, "0.00;(0.00);nil", "nil"}, Case{-5, "0;;nil", "-5"}, Case{-5, "0", "-5"},
                    Case{5, "0 ';' 0;x", "0 ; 5"}, Case{3.7, "'$'#,0.00;('$'#,0.00)", "$3.70"},
                    Case{-3.7, "'$'#,0.00;('$'#,0.00)", "($3.70)"}, Case{12, "\"a#b\"0", "a#b12"},
                    Case{12, "0'open", "12open"}, Case{12, "0\\", "12"}, Case{7, "yes;no;none", "yes"}));

TEST(CustomNumberFormat, TakesSeparatorsFromTheCulture) {
    EXPECT_EQ(Text(1234.5, "#,##0.00", "de-DE"), "1.234,50");
    EXPECT_EQ(Text(-1234.5, "#,##0.00", "sv-SE"),
              "-1\u00A0"
              "234,50");
}

TEST(CustomNumberFormat, ANegativeNumberThatIsRoundedToZeroHasNoSign) {
    EXPECT_EQ(Text(-0.4, "0"), "0");
    EXPECT_EQ(Text(-0.004, "#,##0.00"), "0.00");
    EXPECT_EQ(Text(-0.004, "0.00%"), "-0.40%");
    EXPECT_EQ(Text(-0.00004, "0.00%"), "0.00%");
    EXPECT_EQ(Text(-0.4, "#"), "");
    EXPECT_EQ(Text(-0.5, "0"), "-1");
}

TEST(CustomNumberFormat, WholeNumbersAsWell) {
    EXPECT_EQ(FormatValue(Value::Integer(1234567), "#,##0", FindCulture("en-US")), "1,234,567");
    EXPECT_EQ(FormatValue(Value::Integer(-9'007'199'254'740'993), "0", FindCulture("")), "-9007199254740993");
}

TEST(CustomNumberFormat, EveryCutOffFormatIsHarmless) {
    const std::string format = "\"a\"#,##0.0'x'0E+00\u2030%;\\(0,,\\);'z";
    for (std::size_t length = 1; length <= format.size(); ++length) {
        for (const double number : {0.0, -1.5, 1e300, 1e-300}) {
            Text(number, format.substr(0, length));
            Text(number, format.substr(format.size() - length));
        }
    }
    EXPECT_EQ(Text(1, std::string(1000, ';')), "");
    EXPECT_EQ(Text(1, std::string(1000, '0')).size(), 1000u);
}

}  // namespace
}  // namespace rdl
