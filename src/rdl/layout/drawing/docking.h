// SPDX-License-Identifier: GPL-3.0-or-later
// Places the parts of charts and maps along the sides of a room: titles, legends, scales. Positions are words
// of the report format: a side and a place along it, such as TopLeft or RightCenter. Lengths are points.
#pragma once

#include <string>

#include "rdl/layout/drawing/canvas.h"
#include "rdl/layout/drawing/chart_caption.h"

namespace rdl::layout {

// Returns the rectangle of a part of this size at its position; subtracts its side from `available`. A
// position that begins with neither Top, Bottom nor Left is at the right.
Rect DockAt(const std::string& position, Extents size, Rect& available);

// Draws a title at its side and subtracts its space from `available`. Draws nothing if it does not fit.
void DrawTitle(const ChartCaption& title, Rect& available, Canvas& canvas);

}  // namespace rdl::layout
