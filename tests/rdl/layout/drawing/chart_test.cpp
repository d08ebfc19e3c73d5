// SPDX-License-Identifier: GPL-3.0-or-later
// What charts are drawn as.
#include <gmock/gmock.h>

#include <cmath>

#include "rdl/layout/drawing/chart_kit.h"
#include "rdl/raises.h"
#include "rdl/values/error.h"

namespace rdl::layout {
namespace {

using testing::DoubleNear;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsSupersetOf;

constexpr Color FirstColor = 0xFF418CF0, SecondColor = 0xFFFCB441;

Table Regions() {
    return Sales(
        {{"North", "Tea", 100}, {"South", "Tea", 50}, {"North", "Coffee", 60}, {"South", "Coffee", 30}});
}

TEST(Chart, ColumnsAreAsHighAsTheirValues) {
    const Drawn drawn = Draw({}, Regions());
    const auto columns = drawn.Rects();
    ASSERT_EQ(columns.size(), 2U);
    EXPECT_NEAR(columns[0].height, 2 * columns[1].height, 0.01);
    EXPECT_DOUBLE_EQ(columns[0].y + columns[0].height, columns[1].y + columns[1].height);
    EXPECT_LT(columns[0].x, columns[1].x);
    EXPECT_THAT(drawn.Texts(), IsSupersetOf({"North", "South", "0"}));
}

TEST(Chart, SeriesOfAGroupStandBesideEachOtherInPaletteColours) {
    ChartParts parts;
    parts.seriesGroup = "=Fields!Product.Value";
    parts.more = "<ChartLegends><ChartLegend Name=\"L\"/></ChartLegends>";
    const Drawn drawn = Draw(parts, Regions());
    const auto columns = drawn.Rects();  // two in the legend first
    ASSERT_EQ(columns.size(), 6U);
    EXPECT_EQ(columns[2].color, FirstColor);
    EXPECT_EQ(columns[4].color, SecondColor);
    EXPECT_NEAR(columns[2].x + columns[2].width, columns[4].x, 0.01);
    EXPECT_THAT(drawn.Texts(), IsSupersetOf({"Tea", "Coffee"}));
}

TEST(Chart, StackedColumnsStandOnEachOther) {
    ChartParts parts;
    parts.subtype = "Stacked";
    parts.seriesGroup = "=Fields!Product.Value";
    const auto columns = Draw(parts, Regions()).Rects();
    ASSERT_EQ(columns.size(), 4U);
    EXPECT_NEAR(columns[2].y + columns[2].height, columns[0].y, 0.01);
    EXPECT_DOUBLE_EQ(columns[2].x, columns[0].x);
    EXPECT_NEAR(columns[0].height / columns[2].height, 100.0 / 60, 0.01);
}

TEST(Chart, PercentStackedColumnsAreAllAsHigh) {
    ChartParts parts;
    parts.subtype = "PercentStacked";
    parts.seriesGroup = "=Fields!Product.Value";
    const Drawn drawn =
        Draw(parts, Sales({{"North", "Tea", 30}, {"North", "Coffee", 10}, {"South", "Tea", 7}}));
    const auto columns = drawn.Rects();
    ASSERT_EQ(columns.size(), 3U);
    EXPECT_NEAR(columns[0].height + columns[2].height, columns[1].height, 0.01);
    EXPECT_NEAR(columns[0].height, 3 * columns[2].height, 0.01);
    EXPECT_THAT(drawn.Texts(), IsSupersetOf({"0 %", "100 %"}));
}

TEST(Chart, NegativeColumnsHangBelowZero) {
    const auto columns = Draw({}, Sales({{"North", "Tea", 100}, {"South", "Tea", -50}})).Rects();
    ASSERT_EQ(columns.size(), 2U);
    EXPECT_NEAR(columns[0].y + columns[0].height, columns[1].y, 0.01);
}

TEST(Chart, RangeColumnsReachFromTheLowValueToTheHighOne) {
    ChartParts parts;
    parts.type = "Range";
    parts.subtype = "Column";
    parts.values = "<High>=Sum(Fields!Amount.Value)</High><Low>=Sum(Fields!Amount.Value) - 10</Low>";
    parts.valueAxis = "<Minimum>0</Minimum><Maximum>100</Maximum>";
    const auto columns = Draw(parts, Sales({{"North", "", 100}, {"South", "", 50}})).Rects();
    ASSERT_EQ(columns.size(), 2U);
    EXPECT_NEAR(columns[0].height, columns[1].height, 0.01);
    EXPECT_NEAR(columns[1].y - columns[0].y, 5 * columns[0].height, 0.01);
}

TEST(Chart, RangeBarsLieBesideTheLowValue) {
    ChartParts parts;
    parts.type = "Range";
    parts.subtype = "Bar";
    parts.values = "<High>30</High><Low>20</Low>";
    parts.valueAxis = "<Minimum>0</Minimum><Maximum>100</Maximum>";
    const Drawn drawn = Draw(parts, Sales({{"North", "", 1}, {"South", "", 1}}));
    const auto bars = drawn.Rects();
    ASSERT_EQ(bars.size(), 2U);
    EXPECT_DOUBLE_EQ(bars[0].x, bars[1].x);
    EXPECT_LT(bars[0].width * 2, bars[0].x);
}

TEST(Chart, RangeWithoutALowValueIsAGap) {
    ChartParts parts;
    parts.type = "Range";
    parts.subtype = "Column";
    parts.values = "<High>30</High><Low>=Nothing</Low>";
    EXPECT_TRUE(Draw(parts, Regions()).Rects().empty());
}

TEST(Chart, ScaleOfARangeReachesFromItsLowestToItsHighestValue) {
    ChartParts parts;
    parts.type = "Range";
    parts.values = "<High>1900</High><Low>1100</Low>";
    parts.valueAxis = "<IncludeZero>false</IncludeZero>";
    const std::vector<std::string> texts = Draw(parts, Regions()).Texts();
    EXPECT_THAT(texts, testing::Not(testing::Contains("0")));
    EXPECT_THAT(texts, IsSupersetOf({"1,200", "1,800"}));
}

TEST(Chart, BarsGoToTheRightFromTheBottomUpwards) {
    ChartParts parts;
    parts.type = "Bar";
    const auto bars = Draw(parts, Regions()).Rects();
    ASSERT_EQ(bars.size(), 2U);
    EXPECT_DOUBLE_EQ(bars[0].x, bars[1].x);
    EXPECT_NEAR(bars[0].width, 2 * bars[1].width, 0.01);
    EXPECT_GT(bars[0].y, bars[1].y);
}

TEST(Chart, NullIsAGapInALine) {
    ChartParts parts;
    parts.type = "Line";
    Table table = Sales({{"A", "", 1}, {"B", "", 2}, {"C", "", 3}, {"D", "", 4}, {"E", "", 5}});
    EXPECT_EQ(Draw(parts, table).Paths().size(), 1U);
    table.cells[2 * 3 + 2] = Value();
    const auto lines = Draw(parts, table).Paths();
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0].segments.size(), 2U);
    EXPECT_EQ(lines[0].stroke, FirstColor);
}

TEST(Chart, WhatALogarithmicAxisHasNoPlaceForIsAGap) {
    ChartParts parts;
    parts.valueAxis = "<LogScale>true</LogScale>";
    const auto columns =
        Draw(parts, Sales({{"A", "", 10}, {"B", "", 0}, {"C", "", -5}, {"D", "", 1000}})).Rects();
    EXPECT_EQ(columns.size(), 2U);
}

TEST(Chart, LabelThatASliceHasNoRoomForStandsBesideIt) {
    ChartParts parts;
    parts.type = "Shape";
    parts.subtype = "Pie";
    parts.point =
        "<ChartDataLabel><Visible>true</Visible><Label>=Fields!Region.Value</Label></ChartDataLabel>";
    const auto leaders = [&](std::int64_t small) {
        const Drawn drawn = Draw(parts, Sales({{"Large", "", 100}, {"Other one", "", small}}));
        const auto& ops = drawn.Content().ops;
        return std::count_if(ops.begin(), ops.end(),
                             [](const Op& op) { return std::holds_alternative<LineOp>(op); });
    };
    EXPECT_EQ(leaders(100), 0);
    EXPECT_EQ(leaders(1), 1);
}

TEST(Chart, LineBetweenGapsIsSeenAsAPoint) {
    ChartParts parts;
    parts.type = "Line";
    const auto lines = Draw(parts, Sales({{"A", "", 1}})).Paths();
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(lines[0].fill, FirstColor);
}

TEST(Chart, SteppedLineTurnsOnlyAtRightAngles) {
    ChartParts parts;
    parts.type = "Line";
    parts.subtype = "Stepped";
    const auto lines = Draw(parts, Sales({{"A", "", 1}, {"B", "", 5}, {"C", "", 2}})).Paths();
    ASSERT_EQ(lines.size(), 1U);
    const auto& steps = lines[0].segments;
    ASSERT_EQ(steps.size(), 5U);
    for (std::size_t i = 1; i < steps.size(); ++i) {
        EXPECT_TRUE(steps[i].x[0] == steps[i - 1].x[0] || steps[i].y[0] == steps[i - 1].y[0]);
    }
}

TEST(Chart, AreaIsClosedAlongZero) {
    ChartParts parts;
    parts.type = "Area";
    const auto areas = Draw(parts, Regions()).Paths();
    ASSERT_GE(areas.size(), 1U);
    const auto& outline = areas[0].segments;
    ASSERT_EQ(outline.size(), 5U);  // two points above, two below, closed
    EXPECT_DOUBLE_EQ(outline[2].y[0], outline[3].y[0]);
}

TEST(Chart, PieHasASliceForEachCategory) {
    ChartParts parts;
    parts.type = "Shape";
    parts.subtype = "Pie";
    parts.point = "<ChartDataLabel><Visible>true</Visible><Label>#PERCENT{P0}</Label></ChartDataLabel>";
    parts.more = "<ChartLegends><ChartLegend Name=\"L\"/></ChartLegends>";
    const Drawn drawn = Draw(parts, Sales({{"North", "", 75}, {"South", "", 25}}));
    const auto slices = drawn.Paths();
    ASSERT_EQ(slices.size(), 2U);
    EXPECT_EQ(slices[0].fill, FirstColor);
    EXPECT_EQ(slices[1].fill, SecondColor);
    EXPECT_THAT(drawn.Texts(), IsSupersetOf({"75 %", "25 %", "North", "South"}));
}

TEST(Chart, PieOfSeriesWithoutCategoriesHasASliceForEachSeries) {
    ChartParts parts;
    parts.type = "Shape";
    parts.subtype = "Doughnut";
    parts.categoryGroup.clear();
    parts.seriesGroup = "=Fields!Product.Value";
    parts.more = "<ChartLegends><ChartLegend Name=\"L\"/></ChartLegends>";
    const Drawn drawn = Draw(parts, Regions());
    EXPECT_EQ(drawn.Paths().size(), 2U);
    EXPECT_THAT(drawn.Texts(), ElementsAre("Tea", "Coffee"));
    const Drawn asked{BuildKit(ChartReport(parts), Regions(), Drawings::Data)};
    EXPECT_TRUE(asked.Content().ops.empty());
    std::vector<std::string> slices;
    for (const std::vector<Value>& row :
         asked.kit.report->sections.front()->items.front().drawing->data.rows) {
        slices.emplace_back(row.at(1).AsText());
    }
    EXPECT_THAT(slices, ElementsAre("Tea", "Coffee"));
}

TEST(Chart, ScatteredPointsLieByTheirNumbers) {
    ChartParts parts;
    parts.type = "Scatter";
    parts.values = "<X>=Fields!Amount.Value</X><Y>=Fields!Amount.Value * 2</Y>";
    const Drawn drawn = Draw(parts, Sales({{"A", "", 0}, {"B", "", 10}, {"C", "", 5}}));
    const auto points = drawn.Paths();
    ASSERT_EQ(points.size(), 3U);
    const auto x = [&](std::size_t i) { return points[i].segments[0].x[0]; };
    const auto y = [&](std::size_t i) { return points[i].segments[0].y[0]; };
    EXPECT_NEAR(x(2), (x(0) + x(1)) / 2, 0.01);
    EXPECT_NEAR(y(2), (y(0) + y(1)) / 2, 0.01);
    EXPECT_LT(y(1), y(0));
}

TEST(Chart, BubbleHasFourTimesTheAreaForFourTimesTheSize) {
    ChartParts parts;
    parts.type = "Scatter";
    parts.subtype = "Bubble";
    parts.values = "<X>1</X><Y>1</Y><Size>=Fields!Amount.Value</Size>";
    const auto bubbles = Draw(parts, Sales({{"A", "", 4}, {"B", "", 1}})).Paths();
    ASSERT_EQ(bubbles.size(), 2U);
    const auto top = [&](std::size_t i) { return bubbles[i].segments[0].y[0]; };
    const auto middle = [&](std::size_t i) { return bubbles[i].segments[2].y[2]; };
    EXPECT_NEAR(middle(0) - top(0), 2 * (middle(1) - top(1)), 0.01);
}

TEST(Chart, ColourOfAPointMayBeAnExpression) {
    ChartParts parts;
    parts.point =
        "<Style><Color>=IIf(Sum(Fields!Amount.Value) &gt; 100, \"Red\", \"#00FF00\")</Color></Style>";
    const auto columns = Draw(parts, Regions()).Rects();
    ASSERT_EQ(columns.size(), 2U);
    EXPECT_EQ(columns[0].color, 0xFFFF0000);
    EXPECT_EQ(columns[1].color, 0xFF00FF00);
}

TEST(Chart, LineAndAreaHaveTheColourOnWhichTheirPointsAgree) {
    for (const char* type : {"Line", "Area"}) {
        ChartParts parts;
        parts.type = type;
        parts.point =
            "<Style><Color>=IIf(Sum(Fields!Amount.Value, &quot;Data&quot;) &gt; 5, &quot;#00ff00&quot;, "
            "&quot;#ff0000&quot;)</Color></Style>";
        const Drawn drawn = Draw(parts, Sales({{"North", "Pen", 10}, {"South", "Pen", 20}}));
        ASSERT_FALSE(drawn.Paths().empty()) << type;
        EXPECT_EQ(drawn.Paths().back().stroke & 0xFFFFFF, 0x00FF00U) << type;
    }
}

TEST(Chart, CustomPaletteIsUsedInItsOrder) {
    ChartParts parts;
    parts.seriesGroup = "=Fields!Product.Value";
    parts.more =
        "<Palette>Custom</Palette><ChartCustomPaletteColors><ChartCustomPaletteColor>#010203"
        "</ChartCustomPaletteColor><ChartCustomPaletteColor>#040506</ChartCustomPaletteColor>"
        "</ChartCustomPaletteColors>";
    const auto columns = Draw(parts, Regions()).Rects();
    ASSERT_EQ(columns.size(), 4U);
    EXPECT_EQ(columns[0].color, 0xFF010203);
    EXPECT_EQ(columns[2].color, 0xFF040506);
}

TEST(Chart, NumbersOfAxisAndLabelsAreFormatted) {
    ChartParts parts;
    parts.valueAxis =
        "<Minimum>0</Minimum><Maximum>200</Maximum><Interval>100</Interval>"
        "<Style><Format>0.0</Format></Style>";
    parts.point =
        "<ChartDataLabel><Visible>true</Visible><UseValueAsLabel>true</UseValueAsLabel>"
        "<Style><Format>N2</Format></Style></ChartDataLabel>";
    const Drawn drawn = Draw(parts, Sales({{"North", "", 150}}));
    EXPECT_THAT(drawn.Texts(), ElementsAre("North", "0.0", "100.0", "200.0", "150.00"));
}

TEST(Chart, TitlesOfChartAndAxesAreDrawn) {
    ChartParts parts;
    parts.categoryAxis = "<ChartAxisTitle><Caption>Region</Caption></ChartAxisTitle>";
    parts.valueAxis = "<ChartAxisTitle><Caption>Amount</Caption></ChartAxisTitle>";
    parts.more =
        "<ChartTitles><ChartTitle Name=\"T\"><Caption>=\"Sum \" &amp; Sum(Fields!Amount.Value)"
        "</Caption></ChartTitle></ChartTitles>";
    const Drawn drawn = Draw(parts, Regions());
    EXPECT_THAT(drawn.Texts(), IsSupersetOf({"Region", "Amount", "Sum 240"}));
    EXPECT_EQ(drawn.kit.report->sections.front()->items.front().drawing->description, "Sum 240");
    const std::vector<std::string> texts = drawn.Texts();
    const auto amount =
        static_cast<std::size_t>(std::find(texts.begin(), texts.end(), "Amount") - texts.begin());
    EXPECT_EQ(drawn.Letters()[amount].rotation, 270);  // beside an upright axis
}

TEST(Chart, LongCategoryNamesAreTurnedAndNeverTouch) {
    std::vector<std::string> names;
    std::vector<SaleRow> rows;
    for (int i = 0; i < 100; ++i) {
        names.push_back("Region-with-a-long-name-" + std::to_string(i));
    }
    for (const std::string& name : names) {
        rows.push_back({name.c_str(), "", 5});
    }
    const Drawn drawn = Draw({}, Sales(rows));
    std::vector<TextOp> turned;
    for (const TextOp& op : drawn.Letters()) {
        if (op.rotation != 0) {
            turned.push_back(op);
        }
    }
    ASSERT_GT(turned.size(), 10U);
    EXPECT_LT(turned.size(), 60U);
    for (std::size_t i = 1; i < turned.size(); ++i) {
        EXPECT_GE(turned[i].x - turned[i - 1].x, static_cast<double>(turned[i].size)) << i;
    }
}

TEST(Chart, EverythingIsDrawnWithinIt) {
    for (const char* type : {"Column", "Bar", "Line", "Area"}) {
        ChartParts parts;
        parts.type = type;
        parts.seriesGroup = "=Fields!Product.Value";
        parts.more =
            "<ChartLegends><ChartLegend Name=\"L\"><Position>BottomLeft</Position></ChartLegend>"
            "</ChartLegends>";
        const Drawn drawn = Draw(parts, Regions());
        for (const RectOp& op : drawn.Rects()) {
            EXPECT_GE(op.x, 0) << type;
            EXPECT_GE(op.y, 0) << type;
            EXPECT_LE(op.x + op.width, 300) << type;
            EXPECT_LE(op.y + op.height, 200) << type;
        }
        for (const TextOp& op : drawn.Letters()) {
            EXPECT_GE(op.x, 0) << type;
            EXPECT_LE(op.baseline, 200) << type;
        }
    }
}

TEST(Chart, WithoutRowsThereIsTheMessageAlone) {
    ChartParts parts;
    EXPECT_THAT(Draw(parts, Sales({})).Texts(), ElementsAre("No Data Available"));
    parts.more = "<ChartNoDataMessage Name=\"M\"><Caption>Nothing sold</Caption></ChartNoDataMessage>";
    EXPECT_THAT(Draw(parts, Sales({})).Texts(), ElementsAre("Nothing sold"));
}

TEST(Chart, TooManySeriesAreAnErrorThatNamesTheChart) {
    std::vector<std::string> names;
    std::vector<SaleRow> rows;
    for (int i = 0; i < 501; ++i) {
        names.push_back(std::to_string(i));
    }
    for (const std::string& name : names) {
        rows.push_back({"A", name.c_str(), 1});
    }
    ChartParts parts;
    parts.seriesGroup = "=Fields!Product.Value";
    EXPECT_THAT(ErrorRaisedBy([&] { Draw(parts, Sales(rows)); }),
                HasSubstr("Chart \"Turnover\" has 501 series and 1 categories"));
}

TEST(Chart, ExpressionThatDoesNotCompileIsFoundWhenTheReportIsOpened) {
    ChartParts parts;
    parts.values = "<Y>=Sum(Fields!Nothing.Value)</Y>";
    const Definition definition = ParseDefinition(ChartReport(parts), "test.rdl");
    EXPECT_THROW(CheckExpressions(definition), Error);
}

TEST(Chart, OnAPageItStandsWhereItIsPlaced) {
    std::string report = ChartReport({});
    report.insert(report.find("<Width>300pt"), "<Left>40pt</Left><Top>20pt</Top>");
    const BuiltKit kit = BuildKit(report, Regions());
    const RectOp alone = Draw({}, Regions()).Rects().front();
    const TextSink pages = PagesOf(kit);
    for (const Op& op : pages.pages.at(0).ops) {
        if (const auto* column = std::get_if<RectOp>(&op); column && column->color == FirstColor) {
            EXPECT_THAT(column->x, DoubleNear(alone.x + 40, 0.01));
            EXPECT_THAT(column->y, DoubleNear(alone.y + 20, 0.01));
            break;
        }
    }
    EXPECT_THAT(pages.bodies.at(0), IsSupersetOf({"North", "South"}));
}

TEST(Chart, InAGroupOfATableItHasTheGroupsRowsAlone) {
    std::string chart = ChartReport({});
    const std::size_t begin = chart.find("<Chart Name"), end = chart.find("</Chart>") + 8;
    chart = chart.substr(begin, end - begin);
    const std::string row = "<TablixRow><Height>150pt</Height><TablixCells><TablixCell><CellContents>" +
                            chart + "</CellContents></TablixCell></TablixCells></TablixRow>";
    const std::string member =
        "<TablixMember><Group Name=\"Products\"><GroupExpressions><GroupExpression>"
        "=Fields!Product.Value</GroupExpression></GroupExpressions></Group></TablixMember>";
    const BuiltKit kit = BuildKit(Report(Tablix(1, row, member)),
                                  Sales({{"North", "Tea", 1}, {"South", "Coffee", 2}, {"West", "Tea", 3}}));
    ASSERT_EQ(kit.Table().RowCount(), 2U);
    const auto columnsIn = [&](std::size_t index) {
        TableRow made;
        kit.Table().Row(index, made);
        const Page& content = made.cells.at(0).content.drawing->content;
        EXPECT_DOUBLE_EQ(content.width, 100);  // the cell's
        return std::count_if(content.ops.begin(), content.ops.end(),
                             [](const Op& op) { return std::holds_alternative<RectOp>(op); });
    };
    EXPECT_EQ(columnsIn(0), 2);
    EXPECT_EQ(columnsIn(1), 1);
}

TEST(Chart, SecondValueAxisStandsAcrossWithItsOwnScale) {
    ChartParts parts;
    parts.series = "<ValueAxisName>Second</ValueAxisName>";
    parts.valueAxis =
        "<Maximum>7</Maximum></ChartAxis><ChartAxis Name=\"Second\"><Minimum>0</Minimum>"
        "<Maximum>200</Maximum><Interval>200</Interval>";
    const Drawn drawn = Draw(parts, Regions());
    const std::vector<std::string> texts = drawn.Texts();
    EXPECT_THAT(texts, ElementsAre("North", "South", "0", "200"));
    EXPECT_GT(drawn.Letters().at(3).x, drawn.Rects().at(1).x);
}

TEST(Chart, InACellWithoutAxesItKeepsNearlyAllOfItsRoom) {
    ChartParts parts;
    parts.type = "Bar";
    parts.categoryGroup.clear();
    parts.categoryAxis = parts.valueAxis = "<Visible>False</Visible>";
    parts.valueAxis += "<Minimum>0</Minimum><Maximum>60</Maximum>";
    std::string report = ChartReport(parts);
    const std::string size = "<Width>300pt</Width><Height>200pt</Height>";
    report.replace(report.find(size), size.size(), "<Width>100pt</Width><Height>20pt</Height>");
    const Drawn drawn{BuildKit(report, Sales({{"North", "Pen", 60}}))};
    ASSERT_FALSE(drawn.Rects().empty());
    const RectOp bar = drawn.Rects().back();
    EXPECT_GT(bar.height, 12);
    EXPECT_GT(bar.width, 90);
    EXPECT_TRUE(drawn.Texts().empty());
}

TEST(Chart, IsAPictureForFormatsWithoutVectors) {
    const Definition definition = ParseDefinition(ChartReport({}), "test.rdl");
    ReportInput input;
    input.definition = &definition;
    input.tables.emplace("Data", Regions());
    input.drawings = Drawings::Pictures;
    input.paint = [](const DrawingInstance& drawing) {
        EXPECT_EQ(drawing.content.width, 300);
        return std::make_shared<const std::string>("bytes");
    };
    const auto report = Build(std::move(input));
    const Instance& item = report->sections.front()->items.front();
    EXPECT_EQ(item.kind, InstanceKind::Image);
    EXPECT_EQ(*item.imageBytes, "bytes");
    EXPECT_EQ(item.toolTip, "Turnover");
}

}  // namespace
}  // namespace rdl::layout
