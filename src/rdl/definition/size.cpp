// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/definition/size.h"

#include <charconv>
#include <cmath>

#include "rdl/values/ascii.h"

namespace rdl {

std::optional<double> ParseSize(std::string_view text) {
    text = Trimmed(text);
    if (text.starts_with('+')) {
        text.remove_prefix(1);
    }
    double number = 0;
    const auto [end, error] =
        std::from_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed);
    if (error != std::errc() || !std::isfinite(number)) {
        return std::nullopt;
    }
    const std::string_view unit = Trimmed(text.substr(static_cast<std::size_t>(end - text.data())));
    for (const SizeUnit& candidate : SizeUnits) {
        if (EqualNoCase(unit, candidate.name)) {
            return number * candidate.points;
        }
    }
    return std::nullopt;
}

}  // namespace rdl
