// SPDX-License-Identifier: GPL-3.0-or-later
// The background of an item beyond a plain colour: gradient and image.
#pragma once

#include <vector>

#include "rdl/layout/model/page.h"
#include "rdl/layout/model/rect.h"

namespace rdl::layout {

// Appends the objects drawn over the plain background colour. Raises rdl::Error if the image would repeat too
// often.
void AppendBackdrop(const Rect& area, const BoxStyle& box, std::vector<Op>& ops);

}  // namespace rdl::layout
