// SPDX-License-Identifier: GPL-3.0-or-later
// Maps as they are drawn: shapes, their places, rules, labels, legends and scales.
#include <gmock/gmock.h>

#include "rdl/layout/drawing/map_kit.h"
#include "rdl/raises.h"
#include "rdl/spatial/shape_files.h"
#include "rdl/values/error.h"

namespace rdl::layout {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::string ColorRule(const std::string& more, const std::string& kind = "MapColorRangeRule") {
    return Tag("MapPolygonRules", Tag(kind, AmountOf + more));
}

const std::string TwoColors =
    "<StartColor>#000000</StartColor><MiddleColor>Transparent</MiddleColor><EndColor>#0000C8</EndColor>";

std::vector<Color> FillsOf(const DrawnGauges& map) {
    std::vector<Color> fills;
    for (const PathOp& path : map.Of<PathOp>()) {
        fills.push_back(path.fill);
    }
    return fills;
}

std::string ReachText(const PathOp& path) {
    const Reach reach = ReachOf(path);
    const auto round = [](double number) { return std::to_string(std::lround(number * 10)); };
    return round(reach.left) + " " + round(reach.top) + " " + round(reach.right) + " " + round(reach.bottom);
}

TEST(Map, PolygonsFillTheViewport) {
    const DrawnGauges map = DrawMapOf(MapOf(MapLayerOf("Polygon", Squares())));
    const auto paths = map.Of<PathOp>();
    ASSERT_EQ(paths.size(), 4U);
    EXPECT_EQ(ReachText(paths[0]), "0 0 1000 1000");
    EXPECT_EQ(ReachText(paths[2]), "2000 0 3000 1000");
    EXPECT_EQ(ReachText(paths[3]), "1000 1000 2000 2000");
    EXPECT_EQ(paths[0].fill, Transparent);
    EXPECT_EQ(paths[0].stroke, 0xFF808080);
}

TEST(Map, TheContentKeepsItsProportionsAndItsMargin) {
    const DrawnGauges map = DrawMapOf(
        "<Map Name=\"World\"><MapViewport/>" +
        MapLayerOf("Polygon",
                   Tag("MapPolygons", MapShapeOf("MapPolygon", "A", "POLYGON ((0 0, 1 0, 1 1, 0 1, 0 0))"))) +
        "<Width>300pt</Width><Height>200pt</Height></Map>");
    EXPECT_EQ(ReachText(map.Of<PathOp>().at(0)), "600 100 2400 1900");
}

TEST(Map, EmptyMapsAreEmptyFrames) {
    const std::string size = "<Width>300pt</Width><Height>200pt</Height></Map>";
    for (const std::string& map :
         {"<Map Name=\"World\">" + size, "<Map Name=\"World\"><MapViewport/>" + size,
          "<Map Name=\"World\"><MapViewport/><MapLayers/>" + size, MapOf(MapLayerOf("Polygon", "")),
          MapOf(MapLayerOf("Tile", "")), MapOf(MapGroups + MapLayerOf("Polygon", MapBound)),
          MapOf(MapLayerOf("Point", Tag("MapPoints", Tag("MapPoint", "")))),
          std::string("<Map Name=\"World\"><Width>0pt</Width><Height>0pt</Height></Map>")}) {
        const DrawnGauges drawn = DrawMapOf(map, Sales({}));
        EXPECT_THAT(drawn.Of<PathOp>(), IsEmpty()) << map;
        EXPECT_EQ(drawn.Drawing().description, "World");
        EXPECT_THAT(drawn.Drawing().data.columns, IsEmpty());
    }
}

TEST(Map, LinesAndPointsAreDrawn) {
    const DrawnGauges lines = DrawMapOf(MapOf(MapLayerOf(
        "Line", "<MapLineTemplate><Style><Color>Red</Color></Style><Width>3pt</Width></MapLineTemplate>" +
                    Tag("MapLines", MapShapeOf("MapLine", "A", "LINESTRING (0 0, 30 20)")))));
    const PathOp line = lines.Of<PathOp>().at(0);
    EXPECT_EQ(ReachText(line), "0 0 3000 2000");
    EXPECT_EQ(line.stroke, 0xFFFF0000);
    EXPECT_EQ(line.strokeWidth, 3);
    const DrawnGauges points = DrawMapOf(MapOf(MapLayerOf(
        "Point",
        "<MapMarkerTemplate><Style><BackgroundColor>Blue</BackgroundColor></Style><Size>8pt</Size><MapMarker>"
        "<MapMarkerStyle>Rectangle</MapMarkerStyle></MapMarker></MapMarkerTemplate>" +
            Tag("MapPoints", MapShapeOf("MapPoint", "A", "MULTIPOINT (0 0, 30 20)")))));
    const auto marks = points.Filled(0xFF0000FF);
    ASSERT_EQ(marks.size(), 2U);
    EXPECT_EQ(ReachText(marks[0]), "-40 1960 40 2040");
    EXPECT_EQ(ReachText(marks[1]), "2960 -40 3040 40");
}

TEST(Map, EqualIntervalsGiveTheirColours) {
    // 10, 30 and 50 in the ranges from 10, 30 (of 40: the half) ...
    const DrawnGauges map = DrawMapOf(MapOf(
        MapGroups + MapLayerOf("Polygon", Squares() + MapBound +
                                              ColorRule("<DistributionType>EqualInterval</DistributionType>"
                                                        "<BucketCount>3</BucketCount>" +
                                                        TwoColors))));
    EXPECT_THAT(FillsOf(map), ElementsAre(0xFF000000, 0xFF000064, 0xFF0000C8, Transparent));
}

TEST(Map, ThreeColoursAreTheUsualOnes) {
    const DrawnGauges map = DrawMapOf(MapOf(
        MapGroups + MapLayerOf("Polygon", Squares() + MapBound + ColorRule("<BucketCount>3</BucketCount>"))));
    EXPECT_THAT(FillsOf(map), ElementsAre(0xFF008000, 0xFFFFFF00, 0xFFFF0000, Transparent));
}

TEST(Map, PalettesAndOwnColoursAreByBucket) {
    const DrawnGauges own = DrawMapOf(MapOf(
        MapGroups +
        MapLayerOf(
            "Polygon",
            Squares() + MapBound +
                ColorRule("<BucketCount>3</BucketCount><MapCustomColors><MapCustomColor>Red</MapCustomColor>"
                          "<MapCustomColor>Blue</MapCustomColor></MapCustomColors>",
                          "MapCustomColorRule"))));
    EXPECT_THAT(FillsOf(own), ElementsAre(0xFFFF0000, 0xFF0000FF, 0xFFFF0000, Transparent));
    const DrawnGauges palette =
        DrawMapOf(MapOf(MapGroups + MapLayerOf("Polygon", Squares() + MapBound +
                                                              ColorRule("<Palette>BrightPastel</Palette>",
                                                                        "MapColorPaletteRule"))));
    EXPECT_THAT(FillsOf(palette), ElementsAre(0xFF418CF0, 0xFFFCB441, 0xFFE0400A, Transparent));
}

TEST(Map, OwnBucketsAndTheirLegend) {
    const DrawnGauges map = DrawMapOf(MapOf(
        MapGroups +
        MapLayerOf(
            "Polygon",
            Squares() + MapBound +
                ColorRule("<DistributionType>Custom</DistributionType><MapBuckets><MapBucket><StartValue>0"
                          "</StartValue><EndValue>20</EndValue></MapBucket><MapBucket><StartValue>20"
                          "</StartValue><EndValue>40</EndValue></MapBucket></MapBuckets><LegendName>Key"
                          "</LegendName><LegendText>#FROMVALUE {N1} to #TOVALUE{N0}!</LegendText>" +
                          TwoColors)) +
        "<MapLegends><MapLegend "
        "Name=\"Key\"><MapLegendTitle><Caption>Amount</Caption></MapLegendTitle></MapLegend>"
        "</MapLegends>"));
    EXPECT_THAT(FillsOf(map), testing::Contains(0xFF000000));
    EXPECT_THAT(FillsOf(map), testing::Contains(0xFF0000C8));
    EXPECT_THAT(map.Texts(), ElementsAre("Amount", "0.0 to 20!", "20.0 to 40!"));
}

TEST(Map, WithoutAValueEachShapeHasItsColour) {
    const DrawnGauges map = DrawMapOf(MapOf(
        MapLayerOf("Polygon", Squares() + "<MapPolygonRules><MapColorPaletteRule/></MapPolygonRules>")));
    EXPECT_THAT(FillsOf(map), ElementsAre(0xFF418CF0, 0xFFFCB441, 0xFFE0400A, 0xFF056492));
}

TEST(Map, CategoriesAreInTheOrderOfTheirTexts) {
    const DrawnGauges map = DrawMapOf(
        MapOf(MapLayerOf("Polygon",
                         Squares() + "<MapPolygonRules><MapColorPaletteRule><DataValue>#NAME</DataValue>"
                                     "<LegendName>Key</LegendName></MapColorPaletteRule></MapPolygonRules>") +
              "<MapLegends><MapLegend Name=\"Key\"/></MapLegends>"));
    const std::vector<Color> fills = FillsOf(map);
    EXPECT_THAT(std::vector<Color>(fills.begin(), fills.begin() + 4),
                ElementsAre(0xFFE0400A, 0xFF056492, 0xFF418CF0, 0xFFFCB441));
    EXPECT_THAT(map.Texts(), ElementsAre("East", "Else", "North", "South"));
}

TEST(Map, SizesAndMarkersOfCentresFollowTheirRules) {
    const DrawnGauges map = DrawMapOf(MapOf(
        MapGroups +
        MapLayerOf(
            "Polygon",
            Squares() + MapBound +
                "<MapMarkerTemplate><Style><BackgroundColor>Red</BackgroundColor></Style></"
                "MapMarkerTemplate>" +
                Tag("MapCenterPointRules",
                    Tag("MapSizeRule", AmountOf + "<StartSize>4pt</StartSize><EndSize>20pt</EndSize>") +
                        Tag("MapMarkerRule", AmountOf + "<MapMarkers><MapMarker><MapMarkerStyle>Rectangle"
                                                        "</MapMarkerStyle></MapMarker></MapMarkers>")))));
    const auto marks = map.Filled(0xFFFF0000);
    ASSERT_EQ(marks.size(), 4U);
    EXPECT_EQ(ReachText(marks[0]), "480 480 520 520");
    EXPECT_EQ(ReachText(marks[1]), "1440 440 1560 560");
    EXPECT_EQ(ReachText(marks[2]), "2400 400 2600 600");
    EXPECT_EQ(ReachText(marks[3]), "1459 1459 1541 1541");  // without data: the template's look
}

TEST(Map, LabelsHaveFieldsAndValues) {
    const DrawnGauges map = DrawMapOf(MapOf(
        MapGroups +
        MapLayerOf("Polygon", Squares() + MapBound +
                                  "<MapPolygonTemplate><Label>=\"#NAME: \" &amp; Sum(Fields!Amount.Value)"
                                  "</Label><ShowLabel>True</ShowLabel></MapPolygonTemplate>")));
    EXPECT_THAT(map.Texts(), ElementsAre("North: 10", "South: 30", "East: 50"));
    const DrawnGauges plain = DrawMapOf(MapOf(MapLayerOf(
        "Polygon", Squares() + "<MapPolygonTemplate><Label>#NAME #OTHER</Label></MapPolygonTemplate>")));
    EXPECT_THAT(plain.Texts(), ElementsAre("North #OTHER", "South #OTHER", "East #OTHER", "Else #OTHER"));
}

TEST(Map, LabelsThatDoNotFitAreOmittedUnlessTheReportWantsThem) {
    const std::string small =
        Tag("MapPolygons", MapShapeOf("MapPolygon", "A long name", "POLYGON ((0 0, 1 0, 1 1, 0 1, 0 0))") +
                               MapShapeOf("MapPolygon", "B", "POLYGON ((0 0, 30 0, 30 20, 0 20, 0 0))"));
    const auto with = [&](const std::string& show) {
        return DrawMapOf(MapOf(MapLayerOf("Polygon", small + "<MapPolygonTemplate><Label>#NAME</Label>" +
                                                         show + "</MapPolygonTemplate>")))
            .Texts();
    };
    EXPECT_THAT(with(""), ElementsAre("B"));
    EXPECT_THAT(with("<ShowLabel>True</ShowLabel>"), ElementsAre("A long name", "B"));
    EXPECT_THAT(with("<ShowLabel>False</ShowLabel>"), IsEmpty());
}

TEST(Map, ShapesComeFromTheRowsOfADataSet) {
    const DrawnGauges map = DrawMapOf(
        MapOf(MapLayerOf("Point",
                         "<MapMarkerTemplate><Label>#Region</Label><Size>2pt</Size></MapMarkerTemplate>"
                         "<MapSpatialDataSet><DataSetName>Data</DataSetName><SpatialField>Product"
                         "</SpatialField><MapFieldNames><MapFieldName>Region</MapFieldName></MapFieldNames>"
                         "</MapSpatialDataSet>")),
        Sales({{"North", "POINT (0 20)", 1}, {"East", "POINT (30 0)", 2}, {"None", "", 3}}));
    EXPECT_THAT(map.Texts(), ElementsAre("North", "East"));
    EXPECT_EQ(ReachText(map.Of<PathOp>().at(0)), "-10 -10 10 10");
    EXPECT_EQ(ReachText(map.Of<PathOp>().at(1)), "2990 1990 3010 2010");
}

TEST(Map, ShapesComeFromTheGroupsOfADataRegion) {
    const DrawnGauges map = DrawMapOf(
        MapOf(
            MapGroups +
            MapLayerOf("Point",
                       "<MapDataRegionName>Regions</MapDataRegionName><MapSpatialDataRegion><VectorData>"
                       "=First(Fields!Product.Value)</VectorData></MapSpatialDataRegion><MapPointRules>"
                       "<MapSizeRule>" +
                           AmountOf +
                           "<StartSize>2pt</StartSize><EndSize>8pt</EndSize></MapSizeRule></MapPointRules>")),
        Sales({{"North", "POINT (0 20)", 1}, {"North", "POINT (0 20)", 1}, {"East", "POINT (30 0)", 9}}));
    EXPECT_EQ(ReachText(map.Of<PathOp>().at(0)), "-10 -10 10 10");
    EXPECT_EQ(ReachText(map.Of<PathOp>().at(1)), "2960 1960 3040 2040");
}

TEST(Map, AShapeThatCannotBeReadNamesTheMapTheLayerAndTheRow) {
    EXPECT_EQ(ErrorRaisedBy([] {
                  DrawMapOf(
                      MapOf(MapLayerOf("Point",
                                       "<MapSpatialDataSet><DataSetName>Data</DataSetName><SpatialField>"
                                       "Product</SpatialField></MapSpatialDataSet>")),
                      Sales({{"East", "POINT (1 2)", 1}, {"North", "POINT (0)", 1}}))
                      .Item();
              }),
              "Map \"World\", layer \"Areas\": row 2: its text should have a number at character 9");
    EXPECT_EQ(ErrorRaisedBy([] {
                  DrawMapOf(MapOf(
                      MapLayerOf("Polygon", "<MapShapefile><Source>world.shp</Source></MapShapefile>")));
              }),
              "Map \"World\", layer \"Areas\": the file \"world.shp\" cannot be read");
}

TEST(Map, MercatorStretchesTowardsThePoles) {
    const std::string layer = MapLayerOf(
        "Point", "<MapMarkerTemplate><Size>2pt</Size></MapMarkerTemplate>" +
                     Tag("MapPoints", MapShapeOf("MapPoint", "A", "MULTIPOINT (-90 0, 90 0, 0 60, 0 -60)")));
    const auto marks = [&](const std::string& viewport) {
        return DrawMapOf(MapOf(layer, viewport)).Of<PathOp>();
    };
    EXPECT_EQ(ReachText(marks("<MapCoordinateSystem>Geographic</MapCoordinateSystem>").at(2)),
              "1490 -10 1510 10");
    // 180 degrees are 300 points; latitude 60 is at 75.456 degrees of the plane, 1.258 of its own.
    const std::string mercator =
        "<MapCoordinateSystem>Geographic</MapCoordinateSystem><MapProjection>Mercator</MapProjection>";
    EXPECT_EQ(ReachText(marks(mercator).at(0)), "297 990 317 1010");
    EXPECT_EQ(ReachText(marks(mercator).at(2)), "1490 -10 1510 10");
}

TEST(Map, LimitsAndViewsMoveTheContent) {
    const std::string layer = MapLayerOf("Polygon", Squares());
    const DrawnGauges limited = DrawMapOf(MapOf(layer,
                                                "<MapLimits><MinimumX>0</MinimumX><MaximumX>15</"
                                                "MaximumX><MinimumY>10</MinimumY><MaximumY>20</MaximumY>"
                                                "</MapLimits>"));
    EXPECT_EQ(ReachText(limited.Of<PathOp>().at(0)), "0 0 2000 2000");
    const DrawnGauges zoomed = DrawMapOf(MapOf(
        layer, "<MapCustomView><Zoom>200</Zoom><CenterX>0</CenterX><CenterY>50</CenterY></MapCustomView>"));
    EXPECT_EQ(ReachText(zoomed.Of<PathOp>().at(0)), "1500 -1000 3500 1000");
    const DrawnGauges element = DrawMapOf(MapOf(
        layer,
        "<MapElementView><LayerName>Areas</"
        "LayerName><MapBindingFieldPairs><MapBindingFieldPair><FieldName>NAME"
        "</FieldName><BindingExpression>East</BindingExpression></MapBindingFieldPair></MapBindingFieldPairs>"
        "</MapElementView>"));
    EXPECT_EQ(ReachText(element.Of<PathOp>().at(1)), "500 0 2500 2000");
}

TEST(Map, TitlesScalesAndGrid) {
    const DrawnGauges map = DrawMapOf(
        MapOf(MapGroups +
                  MapLayerOf("Polygon",
                             Squares() + MapBound +
                                 ColorRule("<DistributionType>EqualInterval</DistributionType><BucketCount>2"
                                           "</BucketCount><ShowInColorScale>true</ShowInColorScale>" +
                                           TwoColors)) +
                  "<MapTitles><MapTitle Name=\"T\"><Text>Sales by "
                  "region</Text></MapTitle></MapTitles><MapColorScale>"
                  "<MapColorScaleTitle><Caption>Scale</Caption></MapColorScaleTitle></"
                  "MapColorScale><MapDistanceScale/>",
              "<MapCoordinateSystem>Geographic</MapCoordinateSystem><MapMeridians><Interval>10</Interval></"
              "MapMeridians>"));
    EXPECT_EQ(map.Drawing().description, "Sales by region");
    EXPECT_THAT(map.Texts(), ElementsAre("0\xC2\xB0",
                                         "10\xC2\xB0"
                                         "E",
                                         "20\xC2\xB0"
                                         "E",
                                         "30\xC2\xB0"
                                         "E",
                                         "Sales by region", "Scale", "10", "30", "50", "500 km"));
}

TEST(Map, DataOfTheShapesIsForFormatsWithoutALook) {
    const std::string areas = MapOf(MapGroups + MapLayerOf("Polygon", Squares() + MapBound + ColorRule("")));
    const DrawnGauges map{BuildKit(Report(areas), Amounts(), Drawings::Data)};
    const DrawingData& data = map.Drawing().data;
    EXPECT_THAT(data.columns, ElementsAre("Layer", "Shape", "Value"));
    ASSERT_EQ(data.rows.size(), 3U);
    EXPECT_EQ(data.rows[1][0].AsText(), "Areas");
    EXPECT_EQ(data.rows[1][1].AsText(), "South");
    EXPECT_EQ(data.rows[1][2].AsInteger(), 30);
}

TEST(Map, OwnTemplatesGoBeforeTheLayers) {
    const std::string own =
        "<UseCustomPolygonTemplate>true</UseCustomPolygonTemplate><MapPolygonTemplate><Style>"
        "<BackgroundColor>Red</BackgroundColor></Style></MapPolygonTemplate>";
    const DrawnGauges map = DrawMapOf(MapOf(MapLayerOf(
        "Polygon",
        Tag("MapPolygons", MapShapeOf("MapPolygon", "A", "POLYGON ((0 0, 1 0, 1 1, 0 0))") +
                               MapShapeOf("MapPolygon", "B", "POLYGON ((1 0, 2 0, 2 1, 1 0))", own)) +
            "<MapPolygonTemplate><Style><BackgroundColor>Blue</BackgroundColor></Style></MapPolygonTemplate>"
            "<Transparency>50</Transparency>")));
    EXPECT_THAT(FillsOf(map), ElementsAre(0x800000FF, 0x80FF0000));
}

TEST(Map, OwnTemplatesGoBeforeTheRules) {
    const std::string own =
        "<UseCustomPolygonTemplate>true</UseCustomPolygonTemplate><MapPolygonTemplate><Label>own"
        "</Label><Style><BackgroundColor>Red</BackgroundColor></Style></MapPolygonTemplate>";
    const DrawnGauges map = DrawMapOf(MapOf(MapLayerOf(
        "Polygon",
        Tag("MapPolygons", MapShapeOf("MapPolygon", "A", "POLYGON ((0 0, 9 0, 9 9, 0 0))") +
                               MapShapeOf("MapPolygon", "B", "POLYGON ((10 0, 19 0, 19 9, 10 0))", own)) +
            "<MapPolygonRules><MapCustomColorRule><DataValue>#NAME</"
            "DataValue><MapCustomColors><MapCustomColor>Blue"
            "</MapCustomColor></MapCustomColors></MapCustomColorRule></MapPolygonRules>")));
    EXPECT_THAT(FillsOf(map), ElementsAre(0xFF0000FF, 0xFFFF0000));
    EXPECT_THAT(map.Texts(), ElementsAre("own"));
}

TEST(Map, LabelsAreLegibleOnDarkPolygons) {
    const auto colorOn = [](const std::string& style) {
        const DrawnGauges map = DrawMapOf(
            MapOf(MapLayerOf("Polygon", Squares() + "<MapPolygonTemplate><Label>#NAME</Label><Style>" +
                                            style + "</Style></MapPolygonTemplate>")));
        return map.Of<TextOp>().at(0).color;
    };
    EXPECT_EQ(colorOn("<BackgroundColor>#202060</BackgroundColor>"), 0xFFFFFFFF);
    EXPECT_EQ(colorOn("<BackgroundColor>#E0E0FF</BackgroundColor>"), 0xFF000000);
    EXPECT_EQ(colorOn("<BackgroundColor>#202060</BackgroundColor><Color>Red</Color>"), 0xFFFF0000);
}

TEST(Map, PartsOutsideTakeRoomFromTheViewport) {
    const std::string title =
        "<MapTitles><MapTitle Name=\"T\"><Text>Sales</Text><DockOutsideViewport>true"
        "</DockOutsideViewport></MapTitle></MapTitles>";
    const DrawnGauges map = DrawMapOf(MapOf(MapLayerOf("Polygon", Squares()) + title));
    const ClipOp clip = map.Of<ClipOp>().at(0);
    EXPECT_EQ(clip.x, 4);
    EXPECT_EQ(clip.width, 292);
    EXPECT_NEAR(clip.y, 4 + 13.4 + 4, 0.05);
    EXPECT_DOUBLE_EQ(clip.y + clip.height, 196);
}

TEST(Map, AViewportWithAPlaceOfItsOwnStaysWithinTheMap) {
    const auto clipOf = [](const std::string& left, const std::string& width, const std::string& unit) {
        const DrawnGauges map =
            DrawMapOf(MapOf(MapLayerOf("Polygon", Squares()),
                            "<MapLocation><Left>" + left + "</Left><Top>10</Top><Unit>" + unit +
                                "</Unit></MapLocation><MapSize><Width>" + width +
                                "</Width><Height>50</Height><Unit>" + unit + "</Unit></MapSize>"));
        const auto clips = map.Of<ClipOp>();
        return clips.empty() ? std::vector<double>{}
                             : std::vector<double>{clips[0].x, clips[0].y, clips[0].width, clips[0].height};
    };
    EXPECT_THAT(clipOf("20", "50", "Percentage"), ElementsAre(60, 20, 150, 100));
    EXPECT_THAT(clipOf("20", "50", "Point"), ElementsAre(20, 10, 50, 50));
    EXPECT_THAT(clipOf("-1e9", "1e12", "Percentage"), ElementsAre(0, 20, 300, 100));
    EXPECT_THAT(clipOf("200", "50", "Percentage"), IsEmpty());
    EXPECT_THAT(clipOf("10", "-5", "Percentage"), IsEmpty());
}

TEST(Map, AMapInATableCellShowsTheRowsOfItsCell) {
    const std::string cell = "<TablixCell><CellContents>" +
                             MapOf(MapGroups + MapLayerOf("Polygon", Squares() + MapBound + ColorRule(""))) +
                             "</CellContents></TablixCell>";
    const BuiltKit kit = BuildKit(
        Report(
            Tablix(1, RowOf(cell),
                   "<TablixMember><Group Name=\"G\"><GroupExpressions><GroupExpression>=Fields!Product.Value"
                   "</GroupExpression></GroupExpressions></Group></TablixMember>")),
        Amounts(), Drawings::Data);
    std::vector<std::string> shapes;
    layout::TableRow row;
    for (std::size_t i = 0; i < kit.Table().RowCount(); ++i) {
        kit.Table().Row(i, row);
        for (const std::vector<Value>& cells : row.cells.at(0).content.drawing->data.rows) {
            shapes.push_back(std::to_string(i) + " " + std::string(cells[1].AsText()) + " " +
                             std::to_string(cells[2].AsInteger()));
        }
    }
    EXPECT_THAT(shapes, ElementsAre("0 North 10", "0 South 20", "0 East 50", "1 South 10"));
}

// A shapefile of the map's layer is read once, for all rows of a table.
TEST(Map, ShapesThatWereReadBeforeCountForEachMap) {
    std::vector<std::string> points(60'000, spatial::test::Little(1U) + spatial::test::Reals({1, 2}));
    const std::string many = spatial::test::ShapeFile(points), few = spatial::test::ShapeFile({points[0]});
    const auto layer = [](const std::string& name, const std::string& source) {
        return "<MapPointLayer Name=\"" + name + "\"><MapShapefile><Source>" + source +
               "</Source></MapShapefile></MapPointLayer>";
    };
    const std::string cell =
        "<TablixCell><CellContents>" +
        MapOf("<MapLayers>" + layer("One", "many.shp") +
              layer("Two", "=IIf(Fields!Amount.Value = 1, &quot;few.shp&quot;, &quot;many.shp&quot;)") +
              "</MapLayers>") +
        "</CellContents></TablixCell>";
    const auto definition = std::make_unique<Definition>(ParseDefinition(
        Report(Tablix(1, RowOf(cell), "<TablixMember><Group Name=\"Details\"/></TablixMember>")),
        "test.rdl"));
    ReportInput input;
    input.definition = definition.get();
    input.tables.emplace("Data", Sales({{"", "", 1}, {"", "", 2}}));
    input.readFile = [&](const std::string& name) {
        return name == "many.shp" ? many : name == "few.shp" ? few : throw Error("no file");
    };
    const auto report = Build(std::move(input));
    TableInstance& table = *report->sections.front()->items.front().table;
    layout::TableRow row;
    table.Row(0, row);
    EXPECT_EQ(ErrorRaisedBy([&] { table.Row(1, row); }),
              "Map \"World\", layer \"Two\": the file \"many.shp\": it has more than 100000 shapes");
}

TEST(Map, ShapesOfOneDataSetAreBoundToAnother) {
    const DrawnGauges map = DrawMapOf(
        MapOf(MapGroups +
              MapLayerOf("Point",
                         "<MapSpatialDataSet><DataSetName>Data</DataSetName><SpatialField>Product"
                         "</SpatialField></MapSpatialDataSet><MapDataRegionName>Regions</MapDataRegionName>"
                         "<MapBindingFieldPairs><MapBindingFieldPair><FieldName>Region</FieldName>"
                         "<BindingExpression>=Fields!Region.Value</BindingExpression></MapBindingFieldPair>"
                         "</MapBindingFieldPairs><MapMarkerTemplate><Label>=\"#Region \" &amp; "
                         "Sum(Fields!Amount.Value)</Label></MapMarkerTemplate>")),
        Sales({{"North", "POINT (0 20)", 1}, {"North", "POINT (10 20)", 2}, {"East", "POINT (30 0)", 9}}));
    EXPECT_THAT(map.Texts(), ElementsAre("North 3", "North 3", "East 9"));
}

TEST(Map, GridsOfAnySizeEnd) {
    for (const char* grid : {"<MapMeridians><Interval>1e-300</Interval></MapMeridians>",
                             "<MapMeridians><Interval>-5</Interval></MapMeridians><MapParallels/>",
                             "<MapCoordinateSystem>Geographic</MapCoordinateSystem><MapParallels/>"}) {
        const DrawnGauges map = DrawMapOf(
            MapOf(MapLayerOf("Line", Tag("MapLines", MapShapeOf("MapLine", "A", "LINESTRING (5 0, 5 1e-9)"))),
                  grid));
        EXPECT_LT(map.Of<PathOp>().size(), 403U) << grid;
    }
}

}  // namespace
}  // namespace rdl::layout
