// SPDX-License-Identifier: GPL-3.0-or-later
// The handles of a selected item: where they are, and what becomes of an item whose handle is moved.
#pragma once

#include <QRectF>
#include <optional>
#include <vector>

#include "designer/canvas/snapping.h"
#include "designer/document/tablix_grid.h"

namespace designer {

enum class Handle {
    TopLeft,
    Top,
    TopRight,
    Left,
    Right,
    BottomLeft,
    Bottom,
    BottomRight,
    LineStart,
    LineEnd
};

// Returns the handles of an item that covers the area, in pixels; a line has one at each end.
std::vector<Handle> HandlesOf(bool isLine);
QPointF PlaceOf(Handle handle, const QRectF& area);
QRectF HandleArea(Handle handle, const QRectF& area);
Qt::CursorShape CursorOf(Handle handle);

// Returns the handle at a point, or nullopt.
std::optional<Handle> HandleAt(QPointF point, const QRectF& area, bool isLine);

MovingEdges EdgesOf(Handle handle);

// Returns the place after its handle has moved. Sizes do not become negative, but those of a line may.
Rect Resized(const Rect& place, Handle handle, double dx, double dy);

}  // namespace designer
