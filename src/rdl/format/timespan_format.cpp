// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>

#include "rdl/format/date_format.h"

namespace rdl {
namespace {

struct SpanParts {
    bool negative;
    std::int64_t days;
    int hours, minutes, seconds, fraction;
};

SpanParts Split(std::int64_t ticks) {
    const auto magnitude =
        ticks < 0 ? std::uint64_t{0} - static_cast<std::uint64_t>(ticks) : static_cast<std::uint64_t>(ticks);
    SpanParts parts{};
    parts.negative = ticks < 0;
    parts.days = static_cast<std::int64_t>(magnitude / TicksPerDay);
    const auto rest = static_cast<std::int64_t>(magnitude % TicksPerDay);
    const int seconds = static_cast<int>(rest / TicksPerSecond);
    parts.hours = seconds / 3600;
    parts.minutes = seconds / 60 % 60;
    parts.seconds = seconds % 60;
    parts.fraction = static_cast<int>(rest % TicksPerSecond);
    return parts;
}

void AppendClock(const SpanParts& parts, int hourWidth, std::string& out) {
    AppendPadded(parts.hours, hourWidth, out);
    out += ':';
    AppendPadded(parts.minutes, 2, out);
    out += ':';
    AppendPadded(parts.seconds, 2, out);
}

// [-][d.]hh:mm:ss[.fffffff]
void AppendConstant(const SpanParts& parts, std::string& out) {
    if (parts.negative) {
        out += '-';
    }
    if (parts.days > 0) {
        AppendPadded(parts.days, 1, out);
        out += '.';
    }
    AppendClock(parts, 2, out);
    if (parts.fraction > 0) {
        out += '.';
        AppendFraction(parts.fraction, 7, TrailingZeros::Keep, out);
    }
}

// g: [-][d:]h:mm:ss[.FFFFFFF]; G: [-]d:hh:mm:ss.fffffff
void AppendGeneral(const SpanParts& parts, bool full, const Culture& culture, std::string& out) {
    if (parts.negative) {
        out += culture.negativeSign;
    }
    if (full || parts.days > 0) {
        AppendPadded(parts.days, 1, out);
        out += ':';
    }
    AppendClock(parts, full ? 2 : 1, out);
    if (full || parts.fraction > 0) {
        out += culture.decimalSeparator;
        AppendFraction(parts.fraction, 7, full ? TrailingZeros::Keep : TrailingZeros::Drop, out);
    }
}

void AppendSpecifier(char letter, int count, const SpanParts& parts, std::string& out) {
    switch (letter) {
        case 'd':
            AppendPadded(parts.days, std::min(count, 8), out);
            break;
        case 'h':
            AppendPadded(parts.hours, std::min(count, 2), out);
            break;
        case 'm':
            AppendPadded(parts.minutes, std::min(count, 2), out);
            break;
        case 's':
            AppendPadded(parts.seconds, std::min(count, 2), out);
            break;
        case 'f':
            AppendFraction(parts.fraction, std::min(count, 7), TrailingZeros::Keep, out);
            break;
        default:
            AppendFraction(parts.fraction, std::min(count, 7), TrailingZeros::Drop, out);
    }
}

}  // namespace

bool FormatTimeSpan(std::int64_t ticks, std::string_view format, const Culture& culture, std::string& out) {
    const SpanParts parts = Split(ticks);
    if (format == "c" || format == "t" || format == "T") {
        AppendConstant(parts, out);
        return true;
    }
    if (format == "g" || format == "G") {
        AppendGeneral(parts, format == "G", culture, out);
        return true;
    }
    if (format.size() == 1) {
        return false;
    }
    std::string text;
    for (std::size_t i = 0; i < format.size();) {
        if (const std::size_t literal = AppendPatternLiteral(format, i, text)) {
            i += literal;
        } else if (format[i] == '%') {
            ++i;
        } else if (std::string_view("dhmsfF").find(format[i]) != std::string_view::npos) {
            const std::size_t count = RepeatCount(format, i);
            AppendSpecifier(format[i], static_cast<int>(std::min<std::size_t>(count, 9)), parts, text);
            i += count;
        } else if (std::string_view(":. ").find(format[i]) != std::string_view::npos) {
            text += format[i++];  // strictly to be escaped; reports are written without
        } else {
            return false;
        }
    }
    out += text;
    return true;
}

namespace {

// Reads the digits at the front of the text. Returns false if there are none, or more than `most`.
bool TakeDigits(std::string_view& text, std::size_t most, std::int64_t& number, std::size_t& digits) {
    digits = std::min(text.find_first_not_of("0123456789"), text.size());
    if (digits == 0 || digits > most) {
        return false;
    }
    number = 0;
    for (const char c : text.substr(0, digits)) {
        number = number * 10 + (c - '0');
    }
    text.remove_prefix(digits);
    return true;
}

bool TakeMark(std::string_view& text, char mark) {
    if (!text.starts_with(mark)) {
        return false;
    }
    text.remove_prefix(1);
    return true;
}

}  // namespace

bool ParseTimeSpan(std::string_view text, std::int64_t& ticks) {
    while (!text.empty() && text.front() == ' ') {
        text.remove_prefix(1);
    }
    while (!text.empty() && text.back() == ' ') {
        text.remove_suffix(1);
    }
    const bool negative = TakeMark(text, '-');
    std::int64_t days = 0, hours = 0, minutes = 0, seconds = 0, fraction = 0;
    std::size_t digits = 0;
    if (!TakeDigits(text, 8, hours, digits)) {
        return false;
    }
    if (text.empty()) {
        days = hours;
        hours = 0;
    } else {
        if (TakeMark(text, '.')) {
            days = hours;
            if (!TakeDigits(text, 2, hours, digits)) {
                return false;
            }
        }
        const bool clock = TakeMark(text, ':') && TakeDigits(text, 2, minutes, digits) &&
                           (!TakeMark(text, ':') || TakeDigits(text, 2, seconds, digits)) &&
                           (!TakeMark(text, '.') || TakeDigits(text, 7, fraction, digits));
        if (!clock || !text.empty()) {
            return false;
        }
        for (; fraction > 0 && digits < 7; ++digits) {
            fraction *= 10;
        }
    }
    if (days > 10'675'198 || hours > 23 || minutes > 59 || seconds > 59) {
        return false;
    }
    const std::int64_t total =
        days * TicksPerDay + ((hours * 60 + minutes) * 60 + seconds) * TicksPerSecond + fraction;
    ticks = negative ? -total : total;
    return true;
}

}  // namespace rdl
