// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/viewer/page_layout.h"

#include <gtest/gtest.h>

#include "platform/viewer/tile_cache.h"

namespace viewer::test {
namespace {

TEST(PageLayout, PagesOfDifferentSizesStandInTheMiddleUnderEachOther) {
    PageLayout layout;
    layout.Add({600, 800});
    layout.Add({800, 600});
    layout.SetScale(0.5);
    layout.SetViewWidth(1000);
    EXPECT_EQ(layout.Page(1), QRectF(350, PageLayout::Margin, 300, 400));
    EXPECT_EQ(layout.Page(2), QRectF(300, PageLayout::Margin + 400 + PageLayout::Gap, 400, 300));
    EXPECT_EQ(layout.Total(),
              QSizeF(400 + 2 * PageLayout::Margin, 700 + PageLayout::Gap + 2 * PageLayout::Margin));
    layout.SetViewWidth(100);
    EXPECT_EQ(layout.Page(2).left(), PageLayout::Margin);
}

TEST(PageLayout, PagesAreFoundByHeight) {
    PageLayout layout;
    EXPECT_EQ(layout.Nearest(10), 0);
    EXPECT_EQ(layout.Between(0, 100), std::pair(1, 0));
    for (int i = 0; i < 100; ++i) {
        layout.Add({100, 100});
    }
    EXPECT_EQ(layout.Nearest(-50), 1);
    EXPECT_EQ(layout.Nearest(1e9), 100);
    EXPECT_EQ(layout.Nearest(layout.Page(57).center().y()), 57);
    EXPECT_EQ(layout.Between(layout.Page(3).bottom() - 1, layout.Page(5).top() + 1), std::pair(3, 5));
    EXPECT_EQ(layout.Between(layout.Page(3).bottom() + 1, layout.Page(5).top() - 1), std::pair(4, 4));
}

TEST(TileCache, TheBudgetHoldsAndWhatWasUsedLastStays) {
    TileCache cache;
    cache.SetBudget(3 * 100 * 100 * 4);
    for (int page = 1; page <= 3; ++page) {
        cache.Put({page, 0, 0}, QPixmap(100, 100));
    }
    EXPECT_NE(cache.Find({1, 0, 0}), nullptr);
    cache.Put({4, 0, 0}, QPixmap(100, 100));
    EXPECT_EQ(cache.Find({2, 0, 0}), nullptr);
    EXPECT_NE(cache.Find({1, 0, 0}), nullptr);
    EXPECT_EQ(cache.Bytes(), 3 * 100 * 100 * 4);
}

}  // namespace
}  // namespace viewer::test
