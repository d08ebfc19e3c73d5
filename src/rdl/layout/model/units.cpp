// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/model/units.h"

#include <charconv>
#include <cmath>

#include "rdl/api/size_units.h"
#include "rdl/values/ascii.h"

namespace rdl::layout {
namespace {

constexpr SizeUnit Pixel{"px", 0.75};

const SizeUnit* FindUnit(std::string_view name) {
    for (const SizeUnit& known : SizeUnits) {
        if (EqualNoCase(name, known.name)) {
            return &known;
        }
    }
    return EqualNoCase(name, Pixel.name) ? &Pixel : nullptr;
}

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
    const SizeUnit* const unit = FindUnit(Trimmed(text.substr(static_cast<std::size_t>(end - text.data()))));
    if (!unit) {
        return false;
    }
    points = number * unit->points;
    return std::abs(points) < 1e6;
}

}  // namespace rdl::layout
