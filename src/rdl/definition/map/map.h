// SPDX-License-Identifier: GPL-3.0-or-later
// A map's definition (MS-RDL, Map): layers of polygons, lines and points, their rules, legends, scales and
// titles. The shapes of a layer are in the report, in a shapefile, or in the rows of a data region; a layer
// may be bound to a data region whose groups give the shapes their values. Most properties are stored under
// their element names; consumers apply the defaults.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "rdl/definition/chart.h"
#include "rdl/definition/gauge.h"
#include "rdl/spatial/geometry.h"

namespace rdl {

using MapPart = GaugePart;

struct MapRule : MapPart {
    enum class Kind { ColorRange, ColorPalette, CustomColor, Size, Marker } kind = Kind::ColorRange;
    std::vector<Expr> colors;      // CustomColor
    std::vector<MapPart> buckets;  // of the distribution Custom
    std::vector<MapPart> markers;  // Marker
};

struct MapTemplate : MapPart {
    MapPart marker;  // of points
};

// The look of one shape in the report; replaces the layer's templates and rules where it is set.
struct MapOwnLook {
    std::size_t shape = 0;
    MapTemplate shapeTemplate, markers;
};

enum class MapLayerKind { Polygon, Line, Point };

struct MapLayer : MapPart {
    MapLayerKind kind = MapLayerKind::Polygon;
    MapTemplate shapeTemplate;                           // of polygons and lines
    MapTemplate markers;                                 // of points, and of the centres of polygons if set
    std::vector<MapRule> rules, markerRules;             // of polygons and lines; of points and centres
    std::vector<std::pair<std::string, Expr>> bindings;  // a field of the shapes, and what it equals

    // Where the shapes are: in the report, in a shapefile, or in the instances of a data region.
    std::shared_ptr<spatial::Shapes> embedded;  // null: none
    std::vector<MapOwnLook> looks;              // of embedded shapes, in their order
    Expr file;
    Expr vectorData;  // evaluated for each instance of the region `source`
    std::vector<std::pair<std::string, Expr>> sourceFields;

    int region = -1;  // index of the data region the layer is bound to; -1: none
    int source = -1;  // index of the data region with the shapes; -1: none
};

struct MapView : MapPart {
    enum class Kind { All, Custom, DataBound, Element } kind = Kind::All;
    std::vector<std::pair<std::string, Expr>> bindings;  // Element
};

struct MapViewport : MapPart {
    MapPart limits, meridians, parallels, location, size;
    MapView view;
};

struct MapLegend : MapPart {
    ChartText title;
};

struct MapTitle {
    ChartText text;
    Expr isOutside;  // of the viewport
};

struct Map : ReportItem {
    Map() : ReportItem(ItemKind::Map) {}
    std::vector<std::unique_ptr<Tablix>> regions;  // rows: the groups; one column
    MapViewport viewport;
    std::vector<MapLayer> layers;  // without tile layers; the first is drawn first
    std::vector<MapLegend> legends;
    std::vector<MapTitle> titles;
    MapLegend colorScale;
    MapPart distanceScale;
};

// Visit every property that may be an expression, except those of the data regions: of the map without its
// layers, of a layer's look, and of what a layer takes from its source region.
using MapVisit = std::function<void(const Expr&)>;
void WalkMap(const Map& map, const MapVisit& visit);
void WalkMapLayer(const MapLayer& layer, const MapVisit& visit);
void WalkMapSource(const MapLayer& layer, const MapVisit& visit);

}  // namespace rdl
