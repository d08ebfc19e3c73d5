// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/format/decimal.h"

#include <charconv>
#include <cmath>
#include <cstring>

namespace rdl {
namespace {

void DropTrailingZeros(Decimal& decimal) {
    while (decimal.count > 0 && decimal.digits[decimal.count - 1] == '0') {
        --decimal.count;
    }
    if (decimal.count == 0) {
        decimal.scale = 0;
        decimal.negative = false;
    }
}

}  // namespace

void Decimal::Round(int places) {
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

Decimal ToDecimal(double number, int precision) {
    Decimal decimal;
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

Decimal ToDecimal(std::int64_t number) {
    Decimal decimal;
    if (number == 0) {
        return decimal;
    }
    decimal.negative = number < 0;
    const auto magnitude = number < 0 ? std::uint64_t{0} - static_cast<std::uint64_t>(number)
                                      : static_cast<std::uint64_t>(number);
    const auto written = std::to_chars(decimal.digits, decimal.digits + Decimal::Capacity, magnitude);
    decimal.count = static_cast<int>(written.ptr - decimal.digits);
    decimal.scale = decimal.count;
    DropTrailingZeros(decimal);
    return decimal;
}

}  // namespace rdl
