// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <optional>
#include <string>

#include "fuzz/targets.h"
#include "rdl/expr/operations/compare.h"
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

void Require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

template <typename Number>
Number Read(std::string_view text) {
    Number number{};
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

// "i42" a whole number, "r1e300" a real one, "m1.50" a decimal one, "d" and "s" ticks of a date and a span,
// else a text.
rdl::Value ReadValue(std::string_view text) {
    const std::string_view rest = text.empty() ? text : text.substr(1);
    switch (text.empty() ? ' ' : text.front()) {
        case 'i':
            return rdl::Value::Integer(Read<std::int64_t>(rest));
        case 'r':
            return rdl::Value::Real(Read<double>(rest));
        case 'm':
            return rdl::Value::Decimal(rdl::Decimal::OfText(rest).value_or(rdl::Decimal()));
        case 'd':
            return rdl::Value::DateTime(Read<std::int64_t>(rest));
        case 's':
            return rdl::Value::TimeSpan(Read<std::int64_t>(rest));
        default:
            return rdl::Value::Text(text);
    }
}

// Ends the process if one of the rules that hold for all numbers is broken.
void CheckDecimal(const rdl::Decimal& number, const rdl::Decimal& other) {
    const auto again = rdl::Decimal::OfText(number.Text());
    Require(again && rdl::Compare(*again, number) == 0 && again->Scale() == number.Scale());
    Require(rdl::Compare(number, other) == -rdl::Compare(other, number));
    Require(rdl::Compare(number, number.ToDouble()) == -rdl::Compare(-number, -number.ToDouble()));
    const auto hash = [](const rdl::Decimal& of) { return rdl::expr::Hash(rdl::Value::Decimal(of)); };
    Require(rdl::Compare(number, other) != 0 || hash(number) == hash(other));
    for (const auto& result :
         {rdl::Add(number, other), rdl::Subtract(number, other), rdl::Multiply(number, other),
          other.IsZero() ? std::nullopt : rdl::Divide(number, other)}) {
        Require(!result || (result->Coefficient() <= rdl::Decimal::MostCoefficient &&
                            result->Scale() <= rdl::Decimal::MostScale));
    }
    const auto sum = rdl::Add(number, other);
    Require(!sum || sum->Scale() != std::max(number.Scale(), other.Scale()) ||
            rdl::Compare(rdl::Subtract(*sum, other).value_or(number), number) == 0);
    if (!other.IsZero()) {
        const rdl::Decimal rest = rdl::Remainder(number, other);
        Require(rdl::Compare(rest.Magnitude(), other.Magnitude()) < 0);
    }
    const rdl::Decimal rounded = number.Rounded(number.Scale() / 2, rdl::Rounding::HalfEven);
    Require(rdl::Compare(rounded.Rounded(number.Scale() / 2, rdl::Rounding::Up), rounded) == 0);
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
            rdl::Decimal exact;
            if (rdl::ParseNumber(again, culture, exact)) {
                CheckDecimal(exact, value.kind() == rdl::Kind::Decimal ? value.AsDecimal() : exact);
            }
        }
    } catch (const rdl::Error&) {
        return;
    }
}

}  // namespace fuzz
