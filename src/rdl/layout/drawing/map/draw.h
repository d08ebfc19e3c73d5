// SPDX-License-Identifier: GPL-3.0-or-later
// Draws a map.
#pragma once

#include <memory>

#include "rdl/layout/drawing/drawing.h"
#include "rdl/layout/drawing/map/data.h"

namespace rdl::layout {

// Width and height are points. A map without shapes is an empty frame with its titles.
std::shared_ptr<DrawingInstance> DrawMap(const MapData& data, double width, double height);

// Returns a row for each shape that has data: its layer, what binds it and the value of its first rule.
// Empty without such shapes.
DrawingData DataOf(const MapData& data);

}  // namespace rdl::layout
