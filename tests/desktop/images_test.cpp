// SPDX-License-Identifier: GPL-3.0-or-later
// The pictures of the Desktop and of the history window, at the sizes and scales that are used.
#include "desktop/Images.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPixmap>

namespace {

// Returns the covered part of the picture, from 0 to 1.
double CoverOf(const QIcon& icon, int size, qreal scale) {
    const QPixmap pixels = icon.pixmap(QSize(size, size), scale);
    EXPECT_EQ(pixels.width(), qRound(size * scale));
    const QImage image = pixels.toImage().convertToFormat(QImage::Format_ARGB32);
    double covered = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            covered += qAlpha(image.pixel(x, y)) / 255.0;
        }
    }
    return covered / (image.width() * image.height());
}

void ExpectDrawn(const ImageList& images, std::initializer_list<int> numbers) {
    for (const int number : numbers) {
        for (const int size : {16, 24, 48}) {
            for (const qreal scale : {1.0, 2.0}) {
                const double cover = CoverOf(images.Image(number), size, scale);
                EXPECT_GT(cover, 0.15) << number << " at " << size;
                EXPECT_LT(cover, 0.95) << number << " at " << size;
            }
        }
    }
}

}  // namespace

TEST(DesktopImages, AreDrawnForEveryKindOfItem) {
    ExpectDrawn(ItemImages(), {1, 2, 3, 4, 9, 10});
    EXPECT_TRUE(ItemImages().Image(5).isNull());
}

TEST(DesktopImages, AreDrawnForEveryButtonOfTheToolbar) {
    ExpectDrawn(ToolbarImages(), {1, 2, 3, 5, 6, 8, 9, 10, 11});
    EXPECT_TRUE(ToolbarImages().Image(4).isNull());
}

TEST(DesktopImages, AreDrawnForEveryNodeOfTheHistory) {
    ExpectDrawn(HistoryImages(), {5, 7, 8, 9, 10, 11, 12});
}

TEST(DesktopImages, KeepTheirColoursWhereTheItemIsSelected) {
    const QIcon folder = ItemImages().Image(1);
    const auto drawn = [](const QIcon& icon, QIcon::Mode mode) {
        return icon.pixmap(48, 48, mode).toImage();
    };
    EXPECT_EQ(drawn(folder, QIcon::Selected), drawn(folder, QIcon::Normal));
    EXPECT_NE(drawn(folder, QIcon::Disabled), drawn(folder, QIcon::Normal));
    const QIcon group = HistoryImages().Image(10, 11);
    EXPECT_EQ(drawn(group, QIcon::Normal), drawn(HistoryImages().Image(10), QIcon::Normal));
    EXPECT_EQ(drawn(group, QIcon::Selected), drawn(HistoryImages().Image(11), QIcon::Normal));
}
