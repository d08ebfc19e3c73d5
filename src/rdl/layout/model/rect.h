// SPDX-License-Identifier: GPL-3.0-or-later
// An area of a page.
#pragma once

namespace rdl::layout {

// In points from the page's top left corner, y downwards.
struct Rect {
    double x = 0, y = 0, width = 0, height = 0;
    double Right() const { return x + width; }
    double Bottom() const { return y + height; }
};

}  // namespace rdl::layout
