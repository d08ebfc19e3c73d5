// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/model/units.h"

#include <charconv>
#include <cmath>

namespace rdl::layout {
namespace {

struct Unit {
    std::string_view name;
    double points;
};
constexpr Unit Units[] = {{"pt", 1},         {"in", 72}, {"cm", 72 / 2.54},
                          {"mm", 72 / 25.4}, {"pc", 12}, {"px", 0.75}};

std::string_view Trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(" \t\r\n");
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

}  // namespace

bool ParseSize(std::string_view text, double& points) {
    text = Trimmed(text);
    if (!text.empty() && text.front() == '+') {
        text.remove_prefix(1);
    }
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || !std::isfinite(number)) {
        return false;
    }
    const std::string_view unit = Trimmed(text.substr(static_cast<std::size_t>(end - text.data())));
    for (const Unit& known : Units) {
        if (unit.size() == 2 && (unit[0] | 0x20) == known.name[0] && (unit[1] | 0x20) == known.name[1]) {
            points = number * known.points;
            return std::abs(points) < 1e6;
        }
    }
    return false;
}

}  // namespace rdl::layout
