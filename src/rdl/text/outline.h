// Glyphs as curves, for the screen and the printer.
#pragma once

#include <cstdint>
#include <vector>

#include "rdl/text/fonts.h"

namespace rdl::text {

struct OutlineStep {
    enum Kind : std::uint8_t {
        Move,
        Line,
        Curve
    } kind;            // every contour is closed by the next Move or the end
    float x[3], y[3];  // in ems from the origin on the baseline, y downwards; the point is the last one used
};

// Empty: nothing to draw.
std::vector<OutlineStep> Outline(FontId font, std::uint16_t glyph);

}  // namespace rdl::text
