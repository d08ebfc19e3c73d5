// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/format/number_format.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <limits>

#include "rdl/values/ascii.h"

namespace rdl {
namespace {

// n: the number, $: the symbol, -: the negative sign; in the order of their numbers in a culture.
constexpr const char* CurrencyNegative[] = {"($n)", "-$n",  "$-n",  "$n-",  "(n$)", "-n$",  "n-$",   "n$-",
                                            "-n $", "-$ n", "n $-", "$ n-", "$ -n", "n- $", "($ n)", "(n $)"};
constexpr const char* CurrencyPositive[] = {"$n", "n$", "$ n", "n $"};
constexpr const char* PercentNegative[] = {"-n $", "-n$",  "-$n",  "$-n",  "$n-",  "n-$",
                                           "n$-",  "-$ n", "n $-", "$ n-", "$ -n", "n- $"};
constexpr const char* PercentPositive[] = {"n $", "n$", "$n", "$ n"};
constexpr const char* NumberNegative[] = {"(n)", "-n", "- n", "n-", "n -"};

template <std::size_t N>
const char* Pattern(const char* const (&patterns)[N], int index) {
    return patterns[index >= 0 && static_cast<std::size_t>(index) < N ? index : 0];
}

struct Separators {
    std::string_view decimal, group;  // no grouping when group is empty
};

// Rounded to `decimals` before.
void AppendFixed(const Digits& number, int decimals, const Separators& separators, const Culture& culture,
                 std::string& out) {
    if (number.scale <= 0) {
        out += '0';
    }
    for (int i = 0; i < number.scale; ++i) {
        out += number.At(i);
        const int left = number.scale - i - 1;
        if (IsGroupEnd(left, culture)) {
            out += separators.group;
        }
    }
    if (decimals > 0) {
        out += separators.decimal;
        for (int i = 0; i < decimals; ++i) {
            out += number.At(number.scale + i);
        }
    }
}

void AppendPattern(const char* pattern, const Digits& number, int decimals, const Separators& separators,
                   std::string_view symbol, const Culture& culture, std::string& out) {
    for (const char* p = pattern; *p; ++p) {
        switch (*p) {
            case 'n':
                AppendFixed(number, decimals, separators, culture, out);
                break;
            case '$':
                out += symbol;
                break;
            case '-':
                out += culture.negativeSign;
                break;
            default:
                out += *p;
        }
    }
}

void AppendExponent(int exponent, int minimumDigits, char letter, const Culture& culture, std::string& out) {
    out += letter;
    if (exponent < 0) {
        out += culture.negativeSign;
    } else {
        out += '+';
    }
    char buffer[16];
    std::snprintf(buffer, sizeof buffer, "%0*d", minimumDigits, std::abs(exponent));
    out += buffer;
}

void AppendScientific(Digits number, int precision, char letter, const Culture& culture, std::string& out) {
    number.Round(precision + 1);
    if (number.negative) {
        out += culture.negativeSign;
    }
    out += number.At(0);
    if (precision > 0) {
        out += culture.decimalSeparator;
        for (int i = 1; i <= precision; ++i) {
            out += number.At(i);
        }
    }
    AppendExponent(number.IsZero() ? 0 : number.scale - 1, 3, letter, culture, out);
}

// Fixed or scientific, whichever is shorter: scientific from 10^digits on and below 0.0001.
void AppendGeneral(Digits number, int digits, char letter, const Culture& culture, std::string& out) {
    number.Round(digits);
    if (number.negative) {
        out += culture.negativeSign;
    }
    if (number.scale > digits || number.scale < -3) {
        out += number.At(0);
        if (number.count > 1) {
            out += culture.decimalSeparator;
            out.append(number.digits + 1, static_cast<std::size_t>(number.count - 1));
        }
        AppendExponent(number.scale - 1, 2, letter, culture, out);
        return;
    }
    const int decimals = number.count > number.scale ? number.count - number.scale : 0;
    AppendFixed(number, number.IsZero() ? 0 : decimals, {culture.decimalSeparator, {}}, culture, out);
}

void AppendRoundTrip(const Value& value, char letter, const Culture& culture, std::string& out) {
    if (value.kind() == Kind::Integer) {
        AppendGeneral(DigitsOf(value.AsInteger()), 19, letter, culture, out);
        return;
    }
    if (value.kind() == Kind::Decimal) {
        AppendDecimal(value.AsDecimal(), culture, out);
        return;
    }
    char buffer[40];
    const auto written =
        std::to_chars(buffer, buffer + sizeof buffer, value.AsReal(), std::chars_format::scientific, 14);
    double back = 0;
    std::from_chars(buffer, written.ptr, back);
    const int digits = back == value.AsReal() ? 15 : 17;
    AppendGeneral(DigitsOf(value.AsReal(), digits), digits, letter, culture, out);
}

// Accepts integers, also as a Real or a Decimal: some databases return their integers as such.
bool AsWhole(const Value& value, std::int64_t& whole) {
    if (value.kind() == Kind::Integer) {
        whole = value.AsInteger();
        return true;
    }
    if (value.kind() == Kind::Decimal) {
        const auto number = value.AsDecimal().ToInteger();
        whole = number.value_or(0);
        return number.has_value();
    }
    const double real = value.AsReal();
    if (std::fabs(real) >= 9.2e18 || std::trunc(real) != real) {
        return false;
    }
    whole = static_cast<std::int64_t>(real);
    return true;
}

bool AppendWhole(const Value& value, int precision, const Culture& culture, std::string& out) {
    std::int64_t whole = 0;
    if (!AsWhole(value, whole)) {
        return false;
    }
    const Digits number = DigitsOf(whole);
    if (number.negative) {
        out += culture.negativeSign;
    }
    const int length = number.scale > 0 ? number.scale : 1;
    for (int i = length; i < precision; ++i) {
        out += '0';
    }
    AppendFixed(number, 0, {}, culture, out);
    return true;
}

bool AppendHexadecimal(const Value& value, const StandardFormat& format, std::string& out) {
    std::int64_t whole = 0;
    if (!AsWhole(value, whole)) {
        return false;
    }
    auto bits = static_cast<std::uint64_t>(whole);
    if (whole < 0 && whole >= std::numeric_limits<std::int32_t>::min()) {
        bits &= 0xFFFFFFFFu;  // integers of the report language have 32 bits
    }
    const std::string_view digits = format.letter == 'x' ? SmallHexDigits : HexDigits;
    char buffer[16];
    int count = 0;
    do {
        buffer[count++] = digits[bits & 15];
        bits >>= 4;
    } while (bits);
    for (int i = count; i < format.precision; ++i) {
        out += '0';
    }
    while (count > 0) {
        out += buffer[--count];
    }
    return true;
}

void AppendCurrency(Digits number, int precision, const Culture& culture, std::string& out) {
    const int decimals = precision < 0 ? culture.currencyDecimals : precision;
    number.Round(number.scale + decimals);
    const char* pattern = number.negative ? Pattern(CurrencyNegative, culture.currencyNegativePattern)
                                          : Pattern(CurrencyPositive, culture.currencyPositivePattern);
    AppendPattern(pattern, number, decimals,
                  {culture.currencyDecimalSeparator, culture.currencyGroupSeparator}, culture.currencySymbol,
                  culture, out);
}

void AppendPercent(Digits number, int precision, const Culture& culture, std::string& out) {
    const int decimals = precision < 0 ? culture.percentDecimals : precision;
    if (!number.IsZero()) {
        number.scale += 2;
    }
    number.Round(number.scale + decimals);
    const char* pattern = number.negative ? Pattern(PercentNegative, culture.percentNegativePattern)
                                          : Pattern(PercentPositive, culture.percentPositivePattern);
    AppendPattern(pattern, number, decimals, {culture.decimalSeparator, culture.groupSeparator},
                  culture.percentSymbol, culture, out);
}

void AppendNumber(Digits number, int precision, bool grouped, const Culture& culture, std::string& out) {
    const int decimals = precision < 0 ? culture.numberDecimals : precision;
    number.Round(number.scale + decimals);
    const Separators separators{culture.decimalSeparator,
                                grouped ? std::string_view(culture.groupSeparator) : ""};
    if (!number.negative) {
        AppendFixed(number, decimals, separators, culture, out);
    } else {
        const char* pattern = grouped ? Pattern(NumberNegative, culture.numberNegativePattern) : "-n";
        AppendPattern(pattern, number, decimals, separators, {}, culture, out);
    }
}

}  // namespace

bool ReadStandardFormat(std::string_view format, StandardFormat& standard) {
    if (format.empty() || format.size() > 3) {
        return false;
    }
    const char letter = format[0];
    if (!IsAsciiLetter(letter)) {
        return false;
    }
    int precision = format.size() > 1 ? 0 : -1;
    for (const char c : format.substr(1)) {
        if (!IsAsciiDigit(c)) {
            return false;
        }
        precision = precision * 10 + (c - '0');
    }
    standard = {letter, precision};
    return true;
}

bool IsGroupEnd(int left, const Culture& culture) {
    const int higher = left - culture.groupSize;
    return higher == 0 || (higher > 0 && higher % culture.higherGroupSize == 0);
}

bool AppendNotFinite(double number, const Culture& culture, std::string& out) {
    if (std::isfinite(number)) {
        return false;
    }
    if (std::isnan(number)) {
        out += "NaN";
        return true;
    }
    if (number < 0) {
        out += culture.negativeSign;
    }
    out += "Infinity";
    return true;
}

void AppendDecimal(const Decimal& number, const Culture& culture, std::string& out) {
    const std::string text = number.Text();
    for (const char c : text) {
        if (c == '-') {
            out += culture.negativeSign;
        } else if (c == '.') {
            out += culture.decimalSeparator;
        } else {
            out += c;
        }
    }
}

void AppendShortest(double number, const Culture& culture, std::string& out) {
    if (!AppendNotFinite(number, culture, out)) {
        AppendGeneral(DigitsOf(number), 15, 'E', culture, out);
    }
}

bool FormatStandardNumber(const Value& number, const StandardFormat& format, const Culture& culture,
                          std::string& out) {
    if (number.kind() == Kind::Real && AppendNotFinite(number.AsReal(), culture, out)) {
        return true;
    }
    const char lower = static_cast<char>(format.letter | 0x20);
    const char exponentLetter = format.letter == lower ? 'e' : 'E';
    switch (lower) {
        case 'c':
            AppendCurrency(DigitsOf(number), format.precision, culture, out);
            return true;
        case 'd':
            return AppendWhole(number, format.precision, culture, out);
        case 'e': {
            const int precision = format.precision < 0 ? 6 : format.precision;
            AppendScientific(DigitsOf(number, precision > 14 ? 17 : 15), precision, format.letter, culture,
                             out);
            return true;
        }
        case 'f':
            AppendNumber(DigitsOf(number), format.precision, false, culture, out);
            return true;
        case 'g': {
            if (number.kind() == Kind::Decimal && format.precision <= 0) {
                AppendDecimal(number.AsDecimal(), culture, out);
                return true;
            }
            const bool whole = number.kind() == Kind::Integer;
            const int digits = format.precision > 0 ? format.precision : (whole ? 19 : 15);
            AppendGeneral(DigitsOf(number, digits > 15 ? 17 : 15), digits, exponentLetter, culture, out);
            return true;
        }
        case 'n':
            AppendNumber(DigitsOf(number), format.precision, true, culture, out);
            return true;
        case 'p':
            AppendPercent(DigitsOf(number), format.precision, culture, out);
            return true;
        case 'r':
            AppendRoundTrip(number, exponentLetter, culture, out);
            return true;
        case 'x':
            return AppendHexadecimal(number, format, out);
        default:
            return false;
    }
}

}  // namespace rdl
