// SPDX-License-Identifier: GPL-3.0-or-later
// Stocks, candlesticks, errors and boxes: from a low to a high value.
#include <gmock/gmock.h>

#include "rdl/layout/drawing/chart_shapes.h"

namespace rdl::layout {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::string Prices = "<High>90</High><Low>10</Low><Start>20</Start><End>60</End>";

Table One() {
    return Sales({{"Mon", "", 1}});
}

ChartParts Stock(const std::string& subtype, const std::string& values = Prices) {
    ChartParts parts = Bare("Range", subtype);
    parts.values = values;
    return parts;
}

TEST(ChartSpan, StockIsALineWithItsPricesBesideIt) {
    EXPECT_THAT(Shapes(Draw(Stock("Stock"), One())),
                ElementsAre("line 150.0,24.8 150.0,175.2 ff418cf0", "line 34.8,156.4 150.0,156.4 ff418cf0",
                            "line 150.0,81.2 265.2,81.2 ff418cf0"));
}

TEST(ChartSpan, StockShowsThePriceThatItsAttributeNames) {
    ChartParts parts = Stock("Stock");
    parts.series = Custom("ShowOpenClose", "Close");
    EXPECT_THAT(Shapes(Draw(parts, One())),
                ElementsAre("line 150.0,24.8 150.0,175.2 ff418cf0", "line 150.0,81.2 265.2,81.2 ff418cf0"));
    parts.series = Custom("ShowOpenClose", "Open");
    EXPECT_THAT(Shapes(Draw(parts, One())),
                ElementsAre("line 150.0,24.8 150.0,175.2 ff418cf0", "line 34.8,156.4 150.0,156.4 ff418cf0"));
}

TEST(ChartSpan, StockMayHaveTriangles) {
    ChartParts parts = Stock("Stock");
    parts.series = Custom("OpenCloseStyle", "Triangle");
    EXPECT_THAT(Shapes(Draw(parts, One())),
                ElementsAre("line 150.0,24.8 150.0,175.2 ff418cf0",
                            "path ff418cf0 00000000 150.0,156.4 34.8,98.8 34.8,214.0 z",
                            "path ff418cf0 00000000 150.0,81.2 265.2,23.6 265.2,138.8 z"));
}

TEST(ChartSpan, CandlestickThatRisesIsHollow) {
    EXPECT_THAT(Shapes(Draw(Stock("Candlestick"), One())),
                ElementsAre("line 150.0,24.8 150.0,81.2 ff418cf0", "line 150.0,156.4 150.0,175.2 ff418cf0",
                            "box 34.8,81.2 230.4x75.2 ffffffff",
                            "path 00000000 ff418cf0 34.8,81.2 265.2,81.2 265.2,156.4 34.8,156.4 z"));
}

TEST(ChartSpan, CandlestickThatFallsIsFilled) {
    const std::string falls = "<High>90</High><Low>10</Low><Start>60</Start><End>20</End>";
    EXPECT_EQ(Shapes(Draw(Stock("Candlestick", falls), One())).at(2), "box 34.8,81.2 230.4x75.2 ff418cf0");
}

TEST(ChartSpan, CandlesticksMayHaveColoursOfTheirOwn) {
    ChartParts parts = Stock("Candlestick");
    parts.series = Custom("PriceUpColor", "Lime");
    EXPECT_EQ(Shapes(Draw(parts, One())).at(2), "box 34.8,81.2 230.4x75.2 ff00ff00");
    parts = Stock("Candlestick", "<High>90</High><Low>10</Low><Start>60</Start><End>20</End>");
    parts.series = Custom("PriceDownColor", "=\"#ff\" &amp; \"0000\"");
    EXPECT_EQ(Shapes(Draw(parts, One())).at(2), "box 34.8,81.2 230.4x75.2 ffff0000");
}

TEST(ChartSpan, CandlestickWithoutAnOpeningPriceIsALine) {
    const std::string values = "<High>90</High><Low>10</Low><Start>=Nothing</Start><End>60</End>";
    EXPECT_THAT(Shapes(Draw(Stock("Candlestick", values), One())),
                ElementsAre("line 150.0,24.8 150.0,175.2 ff418cf0"));
}

TEST(ChartSpan, WithoutAHighOrLowValueThereIsAGap) {
    for (const char* subtype : {"Stock", "Candlestick", "BoxPlot"}) {
        EXPECT_THAT(Shapes(Draw(Stock(subtype, "<High>=Nothing</High><Low>1</Low>"), One())), IsEmpty())
            << subtype;
        EXPECT_THAT(Shapes(Draw(Stock(subtype, "<High>1</High><Low>=Nothing</Low>"), One())), IsEmpty())
            << subtype;
    }
}

TEST(ChartSpan, WhosePointsAllFailSaysSo) {
    for (const char* subtype : {"Stock", "Candlestick", "BoxPlot", "Column"}) {
        EXPECT_THAT(Draw(Stock(subtype, "<High>1</High><Low>=1 / \"x\"</Low>"), One()).Texts(),
                    ElementsAre("#Error"))
            << subtype;
    }
}

TEST(ChartSpan, TheHighValueMayBeTheYValue) {
    EXPECT_THAT(Shapes(Draw(Stock("Stock", "<Y>90</Y><Low>10</Low>"), One())),
                ElementsAre("line 150.0,24.8 150.0,175.2 ff418cf0"));
}

TEST(ChartSpan, LabelIsTheClosingPriceAboveTheLine) {
    ChartParts parts = Stock("Stock");
    parts.point =
        "<ChartDataLabel><Visible>true</Visible><UseValueAsLabel>true</UseValueAsLabel>"
        "</ChartDataLabel>";
    const Drawn closing = Draw(parts, One());
    EXPECT_THAT(closing.Texts(), ElementsAre("60"));
    EXPECT_LT(closing.Letters().at(0).baseline, 24.8);
    EXPECT_GT(closing.Letters().at(0).baseline, 14.8);
    for (const auto& [price, text] : {std::pair{"High", "90"}, std::pair{"Low", "10"},
                                      std::pair{"Open", "20"}, std::pair{"Close", "60"}}) {
        parts.series = Custom("LabelValueType", price);
        EXPECT_THAT(Draw(parts, One()).Texts(), ElementsAre(text));
    }
}

TEST(ChartSpan, ErrorBarHasEndsAndAMarkerAtItsValue) {
    EXPECT_THAT(Shapes(Draw(Stock("ErrorBar", "<Y>50</Y><High>90</High><Low>10</Low>"), One())),
                ElementsAre("line 150.0,24.8 150.0,175.2 ff418cf0", "line 92.4,24.8 207.6,24.8 ff418cf0",
                            "line 92.4,175.2 207.6,175.2 ff418cf0",
                            "path ff418cf0 00000000 150.0,97.5 ~151.8,98.2 ~152.5,100.0 ~151.8,101.8 "
                            "~150.0,102.5 ~148.2,101.8 ~147.5,100.0 ~148.2,98.2 ~150.0,97.5 z"));
}

TEST(ChartSpan, ErrorBarMayHaveOneEnd) {
    ChartParts parts = Stock("ErrorBar", "<Y>50</Y><High>90</High><Low>10</Low>");
    parts.series = Custom("ErrorBarStyle", "UpperError");
    std::vector<std::string> shapes = Shapes(Draw(parts, One()));
    ASSERT_EQ(shapes.size(), 3U);
    EXPECT_EQ(shapes[0], "line 150.0,24.8 150.0,100.0 ff418cf0");
    EXPECT_EQ(shapes[1], "line 92.4,24.8 207.6,24.8 ff418cf0");
    parts.series = Custom("ErrorBarStyle", "LowerError");
    shapes = Shapes(Draw(parts, One()));
    ASSERT_EQ(shapes.size(), 3U);
    EXPECT_EQ(shapes[0], "line 150.0,100.0 150.0,175.2 ff418cf0");
    EXPECT_EQ(shapes[1], "line 92.4,175.2 207.6,175.2 ff418cf0");
}

TEST(ChartSpan, BoxHasWhiskersMedianAndMean) {
    const std::string values =
        "<High>90</High><Low>10</Low><Start>20</Start><End>60</End>"
        "<Mean>45</Mean><Median>40</Median>";
    EXPECT_THAT(
        Shapes(Draw(Stock("BoxPlot", values), One())),
        ElementsAre("line 92.4,24.8 207.6,24.8 ff418cf0", "line 92.4,175.2 207.6,175.2 ff418cf0",
                    "line 150.0,24.8 150.0,81.2 ff418cf0", "line 150.0,156.4 150.0,175.2 ff418cf0",
                    "box 34.8,81.2 230.4x75.2 ff418cf0",
                    "path 00000000 ff000000 34.8,81.2 265.2,81.2 265.2,156.4 34.8,156.4 z",
                    "line 34.8,118.8 265.2,118.8 ff000000", "line 34.8,109.4 265.2,109.4 ff000000 dashed"));
    ChartParts parts = Stock("BoxPlot", values);
    parts.series = Custom("BoxPlotShowAverage", "False");
    EXPECT_EQ(Shapes(Draw(parts, One())).size(), 7U);
    parts.series = Custom("BoxPlotShowMedian", "False");
    EXPECT_EQ(Shapes(Draw(parts, One())).back(), "line 34.8,109.4 265.2,109.4 ff000000 dashed");
}

TEST(ChartSpan, BoxesOfSeveralSeriesStandBesideEachOther) {
    ChartParts parts = Stock("Candlestick");
    parts.seriesGroup = "=Fields!Product.Value";
    parts.series = Custom("PointWidth", "1");
    const std::vector<RectOp> bodies = Draw(parts, Sales({{"Mon", "Tea", 1}, {"Mon", "Coffee", 1}})).Rects();
    ASSERT_EQ(bodies.size(), 2U);
    EXPECT_DOUBLE_EQ(bodies[0].x, 6);
    EXPECT_DOUBLE_EQ(bodies[0].width, 144);
    EXPECT_DOUBLE_EQ(bodies[1].x, 150);
}

TEST(ChartSpan, AmongOthersItStandsInTheMiddleOfItsCategory) {
    for (const char* other : {"Line", "Column"}) {
        std::string report = ChartReport(Stock("Candlestick"));
        const std::string end = "</ChartSeriesCollection>", member = "<ChartSeriesHierarchy><ChartMembers>";
        report.insert(report.find(end),
                      std::string("<ChartSeries Name=\"Other\"><ChartDataPoints><ChartDataPoint>"
                                  "<ChartDataPointValues><Y>=Nothing</Y></ChartDataPointValues>"
                                  "</ChartDataPoint></ChartDataPoints><Type>") +
                          other + "</Type></ChartSeries>");
        report.insert(report.find(member) + member.size(), "<ChartMember/>");
        const std::vector<RectOp> boxes = Drawn{BuildKit(report, One())}.Rects();
        ASSERT_EQ(boxes.size(), 1U) << other;
        EXPECT_EQ(ShapeText(boxes[0]), "box 34.8,81.2 230.4x75.2 ffffffff") << other;
    }
}

TEST(ChartSpan, ScaleReachesFromTheLowestToTheHighestValue) {
    ChartParts parts = Stock("Stock", "<High>1900</High><Low>1100</Low><Start>1200</Start><End>1300</End>");
    parts.categoryAxis.clear();
    parts.valueAxis = "<IncludeZero>false</IncludeZero>";
    const std::vector<std::string> texts = Draw(parts, One()).Texts();
    EXPECT_EQ(texts.front(), "Mon");
    EXPECT_EQ(texts.at(1), "1,100");
    EXPECT_EQ(texts.back(), "1,900");
}

TEST(ChartSpan, DataHaveEachValueInAColumn) {
    const Drawn drawn{BuildKit(ChartReport(Stock("Stock")), One(), Drawings::Data)};
    const DrawingData& data = drawn.kit.report->sections.front()->items.front().drawing->data;
    EXPECT_THAT(data.columns, ElementsAre("Category", "Series", "Value", "High", "Low", "Start", "End"));
    ASSERT_EQ(data.rows.size(), 1U);
    EXPECT_EQ(data.rows[0][0].AsText(), "Mon");
    EXPECT_EQ(data.rows[0][2].AsText(), "60");
    const double numbers[] = {90, 10, 20, 60};
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(data.rows[0][3 + i].AsDouble(), numbers[i]);
    }
}

TEST(ChartSpan, TenThousandAreDrawn) {
    ChartParts parts = Stock("Stock", "<High>=Sum(Fields!Amount.Value)</High><Low>0</Low>");
    parts.categoryGroup = "=Fields!Amount.Value";
    std::vector<SaleRow> rows;
    for (int i = 1; i <= 10'000; ++i) {
        rows.push_back({"", "", i});
    }
    EXPECT_EQ(Shapes(Draw(parts, Sales(rows))).size(), 10'000U);
}

}  // namespace
}  // namespace rdl::layout
