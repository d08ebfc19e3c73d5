// SPDX-License-Identifier: GPL-3.0-or-later
// Charts too small for their titles, legends and axes: the plot remains.
#include <gmock/gmock.h>

#include "rdl/layout/drawing/chart_shapes.h"

namespace rdl::layout {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::string Title =
    "<ChartTitles><ChartTitle Name=\"T\"><Caption>Turnover</Caption></ChartTitle></ChartTitles>";
const std::string Legend = "<ChartLegends><ChartLegend Name=\"L\"/></ChartLegends>";

Drawn Sized(const ChartParts& parts, const std::string& width, const std::string& height) {
    std::string report = ChartReport(parts);
    const std::string size = "<Width>300pt</Width><Height>200pt</Height>";
    report.replace(report.find(size), size.size(),
                   "<Width>" + width + "</Width><Height>" + height + "</Height>");
    return {BuildKit(report, Sales({{"North", "", 100}, {"South", "", 50}}))};
}

TEST(TinyChart, HasItsColumnsWithoutAxes) {
    ChartParts parts;
    parts.valueAxis = "<Minimum>0</Minimum><Maximum>100</Maximum>";
    const Drawn drawn = Sized(parts, "32pt", "24pt");
    EXPECT_THAT(drawn.Texts(), IsEmpty());
    EXPECT_THAT(Shapes(drawn),
                ElementsAre("box 2.9,1.5 11.6x21.0 ff418cf0", "box 17.5,12.0 11.6x10.5 ff418cf0"));
}

TEST(TinyChart, HasNeitherTitleNorLegendButIsCalledByItsTitle) {
    ChartParts parts;
    parts.valueAxis = "<Minimum>0</Minimum><Maximum>100</Maximum>";
    parts.more = Title + Legend;
    const Drawn drawn = Sized(parts, "32pt", "24pt");
    EXPECT_THAT(drawn.Texts(), IsEmpty());
    EXPECT_THAT(Shapes(drawn),
                ElementsAre("box 2.9,1.5 11.6x21.0 ff418cf0", "box 17.5,12.0 11.6x10.5 ff418cf0"));
    EXPECT_EQ(drawn.kit.report->sections.front()->items.front().drawing->description, "Turnover");
}

TEST(TinyChart, HasItsTitleWhereItFits) {
    ChartParts parts;
    parts.more = Title;
    EXPECT_THAT(Sized(parts, "80pt", "40pt").Texts(), ElementsAre("Turnover"));
}

TEST(TinyChart, OfEachKindIsDrawnWithinItsRoom) {
    for (const auto& [type, subtype] :
         {std::pair{"Bar", "Plain"}, std::pair{"Line", "Plain"}, std::pair{"Area", "Plain"},
          std::pair{"Shape", "Pie"}, std::pair{"Shape", "Doughnut"}, std::pair{"Shape", "Funnel"},
          std::pair{"Shape", "Pyramid"}, std::pair{"Shape", "TreeMap"}, std::pair{"Shape", "Sunburst"},
          std::pair{"Polar", "Plain"}, std::pair{"Polar", "Radar"}, std::pair{"Range", "Candlestick"}}) {
        ChartParts parts;
        parts.type = type;
        parts.subtype = subtype;
        parts.more = Title + Legend;
        if (parts.type == "Range") {
            parts.values = "<High>9</High><Low>1</Low><Start>2</Start><End>7</End>";
        }
        const Drawn drawn = Sized(parts, "8pt", "6pt");
        EXPECT_THAT(drawn.Texts(), IsEmpty()) << subtype;
        EXPECT_FALSE(Shapes(drawn).empty()) << subtype;
        for (const PathOp& path : drawn.Paths()) {
            for (const PathOp::Segment& segment : path.segments) {
                const int last = segment.kind == PathOp::Segment::CurveTo ? 2 : 0;
                if (segment.kind != PathOp::Segment::Close) {
                    EXPECT_GE(segment.x[last], 0) << subtype;
                    EXPECT_LE(segment.x[last], 8) << subtype;
                    EXPECT_GE(segment.y[last], 0) << subtype;
                    EXPECT_LE(segment.y[last], 6) << subtype;
                }
            }
        }
    }
}

}  // namespace
}  // namespace rdl::layout
