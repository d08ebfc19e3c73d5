// What is painted behind an item before anything else of it: its colour running into another one, and a
// picture.
#pragma once

#include <vector>

#include "platform/rdl/layout/page.h"

namespace rdl::layout {

struct Rect {
    double x = 0, y = 0, width = 0, height = 0;
    double Right() const { return x + width; }
    double Bottom() const { return y + height; }
};

// Adds what goes over the plain background colour. Raises rdl::Error when the picture would have to be
// repeated too often.
void AppendBackdrop(const Rect& area, const BoxStyle& box, std::vector<Op>& ops);

}  // namespace rdl::layout
