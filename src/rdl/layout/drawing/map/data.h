// SPDX-License-Identifier: GPL-3.0-or-later
// A map with its data: all properties evaluated, nothing projected yet. Lengths are points.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "rdl/definition/map/map.h"
#include "rdl/layout/drawing/chart_caption.h"
#include "rdl/layout/drawing/map/projection.h"
#include "rdl/layout/drawing/map/rules.h"
#include "rdl/layout/model/rect.h"

namespace rdl::layout {

struct MapPlan;
class PropertyReader;

struct MapMark {        // a marker, of a point or of a polygon's centre
    std::string shape;  // Circle, Rectangle, Diamond ...; None draws nothing
    double size = 8.25;
    Color fill = Transparent;
    Border border;
};

enum class MapLabelMode { Never, IfItFits, Always };

struct MapShapeData {
    const spatial::Geometry* geometry = nullptr;
    bool isBound = false;                     // has data
    bool isHidden = false, isViewed = false;  // viewed: by the view Element
    Color fill = Transparent;
    Border border;  // of a line: the line itself
    std::optional<MapMark> mark;
    std::string label, labelPlacement;
    MapLabelMode labelMode = MapLabelMode::IfItFits;
    CharStylePtr textStyle;
    bool ownLabelColor = false;  // set by the report; else chosen to be legible on the polygon
    std::string name;            // values that bind it to its data
    Value value;                 // of the first rule
};

struct MapLayerData {
    std::string name;
    MapLayerKind kind = MapLayerKind::Polygon;
    bool isHidden = false;
    std::shared_ptr<const spatial::Shapes> source;  // keeps the geometries alive
    std::vector<MapShapeData> shapes;
};

struct MapLegendEntry {
    std::string text;
    MapLayerKind kind = MapLayerKind::Polygon;
    Color color = Transparent;
    Border border;
    MapMark mark;  // Point
};

struct MapLegendData {
    std::string name, position;
    bool isOutside = false;
    ChartCaption title;
    CharStylePtr style;
    BoxStylePtr box;
    std::vector<MapLegendEntry> entries;
};

struct MapColorScaleData {
    MapLegendData frame;
    struct Band {
        Color color;
        double from, to;
    };
    std::vector<Band> bands;
    std::string format;
    Color border = Black;
};

struct MapGridData {  // meridians or parallels
    bool isShown = false, hasLabels = false;
    std::optional<double> interval;
    Border line;
    CharStylePtr textStyle;
};

struct MapViewportData {
    Projection projection = Projection::Planar;
    std::optional<double> centerX, centerY;          // of the projection
    std::optional<double> left, right, bottom, top;  // limits, in coordinates
    double margin = 10;
    MapView::Kind view = MapView::Kind::All;
    std::optional<double> zoom;     // percent
    double viewX = 50, viewY = 50;  // percent of the content
    std::optional<Rect> area;       // set by the report
    BoxStylePtr box;
    MapGridData meridians, parallels;
};

struct MapTitleData {
    ChartCaption caption;
    bool isOutside = false;
};

struct MapData {
    std::string name;
    MapViewportData viewport;
    std::vector<MapLayerData> layers;
    std::vector<MapTitleData> titles;
    std::vector<MapLegendData> legends;
    std::optional<MapColorScaleData> colorScale;
    std::optional<MapLegendData> distanceScale;
    Color distanceColor = Black;
    const Culture* culture = nullptr;
};

// Evaluates at the current place of `reader` and restores that place. Reads shapefiles once and keeps their
// shapes in the plan. Raises rdl::Error that names the map and the layer for a shape or file that cannot be
// read, and past the limits on shapes and points. `plan` must outlive the result.
MapData EvaluateMap(MapPlan& plan, PropertyReader& reader, double width, double height);

}  // namespace rdl::layout
