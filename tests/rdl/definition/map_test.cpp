// SPDX-License-Identifier: GPL-3.0-or-later
// Maps as they are read.
#include "rdl/definition/map/map.h"

#include <gmock/gmock.h>

#include "rdl/definition/rdl_text.h"

namespace rdl::test {
namespace {

using testing::HasSubstr;

std::string MapWith(const std::string& inner) {
    return WithItems("<Map Name=\"World\">" + inner + "</Map>", Ns2016);
}

std::string Polygons(const std::string& shapes, const std::string& more = {}) {
    return MapWith("<MapLayers><MapPolygonLayer Name=\"Areas\"><MapPolygons>" + shapes + "</MapPolygons>" +
                   more + "</MapPolygonLayer></MapLayers>");
}

const Map& MapIn(const Definition& report) {
    return OnlyItem<Map>(report);
}

TEST(MapDefinition, LayersOfAllKindsAreReadAndTilesSkipped) {
    const Definition report = Parse(MapWith(
        "<MapLayers><MapTileLayer Name=\"T\"><TileStyle>Road</TileStyle></MapTileLayer><MapPolygonLayer "
        "Name=\"A\"/><MapLineLayer Name=\"B\"/><MapPointLayer Name=\"C\"/></MapLayers>"));
    const auto& layers = MapIn(report).layers;
    ASSERT_EQ(layers.size(), 3U);
    EXPECT_EQ(layers[0].kind, MapLayerKind::Polygon);
    EXPECT_EQ(layers[1].name, "B");
    EXPECT_EQ(layers[2].kind, MapLayerKind::Point);
}

TEST(MapDefinition, ShapesHaveTheirFields) {
    const Definition report =
        Parse(Polygons("<MapPolygon><VectorData>POLYGON ((0 0, 1 0, 1 1, 0 "
                       "0))</VectorData><MapFields><MapField><Name>A</Name><Value>x"
                       "</Value></MapField></MapFields></"
                       "MapPolygon><MapPolygon><MapFields><MapField><Name>B</Name><Value>2.5</Value>"
                       "</MapField></MapFields></MapPolygon>",
                       "<MapFieldDefinitions><MapFieldDefinition><Name>B</Name><DataType>Float</DataType></"
                       "MapFieldDefinition>"
                       "</MapFieldDefinitions>"));
    const spatial::Shapes& shapes = *MapIn(report).layers.at(0).embedded;
    EXPECT_THAT(shapes.fieldNames, testing::ElementsAre("A", "B"));
    ASSERT_EQ(shapes.shapes.size(), 2U);
    EXPECT_EQ(shapes.shapes[0].geometry.rings.size(), 1U);
    EXPECT_EQ(shapes.shapes[0].values.at(0).AsText(), "x");
    EXPECT_EQ(shapes.shapes[1].values.at(1).AsDouble(), 2.5);
}

TEST(MapDefinition, AnOwnLookIsAskedForAsFlagsAre) {
    const auto polygon = [](const std::string& flag) {
        return Polygons("<MapPolygon><UseCustomPolygonTemplate>" + flag +
                        "</UseCustomPolygonTemplate><VectorData>POLYGON ((0 0, 1 0, 1 1, 0 0))</VectorData>"
                        "</MapPolygon>");
    };
    for (const char* flag : {"true", " 1 "}) {
        const Definition report = Parse(polygon(flag));
        EXPECT_EQ(MapIn(report).layers.at(0).looks.size(), 1U) << flag;
    }
    const Definition report = Parse(polygon("0"));
    EXPECT_TRUE(MapIn(report).layers.at(0).looks.empty());
    EXPECT_THAT(ErrorOf(polygon("maybe")),
                HasSubstr("MapPolygon 1, UseCustomPolygonTemplate: \"maybe\" is neither true nor false"));
}

TEST(MapDefinition, AShapeThatCannotBeReadIsNamed) {
    EXPECT_EQ(ErrorOf(Polygons("<MapPolygon/>\n<MapPolygon><VectorData>POLYGON (</VectorData></MapPolygon>")),
              "sales.rpt, line 3: Map World, MapPolygonLayer Areas, MapPolygon 2, VectorData: its text "
              "should have ( at "
              "character 10");
    EXPECT_THAT(ErrorOf(Polygons("<MapPolygon><VectorData>AAECAwQ=</VectorData></MapPolygon>")),
                HasSubstr("MapPolygon 1, VectorData: a shape of the kind"));
}

TEST(MapDefinition, ADataRegionThatTheMapDoesNotHaveIsNamed) {
    EXPECT_THAT(
        ErrorOf(MapWith("<MapLayers><MapLineLayer Name=\"B\"><MapDataRegionName>Sales</MapDataRegionName>"
                        "</MapLineLayer></MapLayers>")),
        HasSubstr("Map World, MapLineLayer B: the map has no data region \"Sales\""));
    EXPECT_THAT(ErrorOf(MapWith("<MapLayers><MapLineLayer Name=\"B\"><MapSpatialDataRegion/></MapLineLayer>"
                                "</MapLayers>")),
                HasSubstr("MapLineLayer B: it names no data region"));
}

TEST(MapDefinition, TheFieldOfASpatialDataSetIsAName) {
    EXPECT_THAT(
        ErrorOf(MapWith("<MapLayers><MapLineLayer Name=\"B\"><MapSpatialDataSet><DataSetName>D</DataSetName>"
                        "<SpatialField>a b</SpatialField></MapSpatialDataSet></MapLineLayer></MapLayers>")),
        HasSubstr("MapSpatialDataSet, SpatialField: \"a b\" is no name of a field"));
}

TEST(MapDefinition, RulesKeepTheirKindsAndParts) {
    const Definition report =
        Parse(MapWith("<MapLayers><MapPointLayer "
                      "Name=\"C\"><MapPointRules><MapSizeRule/><MapCustomColorRule><MapCustomColors>"
                      "<MapCustomColor>Red</MapCustomColor></"
                      "MapCustomColors><MapBuckets><MapBucket><StartValue>1</StartValue>"
                      "</MapBucket></MapBuckets></"
                      "MapCustomColorRule><MapMarkerRule><MapMarkers><MapMarker><MapMarkerStyle>Star"
                      "</MapMarkerStyle></MapMarker></MapMarkers></MapMarkerRule></MapPointRules></"
                      "MapPointLayer></MapLayers>"));
    const auto& rules = MapIn(report).layers.at(0).markerRules;
    ASSERT_EQ(rules.size(), 3U);
    EXPECT_EQ(rules[0].kind, MapRule::Kind::Size);
    EXPECT_EQ(rules[1].colors.at(0).source, "Red");
    EXPECT_EQ(rules[1].buckets.at(0)["StartValue"].source, "1");
    EXPECT_EQ(rules[2].markers.at(0)["MapMarkerStyle"].source, "Star");
}

TEST(MapDefinition, PartsAreCounted) {
    std::string titles, layers;
    for (int i = 0; i < 201; ++i) {
        titles += "<MapTitle/>";
        layers += "<MapLineLayer/>";
    }
    EXPECT_THAT(ErrorOf(MapWith("<MapTitles>" + titles + "</MapTitles>")),
                HasSubstr("Map World: it has more than 200 elements MapTitle in one place"));
    EXPECT_THAT(ErrorOf(MapWith("<MapLayers>" + layers + "</MapLayers>")),
                HasSubstr("Map World: it has more than 50 layers"));
}

}  // namespace
}  // namespace rdl::test
