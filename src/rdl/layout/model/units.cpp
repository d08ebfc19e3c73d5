// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/model/units.h"

#include <charconv>
#include <cmath>

#include "rdl/values/ascii.h"

namespace rdl::layout {
namespace {

struct Unit {
    std::string_view name;
    double points;
};
constexpr Unit Units[] = {{"pt", 1},         {"in", 72}, {"cm", 72 / 2.54},
                          {"mm", 72 / 25.4}, {"pc", 12}, {"px", 0.75}};

}  // namespace

bool ParseSize(std::string_view text, double& points) {
    text = Trimmed(text);
    if (text.starts_with('+')) {
        text.remove_prefix(1);
    }
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || !std::isfinite(number)) {
        return false;
    }
    const std::string_view unit = Trimmed(text.substr(static_cast<std::size_t>(end - text.data())));
    for (const Unit& known : Units) {
        if (EqualNoCase(unit, known.name)) {
            points = number * known.points;
            return std::abs(points) < 1e6;
        }
    }
    return false;
}

}  // namespace rdl::layout
