// SPDX-License-Identifier: GPL-3.0-or-later
// A decimal number, exact for sums of money: a whole number of 96 bits, divided by 10 to the power of its
// scale. The scale is part of the number and is shown: 1.10 + 1.20 is 2.30.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace rdl {

__extension__ using UInt128 = unsigned __int128;

enum class Rounding : std::uint8_t { HalfEven, HalfAwayFromZero, TowardsZero, Down, Up };

class Decimal {
 public:
    static constexpr int MostScale = 28;
    static constexpr UInt128 MostCoefficient = (UInt128{1} << 96) - 1;

    constexpr Decimal() = default;
    // `coefficient` is at most MostCoefficient, `scale` 0 to MostScale. There is no negative zero.
    constexpr Decimal(UInt128 coefficient, int scale, bool isNegative)
        : m_coefficient(coefficient), m_scale(scale), m_isNegative(isNegative && coefficient != 0) {}
    static constexpr Decimal OfInteger(std::int64_t number) {
        const auto bits = static_cast<std::uint64_t>(number);
        return {number < 0 ? 0 - bits : bits, 0, number < 0};
    }
    // Returns the first 15 digits of `number`, so that 0.1 is 0.1. Returns nullopt if it is too large or not
    // finite.
    static std::optional<Decimal> OfDouble(double number);
    // Reads [-]digits[.digits][e[+-]digits]. Digits after the 28th or 29th are rounded half to even. Returns
    // nullopt for any other text and for a number that is too large.
    static std::optional<Decimal> OfText(std::string_view text);

    constexpr UInt128 Coefficient() const { return m_coefficient; }
    constexpr int Scale() const { return m_scale; }
    constexpr bool IsNegative() const { return m_isNegative; }
    constexpr bool IsZero() const { return m_coefficient == 0; }
    constexpr Decimal operator-() const { return {m_coefficient, m_scale, !m_isNegative}; }
    constexpr Decimal Magnitude() const { return {m_coefficient, m_scale, false}; }

    // Returns the nearest double.
    double ToDouble() const;
    // Returns nullopt if the number has a fraction or does not fit into 64 bits.
    std::optional<std::int64_t> ToInteger() const;
    // Returns at most `digits` decimals; a smaller scale is kept.
    Decimal Rounded(int digits, Rounding rounding) const;
    // Returns the digits with a point, and with a minus if the number is negative.
    std::string Text() const;

 private:
    UInt128 m_coefficient = 0;
    int m_scale = 0;
    bool m_isNegative = false;
};

// The result of each has the exact digits where they fit into 96 bits and a scale of 28; else its last digit
// is rounded half to even. Returns nullopt if it is too large.
std::optional<Decimal> Add(const Decimal& left, const Decimal& right);
std::optional<Decimal> Subtract(const Decimal& left, const Decimal& right);
std::optional<Decimal> Multiply(const Decimal& left, const Decimal& right);
// `right` is not zero. A quotient that needs more decimals than its operands has no zeros at its end.
std::optional<Decimal> Divide(const Decimal& left, const Decimal& right);
// Returns what remains of the division, with the sign of `left`. `right` is not zero.
Decimal Remainder(const Decimal& left, const Decimal& right);

// Each returns a number less than, equal to or greater than 0. The scale does not matter.
int Compare(const Decimal& left, const Decimal& right);
// Compares with the shortest decimal number that stands for the double, so that 0.1 equals 0.1. This is a
// total order of decimal numbers, integers and doubles. NaN is less than every number.
int Compare(const Decimal& left, double right);

}  // namespace rdl
