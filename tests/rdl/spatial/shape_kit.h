// SPDX-License-Identifier: GPL-3.0-or-later
// Shapes as texts, and binary files made by hand.
#pragma once

#include <bit>
#include <cstdint>
#include <string>

#include "rdl/format/format.h"
#include "rdl/raises.h"
#include "rdl/spatial/geometry.h"

namespace rdl::spatial::test {

inline std::string TextOf(const Positions& positions) {
    std::string text;
    for (const Position& position : positions) {
        text += (text.empty() ? "" : " ") + ToText(Value::Real(position.x), FindCulture("")) + "," +
                ToText(Value::Real(position.y), FindCulture(""));
    }
    return text;
}

// "ring 0,0 1,0 1,1; line 0,0 5,5; points 1,2"
inline std::string TextOf(const Geometry& geometry) {
    std::string text;
    const auto add = [&text](const std::string& kind, const Positions& positions) {
        text += (text.empty() ? "" : "; ") + kind + " " + TextOf(positions);
    };
    for (const Positions& ring : geometry.rings) {
        add("ring", ring);
    }
    for (const Positions& line : geometry.lines) {
        add("line", line);
    }
    if (!geometry.points.empty()) {
        add("points", geometry.points);
    }
    return text;
}

inline std::string Little(std::uint32_t number) {
    std::string bytes;
    for (int shift = 0; shift < 32; shift += 8) {
        bytes += static_cast<char>(number >> shift & 0xFF);
    }
    return bytes;
}

inline std::string Big(std::uint32_t number) {
    const std::string bytes = Little(number);
    return {bytes.rbegin(), bytes.rend()};
}

inline std::string Little(double number) {
    const auto bits = std::bit_cast<std::uint64_t>(number);
    return Little(static_cast<std::uint32_t>(bits)) + Little(static_cast<std::uint32_t>(bits >> 32));
}

inline std::string Reals(std::initializer_list<double> numbers) {
    std::string bytes;
    for (const double number : numbers) {
        bytes += Little(number);
    }
    return bytes;
}

}  // namespace rdl::spatial::test
