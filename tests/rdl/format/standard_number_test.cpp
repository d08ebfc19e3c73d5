// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "rdl/format/format.h"

namespace rdl {
namespace {

struct Case {
    double number;
    const char* format;
    const char* culture;
    const char* text;
};

std::string Real(double number, const char* format, const char* culture = "en-US") {
    return FormatValue(Value::Real(number), format, FindCulture(culture));
}
std::string Whole(std::int64_t number, const char* format, const char* culture = "en-US") {
    return FormatValue(Value::Integer(number), format, FindCulture(culture));
}

class StandardNumber : public testing::TestWithParam<Case> {};

TEST_P(StandardNumber, FollowsThePublishedRules) {
    const Case& c = GetParam();
    EXPECT_EQ(Real(c.number, c.format, c.culture), c.text) << c.format << " " << c.culture;
}

INSTANTIATE_TEST_SUITE_P(
    Letters, StandardNumber,
    testing::Values(Case{123.456, "C", "en-US", "$123.46"}, Case{123.456, "c", "fr-FR", "123,46 €"},
                    Case{123.456, "C", "ja-JP", "¥123"}, Case{-123.456, "C3", "en-US", "($123.456)"},
                    Case{-123.456, "C3", "fr-FR", "-123,456 €"}, Case{-123.456, "C3", "ja-JP", "-¥123.456"},
                    Case{1234.5, "C", "de-DE", "1.234,50 €"}, Case{-1234.5, "C", "en-GB", "-£1,234.50"},
                    Case{1234.5, "C", "nl-NL", "€ 1.234,50"}, Case{-1234.5, "C", "nl-NL", "€ -1.234,50"},
                    Case{1234.5, "C0", "en-US", "$1,235"}, Case{1234.5, "C", "de-CH", "CHF 1’234.50"},
                    Case{1052.0329112756, "E", "en-US", "1.052033E+003"},
                    Case{-1052.0329112756, "e2", "en-US", "-1.05e+003"},
                    Case{-1052.0329112756, "e2", "fr-FR", "-1,05e+003"}, Case{0, "E2", "en-US", "0.00E+000"},
                    Case{0.00012, "E1", "en-US", "1.2E-004"}, Case{9.96, "E1", "en-US", "1.0E+001"},
                    Case{1234.567, "F", "en-US", "1234.57"}, Case{1234, "F1", "en-US", "1234.0"},
                    Case{-1234.56, "F4", "de-DE", "-1234,5600"}, Case{0.5, "F0", "en-US", "1"},
                    Case{-123.456, "G", "en-US", "-123.456"}, Case{-123.456, "G", "sv-SE", "-123,456"},
                    Case{123.4546, "G4", "en-US", "123.5"},
                    Case{-1234567890e-25, "G", "en-US", "-1.23456789E-16"},
                    Case{12345, "G2", "en-US", "1.2E+04"}, Case{12345, "g2", "en-US", "1.2e+04"},
                    Case{1234.567, "N", "en-US", "1,234.57"}, Case{1234, "N1", "en-US", "1,234.0"},
                    Case{-1234.56, "N3", "en-US", "-1,234.560"}, Case{999999.5, "N0", "en-US", "1,000,000"},
                    Case{0.004, "N2", "en-US", "0.00"}, Case{12, "N", "en-US", "12.00"},
                    Case{1, "P", "en-US", "100.00 %"}, Case{-0.39678, "P1", "en-US", "-39.7 %"},
                    Case{0.5, "P0", "en-GB", "50%"}, Case{0.5, "P0", "tr-TR", "%50"},
                    Case{123456789.12345678, "R", "en-US", "123456789.12345678"},
                    Case{0.1, "R", "en-US", "0.1"}, Case{42, "D5", "en-US", "00042"},
                    Case{255, "X4", "en-US", "00FF"}));

INSTANTIATE_TEST_SUITE_P(
    NegativeMoney, StandardNumber,
    testing::Values(Case{-16325.62, "C", "", "(¤16,325.62)"}, Case{-16325.62, "C", "de-CH", "CHF-16’325.62"},
                    Case{-16325.62, "C", "pt-BR", "-R$ 16.325,62"},
                    Case{-16325.62, "C", "es-ES", "-16.325,62 €"},
                    Case{-16325.62, "C", "it-IT", "-16.325,62 €"},
                    Case{-16325.62, "C", "da-DK", "-16.325,62 kr."},
                    Case{-16325.62, "C", "zh-CN", "¥-16,325.62"}, Case{-16325.62, "C", "ko-KR", "-₩16,326"},
                    Case{-16325.62, "C", "en-CA", "-$16,325.62"},
                    Case{-16325.62, "C", "pl-PL",
                         "-16\u00A0"
                         "325,62 zł"},
                    Case{-16325.62, "C", "sv-SE",
                         "-16\u00A0"
                         "325,62 kr"},
                    Case{-0.1234, "P1", "de-DE", "-12,3 %"}, Case{0.1234, "P", "fr-FR", "12,34 %"}));

TEST(NumberFormat, GroupsByCulture) {
    EXPECT_EQ(Real(1234567.891, "N2", "de-DE"), "1.234.567,89");
    EXPECT_EQ(Real(1234567.891, "N2", "fr-FR"),
              "1\u00A0"
              "234\u00A0"
              "567,89");
    EXPECT_EQ(Real(1234567.891, "N2", "ru-RU"),
              "1\u00A0"
              "234\u00A0"
              "567,89");
    EXPECT_EQ(Real(1234567.891, "N2", ""), "1,234,567.89");
}

TEST(NumberFormat, RoundsHalfAwayFromZeroOnTheDecimalDigits) {
    EXPECT_EQ(Real(2.5, "N0"), "3");
    EXPECT_EQ(Real(-2.5, "N0"), "-3");
    EXPECT_EQ(Real(1.005, "F2"), "1.01");  // although the nearest double lies below
    EXPECT_EQ(Real(0.1 + 0.2, "G"), "0.3");
    EXPECT_EQ(Real(9.995, "F2"), "10.00");
}

TEST(NumberFormat, ZeroHasNoSign) {
    EXPECT_EQ(Real(-0.001, "N2"), "0.00");
    EXPECT_EQ(Real(-0.001, "C"), "$0.00");
    EXPECT_EQ(Real(-0.0, ""), "0");
}

TEST(NumberFormat, WholeNumbersKeepAllTheirDigits) {
    EXPECT_EQ(Whole(9'007'199'254'740'993, "N0"), "9,007,199,254,740,993");
    EXPECT_EQ(Whole(std::numeric_limits<std::int64_t>::min(), "D"), "-9223372036854775808");
    EXPECT_EQ(Whole(std::numeric_limits<std::int64_t>::max(), "G"), "9223372036854775807");
    EXPECT_EQ(Whole(-1234, "D6"), "-001234");
    EXPECT_EQ(Whole(0, "D3"), "000");
}

TEST(NumberFormat, HexadecimalOfNegativesIsThatOf32Bits) {
    EXPECT_EQ(Whole(-1, "X"), "FFFFFFFF");
    EXPECT_EQ(Whole(255, "x"), "ff");
    EXPECT_EQ(Whole(-5'000'000'000, "X"), "FFFFFFFED5FA0E00");
}

TEST(NumberFormat, LettersThatDoNotFitGiveTheUnformattedText) {
    EXPECT_EQ(Real(1.5, "D"), "1.5");
    EXPECT_EQ(Real(1.5, "X"), "1.5");
    EXPECT_EQ(Real(1.5, "Q"), "1.5");
}

TEST(NumberFormat, WhatIsNotFiniteIsSaidInWords) {
    EXPECT_EQ(Real(std::numeric_limits<double>::quiet_NaN(), "N2"), "NaN");
    EXPECT_EQ(Real(-std::numeric_limits<double>::infinity(), "#,##0"), "-Infinity");
}

TEST(NumberFormat, ExtremesStayWithinBounds) {
    EXPECT_EQ(Real(1e308, "F0").size(), 309u);
    EXPECT_EQ(Real(5e-324, "F99").substr(0, 6), "0.0000");
    EXPECT_EQ(Real(1, "N99").size(), 101u);
}

}  // namespace
}  // namespace rdl
