// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/graphics/part_tree.h"

#include <map>

#include "designer/graphics/new_graphics.h"
#include "sales_report.h"

namespace designer::test {
namespace {

std::string Listed(const Document& document, ElementId item) {
    std::map<ElementId, std::size_t> depths{{item, 0}};
    std::string text;
    for (const GraphicPart& part : PartsOf(document, item)) {
        depths[part.id] = depths.at(part.container) + 1;
        text += std::string((depths[part.id] - 1) * 2, ' ') + part.text + "\n";
    }
    return text;
}

TEST(GraphicParts, OfAChart) {
    Document document(SalesReport());
    const ElementId chart =
        InsertGraphic(document, ReadReportItems(document).bands[0], {0, 0, 100, 100}, NewGraphic::Chart, {});
    EXPECT_EQ(Listed(document, chart),
              "Category =Fields!Region.Value\n"
              "Series group Amount\n"
              "Series Series1\n"
              "  Points\n"
              "Area\n"
              "  Category axis\n"
              "  Value axis\n"
              "    Grid lines\n"
              "Title Amount by Region\n");
    const ElementId axis = document.Find(chart, "ChartAreas/ChartArea/ChartValueAxes/ChartAxis");
    EXPECT_EQ(OwnerOfPart(document, axis), chart);
    EXPECT_EQ(OwnerOfPart(document, chart), NoElement);
    const ElementId member = document.Find(chart, "ChartCategoryHierarchy/ChartMembers/ChartMember");
    EXPECT_EQ(PathsOfPart(document, member),
              (std::vector<std::string>{"", "Group", "SortExpressions/SortExpression"}));
}

TEST(GraphicParts, OfAGaugeAndAnIndicator) {
    Document document(SalesReport());
    const ReportBand body = ReadReportItems(document).bands[0];
    EXPECT_EQ(Listed(document, InsertGraphic(document, body, {0, 0, 100, 100}, NewGraphic::Gauge, {})),
              "Dial RadialGauge1\n"
              "  Scale RadialScale1\n"
              "    Pointer =Avg(Fields!Amount.Value)\n"
              "      Cap\n"
              "    Tick marks\n"
              "    Labels\n");
    EXPECT_EQ(Listed(document, InsertGraphic(document, body, {0, 0, 100, 100}, NewGraphic::Indicator, {})),
              "Indicator =Avg(Fields!Amount.Value)\n"
              "  State 0\n"
              "  State 33\n"
              "  State 66\n");
}

TEST(GraphicParts, AreNotEndless) {
    std::string series;
    for (int number = 0; number < 5000; ++number) {
        series += "<ChartSeries Name=\"S\"/>";
    }
    Document document(SalesReport("<Chart Name=\"C\"><ChartData><ChartSeriesCollection>" + series +
                                  "</ChartSeriesCollection></ChartData></Chart>"));
    EXPECT_EQ(PartsOf(document, ReadReportItems(document).items[0].id).size(), 1000u);
}

}  // namespace
}  // namespace designer::test
