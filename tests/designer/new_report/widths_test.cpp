// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/new_report/widths.h"

#include <gtest/gtest.h>

#include <numeric>

#include "support/raises.h"

namespace designer {
namespace {

double Total(const ColumnFit& fit) {
    return std::accumulate(fit.widths.begin(), fit.widths.end(), 0.0);
}

TEST(NewReportWidths, OfANarrowTableGrowByAHalf) {
    const ColumnFit fit = FitColumns({{10, 5}, {5, 5}}, 170);
    EXPECT_EQ(fit.fontSize, 9);
    // 10 characters of 9 points and the paddings, 1.5 times.
    EXPECT_NEAR(fit.widths[0], 1.5 * (10 * 3.175 + 3.6222), 0.001);
    EXPECT_NEAR(fit.widths[1], 1.5 * (5 * 3.175 + 3.6222), 0.001);
    EXPECT_NEAR(Total(FitColumns({{25, 5}, {20, 5}}, 170)), 169.9, 0.001);
}

TEST(NewReportWidths, OfTextsShrinkBeforeThoseOfNumbers) {
    const ColumnFit fit = FitColumns({{60, 5}, {8, 8}}, 170);
    EXPECT_EQ(fit.fontSize, 9);
    EXPECT_NEAR(fit.widths[1], 8 * 3.175 + 3.6222, 0.001);
    EXPECT_NEAR(Total(fit), 169.9, 0.001);
}

TEST(NewReportWidths, AFontBecomesSmallerBeforeWordsBreak) {
    const std::vector<ColumnNeed> needs(9, ColumnNeed{7, 6});
    const ColumnFit fit = FitColumns(needs, 170);
    EXPECT_EQ(fit.fontSize, 7);
    EXPECT_NEAR(Total(fit), 169.9, 0.001);
    const ColumnFit tight = FitColumns(std::vector<ColumnNeed>(20, ColumnNeed{7, 6}), 170);
    EXPECT_EQ(tight.fontSize, 6);
    EXPECT_NEAR(Total(tight), 169.9, 0.001);
    EXPECT_NEAR(tight.widths.back(), 8.495, 0.001);
}

TEST(NewReportWidths, MoreColumnsThanFitAreRefused) {
    EXPECT_EQ(FitColumns(std::vector<ColumnNeed>(28, ColumnNeed{7, 6}), 170).widths.size(), 28U);
    EXPECT_EQ(DescriptionRaisedBy([] {
                  FitColumns(std::vector<ColumnNeed>(29, ColumnNeed{7, 6}), 170);
              }),
              "The table has 29 columns, and 28 fit across the page: choose fewer of them");
}

}  // namespace
}  // namespace designer
