// SPDX-License-Identifier: GPL-3.0-or-later
// Where the labels of columns and bars stand, and what an axis that is not visible takes with it.
#include <gmock/gmock.h>

#include "rdl/layout/drawing/canvas.h"
#include "rdl/layout/drawing/chart_kit.h"

namespace rdl::layout {
namespace {

// Two series side by side: Tea is larger in the North, Coffee in the South.
ChartParts Clustered(const std::string& position) {
    ChartParts parts;
    parts.seriesGroup = "=Fields!Product.Value";
    parts.point =
        "<ChartDataLabel><Visible>true</Visible><Label>=Fields!Product.Value &amp; "
        "Fields!Region.Value</Label><Position>" +
        position + "</Position></ChartDataLabel>";
    return parts;
}

Table Amounts() {
    return Sales(
        {{"North", "Tea", 100}, {"South", "Tea", 50}, {"North", "Coffee", 60}, {"South", "Coffee", 90}});
}

// The middle of the text `label`, from its glyphs; y is its baseline.
Spot MiddleOf(const Drawn& drawn, const std::string& label) {
    const std::vector<std::string> texts = drawn.Texts();
    for (std::size_t i = 0; i < texts.size(); ++i) {
        if (texts[i] == label) {
            const TextOp& op = drawn.Letters()[i];
            double width = 0;
            for (std::uint32_t glyph = op.firstGlyph; glyph < op.firstGlyph + op.glyphCount; ++glyph) {
                width += static_cast<double>(drawn.Content().glyphs[glyph].advance);
            }
            return {op.x + width / 2, op.baseline};
        }
    }
    ADD_FAILURE() << "no label " << label;
    return {};
}

TEST(ChartLabel, AtTheTopStandsAboveTheMiddleOfItsOwnColumn) {
    const Drawn drawn = Draw(Clustered("Top"), Amounts());
    const auto columns = drawn.Rects();
    ASSERT_EQ(columns.size(), 4U);
    const char* const labels[] = {"TeaNorth", "TeaSouth", "CoffeeNorth", "CoffeeSouth"};
    for (std::size_t i = 0; i < 4; ++i) {
        SCOPED_TRACE(labels[i]);
        const Spot middle = MiddleOf(drawn, labels[i]);
        EXPECT_NEAR(middle.x, columns[i].x + columns[i].width / 2, 0.5);
        EXPECT_LT(middle.y, columns[i].y);
        EXPECT_GT(middle.y, columns[i].y - 12);
    }
}

TEST(ChartLabel, ToTheRightBeginsAfterTheMiddleOfItsOwnColumn) {
    const Drawn drawn = Draw(Clustered("Right"), Amounts());
    const auto columns = drawn.Rects();
    ASSERT_EQ(columns.size(), 4U);
    EXPECT_GT(MiddleOf(drawn, "TeaNorth").x, columns[0].x + columns[0].width / 2);
    EXPECT_GT(MiddleOf(drawn, "CoffeeNorth").x, MiddleOf(drawn, "TeaNorth").x + columns[0].width / 2);
}

TEST(ChartLabel, OfABarStandsAtTheEndOfItsOwnBar) {
    ChartParts parts = Clustered("Right");
    parts.type = "Bar";
    const Drawn drawn = Draw(parts, Amounts());
    const auto bars = drawn.Rects();
    ASSERT_EQ(bars.size(), 4U);
    const char* const labels[] = {"TeaNorth", "TeaSouth", "CoffeeNorth", "CoffeeSouth"};
    for (std::size_t i = 0; i < 4; ++i) {
        SCOPED_TRACE(labels[i]);
        EXPECT_GT(MiddleOf(drawn, labels[i]).x, bars[i].x + bars[i].width);
        EXPECT_NEAR(MiddleOf(drawn, labels[i]).y, bars[i].y + bars[i].height / 2, 5);
    }
}

std::size_t LinesOf(const ChartParts& parts) {
    return Of<LineOp>(Draw(parts, Amounts()).Content()).size();
}

TEST(ChartAxis, ThatIsNotVisibleHasNoGridEither) {
    const std::string grid =
        "<ChartMajorGridLines><Enabled>True</Enabled></ChartMajorGridLines>"
        "<ChartMinorGridLines><Enabled>True</Enabled></ChartMinorGridLines>";
    ChartParts parts;
    parts.categoryAxis = parts.valueAxis = grid;
    const std::size_t both = LinesOf(parts);
    parts.valueAxis = "<Visible>False</Visible>" + grid;
    const std::size_t ofCategories = LinesOf(parts);
    EXPECT_GT(both, ofCategories);
    parts.categoryAxis = "<Visible>False</Visible>" + grid;
    EXPECT_GT(ofCategories, LinesOf(parts));
    EXPECT_EQ(LinesOf(parts), 0U);
}

TEST(ChartAxis, ThatIsNotVisibleHasNoStripesEither) {
    ChartParts parts;
    parts.valueAxis = "<Interlaced>True</Interlaced>";
    const std::size_t striped = Draw(parts, Amounts()).Rects().size();
    parts.valueAxis = "<Visible>False</Visible><Interlaced>True</Interlaced>";
    EXPECT_EQ(Draw(parts, Amounts()).Rects().size(), 2U);
    EXPECT_GT(striped, 2U);
}

// An empty frame would look as if nothing had been sold.
TEST(ChartMessage, AChartWhoseValuesAllFailSaysSo) {
    ChartParts parts;
    parts.values = "<Y>=Sum(Fields!Region.Value)</Y>";
    EXPECT_EQ(Draw(parts, Amounts()).Texts(), std::vector<std::string>{"#Error"});
}

TEST(ChartMessage, OneValueIsEnoughForAChart) {
    ChartParts parts;
    parts.values = "<Y>=Sum(Fields!Amount.Value) / IIf(First(Fields!Region.Value) = \"North\", 1, \"x\")</Y>";
    const Drawn drawn = Draw(parts, Amounts());
    EXPECT_FALSE(drawn.Says("#Error"));
    EXPECT_TRUE(drawn.Says("North"));
}

}  // namespace
}  // namespace rdl::layout
