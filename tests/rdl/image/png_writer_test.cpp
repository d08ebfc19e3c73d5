// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/image/png_writer.h"

#include <gtest/gtest.h>

#include "rdl/image/decoder.h"
#include "rdl/image/reduced.h"
#include "rdl/raises.h"

namespace rdl::image {
namespace {

QImage Picture(int width, int height) {
    QImage image(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            image.setPixel(x, y, qRgb(x * 6 % 256, y * 13 % 256, (x * y) % 256));
        }
    }
    return image;
}

TEST(PngWriter, BandsGiveTheFileOfTheWhole) {
    QImage whole = Picture(37, 190);
    whole.setDotsPerMeterX(3780);
    whole.setDotsPerMeterY(3780);
    for (const int band : {1, 7, 190, 500}) {
        PngWriter writer(37, 190, 3780);
        std::string bytes;
        for (int top = 0; top < 190; top += band) {
            writer.Add(whole.copy(0, top, 37, std::min(band, 190 - top)));
            bytes += writer.TakeBytes();
        }
        EXPECT_EQ(bytes, PngOf(whole)) << band;
    }
}

TEST(DecodeFor, AnImageOfUsualSizeIsWhole) {
    const QImage picture = Picture(300, 200);
    const Decoded decoded = DecodeFor({3, 2}, PngOf(picture), "i");
    EXPECT_TRUE(decoded.isWhole);
    EXPECT_EQ(decoded.image, picture.convertToFormat(QImage::Format_ARGB32_Premultiplied));
}

// Columns of pixels that are white and of another colour in turn.
QImage Large(QImage::Format format, QRgb other) {
    QImage image(8001, 2002, QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y) {
        auto* row = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            row[x] = x % 2 == 0 ? qRgb(255, 255, 255) : other;
        }
    }
    return image.convertToFormat(format);
}

TEST(DecodeFor, ALargeImageIsReducedAsItIsRead) {
    const Decoded decoded = DecodeFor({1000, 250}, PngOf(Large(QImage::Format_RGB32, qRgb(0, 0, 0))), "i");
    EXPECT_FALSE(decoded.isWhole);
    EXPECT_EQ(decoded.image.size(), QSize(4000, 1001));
    EXPECT_EQ(decoded.image.pixel(0, 0), qRgb(170, 170, 170));  // three columns of pixels, two of them white
    EXPECT_EQ(decoded.image.pixel(1, 0), qRgb(128, 128, 128));
    EXPECT_EQ(decoded.image.pixel(3999, 1000), qRgb(128, 128, 128));
}

TEST(DecodeFor, WhatIsTransparentHasNoColour) {
    const Decoded decoded =
        DecodeFor({1000, 250}, PngOf(Large(QImage::Format_ARGB32, qRgba(255, 0, 0, 0))), "i");
    EXPECT_EQ(decoded.image.pixel(1, 0), qRgba(128, 128, 128, 128));  // white, premultiplied
}

TEST(DecodeFor, ALargeImageInALargePlaceIsWhole) {
    EXPECT_TRUE(DecodeFor({8001, 2002}, PngOf(Large(QImage::Format_RGB32, 0)), "i").isWhole);
}

TEST(DecodeFor, DamageIsAnErrorThatNamesTheItem) {
    const std::string png = PngOf(Large(QImage::Format_RGB32, 0));
    EXPECT_EQ(ErrorRaisedBy([&] {
                  DecodeFor({10, 10}, png.substr(0, png.size() / 2), "i");
              }),
              "Image \"i\" is damaged and cannot be read");
}

}  // namespace
}  // namespace rdl::image
