// SPDX-License-Identifier: GPL-3.0-or-later
// Maps for tests: a map of 300 by 200 points over the data set Data (Region, Product, Amount). Its viewport
// has no margin, so that content of 30 by 20 units is 10 points a unit.
#pragma once

#include <string>
#include <vector>

#include "rdl/layout/drawing/gauge_report.h"

namespace rdl::layout {

inline std::string Tag(const std::string& name, const std::string& content) {
    return "<" + name + ">" + content + "</" + name + ">";
}

inline std::string MapShapeOf(const std::string& element, const std::string& name, const std::string& vector,
                              const std::string& more = {}) {
    return Tag(element, Tag("VectorData", vector) +
                            Tag("MapFields", Tag("MapField", Tag("Name", "NAME") + Tag("Value", name))) +
                            more);
}

// Three squares of 10 by 10 side by side, and a fourth below the second: North, South, East, Else.
inline std::string Squares() {
    return Tag("MapPolygons",
               MapShapeOf("MapPolygon", "North", "POLYGON ((0 10, 10 10, 10 20, 0 20, 0 10))") +
                   MapShapeOf("MapPolygon", "South", "POLYGON ((10 10, 20 10, 20 20, 10 20, 10 10))") +
                   MapShapeOf("MapPolygon", "East", "POLYGON ((20 10, 30 10, 30 20, 20 20, 20 10))") +
                   MapShapeOf("MapPolygon", "Else", "POLYGON ((10 0, 20 0, 20 10, 10 10, 10 0))"));
}

// A region of groups by Region, and what binds a layer to it by the field NAME.
inline const std::string MapGroups =
    "<MapDataRegions><MapDataRegion Name=\"Regions\"><MapMember><Group Name=\"ByRegion\"><GroupExpressions>"
    "<GroupExpression>=Fields!Region.Value</GroupExpression></GroupExpressions></Group></MapMember>"
    "<DataSetName>Data</DataSetName></MapDataRegion></MapDataRegions>";
inline const std::string MapBound =
    "<MapDataRegionName>Regions</MapDataRegionName><MapBindingFieldPairs><MapBindingFieldPair><FieldName>NAME"
    "</FieldName><BindingExpression>=Fields!Region.Value</BindingExpression></MapBindingFieldPair>"
    "</MapBindingFieldPairs>";
inline const std::string AmountOf = "<DataValue>=Sum(Fields!Amount.Value)</DataValue>";

inline std::string MapLayerOf(const std::string& kind, const std::string& content) {
    return "<MapLayers><Map" + kind + "Layer Name=\"Areas\">" + content + "</Map" + kind +
           "Layer></MapLayers>";
}

inline std::string MapOf(const std::string& content, const std::string& viewport = {}) {
    return "<Map Name=\"World\"><MapViewport><ContentMargin>0pt</ContentMargin>" + viewport +
           "</MapViewport>" + content + "<Width>300pt</Width><Height>200pt</Height></Map>";
}

inline Table Amounts() {
    return Sales({{"North", "Tea", 10}, {"South", "Tea", 20}, {"South", "Pen", 10}, {"East", "Tea", 50}});
}

inline DrawnGauges DrawMapOf(const std::string& map, Table table = Amounts()) {
    return {BuildKit(Report(map), std::move(table))};
}

}  // namespace rdl::layout
