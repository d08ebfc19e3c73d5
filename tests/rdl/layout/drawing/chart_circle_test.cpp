// SPDX-License-Identifier: GPL-3.0-or-later
// Polar and radar charts.
#include <gmock/gmock.h>

#include <cmath>
#include <cstdint>

#include "rdl/layout/drawing/chart_shapes.h"

namespace rdl::layout {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

Table Four(std::int64_t north = 100) {
    return Sales({{"N", "", north}, {"E", "", 50}, {"S", "", 100}, {"W", "", 50}});
}

TEST(ChartCircle, RadarIsAnAreaAroundTheCentre) {
    EXPECT_THAT(Shapes(Draw(Bare("Polar", "Radar"), Four())),
                ElementsAre("path b0418cf0 00000000 150.0,6.0 197.0,100.0 150.0,194.0 103.0,100.0 z",
                            "path 00000000 ff418cf0 150.0,6.0 197.0,100.0 150.0,194.0 103.0,100.0 z"));
}

TEST(ChartCircle, RadarMayBeALineOrPoints) {
    ChartParts parts = Bare("Polar", "Radar");
    parts.series = Custom("RadarDrawingStyle", "Line");
    EXPECT_THAT(Shapes(Draw(parts, Four())),
                ElementsAre("path 00000000 ff418cf0 150.0,6.0 197.0,100.0 150.0,194.0 103.0,100.0 z"));
    parts.series = Custom("RadarDrawingStyle", "Marker") +
                   "<ChartMarker><Type>Square</Type><Size>4pt</Size></ChartMarker>";
    EXPECT_THAT(Shapes(Draw(parts, Four())),
                ElementsAre("box 148.0,4.0 4.0x4.0 ff418cf0", "box 195.0,98.0 4.0x4.0 ff418cf0",
                            "box 148.0,192.0 4.0x4.0 ff418cf0", "box 101.0,98.0 4.0x4.0 ff418cf0"));
}

TEST(ChartCircle, PolarIsALineThatEndsAtItsLastPoint) {
    EXPECT_THAT(Shapes(Draw(Bare("Polar", "Plain"), Four())),
                ElementsAre("path 00000000 ff418cf0 150.0,6.0 197.0,100.0 150.0,194.0 103.0,100.0"));
}

TEST(ChartCircle, PolarPointsLieAtTheirAngles) {
    ChartParts parts = Bare("Polar", "Plain");
    parts.values = "<X>=Sum(Fields!Amount.Value)</X><Y>100</Y>";
    const Table angles = Sales({{"A", "", 0}, {"B", "", 90}, {"C", "", 270}, {"D", "", 360}});
    EXPECT_THAT(Shapes(Draw(parts, angles)),
                ElementsAre("path 00000000 ff418cf0 150.0,6.0 244.0,100.0 56.0,100.0 150.0,6.0"));
    parts.categoryAxis += "<Reverse>true</Reverse>";
    EXPECT_THAT(Shapes(Draw(parts, angles)),
                ElementsAre("path 00000000 ff418cf0 150.0,6.0 56.0,100.0 244.0,100.0 150.0,6.0"));
}

TEST(ChartCircle, AnglesHaveTicksAround) {
    ChartParts parts = Bare("Polar", "Plain");
    parts.values = "<X>=Sum(Fields!Amount.Value)</X><Y>100</Y>";
    parts.categoryAxis = "<Interval>90</Interval>";
    EXPECT_THAT(Draw(parts, Four()).Texts(), ElementsAre("0", "90", "180", "270"));
    parts.categoryAxis += "<HideLabels>true</HideLabels><ChartMajorGridLines/>";
    EXPECT_EQ(Of<LineOp>(Draw(parts, Four()).Content()).size(), 4U);  // the last one is the first
}

TEST(ChartCircle, NamesStandAroundAndNumbersFromTheCentreToTheTop) {
    ChartParts parts = Bare("Polar", "Radar");
    parts.categoryAxis.clear();
    parts.valueAxis = "<Minimum>0</Minimum><Maximum>100</Maximum><Interval>50</Interval>";
    const Drawn drawn = Draw(parts, Four());
    EXPECT_THAT(drawn.Texts(), ElementsAre("N", "E", "S", "W", "0", "50", "100"));
    const std::vector<TextOp> letters = drawn.Letters();
    EXPECT_NEAR(letters[0].x, 150, 5);
    EXPECT_NEAR(letters[2].x, 150, 5);
    EXPECT_LT(letters[0].baseline, letters[1].baseline);
    EXPECT_LT(letters[1].baseline, letters[2].baseline);
    EXPECT_GT(letters[1].x, 220);
    EXPECT_LT(letters[3].x, 80);
    EXPECT_NEAR(letters[4].baseline - letters[5].baseline, letters[5].baseline - letters[6].baseline, 0.01);
    for (std::size_t i = 4; i < 7; ++i) {
        EXPECT_LT(letters[i].x, 150) << i;
    }
    for (const TextOp& op : letters) {
        EXPECT_GE(op.x, 6);
        EXPECT_GE(op.baseline, 6);
        EXPECT_LE(op.baseline, 194);
    }
}

TEST(ChartCircle, GridHasCirclesAndSpokes) {
    ChartParts parts = Bare("Polar", "Radar");
    parts.categoryAxis = "<HideLabels>true</HideLabels><ChartMajorGridLines/>";
    parts.valueAxis =
        "<HideLabels>true</HideLabels><Minimum>0</Minimum><Maximum>100</Maximum><Interval>50</Interval>"
        "<ChartMajorGridLines/><ChartMajorTickMarks><Enabled>False</Enabled></ChartMajorTickMarks>";
    EXPECT_THAT(
        Shapes(Draw(parts, Four())),
        ElementsAre("line 150.0,100.0 150.0,6.0 ffd3d3d3", "line 150.0,100.0 244.0,100.0 ffd3d3d3",
                    "line 150.0,100.0 150.0,194.0 ffd3d3d3", "line 150.0,100.0 56.0,100.0 ffd3d3d3",
                    "path 00000000 ffd3d3d3 150.0,53.0 ~183.2,66.8 ~197.0,100.0 ~183.2,133.2 ~150.0,147.0 "
                    "~116.8,133.2 ~103.0,100.0 ~116.8,66.8 ~150.0,53.0 z",
                    "path 00000000 ffd3d3d3 150.0,6.0 ~216.5,33.5 ~244.0,100.0 ~216.5,166.5 ~150.0,194.0 "
                    "~83.5,166.5 ~56.0,100.0 ~83.5,33.5 ~150.0,6.0 z",
                    "path b0418cf0 00000000 150.0,6.0 197.0,100.0 150.0,194.0 103.0,100.0 z",
                    "path 00000000 ff418cf0 150.0,6.0 197.0,100.0 150.0,194.0 103.0,100.0 z",
                    "path 00000000 ff808080 150.0,6.0 ~216.5,33.5 ~244.0,100.0 ~216.5,166.5 ~150.0,194.0 "
                    "~83.5,166.5 ~56.0,100.0 ~83.5,33.5 ~150.0,6.0 z",
                    "line 150.0,100.0 150.0,6.0 ff808080"));
}

TEST(ChartCircle, GridMayHaveCornersAndStripes) {
    ChartParts parts = Bare("Polar", "Radar");
    parts.series = Custom("AreaDrawingStyle", "Polygon");
    parts.categoryAxis = "<HideLabels>true</HideLabels>";
    parts.valueAxis =
        "<HideLabels>true</HideLabels><Minimum>0</Minimum><Maximum>100</Maximum><Interval>25</Interval>"
        "<Interlaced>true</Interlaced><InterlacedColor>Yellow</InterlacedColor>";
    const std::vector<std::string> shapes = Shapes(Draw(parts, Four()));
    ASSERT_GE(shapes.size(), 5U);
    EXPECT_EQ(shapes[0],
              "path ffffff00 00000000 150.0,76.5 173.5,100.0 150.0,123.5 126.5,100.0 z "
              "150.0,100.0 150.0,100.0 150.0,100.0 150.0,100.0 z");
    EXPECT_EQ(shapes[1],
              "path ffffff00 00000000 150.0,29.5 220.5,100.0 150.0,170.5 79.5,100.0 z "
              "103.0,100.0 150.0,147.0 197.0,100.0 150.0,53.0 z");
    EXPECT_EQ(shapes[4], "path 00000000 ff808080 150.0,6.0 244.0,100.0 150.0,194.0 56.0,100.0 z");
}

TEST(ChartCircle, BackgroundOfTheAreaFillsTheCircle) {
    ChartParts parts = Bare("Polar", "Radar");
    std::string report = ChartReport(parts);
    report.insert(report.find("<ChartCategoryAxes>"),
                  "<Style><BackgroundColor>Silver</BackgroundColor></Style>");
    const std::vector<std::string> shapes = Shapes({BuildKit(report, Four())});
    ASSERT_EQ(shapes.size(), 3U);
    EXPECT_EQ(shapes[0],
              "path ffc0c0c0 00000000 150.0,6.0 ~216.5,33.5 ~244.0,100.0 ~216.5,166.5 "
              "~150.0,194.0 ~83.5,166.5 ~56.0,100.0 ~83.5,33.5 ~150.0,6.0 z");
}

TEST(ChartCircle, GapOpensARadarAndItsAreaEndsAtTheCentre) {
    Table table = Four();
    table.cells[1 * 3 + 2] = Value();
    EXPECT_THAT(Shapes(Draw(Bare("Polar", "Radar"), table)),
                ElementsAre("path b0418cf0 00000000 150.0,194.0 103.0,100.0 150.0,6.0 150.0,100.0 z",
                            "path 00000000 ff418cf0 150.0,194.0 103.0,100.0 150.0,6.0"));
}

TEST(ChartCircle, NegativeValueIsNearerToTheCentreThanZero) {
    ChartParts parts = Bare("Polar", "Radar");
    parts.series = Custom("RadarDrawingStyle", "Line");
    parts.valueAxis = "<Visible>False</Visible><Minimum>-100</Minimum><Maximum>100</Maximum>";
    EXPECT_THAT(Shapes(Draw(parts, Four(-50))),
                ElementsAre("path 00000000 ff418cf0 150.0,76.5 220.5,100.0 150.0,194.0 79.5,100.0 z"));
}

TEST(ChartCircle, ValuesBeyondTheAxisAreAtItsEnds) {
    EXPECT_EQ(Shapes(Draw(Bare("Polar", "Plain"), Four(-50))).at(0),
              "path 00000000 ff418cf0 150.0,100.0 197.0,100.0 150.0,194.0 103.0,100.0");
    EXPECT_EQ(Shapes(Draw(Bare("Polar", "Plain"), Four(1000))).at(0),
              "path 00000000 ff418cf0 150.0,6.0 197.0,100.0 150.0,194.0 103.0,100.0");
}

TEST(ChartCircle, OnePointIsADot) {
    const std::vector<std::string> shapes = Shapes(Draw(Bare("Polar", "Plain"), Sales({{"N", "", 50}})));
    ASSERT_EQ(shapes.size(), 1U);
    EXPECT_EQ(shapes[0].substr(0, 36), "path ff418cf0 00000000 150.0,51.5 ~1");
}

TEST(ChartCircle, ZerosLieAtTheCentre) {
    EXPECT_THAT(Shapes(Draw(Bare("Polar", "Plain"), Sales({{"N", "", 0}, {"E", "", 0}}))),
                ElementsAre("path 00000000 ff418cf0 150.0,100.0 150.0,100.0"));
}

TEST(ChartCircle, WithoutAValueNothingIsDrawn) {
    ChartParts parts = Bare("Polar", "Radar");
    parts.values = "<Y>=Nothing</Y>";
    EXPECT_THAT(Shapes(Draw(parts, Four())), IsEmpty());
}

TEST(ChartCircle, SeriesLieOverEachOtherInPaletteColoursAndAreInTheLegend) {
    ChartParts parts = Bare("Polar", "Radar");
    parts.seriesGroup = "=Fields!Product.Value";
    parts.more = "<ChartLegends><ChartLegend Name=\"L\"/></ChartLegends>";
    const Drawn drawn =
        Draw(parts, Sales({{"N", "Tea", 50}, {"E", "Tea", 50}, {"N", "Milk", 9}, {"E", "Milk", 9}}));
    EXPECT_THAT(drawn.Texts(), ElementsAre("Tea", "Milk"));
    const std::vector<RectOp> symbols = drawn.Rects();
    ASSERT_EQ(symbols.size(), 2U);
    EXPECT_EQ(symbols[0].color, 0xFF418CF0);
    EXPECT_EQ(symbols[1].color, 0xFFFCB441);
    std::vector<Color> fills;
    for (const PathOp& path : drawn.Paths()) {
        if (path.fill >> 24) {
            fills.push_back(path.fill);
        }
    }
    EXPECT_THAT(fills, ElementsAre(0xB0418CF0, 0xB0FCB441));
}

TEST(ChartCircle, LabelStandsAboveItsPoint) {
    ChartParts parts = Bare("Polar", "Radar");
    parts.point =
        "<ChartDataLabel><Visible>true</Visible><Label>#VALY at #AXISLABEL</Label></ChartDataLabel>";
    const Drawn drawn = Draw(parts, Four());
    EXPECT_THAT(drawn.Texts(), ElementsAre("100 at N", "50 at E", "100 at S", "50 at W"));
    EXPECT_LT(drawn.Letters().at(1).baseline, 100);
    EXPECT_GT(drawn.Letters().at(1).baseline, 90);
}

TEST(ChartCircle, TenThousandCategoriesHaveNamesThatDoNotTouch) {
    ChartParts parts = Bare("Polar", "Plain");
    parts.categoryAxis.clear();
    parts.categoryGroup = "=Fields!Amount.Value";
    std::vector<SaleRow> rows;
    for (int i = 1; i <= 10'000; ++i) {
        rows.push_back({"", "", i});
    }
    const Drawn drawn = Draw(parts, Sales(rows));
    ASSERT_FALSE(drawn.Paths().empty());
    EXPECT_EQ(drawn.Paths().front().segments.size(), 10'000U);
    const std::vector<TextOp> names = drawn.Letters();
    EXPECT_GT(names.size(), 30U);
    EXPECT_LT(names.size(), 80U);
    for (std::size_t i = 1; i < names.size(); ++i) {
        const double apart = std::abs(names[i].baseline - names[i - 1].baseline);
        const TextOp& left = names[i].x < names[i - 1].x ? names[i] : names[i - 1];
        const TextOp& right = names[i].x < names[i - 1].x ? names[i - 1] : names[i];
        double width = 0;
        for (std::uint32_t glyph = left.firstGlyph; glyph < left.firstGlyph + left.glyphCount; ++glyph) {
            width += static_cast<double>(drawn.Content().glyphs[glyph].advance);
        }
        EXPECT_TRUE(apart > 8 || left.x + width <= right.x) << i;
    }
}

TEST(ChartCircle, NameAtTheTopStandsAboveTheNumbersOfTheAxis) {
    ChartParts parts = Bare("Polar", "Radar");
    parts.categoryAxis.clear();
    parts.valueAxis = "<Minimum>0</Minimum><Maximum>100</Maximum><Interval>50</Interval>";
    const Drawn drawn = Draw(parts, Four());
    ASSERT_EQ(drawn.Texts().at(6), "100");
    EXPECT_GE(drawn.Letters()[6].baseline - drawn.Letters()[0].baseline, 9);
}

TEST(ChartCircle, EveryOtherSectorMayBeAStripe) {
    ChartParts parts = Bare("Polar", "Radar");
    parts.categoryAxis =
        "<HideLabels>true</HideLabels><Interlaced>true</Interlaced><InterlacedColor>Yellow</InterlacedColor>";
    const std::vector<std::string> shapes = Shapes(Draw(parts, Four()));
    ASSERT_GE(shapes.size(), 2U);
    EXPECT_EQ(shapes[0], "path ffffff00 00000000 150.0,6.0 ~216.5,33.5 ~244.0,100.0 150.0,100.0 z");
    EXPECT_EQ(shapes[1], "path ffffff00 00000000 150.0,194.0 ~83.5,166.5 ~56.0,100.0 150.0,100.0 z");
}

TEST(ChartCircle, TitlesOfTheAxesStandBelowAndBesideIt) {
    ChartParts parts = Bare("Polar", "Radar");
    parts.categoryAxis = "<ChartAxisTitle><Caption>Skill</Caption></ChartAxisTitle>";
    parts.valueAxis = "<ChartAxisTitle><Caption>Mark</Caption></ChartAxisTitle>";
    const Drawn drawn = Draw(parts, Four());
    const std::vector<std::string> texts = drawn.Texts();
    ASSERT_GE(texts.size(), 6U);
    EXPECT_EQ(texts[0], "Mark");
    EXPECT_EQ(drawn.Letters()[0].rotation, 270);
    EXPECT_LT(drawn.Letters()[0].x, 20);
    EXPECT_EQ(texts[1], "Skill");
    EXPECT_EQ(drawn.Letters()[1].rotation, 0);
    const double lowestName = drawn.Letters()[4].baseline;
    EXPECT_EQ(texts[4], "S");
    EXPECT_GT(drawn.Letters()[1].baseline, lowestName + 8);
}

TEST(ChartCircle, SecondValueAxisHasItsOwnScaleToTheRight) {
    ChartParts parts = Bare("Polar", "Plain");
    parts.series = "<ValueAxisName>Second</ValueAxisName>";
    parts.valueAxis =
        "<Maximum>7</Maximum></ChartAxis><ChartAxis Name=\"Second\"><Minimum>0</Minimum>"
        "<Maximum>200</Maximum><Interval>200</Interval>";
    const Drawn drawn = Draw(parts, Four());
    EXPECT_THAT(drawn.Texts(), ElementsAre("0", "200"));
    EXPECT_GT(drawn.Letters().at(0).x, 150);
    EXPECT_EQ(Shapes(drawn).at(0), "path 00000000 ff418cf0 150.0,53.0 173.5,100.0 150.0,147.0 126.5,100.0");
}

TEST(ChartCircle, ValuesMayRunInwardsOrByPowers) {
    ChartParts parts = Bare("Polar", "Plain");
    parts.valueAxis += "<Reverse>true</Reverse>";
    EXPECT_EQ(Shapes(Draw(parts, Four())).at(0),
              "path 00000000 ff418cf0 150.0,100.0 197.0,100.0 150.0,100.0 103.0,100.0");
    parts.valueAxis =
        "<Visible>False</Visible><LogScale>true</LogScale><Minimum>1</Minimum><Maximum>100</Maximum>";
    const Table powers = Sales({{"N", "", 100}, {"E", "", 10}, {"S", "", 1}, {"W", "", 0}});
    EXPECT_THAT(Shapes(Draw(parts, powers)),
                ElementsAre("path 00000000 ff418cf0 150.0,6.0 197.0,100.0 150.0,100.0"));
}

}  // namespace
}  // namespace rdl::layout
