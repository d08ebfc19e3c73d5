// SPDX-License-Identifier: GPL-3.0-or-later
// Charts of both forms of the schema, and what cannot be drawn.
#include <gmock/gmock.h>

#include <tuple>

#include "rdl/definition/chart.h"
#include "rdl/definition/rdl_text.h"

namespace rdl::test {
namespace {

using testing::AllOf;
using testing::HasSubstr;

std::string NewerSeries(const std::string& type, const std::string& subtype, const std::string& more = {}) {
    return "<ChartSeries Name=\"" + type + subtype +
           "\"><ChartDataPoints><ChartDataPoint><ChartDataPointValues>"
           "<Y>=Sum(Fields!Total.Value)</Y></ChartDataPointValues></ChartDataPoint></ChartDataPoints><Type>" +
           type + "</Type><Subtype>" + subtype + "</Subtype>" + more + "</ChartSeries>";
}

std::string Newer(const std::string& series, const std::string& more = {},
                  const std::string& seriesMembers = "<ChartMember/>") {
    return WithItems(
        "<Chart Name=\"Turnover\"><ChartCategoryHierarchy><ChartMembers><ChartMember><Group Name=\"Month\">"
        "<GroupExpressions><GroupExpression>=Fields!Month.Value</GroupExpression></GroupExpressions></Group>"
        "<Label>=Fields!Name.Value</Label></ChartMember></ChartMembers></ChartCategoryHierarchy>"
        "<ChartSeriesHierarchy><ChartMembers>" +
            seriesMembers + "</ChartMembers></ChartSeriesHierarchy><ChartData><ChartSeriesCollection>" +
            series + "</ChartSeriesCollection></ChartData>" + more + "</Chart>",
        Ns2008);
}

std::string Older(const std::string& type, const std::string& subtype, const std::string& more = {}) {
    return WithItems(
        "<Chart Name=\"Turnover\"><Type>" + type + "</Type><Subtype>" + subtype +
        "</Subtype><CategoryGroupings><CategoryGrouping><DynamicCategories><Grouping Name=\"Year\">"
        "<GroupExpressions><GroupExpression>=Fields!Year.Value</GroupExpression></GroupExpressions></"
        "Grouping>"
        "</DynamicCategories></CategoryGrouping><CategoryGrouping><DynamicCategories><Grouping "
        "Name=\"Month\"><GroupExpressions><GroupExpression>=Fields!Month.Value</GroupExpression>"
        "</GroupExpressions></Grouping><Label>=Fields!Name.Value</Label></DynamicCategories>"
        "</CategoryGrouping></CategoryGroupings><ChartData><ChartSeries><DataPoints><DataPoint><DataValues>"
        "<DataValue><Value>=Sum(Fields!Total.Value)</Value></DataValue><DataValue><Value>2</Value></"
        "DataValue>"
        "</DataValues></DataPoint></DataPoints></ChartSeries></ChartData>" +
        more + "</Chart>");
}

const Chart& ChartOf(const Definition& report) {
    return OnlyItem<Chart>(report);
}

TEST(ChartDefinition, CategoriesAndSeriesAreColumnsAndRowsOfARegion) {
    const Definition report = Parse(Newer(NewerSeries("Column", "Stacked")));
    const Chart& chart = ChartOf(report);
    ASSERT_EQ(chart.data.columnMembers.size(), 1U);
    EXPECT_EQ(chart.data.columnMembers[0].group->name, "Month");
    EXPECT_EQ(chart.categoryLabels.at(0).source, "=Fields!Name.Value");
    ASSERT_EQ(chart.series.size(), 1U);
    EXPECT_EQ(chart.series[0].kind, ChartKind::Column);
    EXPECT_EQ(chart.series[0].stack, ChartStack::Stacked);
    EXPECT_EQ(chart.series[0].points.at(0).y.source, "=Sum(Fields!Total.Value)");
    EXPECT_EQ(chart.areas.size(), 1U);
}

TEST(ChartDefinition, OlderGroupingsStandWithinEachOther) {
    const Definition report = Parse(Older("Bar", "PercentStacked"));
    const Chart& chart = ChartOf(report);
    ASSERT_EQ(chart.data.columnMembers.size(), 1U);
    EXPECT_EQ(chart.data.columnMembers[0].group->name, "Year");
    EXPECT_EQ(chart.data.columnMembers[0].members.at(0).group->name, "Month");
    ASSERT_EQ(chart.categoryLabels.size(), 2U);
    EXPECT_FALSE(chart.categoryLabels[0].IsSet());
    EXPECT_EQ(chart.categoryLabels[1].source, "=Fields!Name.Value");
    EXPECT_EQ(chart.series.at(0).kind, ChartKind::Bar);
    EXPECT_EQ(chart.series.at(0).stack, ChartStack::Percent);
}

TEST(ChartDefinition, OlderScatterHasItsXFirst) {
    const Definition report = Parse(Older("Scatter", "Line"));
    const ChartSeries& series = ChartOf(report).series.at(0);
    EXPECT_TRUE(series.joined);
    EXPECT_EQ(series.points.at(0).x.source, "=Sum(Fields!Total.Value)");
    EXPECT_EQ(series.points.at(0).y.source, "2");
}

TEST(ChartDefinition, OlderAxesAndLegendAreHiddenUnlessSaid) {
    const Definition hidden = Parse(Older("Column", "Plain"));
    EXPECT_EQ(ChartOf(hidden).areas.at(0).valueAxes.at(0).visible.source, "false");
    EXPECT_TRUE(ChartOf(hidden).legends.empty());
    const Definition shown =
        Parse(Older("Column", "Plain",
                    "<ValueAxis><Axis><Visible>true</Visible><Min>5</Min></Axis></ValueAxis>"
                    "<Legend><Visible>true</Visible><Position>TopLeft</Position></Legend>"));
    EXPECT_EQ(ChartOf(shown).areas.at(0).valueAxes.at(0).visible.source, "true");
    EXPECT_EQ(ChartOf(shown).areas.at(0).valueAxes.at(0).minimum.source, "5");
    EXPECT_EQ(ChartOf(shown).legends.at(0).position.source, "TopLeft");
    const Definition one = Parse(Older("Column", "Plain", "<Legend><Visible> 1 </Visible></Legend>"));
    EXPECT_EQ(ChartOf(one).legends.size(), 1U);
    EXPECT_THAT(ErrorOf(Older("Column", "Plain", "<Legend><Visible>maybe</Visible></Legend>")),
                HasSubstr("Legend, Visible: \"maybe\" is neither true nor false"));
}

TEST(ChartDefinition, OlderStockHasItsValuesInTheOrderOfTheSchema) {
    const std::string values =
        "<DataValue><Value>=1</Value></DataValue><DataValue><Value>=2</Value></DataValue>"
        "<DataValue><Value>=3</Value></DataValue><DataValue><Value>=4</Value></DataValue>";
    for (const auto& [subtype, kind, start, end] :
         {std::tuple{"HighLowClose", ChartKind::Stock, "", "=3"},
          std::tuple{"OpenHighLowClose", ChartKind::Stock, "=3", "=4"},
          std::tuple{"Candlestick", ChartKind::Candlestick, "=3", "=4"}}) {
        std::string source = Older("Stock", subtype);
        const std::size_t begin = source.find("<DataValue>"), after = source.find("</DataValues>");
        source.replace(begin, after - begin, values);
        const Definition report = Parse(source);
        const ChartSeries& series = ChartOf(report).series.at(0);
        EXPECT_EQ(series.kind, kind) << subtype;
        EXPECT_EQ(series.points.at(0).high.source, "=1") << subtype;
        EXPECT_EQ(series.points.at(0).low.source, "=2") << subtype;
        EXPECT_EQ(series.points.at(0).start.source, start) << subtype;
        EXPECT_EQ(series.points.at(0).end.source, end) << subtype;
    }
}

TEST(ChartDefinition, CustomAttributesThatAreUnderstoodAreKept) {
    const Definition report = Parse(Newer(NewerSeries(
        "Shape", "Funnel",
        "<CustomProperties><CustomProperty><Name>FunnelStyle</Name><Value>=\"YIsWidth\"</Value>"
        "</CustomProperty><CustomProperty><Name>Unheard</Name><Value>=1 +</Value></CustomProperty>"
        "</CustomProperties>")));
    const ChartSeries& series = ChartOf(report).series.at(0);
    ASSERT_EQ(series.attributes.size(), 1U);
    EXPECT_EQ(series.Attribute("FunnelStyle").source, "=\"YIsWidth\"");
    EXPECT_FALSE(series.Attribute("FunnelPointGap").IsSet());
}

TEST(ChartDefinition, TypeThatCannotBeDrawnIsNamedWithChartAndSeries) {
    EXPECT_THAT(ErrorOf(Newer(NewerSeries("Range", "Renko"))),
                AllOf(HasSubstr("Chart Turnover, ChartSeries RangeRenko"),
                      HasSubstr("a chart of the type Range Renko cannot be drawn")));
    EXPECT_THAT(ErrorOf(Older("Stock", "Plain")),
                AllOf(HasSubstr("Chart Turnover"), HasSubstr("Stock Plain cannot be drawn")));
}

TEST(ChartDefinition, DerivedSeriesIsNamed) {
    const std::string source =
        "<Chart Name=\"Turnover\"><ChartSeriesHierarchy/><ChartData>"
        "<ChartDerivedSeriesCollection/></ChartData></Chart>";
    EXPECT_THAT(ErrorOf(WithItems(source, Ns2008)),
                AllOf(HasSubstr("Chart Turnover"), HasSubstr("derived from another cannot be drawn")));
}

TEST(ChartDefinition, SeriesOfDifferentFramesInOneAreaAreAnError) {
    const std::pair<const char*, const char*> types[] = {
        {"Column", "Plain"}, {"Bar", "Plain"},     {"Shape", "Pie"},     {"Polar", "Radar"},
        {"Shape", "Funnel"}, {"Shape", "Pyramid"}, {"Shape", "TreeMap"}, {"Shape", "Sunburst"}};
    for (const auto& one : types) {
        for (const auto& other : types) {
            const std::string first = std::string(one.first) + one.second;
            const std::string second = std::string(other.first) + other.second;
            if (first == second) {
                continue;
            }
            const std::string both =
                NewerSeries(one.first, one.second) + NewerSeries(other.first, other.second);
            EXPECT_THAT(
                ErrorOf(Newer(both, "", "<ChartMember/><ChartMember/>")),
                HasSubstr("its series \"" + first + "\" and \"" + second + "\" cannot be drawn in one area"));
        }
    }
}

TEST(ChartDefinition, StocksMayStandAmongColumnsAndRadarsAmongPolarLines) {
    const std::string members = "<ChartMember/><ChartMember/>";
    const Definition prices =
        Parse(Newer(NewerSeries("Column", "Plain") + NewerSeries("Range", "Candlestick"), "", members));
    EXPECT_EQ(ChartOf(prices).series.at(1).kind, ChartKind::Candlestick);
    const Definition circle =
        Parse(Newer(NewerSeries("Polar", "Plain") + NewerSeries("Polar", "Radar"), "", members));
    EXPECT_EQ(ChartOf(circle).series.at(1).kind, ChartKind::Radar);
}

TEST(ChartDefinition, SeriesThatFitNoGroupAreAnError) {
    const std::string both = NewerSeries("Column", "Plain") + NewerSeries("Line", "Plain");
    EXPECT_THAT(ErrorOf(Newer(both)), HasSubstr("its data has 2 series, but its series groups have 1"));
}

TEST(ChartDefinition, AreaThatIsMissingIsAnError) {
    const std::string series = NewerSeries("Column", "Plain", "<ChartAreaName>Upper</ChartAreaName>");
    EXPECT_THAT(ErrorOf(Newer(series, "<ChartAreas><ChartArea Name=\"Lower\"/></ChartAreas>")),
                HasSubstr("names the area \"Upper\", which it does not have"));
}

}  // namespace
}  // namespace rdl::test
