// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/canvas/handles.h"

#include <algorithm>

namespace designer {
namespace {

constexpr double Half = 3.5;   // of the square that is shown, in pixels
constexpr double Reach = 5.5;  // of the pointer

bool IsIn(Handle handle, std::initializer_list<Handle> handles) {
    return std::find(handles.begin(), handles.end(), handle) != handles.end();
}

}  // namespace

std::vector<Handle> HandlesOf(bool isLine) {
    if (isLine) {
        return {Handle::LineStart, Handle::LineEnd};
    }
    return {Handle::TopLeft, Handle::TopRight, Handle::BottomLeft, Handle::BottomRight,
            Handle::Top,     Handle::Left,     Handle::Right,      Handle::Bottom};
}

QPointF PlaceOf(Handle handle, const QRectF& area) {
    if (handle == Handle::LineStart) {
        return {area.x(), area.y()};
    }
    if (handle == Handle::LineEnd) {
        return {area.x() + area.width(), area.y() + area.height()};
    }
    const MovingEdges edges = EdgesOf(handle);
    const QRectF whole = area.normalized();
    const double x = edges.left ? whole.left() : edges.right ? whole.right() : whole.center().x();
    const double y = edges.top ? whole.top() : edges.bottom ? whole.bottom() : whole.center().y();
    return {x, y};
}

QRectF HandleArea(Handle handle, const QRectF& area) {
    const QPointF at = PlaceOf(handle, area);
    return {at.x() - Half, at.y() - Half, 2 * Half, 2 * Half};
}

Qt::CursorShape CursorOf(Handle handle) {
    if (IsIn(handle, {Handle::TopLeft, Handle::BottomRight})) {
        return Qt::SizeFDiagCursor;
    }
    if (IsIn(handle, {Handle::TopRight, Handle::BottomLeft})) {
        return Qt::SizeBDiagCursor;
    }
    if (IsIn(handle, {Handle::Left, Handle::Right})) {
        return Qt::SizeHorCursor;
    }
    return IsIn(handle, {Handle::Top, Handle::Bottom}) ? Qt::SizeVerCursor : Qt::CrossCursor;
}

std::optional<Handle> HandleAt(QPointF point, const QRectF& area, bool isLine) {
    for (const Handle handle : HandlesOf(isLine)) {
        const QPointF away = point - PlaceOf(handle, area);
        if (std::max(std::abs(away.x()), std::abs(away.y())) <= Reach) {
            return handle;
        }
    }
    return std::nullopt;
}

MovingEdges EdgesOf(Handle handle) {
    MovingEdges edges;
    edges.left = IsIn(handle, {Handle::TopLeft, Handle::Left, Handle::BottomLeft, Handle::LineStart});
    edges.right = IsIn(handle, {Handle::TopRight, Handle::Right, Handle::BottomRight, Handle::LineEnd});
    edges.top = IsIn(handle, {Handle::TopLeft, Handle::Top, Handle::TopRight, Handle::LineStart});
    edges.bottom = IsIn(handle, {Handle::BottomLeft, Handle::Bottom, Handle::BottomRight, Handle::LineEnd});
    return edges;
}

Rect Resized(const Rect& place, Handle handle, double dx, double dy) {
    Rect result = place;
    const MovingEdges edges = EdgesOf(handle);
    const bool isLine = IsIn(handle, {Handle::LineStart, Handle::LineEnd});
    if (edges.left) {
        const double most = isLine ? dx : std::min(dx, place.width);
        result.left += most;
        result.width -= most;
    } else if (edges.right) {
        result.width = isLine ? place.width + dx : std::max(0.0, place.width + dx);
    }
    if (edges.top) {
        const double most = isLine ? dy : std::min(dy, place.height);
        result.top += most;
        result.height -= most;
    } else if (edges.bottom) {
        result.height = isLine ? place.height + dy : std::max(0.0, place.height + dy);
    }
    return result;
}

}  // namespace designer
