// SPDX-License-Identifier: GPL-3.0-or-later
// Charts of negative numbers, and the marks beside their axes.
#include <gtest/gtest.h>

#include "rdl/layout/drawing/chart_kit.h"

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

// The charts here are 300 points wide.
TEST(ChartTicks, LongNumbersStayInTheChart) {
    for (const char* type : {"Bar", "Column", "Radar", "Polar"}) {
        ChartParts parts;
        const bool isCircle = std::string(type) == "Radar" || std::string(type) == "Polar";
        parts.type = isCircle ? "Polar" : type;
        parts.subtype = std::string(type) == "Radar" ? "Radar" : "Plain";
        parts.values = "<Y>=Sum(Fields!Amount.Value) * 1E30</Y>";
        parts.valueAxis = "<Style><Format>C2</Format></Style>";
        const Drawn drawn = Draw(parts, Sales({{"North", "", 9'000'000}, {"South", "", -9'000'000}}));
        ASSERT_FALSE(drawn.Letters().empty()) << type;
        for (const TextOp& text : drawn.Letters()) {
            double width = 0;
            for (std::uint32_t i = 0; i < text.glyphCount; ++i) {
                width += static_cast<double>(drawn.Content().glyphs[text.firstGlyph + i].advance);
            }
            EXPECT_GE(text.x, 0) << type;
            EXPECT_LE(text.x + width, 300) << type;
        }
    }
}

}  // namespace
}  // namespace rdl::layout
