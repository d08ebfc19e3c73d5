// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/drawing/map/view.h"

#include <algorithm>
#include <cmath>

namespace rdl::layout {
namespace {

using spatial::Position;

// Whether the coordinates can be degrees.
bool AreDegrees(const MapBounds& bounds) {
    return bounds.left >= -360 && bounds.right <= 360 && bounds.bottom >= -90.5 && bounds.top <= 90.5;
}

void AddShape(const MapShapeData& shape, MapBounds& bounds) {
    ForEachPosition(*shape.geometry, [&bounds](const Position& position) { bounds.Add(position); });
}

MapBounds BoundsOf(const MapData& data, bool (*isMeant)(const MapShapeData&)) {
    MapBounds bounds;
    for (const MapLayerData& layer : data.layers) {
        for (const MapShapeData& shape : layer.shapes) {
            if (isMeant(shape)) {
                AddShape(shape, bounds);
            }
        }
    }
    return bounds;
}

// A single place gets some room around it.
void Widen(MapBounds& bounds) {
    constexpr double Least = 1e-9, Room = 0.5;
    if (bounds.right - bounds.left < Least && bounds.top - bounds.bottom < Least) {
        bounds.left -= Room;
        bounds.right += Room;
        bounds.bottom -= Room;
        bounds.top += Room;
    }
}

double FittingScale(const MapBounds& bounds, const Rect& area, double margin) {
    const double wide = std::max(area.width - 2 * margin, 1.0),
                 high = std::max(area.height - 2 * margin, 1.0);
    constexpr double Least = 1e-9;
    return std::min(wide / std::max(bounds.right - bounds.left, Least),
                    high / std::max(bounds.top - bounds.bottom, Least));
}

}  // namespace

void MapBounds::Add(Position place) {
    left = any ? std::min(left, place.x) : place.x;
    right = any ? std::max(right, place.x) : place.x;
    bottom = any ? std::min(bottom, place.y) : place.y;
    top = any ? std::max(top, place.y) : place.y;
    any = true;
}

// The edges of the rectangle, which may be curves.
MapBounds MapScreen::Projected(const MapBounds& coordinates) const {
    constexpr int Steps = 40;
    MapBounds bounds;
    const double wide = coordinates.right - coordinates.left, high = coordinates.top - coordinates.bottom;
    for (int i = 0; i <= Steps; ++i) {
        const double x = coordinates.left + wide * i / Steps, y = coordinates.bottom + high * i / Steps;
        for (const Position& place : {Position{x, coordinates.bottom}, Position{x, coordinates.top},
                                      Position{coordinates.left, y}, Position{coordinates.right, y}}) {
            bounds.Add(Project(m_projection, place, m_center));
        }
    }
    return bounds;
}

MapScreen::MapScreen(const MapData& data, const Rect& area)
    : m_area(area), m_projection(data.viewport.projection) {
    const MapViewportData& view = data.viewport;
    m_coordinates = BoundsOf(data, [](const MapShapeData&) { return true; });
    if (!AreDegrees(m_coordinates)) {
        m_projection = Projection::Planar;
    }
    if (!m_coordinates.any) {
        m_coordinates = IsGeographic() ? MapBounds{-180, 180, -90, 90, true} : MapBounds{0, 1, 0, 1, true};
    }
    const auto limit = [](const std::optional<double>& from, double& to) {
        constexpr double Farthest = 1e9;
        to = from ? std::clamp(*from, -Farthest, Farthest) : to;
    };
    MapBounds limited = m_coordinates;
    limit(view.left, limited.left);
    limit(view.right, limited.right);
    limit(view.bottom, limited.bottom);
    limit(view.top, limited.top);
    if (limited.left <= limited.right && limited.bottom <= limited.top) {
        m_coordinates = limited;
    }
    Widen(m_coordinates);
    m_center = {view.centerX.value_or(m_coordinates.Center().x), view.centerY.value_or(0)};
    MapBounds content = Projected(m_coordinates);
    const double whole = FittingScale(content, area, view.margin);
    const double zoom = std::clamp(view.zoom.value_or(100), 1.0, 100'000.0) / 100;
    m_scale = whole * zoom;
    m_middle = content.Center();
    if (view.view == MapView::Kind::Custom) {
        m_middle = {content.left + (content.right - content.left) * view.viewX / 100,
                    content.top - (content.top - content.bottom) * view.viewY / 100};
    } else if (view.view != MapView::Kind::All) {
        MapBounds meant = view.view == MapView::Kind::Element
                              ? BoundsOf(data, [](const MapShapeData& shape) { return shape.isViewed; })
                              : BoundsOf(data, [](const MapShapeData& shape) { return shape.isBound; });
        if (meant.any) {
            Widen(meant);
            const MapBounds seen = Projected(meant);
            m_middle = seen.Center();
            m_scale = view.zoom ? m_scale : FittingScale(seen, area, view.margin);
        }
    }
}

Spot MapScreen::At(Position place) const {
    constexpr double Farthest = 100'000;
    const Position made = Project(m_projection, place, m_center);
    const double x = m_area.x + m_area.width / 2 + (made.x - m_middle.x) * m_scale;
    const double y = m_area.y + m_area.height / 2 - (made.y - m_middle.y) * m_scale;
    return {std::clamp(x, -Farthest, Farthest), std::clamp(y, -Farthest, Farthest)};
}

}  // namespace rdl::layout
