// What is painted behind an item before anything else of it: its colour running into another one, and a
// picture.
#pragma once

#include <vector>

#include "rdl/layout/model/page.h"
#include "rdl/layout/model/rect.h"

namespace rdl::layout {

// Adds what goes over the plain background colour. Raises rdl::Error when the picture would have to be
// repeated too often.
void AppendBackdrop(const Rect& area, const BoxStyle& box, std::vector<Op>& ops);

}  // namespace rdl::layout
