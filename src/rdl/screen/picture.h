// A drawing as a picture, for formats that show no vectors.
#pragma once

#include <memory>
#include <string>

#include "rdl/layout/drawing/drawing.h"

namespace rdl::screen {

// On the background that the item has, if any. A PNG of twice the screen's resolution, less for what would be
// very large; the same bytes for the same drawing.
std::shared_ptr<const std::string> PictureOf(const layout::DrawingInstance& drawing);

}  // namespace rdl::screen
