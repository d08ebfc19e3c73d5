// SPDX-License-Identifier: GPL-3.0-or-later
// Charts of negative numbers, and the marks beside their axes.
#include <gtest/gtest.h>

#include "rdl/layout/chart_kit.h"

namespace rdl::layout {
namespace {

TEST(ChartNumbers, NegativePartsOfAStackHangBelowZero) {
    ChartParts parts;
    parts.subtype = "Stacked";
    parts.seriesGroup = "=Fields!Product.Value";
    const auto columns =
        Draw(parts, Sales({{"North", "Ink", 10}, {"North", "Pen", -5}, {"North", "Pad", 5}})).Rects();
    ASSERT_EQ(columns.size(), 3U);
    const double zero = columns[0].y + columns[0].height;
    EXPECT_NEAR(columns[1].y, zero, 0.01);
    EXPECT_NEAR(columns[1].height * 2, columns[0].height, 0.01);
    EXPECT_NEAR(columns[2].y + columns[2].height, columns[0].y, 0.01);
}

TEST(ChartNumbers, ANegativeNumberHasTheSliceOfItsSize) {
    ChartParts parts;
    parts.type = "Shape";
    parts.subtype = "Pie";
    const auto slices = [&](std::int64_t second) {
        std::vector<double> places;
        for (const PathOp& slice : Draw(parts, Sales({{"North", "", 30}, {"South", "", second}})).Paths()) {
            for (const PathOp::Segment& segment : slice.segments) {
                places.insert(places.end(), {segment.x[0], segment.y[0]});
            }
        }
        return places;
    };
    EXPECT_EQ(slices(-10), slices(10));
    EXPECT_NE(slices(-10), slices(20));
}

TEST(ChartTicks, SmallMarksAreThereByThemselves) {
    const auto lines = [](bool large, bool small) {
        ChartParts parts;
        const auto enabled = [](bool is) {
            return "<Enabled>" + std::string(is ? "True" : "False") + "</Enabled>";
        };
        parts.valueAxis = "<ChartMajorTickMarks>" + enabled(large) +
                          "</ChartMajorTickMarks><ChartMinorTickMarks>" + enabled(small) +
                          "</ChartMinorTickMarks>";
        return Of<LineOp>(Draw(parts, Sales({{"North", "", 100}, {"South", "", 50}})).Content()).size();
    };
    EXPECT_GT(lines(false, true), lines(false, false));
    EXPECT_GT(lines(true, false), lines(false, false));
    EXPECT_EQ(lines(true, true) + lines(false, false), lines(true, false) + lines(false, true));
}

}  // namespace
}  // namespace rdl::layout
