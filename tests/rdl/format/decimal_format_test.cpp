// SPDX-License-Identifier: GPL-3.0-or-later
// Decimal numbers as texts and back, without passing through a double.
#include <gtest/gtest.h>

#include <string>

#include "rdl/format/format.h"

namespace rdl {
namespace {

std::string Formatted(std::string_view number, std::string_view format, const char* culture = "en-US") {
    return FormatValue(Value::Decimal(Decimal::OfText(number).value()), format, FindCulture(culture));
}
std::string Parsed(std::string_view text, const char* culture = "en-US") {
    Decimal number;
    return ParseNumber(text, FindCulture(culture), number) ? number.Text() : "none";
}

constexpr const char* Most = "79228162514264337593543950335";

TEST(DecimalFormat, DefaultTextKeepsTheScale) {
    EXPECT_EQ(Formatted("2.30", ""), "2.30");
    EXPECT_EQ(Formatted("2.30", "", "de-DE"), "2,30");
    EXPECT_EQ(Formatted("0.00", ""), "0.00");
    EXPECT_EQ(Formatted("-0.50", ""), "-0.50");
    EXPECT_EQ(Formatted("0.0000000000000000000000000001", ""), "0.0000000000000000000000000001");
    EXPECT_EQ(Formatted(Most, ""), Most);
}

TEST(DecimalFormat, StandardFormatsShowAllDigits) {
    EXPECT_EQ(Formatted("12345678901234567890.125", "N2"), "12,345,678,901,234,567,890.13");
    EXPECT_EQ(Formatted("-1234.5", "C"), "($1,234.50)");
    EXPECT_EQ(Formatted("1234.565", "F2"), "1234.57");
    EXPECT_EQ(Formatted("0.125", "P1"), "12.5 %");
    EXPECT_EQ(Formatted("1234.5", "E2"), "1.23E+003");
    EXPECT_EQ(Formatted(Most, "E28"), "7.9228162514264337593543950335E+028");
    EXPECT_EQ(Formatted("5.00", "D3"), "005");
    EXPECT_EQ(Formatted("255", "X"), "FF");
    EXPECT_EQ(Formatted("5.5", "D"), "5.5");
    EXPECT_EQ(Formatted("0.1234567890123456789", "F19"), "0.1234567890123456789");
    EXPECT_EQ(Formatted("1", "N40"), "1." + std::string(40, '0'));
}

TEST(DecimalFormat, GeneralFormatKeepsZerosUnlessItHasDigits) {
    EXPECT_EQ(Formatted("2.30", "G"), "2.30");
    EXPECT_EQ(Formatted("2.30", "R"), "2.30");
    EXPECT_EQ(Formatted("2.30", "G5"), "2.3");
    EXPECT_EQ(Formatted("1234.5678", "G3"), "1.23E+03");
    EXPECT_EQ(Formatted("12345678901234567.25", "G29"), "12345678901234567.25");
    EXPECT_EQ(Formatted("0.00000001", "G"), "0.00000001");
}

TEST(DecimalFormat, CustomFormatsShowAllDigits) {
    EXPECT_EQ(Formatted("12345678901234567890.125", "#,##0.00"), "12,345,678,901,234,567,890.13");
    EXPECT_EQ(Formatted("2.30", "0.00##"), "2.30");
    EXPECT_EQ(Formatted("-2.5", "0.0;(0.0)"), "(2.5)");
    EXPECT_EQ(Formatted("0.00", "0.0;-0.0;zero"), "zero");
    EXPECT_EQ(Formatted("0.1234567890123456789", "0.###################"), "0.1234567890123456789");
    EXPECT_EQ(Formatted("1234567", "0,.0", "de-DE"), "1234,6");
}

TEST(DecimalFormat, TextsAreReadByTheCulture) {
    EXPECT_EQ(Parsed("1,234.50"), "1234.50");
    EXPECT_EQ(Parsed("1.234,50", "de-DE"), "1234.50");
    EXPECT_EQ(Parsed("(1,234.50)"), "-1234.50");
    EXPECT_EQ(Parsed("$5.00-"), "-5.00");
    EXPECT_EQ(Parsed("-1.5e3"), "-1500");
    EXPECT_EQ(Parsed(Most), Most);
    EXPECT_EQ(Parsed("79228162514264337593543950336"), "none");
    EXPECT_EQ(Parsed("12x"), "none");
    EXPECT_EQ(Parsed(""), "none");
}

}  // namespace
}  // namespace rdl
