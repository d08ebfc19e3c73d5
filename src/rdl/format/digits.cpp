// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/format/digits.h"

#include <charconv>
#include <cmath>
#include <cstring>

namespace rdl {
namespace {

void DropTrailingZeros(Digits& decimal) {
    while (decimal.count > 0 && decimal.digits[decimal.count - 1] == '0') {
        --decimal.count;
    }
    if (decimal.count == 0) {
        decimal.scale = 0;
        decimal.negative = false;
    }
}

}  // namespace

void Digits::Round(int places) {
    if (places >= count) {
        return;
    }
    if (places < 0) {
        count = 0;
    } else if (digits[places] < '5') {
        count = places;
    } else {
        count = places;
        while (count > 0 && digits[count - 1] == '9') {
            --count;
        }
        if (count > 0) {
            ++digits[count - 1];
        } else {
            digits[0] = '1';
            count = 1;
            ++scale;
        }
    }
    DropTrailingZeros(*this);
}

Digits DigitsOf(double number, int precision) {
    Digits decimal;
    if (number == 0) {
        return decimal;
    }
    decimal.negative = std::signbit(number);
    char buffer[40];
    const auto written = std::to_chars(buffer, buffer + sizeof buffer, std::fabs(number),
                                       std::chars_format::scientific, precision - 1);
    // d.ddddde+xx
    decimal.digits[0] = buffer[0];
    std::memcpy(decimal.digits + 1, buffer + 2, static_cast<std::size_t>(precision - 1));
    decimal.count = precision;
    const char* exponent = buffer + precision + 2;
    int power = 0;
    std::from_chars(*exponent == '+' ? exponent + 1 : exponent, written.ptr, power);
    decimal.scale = power + 1;
    DropTrailingZeros(decimal);
    return decimal;
}

Digits DigitsOf(std::int64_t number) {
    Digits decimal;
    if (number == 0) {
        return decimal;
    }
    decimal.negative = number < 0;
    const auto magnitude = number < 0 ? std::uint64_t{0} - static_cast<std::uint64_t>(number)
                                      : static_cast<std::uint64_t>(number);
    const auto written = std::to_chars(decimal.digits, decimal.digits + Digits::Capacity, magnitude);
    decimal.count = static_cast<int>(written.ptr - decimal.digits);
    decimal.scale = decimal.count;
    DropTrailingZeros(decimal);
    return decimal;
}

Digits DigitsOf(const Decimal& number) {
    Digits digits;
    digits.negative = number.IsNegative();
    for (const char c : number.Magnitude().Text()) {
        if (c == '.') {
            continue;
        }
        if (digits.count > 0 || c != '0') {
            digits.digits[digits.count++] = c;
        }
    }
    digits.scale = digits.count - number.Scale();
    DropTrailingZeros(digits);
    return digits;
}

Digits DigitsOf(const Value& value, int precision) {
    switch (value.kind()) {
        case Kind::Integer:
            return DigitsOf(value.AsInteger());
        case Kind::Decimal:
            return DigitsOf(value.AsDecimal());
        default:
            return DigitsOf(value.AsReal(), precision);
    }
}

}  // namespace rdl
