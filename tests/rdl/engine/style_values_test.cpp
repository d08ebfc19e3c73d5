// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/api/style_values.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace rdl {
namespace {

TEST(StyleValues, ColoursHaveNamesAndNumbers) {
    EXPECT_EQ(ColorOf("LightSteelBlue"), 0xFFB0C4DE);
    EXPECT_EQ(ColorOf("#1f4e79"), 0xFF1F4E79);
    EXPECT_EQ(ColorOf("Transparent"), 0x00FFFFFFu & *ColorOf("Transparent"));
    EXPECT_EQ(ColorOf("=Fields!Colour.Value"), std::nullopt);
    EXPECT_EQ(ColorOf("greenish"), std::nullopt);
    const std::vector<NamedColor> colors = NamedColors();
    EXPECT_EQ(colors.front().name, "transparent");
    EXPECT_TRUE(std::all_of(colors.begin(), colors.end(),
                            [](const NamedColor& color) { return ColorOf(color.name) == color.argb; }));
    EXPECT_GT(colors.size(), 140u);
}

TEST(StyleValues, SamplesAreWhatATextBoxShows) {
    EXPECT_EQ(FormattedNumber(1234.567, "N2", "en-US"), "1,234.57");
    EXPECT_EQ(FormattedNumber(1234.567, "N2", "de-DE"), "1.234,57");
    EXPECT_EQ(FormattedNumber(-5, "#,0;(#,0)", ""), "(5)");
    EXPECT_EQ(FormattedDate({2026, 3, 9, 14, 5, 0}, "d", "de-DE"), "09.03.2026");
    EXPECT_EQ(FormattedDate({2026, 3, 9, 14, 5, 0}, "yyyy-MM-dd HH:mm", "en-US"), "2026-03-09 14:05");
}

}  // namespace
}  // namespace rdl
