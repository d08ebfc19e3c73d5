// SPDX-License-Identifier: GPL-3.0-or-later
// Where a map's coordinates are on the page.
#pragma once

#include "rdl/layout/drawing/canvas.h"
#include "rdl/layout/drawing/map/data.h"

namespace rdl::layout {

struct MapBounds {
    double left = 0, right = 0, bottom = 0, top = 0;
    bool any = false;
    void Add(spatial::Position place);
    spatial::Position Center() const { return {(left + right) / 2, (bottom + top) / 2}; }
};

// Calls `visit` for each position of a geometry.
template <typename Visit>
void ForEachPosition(const spatial::Geometry& geometry, const Visit& visit) {
    for (const auto* lists : {&geometry.rings, &geometry.lines}) {
        for (const spatial::Positions& list : *lists) {
            for (const spatial::Position& position : list) {
                visit(position);
            }
        }
    }
    for (const spatial::Position& position : geometry.points) {
        visit(position);
    }
}

class MapScreen {
 public:
    // Fits the content into the area by the viewport's limits, view and zoom. A map without shapes and limits
    // shows the whole Earth, or the unit square of a plane.
    MapScreen(const MapData& data, const Rect& area);

    // Returns the spot of a coordinate, at most 100,000 points away.
    Spot At(spatial::Position place) const;
    const Rect& Area() const { return m_area; }
    const MapBounds& Coordinates() const { return m_coordinates; }  // of the content
    bool IsGeographic() const { return m_projection != Projection::Planar; }

 private:
    MapBounds Projected(const MapBounds& coordinates) const;

    const Rect m_area;
    Projection m_projection;
    spatial::Position m_center;  // of the projection
    MapBounds m_coordinates;
    spatial::Position m_middle;  // projected, in the middle of the area
    double m_scale = 1;
};

// Draws the layers, the first one first, with their labels.
void DrawLayers(const MapData& data, const MapScreen& screen, Canvas& canvas);
// Draws a marker by its name; an unknown one is a circle, None draws nothing.
void DrawMark(const MapMark& mark, Spot center, Canvas& canvas);
// Draws meridians and parallels.
void DrawGrid(const MapData& data, const MapScreen& screen, Canvas& canvas);

// Each draws one part at its side and subtracts its space from `available`.
void DrawLegend(const MapLegendData& legend, Rect& available, Canvas& canvas);
void DrawColorScale(const MapColorScaleData& scale, const Culture& culture, Rect& available, Canvas& canvas);
void DrawDistanceScale(const MapLegendData& frame, Color color, const MapScreen& screen,
                       const Culture& culture, Rect& available, Canvas& canvas);

}  // namespace rdl::layout
