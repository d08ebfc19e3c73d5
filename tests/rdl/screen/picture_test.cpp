// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/screen/picture.h"

#include <gtest/gtest.h>

#include <QImage>

namespace rdl::screen {
namespace {

layout::DrawingInstance Square(double side) {
    layout::DrawingInstance drawing;
    drawing.content.width = drawing.content.height = side;
    drawing.content.ops.emplace_back(layout::RectOp{side / 4, side / 4, side / 2, side / 2, 0xFFFF0000});
    return drawing;
}

QImage Decoded(const std::string& png) {
    return QImage::fromData(QByteArray::fromRawData(png.data(), static_cast<qsizetype>(png.size())), "PNG");
}

TEST(Picture, HasTwiceTheScreensPixelsAndClearGround) {
    const QImage image = Decoded(*PictureOf(Square(72)));
    EXPECT_EQ(image.size(), QSize(192, 192));
    EXPECT_EQ(image.pixelColor(96, 96), QColor(255, 0, 0));
    EXPECT_EQ(image.pixelColor(2, 2).alpha(), 0);
}

TEST(Picture, HasTheBackgroundOfItsItem) {
    layout::DrawingInstance drawing = Square(72);
    drawing.background = 0xFF00FF00;
    EXPECT_EQ(Decoded(*PictureOf(drawing)).pixelColor(2, 2), QColor(0, 255, 0));
}

TEST(Picture, OfALargeDrawingIsBounded) {
    const QImage image = Decoded(*PictureOf(Square(10'000)));
    EXPECT_LE(image.width() * image.height(), 16'100'000);
    EXPECT_EQ(image.pixelColor(image.width() / 2, image.height() / 2), QColor(255, 0, 0));
}

TEST(Picture, IsTheSameForTheSameDrawing) {
    EXPECT_EQ(*PictureOf(Square(50)), *PictureOf(Square(50)));
}

}  // namespace
}  // namespace rdl::screen
