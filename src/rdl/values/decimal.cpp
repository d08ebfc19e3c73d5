// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/values/decimal.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstddef>

#include "rdl/values/ascii.h"

namespace rdl {
namespace {

constexpr int MostDigits = 38;  // of any number that 128 bits hold
constexpr int FarExponent = 10'000;

constexpr auto PowersOfTen = [] {
    std::array<UInt128, MostDigits + 1> powers{};
    powers[0] = 1;
    for (std::size_t i = 1; i < powers.size(); ++i) {
        powers[i] = powers[i - 1] * 10;
    }
    return powers;
}();

constexpr UInt128 PowerOfTen(int exponent) {
    return PowersOfTen[static_cast<std::size_t>(exponent)];
}

constexpr double RealPowers[] = {
    1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
    1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};  // all exact
constexpr double TwoTo53 = 9007199254740992.0, TwoTo96 = 79228162514264337593543950336.0;

// 256 bits, the lowest first: the exact result of an operation before it is rounded.
struct Wide {
    std::uint64_t part[4] = {};

    static Wide Of(UInt128 number) {
        return {{static_cast<std::uint64_t>(number), static_cast<std::uint64_t>(number >> 64), 0, 0}};
    }
    UInt128 Low() const { return (UInt128{part[1]} << 64) | part[0]; }
    bool Fits() const { return part[3] == 0 && part[2] == 0 && Low() <= Decimal::MostCoefficient; }
    int Bits() const {
        for (int i = 3; i >= 0; --i) {
            if (part[i] != 0) {
                return i * 64 + 64 - std::countl_zero(part[i]);
            }
        }
        return 0;
    }
    // Returns the remainder.
    std::uint64_t DivideBy(std::uint64_t divisor) {
        std::uint64_t rest = 0;
        for (int i = 3; i >= 0; --i) {
            const UInt128 dividend = (UInt128{rest} << 64) | part[i];
            part[i] = static_cast<std::uint64_t>(dividend / divisor);
            rest = static_cast<std::uint64_t>(dividend % divisor);
        }
        return rest;
    }
    void Increment() {
        for (std::uint64_t& each : part) {
            if (++each != 0) {
                return;
            }
        }
    }
};

Wide Product(UInt128 left, UInt128 right) {
    const std::uint64_t l[] = {static_cast<std::uint64_t>(left), static_cast<std::uint64_t>(left >> 64)};
    const std::uint64_t r[] = {static_cast<std::uint64_t>(right), static_cast<std::uint64_t>(right >> 64)};
    Wide product;
    for (int i = 0; i < 2; ++i) {
        UInt128 carry = 0;
        for (int j = 0; j < 2; ++j) {
            carry += UInt128{l[i]} * r[j] + product.part[i + j];
            product.part[i + j] = static_cast<std::uint64_t>(carry);
            carry >>= 64;
        }
        product.part[i + 2] = static_cast<std::uint64_t>(carry);
    }
    return product;
}

int Order(const Wide& left, const Wide& right) {
    for (int i = 3; i >= 0; --i) {
        if (left.part[i] != right.part[i]) {
            return left.part[i] < right.part[i] ? -1 : 1;
        }
    }
    return 0;
}

Wide Sum(const Wide& left, const Wide& right) {
    Wide sum;
    UInt128 carry = 0;
    for (int i = 0; i < 4; ++i) {
        carry += UInt128{left.part[i]} + right.part[i];
        sum.part[i] = static_cast<std::uint64_t>(carry);
        carry >>= 64;
    }
    return sum;
}

// `left` is not less than `right`.
Wide Difference(const Wide& left, const Wide& right) {
    Wide difference;
    std::uint64_t borrow = 0;
    for (int i = 0; i < 4; ++i) {
        const UInt128 part = UInt128{left.part[i]} - right.part[i] - borrow;
        difference.part[i] = static_cast<std::uint64_t>(part);
        borrow = (part >> 64) != 0 ? 1 : 0;
    }
    return difference;
}

// Drops digits until the number fits into a Decimal. `isMore` says that digits other than 0 are already
// dropped.
std::optional<Decimal> Fitted(Wide number, int scale, bool isNegative, bool isMore = false) {
    while (scale > Decimal::MostScale || !number.Fits()) {
        std::uint64_t power = 1, rest = 0;
        while (scale > Decimal::MostScale || !number.Fits()) {
            // A lower bound of the digits that are too many: 0.30103 is the logarithm of 2.
            const int excess = std::max((number.Bits() - 97) * 30103 / 100000, scale - Decimal::MostScale);
            const int drop = std::clamp(excess, 1, 19);
            if (drop > scale) {
                return std::nullopt;
            }
            isMore = isMore || rest != 0;
            power = static_cast<std::uint64_t>(PowerOfTen(drop));
            rest = number.DivideBy(power);
            scale -= drop;
        }
        const std::uint64_t half = power / 2;
        if (rest > half || (rest == half && (isMore || (number.part[0] & 1) != 0))) {
            number.Increment();
        }
        isMore = false;
    }
    return Decimal(number.Low(), scale, isNegative);
}

std::optional<Decimal> Fitted(UInt128 number, int scale, bool isNegative) {
    if (number <= Decimal::MostCoefficient && scale <= Decimal::MostScale) {
        return Decimal(number, scale, isNegative);
    }
    return Fitted(Wide::Of(number), scale, isNegative);
}

// Adds numbers whose difference in scale is too great for 128 bits.
std::optional<Decimal> AddWide(const Decimal& left, const Decimal& right) {
    const int scale = std::max(left.Scale(), right.Scale());
    const Wide l = Product(left.Coefficient(), PowerOfTen(scale - left.Scale()));
    const Wide r = Product(right.Coefficient(), PowerOfTen(scale - right.Scale()));
    if (left.IsNegative() == right.IsNegative()) {
        return Fitted(Sum(l, r), scale, left.IsNegative());
    }
    return Order(l, r) >= 0 ? Fitted(Difference(l, r), scale, left.IsNegative())
                            : Fitted(Difference(r, l), scale, right.IsNegative());
}

Decimal WithoutTrailingZeros(Decimal number) {
    UInt128 coefficient = number.Coefficient();
    int scale = number.Scale();
    for (; scale > 0 && coefficient % 10 == 0; --scale) {
        coefficient /= 10;
    }
    return {coefficient, scale, number.IsNegative()};
}

// Compares left * 10^leftPower with right * 10^rightPower.
int OrderScaled(UInt128 left, int leftPower, UInt128 right, int rightPower) {
    if (left == 0 || right == 0) {
        return left != 0 ? 1 : right != 0 ? -1 : 0;
    }
    const int shift = leftPower - rightPower;
    if (shift < 0) {
        return -OrderScaled(right, rightPower, left, leftPower);
    }
    UInt128 scaled = 0;
    if (shift > MostDigits || __builtin_mul_overflow(left, PowerOfTen(shift), &scaled)) {
        return 1;
    }
    return scaled < right ? -1 : scaled > right ? 1 : 0;
}

// Compares with a positive double to whose value `number` rounds.
int OrderRounded(const Decimal& number, double positive) {
    if (positive >= TwoTo53) {  // a whole number
        return OrderScaled(number.Coefficient(), -number.Scale(), static_cast<UInt128>(positive), 0);
    }
    char text[32];
    const auto written = std::to_chars(text, text + sizeof text, positive, std::chars_format::scientific);
    std::uint64_t digits = 0;
    int decimals = 0;
    bool isFraction = false;
    const char* at = text;
    for (; at != written.ptr && *at != 'e'; ++at) {
        if (*at == '.') {
            isFraction = true;
            continue;
        }
        digits = digits * 10 + static_cast<std::uint64_t>(*at - '0');
        decimals += isFraction ? 1 : 0;
    }
    int exponent = 0;
    at += at[1] == '+' ? 2 : 1;
    std::from_chars(at, written.ptr, exponent);
    return OrderScaled(number.Coefficient(), -number.Scale(), digits, exponent - decimals);
}

// The parts of a number that is read.
struct Reading {
    std::string_view rest;
    UInt128 digits = 0;
    int count = 0;  // significant digits in `digits`
    int exponent = 0;
    bool isMore = false;  // a digit other than 0 had no room

    // Returns how many digits there are.
    int Digits(bool isFraction) {
        int read = 0;
        for (; !rest.empty() && IsAsciiDigit(rest[0]); rest.remove_prefix(1), ++read) {
            const int digit = rest[0] - '0';
            if (count < MostDigits) {
                digits = digits * 10 + static_cast<unsigned>(digit);
                count += digits != 0 ? 1 : 0;
                exponent -= isFraction ? 1 : 0;
            } else {
                isMore = isMore || digit != 0;
                exponent += isFraction ? 0 : 1;
            }
        }
        return read;
    }
    // Returns false for an exponent without digits.
    bool Exponent() {
        if (rest.empty() || AsciiLower(rest[0]) != 'e') {
            return true;
        }
        rest.remove_prefix(1);
        const bool isNegative = !rest.empty() && rest[0] == '-';
        if (isNegative || (!rest.empty() && rest[0] == '+')) {
            rest.remove_prefix(1);
        }
        int written = 0;
        const std::size_t before = rest.size();
        for (; !rest.empty() && IsAsciiDigit(rest[0]); rest.remove_prefix(1)) {
            written = std::min(written * 10 + (rest[0] - '0'), FarExponent);
        }
        exponent += isNegative ? -written : written;
        return rest.size() < before;
    }
};

std::optional<Decimal> OfReading(const Reading& read, bool isNegative) {
    if (read.digits == 0) {
        return Decimal(0, std::clamp(-read.exponent, 0, Decimal::MostScale), false);
    }
    if (read.exponent > 0) {
        UInt128 whole = 0;
        if (read.exponent > MostDigits ||
            __builtin_mul_overflow(read.digits, PowerOfTen(read.exponent), &whole) ||
            whole > Decimal::MostCoefficient) {
            return std::nullopt;
        }
        return Decimal(whole, 0, isNegative);
    }
    const int scale = -read.exponent;
    if (scale > Decimal::MostScale + MostDigits + 1) {
        return Decimal(0, Decimal::MostScale, false);
    }
    return Fitted(Wide::Of(read.digits), scale, isNegative, read.isMore);
}

}  // namespace

std::optional<Decimal> Decimal::OfDouble(double number) {
    if (!(std::fabs(number) < TwoTo96)) {
        return std::nullopt;
    }
    // A number of at most 15 digits that gives the same double is the one that was meant.
    for (int scale = 0; scale <= 6; ++scale) {
        const double scaled = std::nearbyint(std::fabs(number) * RealPowers[scale]);
        if (scaled >= 1e15) {
            break;
        }
        if (scaled / RealPowers[scale] == std::fabs(number)) {
            return Decimal(static_cast<std::uint64_t>(scaled), scale, number < 0);
        }
    }
    char text[32];
    const auto end = std::to_chars(text, text + sizeof text, number, std::chars_format::scientific, 14).ptr;
    const auto read = OfText({text, static_cast<std::size_t>(end - text)});
    return read ? std::optional(WithoutTrailingZeros(*read)) : std::nullopt;
}

std::optional<Decimal> Decimal::OfText(std::string_view text) {
    const bool isNegative = !text.empty() && text[0] == '-';
    Reading read{text.substr(isNegative ? 1 : 0)};
    int digits = read.Digits(false);
    if (!read.rest.empty() && read.rest[0] == '.') {
        read.rest.remove_prefix(1);
        digits += read.Digits(true);
    }
    if (digits == 0 || !read.Exponent() || !read.rest.empty()) {
        return std::nullopt;
    }
    return OfReading(read, isNegative);
}

double Decimal::ToDouble() const {
    constexpr int MostExactPower = 22;
    double number = 0;
    if (m_coefficient < UInt128{1} << 53 && m_scale <= MostExactPower) {
        number = static_cast<double>(static_cast<std::uint64_t>(m_coefficient)) / RealPowers[m_scale];
        return m_isNegative ? -number : number;
    }
    const std::string text = Text();
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

std::optional<std::int64_t> Decimal::ToInteger() const {
    UInt128 whole = m_coefficient;
    if (m_scale > 0) {
        if (m_coefficient % PowerOfTen(m_scale) != 0) {
            return std::nullopt;
        }
        whole = m_coefficient / PowerOfTen(m_scale);
    }
    constexpr UInt128 Limit = UInt128{1} << 63;
    if (whole > Limit || (whole == Limit && !m_isNegative)) {
        return std::nullopt;
    }
    const auto bits = static_cast<std::uint64_t>(whole);
    return static_cast<std::int64_t>(m_isNegative ? 0 - bits : bits);
}

Decimal Decimal::Rounded(int digits, Rounding rounding) const {
    if (digits >= m_scale) {
        return *this;
    }
    const UInt128 power = PowerOfTen(m_scale - digits);
    const UInt128 whole = m_coefficient / power, rest = m_coefficient % power;
    bool up = false;
    switch (rounding) {
        case Rounding::HalfEven:
            up = rest > power / 2 || (rest == power / 2 && (whole & 1) != 0);
            break;
        case Rounding::HalfAwayFromZero:
            up = rest >= power / 2;
            break;
        case Rounding::TowardsZero:
            break;
        case Rounding::Down:
            up = rest != 0 && m_isNegative;
            break;
        case Rounding::Up:
            up = rest != 0 && !m_isNegative;
            break;
    }
    return {whole + (up ? 1 : 0), digits, m_isNegative};
}

std::string Decimal::Text() const {
    char buffer[48];
    char* const end = buffer + sizeof buffer;
    char* begin = end;
    UInt128 rest = m_coefficient;
    for (int place = 0; rest != 0 || place <= m_scale; ++place) {
        if (place == m_scale && place > 0) {
            *--begin = '.';
        }
        *--begin = static_cast<char>('0' + static_cast<int>(rest % 10));
        rest /= 10;
    }
    if (m_isNegative) {
        *--begin = '-';
    }
    return {begin, end};
}

std::optional<Decimal> Add(const Decimal& left, const Decimal& right) {
    const int scale = std::max(left.Scale(), right.Scale());
    constexpr int Safe = 9;  // a coefficient times 10 to this power leaves two bits free
    if (scale - std::min(left.Scale(), right.Scale()) > Safe) {
        return AddWide(left, right);
    }
    const UInt128 l = left.Coefficient() * PowerOfTen(scale - left.Scale());
    const UInt128 r = right.Coefficient() * PowerOfTen(scale - right.Scale());
    if (left.IsNegative() == right.IsNegative()) {
        return Fitted(l + r, scale, left.IsNegative());
    }
    return l >= r ? Fitted(l - r, scale, left.IsNegative()) : Fitted(r - l, scale, right.IsNegative());
}

std::optional<Decimal> Subtract(const Decimal& left, const Decimal& right) {
    return Add(left, -right);
}

std::optional<Decimal> Multiply(const Decimal& left, const Decimal& right) {
    const int scale = left.Scale() + right.Scale();
    const bool isNegative = left.IsNegative() != right.IsNegative();
    UInt128 product = 0;
    if (!__builtin_mul_overflow(left.Coefficient(), right.Coefficient(), &product)) {
        return Fitted(product, scale, isNegative);
    }
    return Fitted(Product(left.Coefficient(), right.Coefficient()), scale, isNegative);
}

std::optional<Decimal> Divide(const Decimal& left, const Decimal& right) {
    const UInt128 divisor = right.Coefficient();
    UInt128 quotient = left.Coefficient() / divisor, rest = left.Coefficient() % divisor;
    int scale = left.Scale() - right.Scale();
    const bool extends = rest != 0;
    for (const int step : {9, 1}) {  // nine digits at once fit into 128 bits, for the rest too
        const UInt128 power = PowerOfTen(step);
        while ((rest != 0 || scale < 0) && scale + step <= Decimal::MostScale) {
            const UInt128 longer = quotient * power + rest * power / divisor;
            if (longer > Decimal::MostCoefficient || (rest == 0 && scale + step > 0)) {
                break;
            }
            quotient = longer;
            rest = rest * power % divisor;
            scale += step;
        }
    }
    if (scale < 0) {
        return std::nullopt;
    }
    if (rest * 2 > divisor || (rest * 2 == divisor && (quotient & 1) != 0)) {
        ++quotient;
    }
    const auto result = Fitted(quotient, scale, left.IsNegative() != right.IsNegative());
    return result && extends ? std::optional(WithoutTrailingZeros(*result)) : result;
}

Decimal Remainder(const Decimal& left, const Decimal& right) {
    if (Compare(left.Magnitude(), right.Magnitude()) < 0) {
        return left;
    }
    const int scale = std::max(left.Scale(), right.Scale());
    // Fits: the divisor is not larger than the dividend.
    const UInt128 divisor = right.Coefficient() * PowerOfTen(scale - right.Scale());
    UInt128 rest = left.Coefficient() % divisor;
    for (int step = left.Scale(); step < scale; ++step) {
        rest = rest * 10 % divisor;
    }
    return {rest, scale, left.IsNegative()};
}

int Compare(const Decimal& left, const Decimal& right) {
    if (left.IsNegative() != right.IsNegative()) {
        return left.IsNegative() ? -1 : 1;
    }
    const int order = left.Scale() == right.Scale() ? (left.Coefficient() < right.Coefficient()   ? -1
                                                       : left.Coefficient() > right.Coefficient() ? 1
                                                                                                  : 0)
                                                    : OrderScaled(left.Coefficient(), -left.Scale(),
                                                                  right.Coefficient(), -right.Scale());
    return left.IsNegative() ? -order : order;
}

int Compare(const Decimal& left, double right) {
    if (std::isnan(right)) {
        return 1;
    }
    // Rounding keeps the order, so only what rounds to the same double needs a closer look.
    const double rounded = left.ToDouble();
    if (rounded != right) {
        return rounded < right ? -1 : 1;
    }
    if (right == 0) {
        return left.IsZero() ? 0 : left.IsNegative() ? -1 : 1;
    }
    const int order = OrderRounded(left, std::fabs(right));
    return left.IsNegative() ? -order : order;
}

}  // namespace rdl
