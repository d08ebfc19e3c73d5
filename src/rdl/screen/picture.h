// SPDX-License-Identifier: GPL-3.0-or-later
// Renders drawings as images, for formats without vectors.
#pragma once

#include <memory>
#include <string>

#include "rdl/layout/drawing/drawing.h"

namespace rdl::screen {

// Returns a PNG of twice the screen resolution (less for very large drawings) on the item's background. Equal
// drawings give equal bytes.
std::shared_ptr<const std::string> PictureOf(const layout::DrawingInstance& drawing);

}  // namespace rdl::screen
