// SPDX-License-Identifier: GPL-3.0-or-later
// Slices of rings. Angles are radians clockwise from the top.
#pragma once

#include "rdl/layout/drawing/canvas.h"

namespace rdl::layout {

struct RingSlice {
    Spot center;
    double outer = 0, inner = 0;  // radii; inner 0: a slice of a disc
    double from = 0, to = 0;

    double Middle() const { return (from + to) / 2; }
    bool IsWhole() const;
    // Returns the middle of a text within the slice.
    Spot LabelSpot() const;
    // Whether a level text of this size lies within the slice.
    bool HasRoomFor(Extents size) const;
    // A slice without a border has a thin white one.
    void Draw(Color fill, Border border, Canvas& canvas) const;
};

// Returns the border, or the thin white line between slices and tiles if it is not drawn.
Border BorderOrSeam(const Border& border);

}  // namespace rdl::layout
