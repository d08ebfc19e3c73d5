// SPDX-License-Identifier: GPL-3.0-or-later
// A number as decimal digits, for rounding and formatting.
#pragma once

#include <cstdint>

#include "rdl/values/decimal.h"
#include "rdl/values/value.h"

namespace rdl {

// The value is 0.d1d2d3... times 10^scale, without leading and trailing zeros. Zero has no digits.
struct Digits {
    static constexpr int Capacity = 32;
    char digits[Capacity];
    int count = 0;
    int scale = 0;
    bool negative = false;

    bool IsZero() const { return count == 0; }
    // Returns the digit at `index`, '0' outside the stored digits.
    char At(int index) const { return index >= 0 && index < count ? digits[index] : '0'; }
    // Rounds to the first `places` digits, half away from zero. A result of zero loses its sign.
    void Round(int places);
};

// `number` is finite. `precision` is the number of significant digits, 15 or 17; with 15 a typed 1.005 stays
// 1.005.
Digits DigitsOf(double number, int precision = 15);
Digits DigitsOf(std::int64_t number);
Digits DigitsOf(const Decimal& number);  // all of them
// `value` is a number. The precision is that of a Real; other numbers give all their digits.
Digits DigitsOf(const Value& value, int precision = 15);

}  // namespace rdl
