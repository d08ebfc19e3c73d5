// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/values/decimal.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "rdl/values/value.h"

namespace rdl {
namespace {

Decimal D(std::string_view text) {
    const auto number = Decimal::OfText(text);
    EXPECT_TRUE(number) << text;
    return number.value_or(Decimal());
}

std::string Shown(const std::optional<Decimal>& number) {
    return number ? number->Text() : "too large";
}

TEST(DecimalNumber, TextIsReadAndShownWithItsScale) {
    for (const char* text :
         {"0", "0.00", "1.10", "-0.5", "79228162514264337593543950335", "-79228162514264337593543950335",
          "7.9228162514264337593543950335", "0.0000000000000000000000000001", "100"}) {
        EXPECT_EQ(D(text).Text(), text);
    }
    EXPECT_EQ(D(".5").Text(), "0.5");
    EXPECT_EQ(D("007.").Text(), "7");
    EXPECT_EQ(D("1.5e3").Text(), "1500");
    EXPECT_EQ(D("1.5E-3").Text(), "0.0015");
    EXPECT_EQ(D("-0.00").Text(), "0.00");
    EXPECT_EQ(D("1e-400").Text(), "0.0000000000000000000000000000");
    for (const char* text : {"", "-", ".", "1.2.3", "1e", "1e+", " 1", "1,5", "+1", "nan",
                             "79228162514264337593543950336", "1e29", "1e99999999999"}) {
        EXPECT_FALSE(Decimal::OfText(text)) << text;
    }
}

TEST(DecimalNumber, DigitsThatHaveNoRoomAreRoundedHalfToEven) {
    EXPECT_EQ(D("0.33333333333333333333333333333333").Text(), "0.3333333333333333333333333333");
    EXPECT_EQ(D("0.00000000000000000000000000025").Text(), "0.0000000000000000000000000002");
    EXPECT_EQ(D("0.00000000000000000000000000035").Text(), "0.0000000000000000000000000004");
    EXPECT_EQ(D("0.000000000000000000000000000250000000000000000000000000001").Text(),
              "0.0000000000000000000000000003");
    EXPECT_EQ(D("79228162514264337593543950334.5").Text(), "79228162514264337593543950334");
    EXPECT_EQ(D("79228162514264337593543950333.5").Text(), "79228162514264337593543950334");
    EXPECT_FALSE(Decimal::OfText("79228162514264337593543950335.5"));
    EXPECT_EQ(D("9.99999999999999999999999999999999").Text(), "10.000000000000000000000000000");
}

TEST(DecimalNumber, SumsAreExactAndKeepTheLargerScale) {
    EXPECT_EQ(Shown(Add(D("0.1"), D("0.2"))), "0.3");
    EXPECT_EQ(Shown(Add(D("1.10"), D("1.20"))), "2.30");
    EXPECT_EQ(Shown(Add(D("1"), D("0.050"))), "1.050");
    EXPECT_EQ(Shown(Subtract(D("1.5"), D("1.5"))), "0.0");
    EXPECT_EQ(Shown(Subtract(D("1"), D("1.01"))), "-0.01");
    EXPECT_EQ(Shown(Add(D("79228162514264337593543950335"), D("0.4"))), "79228162514264337593543950335");
    EXPECT_EQ(Shown(Add(D("79228162514264337593543950335"), D("0.5"))), "too large");
    EXPECT_EQ(Shown(Add(D("79228162514264337593543950335"), D("1"))), "too large");
    EXPECT_EQ(Shown(Subtract(D("10000000000000000000000000000"), D("0.0000000000000000000000000001"))),
              "10000000000000000000000000000");
}

TEST(DecimalNumber, TenMillionCentsAreExact) {
    Decimal cents, dimes;
    for (int i = 0; i < 10'000'000; ++i) {
        cents = *Add(cents, Decimal(1, 2, false));
        dimes = *Add(dimes, Decimal(1, 1, false));
    }
    EXPECT_EQ(cents.Text(), "100000.00");
    EXPECT_EQ(dimes.Text(), "1000000.0");
}

TEST(DecimalNumber, ProductsAddTheirScales) {
    EXPECT_EQ(Shown(Multiply(D("1.10"), D("1.20"))), "1.3200");
    EXPECT_EQ(Shown(Multiply(D("-0.5"), D("0.0"))), "0.00");
    EXPECT_EQ(Shown(Multiply(D("0.00000000000000000001"), D("0.0000000005"))),
              "0.0000000000000000000000000000");
    EXPECT_EQ(Shown(Multiply(D("0.00000000000000000001"), D("0.0000000015"))),
              "0.0000000000000000000000000000");
    EXPECT_EQ(Shown(Multiply(D("79228162514264337593543950335"), D("0.1"))),
              "7922816251426433759354395033.5");
    EXPECT_EQ(Shown(Multiply(D("79228162514264337593543950335"), D("1.1"))), "too large");
    EXPECT_EQ(Shown(Multiply(D("1.23456789012345678901234567"), D("1.23456789012345678901234567"))),
              "1.5241578753238836750495351343");
}

TEST(DecimalNumber, QuotientsHaveAsManyDecimalsAsTheyNeed) {
    EXPECT_EQ(Shown(Divide(D("1"), D("3"))), "0.3333333333333333333333333333");
    EXPECT_EQ(Shown(Divide(D("2"), D("3"))), "0.6666666666666666666666666667");
    EXPECT_EQ(Shown(Divide(D("1.00"), D("2"))), "0.50");
    EXPECT_EQ(Shown(Divide(D("1"), D("8"))), "0.125");
    EXPECT_EQ(Shown(Divide(D("1"), D("0.50"))), "2");
    EXPECT_EQ(Shown(Divide(D("-7"), D("2"))), "-3.5");
    EXPECT_EQ(Shown(Divide(D("79228162514264337593543950335"), D("0.1"))), "too large");
}

TEST(DecimalNumber, RemainderHasTheSignOfTheDividend) {
    EXPECT_EQ(Remainder(D("7.5"), D("2")).Text(), "1.5");
    EXPECT_EQ(Remainder(D("-7.5"), D("2")).Text(), "-1.5");
    EXPECT_EQ(Remainder(D("1"), D("2.00")).Text(), "1");
    EXPECT_EQ(Remainder(D("79228162514264337593543950335"), D("0.0000000000000000000000000003")).Text(),
              "0.0000000000000000000000000000");
}

TEST(DecimalNumber, EachRoundingHasItsHalves) {
    EXPECT_EQ(D("2.345").Rounded(2, Rounding::HalfEven).Text(), "2.34");
    EXPECT_EQ(D("2.355").Rounded(2, Rounding::HalfEven).Text(), "2.36");
    EXPECT_EQ(D("2.345").Rounded(2, Rounding::HalfAwayFromZero).Text(), "2.35");
    EXPECT_EQ(D("-2.345").Rounded(2, Rounding::HalfAwayFromZero).Text(), "-2.35");
    EXPECT_EQ(D("-2.9").Rounded(0, Rounding::TowardsZero).Text(), "-2");
    EXPECT_EQ(D("-2.1").Rounded(0, Rounding::Down).Text(), "-3");
    EXPECT_EQ(D("2.1").Rounded(0, Rounding::Up).Text(), "3");
    EXPECT_EQ(D("-2.9").Rounded(0, Rounding::Up).Text(), "-2");
    EXPECT_EQ(D("-0.4").Rounded(0, Rounding::HalfEven).Text(), "0");
    EXPECT_EQ(D("1.5").Rounded(4, Rounding::HalfEven).Text(), "1.5");
}

TEST(DecimalNumber, DoubleGivesTheNumberThatWasMeant) {
    EXPECT_EQ(Shown(Decimal::OfDouble(0.1)), "0.1");
    EXPECT_EQ(Shown(Decimal::OfDouble(0.1 + 0.2)), "0.3");
    EXPECT_EQ(Shown(Decimal::OfDouble(-1234567.89)), "-1234567.89");
    EXPECT_EQ(Shown(Decimal::OfDouble(1e20)), "100000000000000000000");
    EXPECT_EQ(Shown(Decimal::OfDouble(1.0 / 3)), "0.333333333333333");
    EXPECT_EQ(Shown(Decimal::OfDouble(1e-10)), "0.0000000001");
    EXPECT_EQ(Shown(Decimal::OfDouble(-0.0)), "0");
    EXPECT_EQ(Shown(Decimal::OfDouble(8e28)), "too large");
    EXPECT_EQ(Shown(Decimal::OfDouble(std::nan(""))), "too large");
    EXPECT_EQ(Shown(Decimal::OfDouble(std::numeric_limits<double>::infinity())), "too large");
    EXPECT_EQ(D("0.1").ToDouble(), 0.1);
    EXPECT_EQ(D("0.3333333333333333333333333333").ToDouble(), 1.0 / 3);
    EXPECT_EQ(D("-79228162514264337593543950335").ToDouble(), -79228162514264337593543950335.0);
}

TEST(DecimalNumber, WholeNumbersOf64BitsAreIntegers) {
    EXPECT_EQ(D("9223372036854775807.00").ToInteger(), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(D("-9223372036854775808").ToInteger(), std::numeric_limits<std::int64_t>::min());
    EXPECT_FALSE(D("9223372036854775808").ToInteger());
    EXPECT_FALSE(D("0.5").ToInteger());
    EXPECT_EQ(Decimal::OfInteger(std::numeric_limits<std::int64_t>::min()).Text(), "-9223372036854775808");
}

TEST(DecimalNumber, OrderIgnoresTheScale) {
    EXPECT_EQ(Compare(D("1"), D("1.00")), 0);
    EXPECT_LT(Compare(D("-1.5"), D("-1.49")), 0);
    EXPECT_GT(Compare(D("79228162514264337593543950335"), D("7.9228162514264337593543950335")), 0);
    EXPECT_EQ(Compare(D("0.00"), D("0")), 0);
    EXPECT_LT(Compare(D("-1"), D("0.0")), 0);
}

TEST(DecimalNumber, DoubleIsComparedByItsShortestText) {
    EXPECT_EQ(Compare(D("0.1"), 0.1), 0);
    EXPECT_LT(Compare(D("0.3"), 0.1 + 0.2), 0);
    EXPECT_GT(Compare(D("0.1000000000000000000000000001"), 0.1), 0);
    EXPECT_LT(Compare(D("-0.1000000000000000000000000001"), -0.1), 0);
    EXPECT_EQ(Compare(D("1152921504606846976"), 1152921504606846976.0), 0);
    EXPECT_GT(Compare(D("1152921504606847000"), 1152921504606846976.0), 0);
    EXPECT_LT(Compare(D("79228162514264337593543950335"), 1e300), 0);
    EXPECT_LT(Compare(D("0"), 1e-300), 0);
    EXPECT_GT(Compare(D("0"), -1e-300), 0);
    EXPECT_GT(Compare(D("-79228162514264337593543950335"), std::nan("")), 0);
}

TEST(DecimalNumber, ValueHoldsAllOfIt) {
    static_assert(sizeof(Value) == 16);
    for (const char* text :
         {"-7.9228162514264337593543950335", "0.00", "79228162514264337593543950335", "-1"}) {
        const Value value = Value::Decimal(D(text));
        const Value copy = value;
        Value moved;
        moved = Value(copy);
        EXPECT_EQ(moved.AsDecimal().Text(), text);
        EXPECT_TRUE(moved.IsNumber());
    }
    EXPECT_EQ(Value::Decimal(D("2.50")).AsDouble(), 2.5);
    EXPECT_EQ(Value::Integer(-5).AsDecimal().Text(), "-5");
}

}  // namespace
}  // namespace rdl
