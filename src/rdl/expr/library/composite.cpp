// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/expr/library/composite.h"

#include <algorithm>
#include <charconv>
#include <string>

#include "rdl/expr/operations/convert.h"
#include "rdl/values/utf8.h"

namespace rdl::expr {
namespace {

constexpr int MaxWidth = 10000;

// Appends one placeholder, given without its braces. Returns false if it is invalid.
bool AppendPlace(std::string_view place, const ValueList& values, const Culture& culture, std::string& text) {
    std::string_view format;
    if (const std::size_t colon = place.find(':'); colon != std::string_view::npos) {
        format = place.substr(colon + 1);
        place = place.substr(0, colon);
    }
    std::size_t index = 0;
    const auto [end, fault] = std::from_chars(place.data(), place.data() + place.size(), index);
    if (fault != std::errc() || index >= values.size()) {
        return false;
    }
    std::string_view rest = place.substr(static_cast<std::size_t>(end - place.data()));
    int width = 0;
    if (const std::size_t comma = rest.find(','); comma != std::string_view::npos) {
        rest.remove_prefix(comma + 1);
        rest.remove_prefix(std::min(rest.find_first_not_of(' '), rest.size()));
        if (std::from_chars(rest.data(), rest.data() + rest.size(), width).ec != std::errc() ||
            width > MaxWidth || width < -MaxWidth) {
            return false;
        }
    }
    const Value& value = values[index];
    // Without a format a date is written in full here, midnight or not.
    const std::string_view shown = format.empty() && value.kind() == Kind::DateTime ? "G" : format;
    const std::string part = FormatValue(value, shown, culture);
    const auto length = static_cast<int>(std::min<std::size_t>(CharacterCount(part), MaxWidth));
    text.append(static_cast<std::size_t>(std::max(0, width - length)), ' ');
    text += part;
    text.append(static_cast<std::size_t>(std::max(0, -width - length)), ' ');
    return true;
}

}  // namespace

Value FormatComposite(std::string_view pattern, const ValueList& values, const Culture& culture) {
    std::string text;
    for (std::size_t at = 0; at < pattern.size() && text.size() <= MaxText; ++at) {
        const char c = pattern[at];
        if ((c == '{' || c == '}') && at + 1 < pattern.size() && pattern[at + 1] == c) {
            text += c;
            ++at;
            continue;
        }
        if (c != '{') {
            if (c == '}') {
                return Value::Error("A format has a } without its {");
            }
            text += c;
            continue;
        }
        const std::size_t close = pattern.find('}', at);
        if (close == std::string_view::npos ||
            !AppendPlace(pattern.substr(at + 1, close - at - 1), values, culture, text)) {
            return Value::Error("A format has a place that no value is given for");
        }
        at = close;
    }
    return MakeText(text);
}

}  // namespace rdl::expr
