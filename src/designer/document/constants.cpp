// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/document/constants.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>

#include "platform/base/ascii.h"

namespace designer {

bool FlagOf(const Document& document, ElementId id, std::string_view path) {
    const std::string text = document.TextAt(id, path).value_or("");
    return SameAscii(Trim(text), "true") || Trim(text) == "1";
}

int NumberIn(std::string_view text, int missing, int least, int most) {
    const std::string_view digits = Trim(text);
    int number = missing;
    std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return std::clamp(number, least, most);
}

int NumberAt(const Document& document, ElementId id, std::string_view path, int missing, int least,
             int most) {
    const auto text = id == NoElement ? std::nullopt : document.TextAt(id, path);
    return text ? NumberIn(*text, missing, least, most) : missing;
}

std::optional<double> PlainNumber(std::string_view text) {
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isNumber = error == std::errc() && end == text.data() + text.size() && std::isfinite(number);
    return isNumber ? std::optional(number) : std::nullopt;
}

}  // namespace designer
