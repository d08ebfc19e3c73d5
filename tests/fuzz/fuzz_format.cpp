// SPDX-License-Identifier: GPL-3.0-or-later
#include <charconv>
#include <string>

#include "fuzz/targets.h"
#include "rdl/format/format.h"
#include "rdl/values/error.h"

namespace fuzz {
namespace {

std::string_view TakeLine(std::string_view& rest) {
    const std::size_t end = rest.find('\n');
    const std::string_view line = rest.substr(0, end);
    rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 1);
    return line;
}

template <typename Number>
Number Read(std::string_view text) {
    Number number{};
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

// "i42" a whole number, "r1e300" a real one, "d" and "s" ticks of a date and a span, else a text.
rdl::Value ReadValue(std::string_view text) {
    const std::string_view rest = text.empty() ? text : text.substr(1);
    switch (text.empty() ? ' ' : text.front()) {
        case 'i':
            return rdl::Value::Integer(Read<std::int64_t>(rest));
        case 'r':
            return rdl::Value::Real(Read<double>(rest));
        case 'd':
            return rdl::Value::DateTime(Read<std::int64_t>(rest));
        case 's':
            return rdl::Value::TimeSpan(Read<std::int64_t>(rest));
        default:
            return rdl::Value::Text(text);
    }
}

}  // namespace

void RunFormat(std::string_view input) {
    const rdl::Culture& culture = rdl::FindCulture(TakeLine(input));
    const rdl::Value value = ReadValue(TakeLine(input));
    std::int64_t ticks = 0;
    double number = 0;
    try {
        const std::string text = rdl::FormatValue(value, input, culture);
        // What was written and what was given are both read again, as conversions do.
        for (const std::string_view again : {std::string_view(text), input}) {
            rdl::ParseDateTime(again, culture, ticks);
            rdl::ParseNumber(again, culture, number);
        }
    } catch (const rdl::Error&) {
        return;
    }
}

}  // namespace fuzz
