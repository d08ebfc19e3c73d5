// SPDX-License-Identifier: GPL-3.0-or-later
// Charts whose points share a whole: funnels, pyramids, tree maps and sunbursts.
#include <gmock/gmock.h>

#include "rdl/layout/drawing/canvas.h"
#include "rdl/layout/drawing/chart_shapes.h"
#include "rdl/raises.h"

namespace rdl::layout {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr Color FirstColor = 0xFF418CF0, SecondColor = 0xFFFCB441, ThirdColor = 0xFFE0400A;

Table Two(std::int64_t first = 60) {
    return Sales({{"A", "", first}, {"B", "", 40}});
}

std::vector<std::string> Boxes(const Drawn& drawn) {
    std::vector<std::string> boxes;
    for (const RectOp& box : drawn.Rects()) {
        boxes.push_back(ShapeText(box));
    }
    return boxes;
}

std::vector<Color> Fills(const Drawn& drawn) {
    std::vector<Color> fills;
    for (const PathOp& path : drawn.Paths()) {
        fills.push_back(path.fill);
    }
    return fills;
}

// Products within regions.
std::string Nested(const ChartParts& parts) {
    std::string report = ChartReport(parts);
    const std::string end = "</Group></ChartMember>";
    report.replace(report.find(end), end.size(),
                   "</Group><ChartMembers>" + GroupMember("Inner", "=Fields!Product.Value") +
                       "</ChartMembers></ChartMember>");
    return report;
}

Table Regional() {
    return Sales({{"North", "Tea", 60}, {"North", "Coffee", 20}, {"South", "Tea", 20}});
}

std::string LabelOf(const std::string& text) {
    return "<ChartDataLabel><Visible>true</Visible><Label>" + text + "</Label></ChartDataLabel>";
}

TEST(ChartFunnel, HeightsAreAsTheValuesDownToTheNeck) {
    EXPECT_THAT(Shapes(Draw(Bare("Shape", "Funnel"), Two())),
                ElementsAre("path ff418cf0 ffffffff 6.0,6.0 294.0,6.0 207.6,118.8 92.4,118.8 z",
                            "path fffcb441 ffffffff 92.4,118.8 207.6,118.8 157.2,184.6 157.2,194.0 "
                            "142.8,194.0 142.8,184.6 z"));
}

TEST(ChartFunnel, NeckHasTheSizeThatTheReportSets) {
    ChartParts parts = Bare("Shape", "Funnel");
    parts.series =
        "<CustomProperties><CustomProperty><Name>FunnelNeckWidth</Name><Value>50</Value>"
        "</CustomProperty><CustomProperty><Name>FunnelNeckHeight</Name><Value>40</Value>"
        "</CustomProperty></CustomProperties>";
    EXPECT_THAT(Shapes(Draw(parts, Two())),
                ElementsAre("path ff418cf0 ffffffff 6.0,6.0 294.0,6.0 222.0,118.8 78.0,118.8 z",
                            "path fffcb441 ffffffff 78.0,118.8 222.0,118.8 222.0,194.0 78.0,194.0 z"));
}

TEST(ChartFunnel, WidthsMayBeAsTheValues) {
    ChartParts parts = Bare("Shape", "Funnel");
    parts.series = Custom("FunnelStyle", "YIsWidth");
    EXPECT_THAT(Shapes(Draw(parts, Two())),
                ElementsAre("path ff418cf0 ffffffff 6.0,6.0 294.0,6.0 246.0,100.0 54.0,100.0 z",
                            "path fffcb441 ffffffff 54.0,100.0 246.0,100.0 246.0,194.0 54.0,194.0 z"));
}

TEST(ChartFunnel, GapLiesBetweenThePoints) {
    ChartParts parts = Bare("Shape", "Funnel");
    parts.series = Custom("FunnelPointGap", "10");
    const std::vector<std::string> shapes = Shapes(Draw(parts, Two()));
    ASSERT_EQ(shapes.size(), 2U);
    EXPECT_EQ(shapes[0], "path ff418cf0 ffffffff 6.0,6.0 294.0,6.0 216.2,107.5 83.8,107.5 z");
    EXPECT_NE(shapes[1].find(" 98.2,126.3 201.8,126.3 "), std::string::npos) << shapes[1];
}

TEST(ChartFunnel, SmallPointsHaveTheLeastHeight) {
    ChartParts parts = Bare("Shape", "Funnel");
    parts.series = Custom("FunnelMinPointHeight", "25");
    const Table table = Sales({{"A", "", 1000}, {"B", "", 0}, {"C", "", 1}});
    EXPECT_EQ(Shapes(Draw(parts, table)).at(0).substr(0, 51),
              "path ff418cf0 ffffffff 6.0,6.0 294.0,6.0 178.8,156.");
}

TEST(ChartFunnel, LabelsStandInsideOrBesideTheirPoints) {
    ChartParts parts = Bare("Shape", "Funnel");
    parts.point = LabelOf("#PERCENT{P0}");
    const Drawn inside = Draw(parts, Two());
    EXPECT_THAT(inside.Texts(), ElementsAre("60 %", "40 %"));
    EXPECT_THAT(Of<LineOp>(inside.Content()), IsEmpty());
    EXPECT_NEAR(inside.Letters().at(0).x, 150, 12);
    EXPECT_NEAR(inside.Letters().at(0).baseline, 62.4, 4);
    parts.series = Custom("FunnelLabelStyle", "OutsideInColumn");
    const Drawn outside = Draw(parts, Two());
    EXPECT_EQ(Of<LineOp>(outside.Content()).size(), 2U);
    EXPECT_GT(outside.Letters().at(0).x, Of<LineOp>(outside.Content()).at(0).x2);
    EXPECT_LT(outside.Paths().at(0).segments.at(1).x[0], 294);
    parts.series = Custom("FunnelLabelStyle", "Disabled");
    EXPECT_THAT(Draw(parts, Two()).Texts(), IsEmpty());
}

TEST(ChartFunnel, LegendNamesThePoints) {
    ChartParts parts = Bare("Shape", "Funnel");
    parts.more = "<ChartLegends><ChartLegend Name=\"L\"/></ChartLegends>";
    const Drawn drawn = Draw(parts, Two());
    EXPECT_THAT(drawn.Texts(), ElementsAre("A", "B"));
    ASSERT_EQ(drawn.Rects().size(), 2U);
    EXPECT_EQ(drawn.Rects()[0].color, FirstColor);
    EXPECT_EQ(drawn.Rects()[1].color, SecondColor);
}

TEST(ChartFunnel, SeriesStandBesideEachOther) {
    ChartParts parts = Bare("Shape", "Funnel");
    parts.seriesGroup = "=Fields!Product.Value";
    const std::vector<PathOp> paths =
        Draw(parts, Sales({{"A", "Tea", 1}, {"B", "Tea", 1}, {"A", "Milk", 1}, {"B", "Milk", 1}})).Paths();
    ASSERT_EQ(paths.size(), 4U);
    EXPECT_DOUBLE_EQ(paths[0].segments[0].x[0], 10);
    EXPECT_DOUBLE_EQ(paths[0].segments[1].x[0], 146);
    EXPECT_DOUBLE_EQ(paths[2].segments[0].x[0], 154);
    EXPECT_DOUBLE_EQ(paths[2].segments[1].x[0], 290);
}

TEST(ChartPyramid, HeightsAreAsTheValues) {
    EXPECT_THAT(Shapes(Draw(Bare("Shape", "Pyramid"), Two())),
                ElementsAre("path ff418cf0 ffffffff 150.0,6.0 150.0,6.0 236.4,118.8 63.6,118.8 z",
                            "path fffcb441 ffffffff 63.6,118.8 236.4,118.8 294.0,194.0 6.0,194.0 z"));
}

TEST(ChartPyramid, SurfacesMayBeAsTheValues) {
    ChartParts parts = Bare("Shape", "Pyramid");
    parts.series = Custom("PyramidValueType", "Surface");
    EXPECT_THAT(Shapes(Draw(parts, Sales({{"A", "", 25}, {"B", "", 75}}))),
                ElementsAre("path ff418cf0 ffffffff 150.0,6.0 150.0,6.0 222.0,100.0 78.0,100.0 z",
                            "path fffcb441 ffffffff 78.0,100.0 222.0,100.0 294.0,194.0 6.0,194.0 z"));
}

TEST(ChartTreeMap, SurfacesAreAsTheValues) {
    EXPECT_THAT(Shapes(Draw(Bare("Shape", "TreeMap"), Two())),
                ElementsAre("box 6.0,6.0 172.8x188.0 ff418cf0",
                            "path 00000000 ffffffff 6.0,6.0 178.8,6.0 178.8,194.0 6.0,194.0 z",
                            "box 178.8,6.0 115.2x188.0 fffcb441",
                            "path 00000000 ffffffff 178.8,6.0 294.0,6.0 294.0,194.0 178.8,194.0 z"));
}

TEST(ChartTreeMap, TilesAreNearlySquareAndTheLargestIsFirst) {
    EXPECT_THAT(Boxes(Draw(Bare("Shape", "TreeMap"),
                           Sales({{"A", "", 1}, {"B", "", 6}, {"C", "", 2}, {"D", "", 3}}))),
                ElementsAre("box 6.0,6.0 144.0x188.0 fffcb441", "box 150.0,6.0 144.0x94.0 ff056492",
                            "box 150.0,100.0 96.0x94.0 ffe0400a", "box 246.0,100.0 48.0x94.0 ff418cf0"));
}

TEST(ChartTreeMap, GroupsAreWithinEachOtherInTheColourOfTheOutermost) {
    const Drawn drawn{BuildKit(Nested(Bare("Shape", "TreeMap")), Regional())};
    EXPECT_THAT(Boxes(drawn),
                ElementsAre("box 6.0,6.0 172.8x188.0 ff418cf0", "box 178.8,6.0 57.6x188.0 ff418cf0",
                            "box 236.4,6.0 57.6x188.0 fffcb441"));
}

TEST(ChartTreeMap, NamesStandInTheTilesAndAboveTheirGroups) {
    ChartParts parts = Bare("Shape", "TreeMap");
    parts.categoryAxis.clear();
    parts.more = "<ChartLegends><ChartLegend Name=\"L\"/></ChartLegends>";
    EXPECT_THAT(Drawn{BuildKit(Nested(parts), Regional())}.Texts(),
                ElementsAre("North", "South", "North", "Tea", "Coffee", "South", "Tea"));
    parts.point = LabelOf("#VALY");
    EXPECT_THAT(Drawn{BuildKit(Nested(parts), Regional())}.Texts(),
                ElementsAre("North", "South", "North", "60", "20", "South", "20"));
    parts.categoryAxis = "<HideLabels>true</HideLabels>";
    EXPECT_THAT(Drawn{BuildKit(Nested(parts), Regional())}.Texts(),
                ElementsAre("North", "South", "60", "20", "20"));
}

TEST(ChartTreeMap, SeriesAreTheOutermostGroups) {
    ChartParts parts = Bare("Shape", "TreeMap");
    parts.seriesGroup = "=Fields!Product.Value";
    EXPECT_THAT(Boxes(Draw(parts, Regional())),
                ElementsAre("box 6.0,6.0 172.8x188.0 ff418cf0", "box 178.8,6.0 57.6x188.0 ff418cf0",
                            "box 236.4,6.0 57.6x188.0 fffcb441"));
}

TEST(ChartTreeMap, PointMayHaveAColourOfItsOwn) {
    ChartParts parts = Bare("Shape", "TreeMap");
    parts.point = "<Style><Color>=IIf(Fields!Region.Value = \"B\", \"Red\", Nothing)</Color></Style>";
    const std::vector<RectOp> tiles = Draw(parts, Two()).Rects();
    ASSERT_EQ(tiles.size(), 2U);
    EXPECT_EQ(tiles[0].color, FirstColor);
    EXPECT_EQ(tiles[1].color, 0xFFFF0000);
}

TEST(ChartTreeMap, TilesLieBelowTheNameOfTheirGroup) {
    ChartParts parts = Bare("Shape", "TreeMap");
    parts.categoryAxis.clear();
    const Drawn drawn{BuildKit(Nested(parts), Regional())};
    const std::vector<RectOp> boxes = drawn.Rects();
    ASSERT_EQ(boxes.size(), 5U);
    EXPECT_EQ(ShapeText(boxes[0]), "box 6.0,6.0 230.4x188.0 ff418cf0");
    EXPECT_NEAR(boxes[1].y, 6 + Canvas::LineHeight({.size = 8}) + 2, 0.01);
    EXPECT_NEAR(boxes[1].width + boxes[2].width, 230.4, 0.01);
    EXPECT_NEAR(boxes[1].width, 3 * boxes[2].width, 0.01);
}

TEST(ChartTreeMap, TooManyNodesAreAnErrorThatNamesTheChart) {
    std::vector<SaleRow> rows;
    for (int i = 0; i < 11'000; ++i) {
        rows.push_back({"A", "", i});
    }
    std::string report = ChartReport(Bare("Shape", "TreeMap"));
    const std::string member = GroupMember("Categories", "=Fields!Region.Value");
    const std::string end = "</ChartMember>";
    std::string members = GroupMember("Level", "=Fields!Amount.Value");
    for (int i = 0; i < 9; ++i) {
        std::string outer = GroupMember("Level" + std::to_string(i), "=Fields!Region.Value");
        outer.insert(outer.size() - end.size(), "<ChartMembers>" + members + "</ChartMembers>");
        members = outer;
    }
    report.replace(report.find(member), member.size(), members);
    EXPECT_THAT(ErrorRaisedBy([&] { BuildKit(report, Sales(rows)); }),
                HasSubstr("Chart \"Turnover\" has 1 series and 11000 categories in 10 levels"));
}

TEST(ChartSunburst, OneLevelIsARing) {
    EXPECT_THAT(
        Shapes(Draw(Bare("Shape", "Sunburst"), Two(40))),
        ElementsAre("path ff418cf0 ffffffff 150.0,6.0 ~216.5,33.5 ~244.0,100.0 ~216.5,166.5 ~150.0,194.0 "
                    "150.0,131.3 ~172.2,122.2 ~181.3,100.0 ~172.2,77.8 ~150.0,68.7 z",
                    "path fffcb441 ffffffff 150.0,194.0 ~83.5,166.5 ~56.0,100.0 ~83.5,33.5 ~150.0,6.0 "
                    "150.0,68.7 ~127.8,77.8 ~118.7,100.0 ~127.8,122.2 ~150.0,131.3 z"));
}

TEST(ChartSunburst, GroupsAreRingsWithinEachOther) {
    const Drawn drawn{BuildKit(Nested(Bare("Shape", "Sunburst")), Regional())};
    EXPECT_THAT(Fills(drawn), ElementsAre(FirstColor, FirstColor, FirstColor, SecondColor, SecondColor));
    std::vector<double> tops;
    for (const std::size_t i : {0U, 1U}) {
        tops.push_back(drawn.Paths()[i].segments.front().y[0]);
    }
    EXPECT_NEAR(tops[0], 43.6, 0.01);
    EXPECT_NEAR(tops[1], 6, 0.01);
}

TEST(ChartSunburst, NamesStandInTheSlicesAndTheFirstLevelInTheLegend) {
    ChartParts parts = Bare("Shape", "Sunburst");
    parts.categoryAxis.clear();
    parts.more = "<ChartLegends><ChartLegend Name=\"L\"/></ChartLegends>";
    EXPECT_THAT(Drawn{BuildKit(Nested(parts), Regional())}.Texts(),
                ElementsAre("North", "South", "North", "Tea", "Coffee", "South", "Tea"));
}

TEST(ChartSunburst, NameWithoutRoomRunsAlongTheRadius) {
    ChartParts parts = Bare("Shape", "Sunburst");
    parts.categoryAxis.clear();
    const Drawn drawn = Draw(parts, Sales({{"Large", "", 90}, {"Small one", "", 5}, {"Tiny", "", 1}}));
    EXPECT_THAT(drawn.Texts(), ElementsAre("Large", "Small one"));
    EXPECT_EQ(drawn.Letters().at(0).rotation, 0);
    // Its slice lies from 90 to 95 of 96 parts of the turn.
    EXPECT_NEAR(drawn.Letters().at(1).rotation, 360.0 * 92.5 / 96 - 270, 0.1);
}

TEST(ChartSunburst, NameWithoutLevelRoomRunsAlongItsRing) {
    ChartParts parts = Bare("Shape", "Sunburst");
    parts.categoryAxis.clear();
    const Drawn drawn = Draw(parts, Sales({{"A name of six long words", "", 30}, {"B", "", 70}}));
    EXPECT_THAT(drawn.Texts(), ElementsAre("A name of six", "long words", "B"));
    const Drawn thin{BuildKit(Nested(parts), Sales({{"North", "Strawberries", 30}, {"South", "B", 70}}))};
    EXPECT_THAT(thin.Texts(), ElementsAre("North", "Strawberries", "South", "B"));
    EXPECT_NEAR(thin.Letters().at(1).rotation, 0.15 * 360, 0.1);
}

TEST(ChartWhole, NegativeValuesCountWithoutTheirSign) {
    for (const char* subtype : {"Funnel", "Pyramid", "TreeMap", "Sunburst"}) {
        EXPECT_EQ(Shapes(Draw(Bare("Shape", subtype), Two(-60))), Shapes(Draw(Bare("Shape", subtype), Two())))
            << subtype;
    }
}

TEST(ChartWhole, GapsAndZerosHaveNoPlace) {
    for (const char* subtype : {"Funnel", "Pyramid", "TreeMap", "Sunburst"}) {
        Table table = Sales({{"A", "", 0}, {"B", "", 5}, {"C", "", 5}});
        table.cells[1 * 3 + 2] = Value();
        const Drawn drawn = Draw(Bare("Shape", subtype), table);
        std::vector<Color> fills = Fills(drawn);
        for (const RectOp& box : drawn.Rects()) {
            fills.push_back(box.color);
        }
        std::erase(fills, Transparent);
        EXPECT_THAT(fills, ElementsAre(ThirdColor)) << subtype;
        EXPECT_THAT(Shapes(Draw(Bare("Shape", subtype), Sales({{"A", "", 0}, {"B", "", 0}}))), IsEmpty())
            << subtype;
    }
}

TEST(ChartWhole, ValuesTooLargeToAddAreNotDrawn) {
    for (const char* subtype : {"Funnel", "Pyramid", "TreeMap", "Sunburst"}) {
        ChartParts parts = Bare("Shape", subtype);
        parts.values = "<Y>1.7E+308</Y>";
        EXPECT_THAT(Shapes(Draw(parts, Two())), IsEmpty()) << subtype;
    }
}

TEST(ChartWhole, SeriesWithoutCategoriesAreItsParts) {
    for (const char* subtype : {"Funnel", "Pyramid", "TreeMap", "Sunburst"}) {
        ChartParts parts = Bare("Shape", subtype);
        parts.categoryGroup.clear();
        parts.seriesGroup = "=Fields!Region.Value";
        EXPECT_EQ(Shapes(Draw(parts, Two())), Shapes(Draw(Bare("Shape", subtype), Two()))) << subtype;
    }
}

TEST(ChartWhole, WhosePointsAllFailSaysSo) {
    for (const char* subtype : {"Funnel", "Pyramid", "TreeMap", "Sunburst"}) {
        ChartParts parts = Bare("Shape", subtype);
        parts.values = "<Y>=1 / \"x\"</Y>";
        EXPECT_THAT(Draw(parts, Two()).Texts(), ElementsAre("#Error")) << subtype;
    }
}

TEST(ChartWhole, TenThousandPointsAreDrawn) {
    std::vector<SaleRow> rows;
    for (int i = 1; i <= 10'000; ++i) {
        rows.push_back({"", "", i});
    }
    for (const char* subtype : {"Funnel", "Pyramid", "TreeMap", "Sunburst"}) {
        ChartParts parts = Bare("Shape", subtype);
        parts.categoryAxis.clear();
        parts.categoryGroup = "=Fields!Amount.Value";
        EXPECT_EQ(Draw(parts, Sales(rows)).Paths().size(), 10'000U) << subtype;
    }
}

TEST(ChartPie, LabelsMayBeDisabled) {
    ChartParts parts = Bare("Shape", "Pie");
    parts.point = LabelOf("#VALY");
    EXPECT_EQ(Draw(parts, Two()).Texts().size(), 2U);
    parts.series = Custom("PieLabelStyle", "Disabled");
    EXPECT_THAT(Draw(parts, Two()).Texts(), IsEmpty());
}

}  // namespace
}  // namespace rdl::layout
