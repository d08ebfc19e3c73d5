// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/base/convert.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <limits>
#include <optional>

#include "platform/base/ascii.h"
#include "platform/base/date_reader.h"
#include "platform/base/text.h"
#include "platform/contracts/regional.h"

namespace {

// Reads decimal text with a point, in every region: numbers are stored in this form. Returns nullopt for
// infinity and not-a-number.
std::optional<double> DecimalOf(std::string_view text) {
    std::string_view digits = Trim(text);
    if (digits.size() > 1 && digits.front() == '+' && digits[1] != '-') {
        digits.remove_prefix(1);
    }
    const bool startsAsNumber =
        !digits.empty() && (digits.front() == '-' || digits.front() == '.' || IsAsciiDigit(digits.front()));
    if (!startsAsNumber) {
        return std::nullopt;
    }
    double value = 0;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (result.ptr != digits.data() + digits.size()) {
        return std::nullopt;
    }
    if (result.ec == std::errc::result_out_of_range) {
        throw RuntimeError(err::Overflow);
    }
    if (result.ec != std::errc() || !std::isfinite(value)) {
        return std::nullopt;
    }
    return value;
}

// Reads &H and &O texts as the bits of a whole number of this size, so that &HFFFF is -1 in 16 bits.
template <typename Whole>
std::optional<Whole> BitsOf(std::string_view text) {
    const std::string_view trimmed = Trim(text);
    if (trimmed.size() < 3 || trimmed[0] != '&') {
        return std::nullopt;
    }
    const bool isHex = trimmed[1] == 'H' || trimmed[1] == 'h';
    const bool isOctal = trimmed[1] == 'O' || trimmed[1] == 'o';
    if (!isHex && !isOctal) {
        return std::nullopt;
    }
    std::make_unsigned_t<Whole> bits = 0;
    const auto result =
        std::from_chars(trimmed.data() + 2, trimmed.data() + trimmed.size(), bits, isHex ? 16 : 8);
    if (result.ptr != trimmed.data() + trimmed.size()) {
        return std::nullopt;
    }
    if (result.ec == std::errc::result_out_of_range) {
        throw RuntimeError(err::Overflow);
    }
    return static_cast<Whole>(bits);
}

double RoundHalfToEven(double value) {
    const double below = std::floor(value);
    const double part = value - below;
    if (part != 0.5) {
        return part < 0.5 ? below : below + 1;
    }
    return std::fmod(below, 2) == 0 ? below : below + 1;
}

template <typename Whole>
Whole WholeNumber(const Variant& value) {
    if (const auto* text = value.TextOrNull()) {
        if (const auto bits = BitsOf<Whole>(*text)) {
            return *bits;
        }
    }
    const double rounded = RoundHalfToEven(CDbl(value));
    if (!(rounded >= std::numeric_limits<Whole>::min() && rounded <= std::numeric_limits<Whole>::max())) {
        throw RuntimeError(err::Overflow);
    }
    return static_cast<Whole>(rounded);
}

}  // namespace

std::int16_t CInt(const Variant& value) {
    return WholeNumber<std::int16_t>(value);
}

std::int32_t CLng(const Variant& value) {
    return WholeNumber<std::int32_t>(value);
}

double CDbl(const Variant& value) {
    if (value.IsNull()) {
        throw RuntimeError(err::InvalidUseOfNull);
    }
    if (const auto* whole = value.Integer()) {
        return static_cast<double>(*whole);
    }
    if (const auto* real = value.Real()) {
        return *real;
    }
    if (const auto number = DecimalOf(*value.TextOrNull())) {
        return *number;
    }
    if (const auto bits = BitsOf<std::int32_t>(*value.TextOrNull())) {
        return *bits;
    }
    throw RuntimeError(err::TypeMismatch);
}

bool CBool(const Variant& value) {
    if (const auto* text = value.TextOrNull()) {
        if (SameText(Trim(*text), "True")) {
            return true;
        }
        if (SameText(Trim(*text), "False")) {
            return false;
        }
    }
    return CDbl(value) != 0;
}

DateValue CDate(const Variant& value) {
    const auto* text = value.TextOrNull();
    if (text == nullptr) {
        return DateValue::FromDays(CDbl(value));
    }
    if (const auto date = ReadDateText(Trim(*text), Regional())) {
        return *date;
    }
    if (const auto days = DecimalOf(*text)) {
        return DateValue::FromDays(*days);
    }
    throw RuntimeError(err::TypeMismatch);
}

std::string DateText(DateValue value) {
    const DateParts parts = Split(value);
    const char separator = Regional().dateSeparator;
    std::array<char, 48> buffer{};
    const auto print = [&](const char* pattern, int first, int second, int third) {
        std::snprintf(buffer.data(), buffer.size(), pattern, first, separator, second, separator, third);
    };
    switch (Regional().order) {
        case DateOrder::YearMonthDay:
            print("%04d%c%02d%c%02d", parts.year, parts.month, parts.day);
            break;
        case DateOrder::DayMonthYear:
            print("%02d%c%02d%c%04d", parts.day, parts.month, parts.year);
            break;
        case DateOrder::MonthDayYear:
            print("%02d%c%02d%c%04d", parts.month, parts.day, parts.year);
            break;
    }
    return buffer.data();
}

std::string TimeText(DateValue value) {
    const DateParts parts = Split(value);
    std::array<char, 40> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%02d:%02d:%02d", parts.hour, parts.minute, parts.second);
    return buffer.data();
}

std::string UCase(std::string_view text) {
    return UpperText(text);
}

std::string Replace(std::string_view text, std::string_view find, std::string_view with) {
    if (find.empty()) {
        return std::string(text);
    }
    std::string result;
    std::size_t from = 0;
    for (std::size_t at = text.find(find); at != std::string_view::npos; at = text.find(find, from)) {
        result.append(text, from, at - from).append(with);
        from = at + find.size();
    }
    return result.append(text, from);
}
