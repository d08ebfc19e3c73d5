// SPDX-License-Identifier: GPL-3.0-or-later
// Glyph outlines as curves, for the screen and the printer.
#pragma once

#include <cstdint>
#include <vector>

#include "rdl/text/fonts.h"

namespace rdl::text {

struct OutlineStep {
    enum Kind : std::uint8_t { Move, Line, Curve } kind;  // the next Move or the end closes a contour
    float x[3], y[3];  // fractions of the em from the origin on the baseline, y downwards; the end point is
                       // the last one used
};

// Returns the contours of the glyph; empty if it draws nothing.
std::vector<OutlineStep> Outline(FontId font, std::uint16_t glyph);

}  // namespace rdl::text
