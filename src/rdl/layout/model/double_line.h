// SPDX-License-Identifier: GPL-3.0-or-later
// How a double line is drawn where a format has none of its own.
#pragma once

#include <array>
#include <cmath>

#include "rdl/layout/model/page.h"

namespace rdl::layout {

// Returns the two solid lines of a double line: each a third of its width, with a third between them.
inline std::array<LineOp, 2> LinesOfDouble(const LineOp& line) {
    const double length = std::hypot(line.x2 - line.x1, line.y2 - line.y1);
    const double third = static_cast<double>(line.width) / 3;
    const double dx = length > 0 ? (line.y2 - line.y1) / length * third : 0;
    const double dy = length > 0 ? (line.x1 - line.x2) / length * third : third;
    std::array<LineOp, 2> lines{line, line};
    for (const double side : {1.0, -1.0}) {
        LineOp& one = lines[side > 0 ? 0 : 1];
        one.x1 += side * dx;
        one.x2 += side * dx;
        one.y1 += side * dy;
        one.y2 += side * dy;
        one.width = static_cast<float>(third);
        one.style = LineStyle::Solid;
    }
    return lines;
}

}  // namespace rdl::layout
