// A number as decimal digits, which is what format strings round and lay out.
#pragma once

#include <cstdint>

namespace rdl {

// The value is 0.d1d2d3... times 10^scale; no digits: zero. No leading and no trailing zeros.
struct Decimal {
    static constexpr int Capacity = 24;
    char digits[Capacity];
    int count = 0;
    int scale = 0;
    bool negative = false;

    bool IsZero() const { return count == 0; }
    // The digit at a place, '0' behind the last.
    char At(int index) const { return index >= 0 && index < count ? digits[index] : '0'; }
    // Keeps the first `places` digits, half away from zero. What comes to zero loses its sign.
    void Round(int places);
};

// `precision` significant digits, 15 or 17: 15 make what was typed as 1.005 be 1.005 again. The number is
// finite.
Decimal ToDecimal(double number, int precision = 15);
Decimal ToDecimal(std::int64_t number);

}  // namespace rdl
