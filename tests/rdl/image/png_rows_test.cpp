// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/image/png_rows.h"

#include <gtest/gtest.h>
#include <png.h>

#include <QImage>
#include <cstring>
#include <string>
#include <vector>

#include "rdl/image/decoder.h"
#include "rdl/image_bytes.h"
#include "rdl/raises.h"

namespace rdl::image {
namespace {

QImage Picture(QImage::Format format) {
    QImage image(37, 19, QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            image.setPixel(x, y, qRgba(x * 6, y * 13, (x * y) % 256, x * 7 % 256));
        }
    }
    return image.convertToFormat(format);
}

// Qt writes none with interlace.
std::string InterlacedFileOf(int width, int height, bool hasAlpha) {
    std::string bytes;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_set_write_fn(
        png, &bytes,
        [](png_structp writer, png_bytep data, std::size_t size) {
            static_cast<std::string*>(png_get_io_ptr(writer))->append(reinterpret_cast<char*>(data), size);
        },
        nullptr);
    png_set_IHDR(png, info, static_cast<png_uint_32>(width), static_cast<png_uint_32>(height), 8,
                 hasAlpha ? PNG_COLOR_TYPE_RGBA : PNG_COLOR_TYPE_RGB, PNG_INTERLACE_ADAM7,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_set_compression_level(png, 1);
    png_write_info(png, info);
    const int passes = png_set_interlace_handling(png);
    std::vector<png_byte> row(static_cast<std::size_t>(width) * (hasAlpha ? 4 : 3));
    for (int pass = 0; pass < passes; ++pass) {
        for (int y = 0; y < height; ++y) {
            std::memset(row.data(), y % 251, row.size());
            row.front() = static_cast<png_byte>(y / 251);
            png_write_row(png, row.data());
        }
    }
    png_write_end(png, info);
    png_destroy_write_struct(&png, &info);
    return bytes;
}

void ExpectRowsOf(const std::string& bytes) {
    const QImage whole = DecodeImage(bytes, "Logo");
    const PngRows rows(bytes, "Logo");
    EXPECT_EQ(rows.Width(), whole.width());
    EXPECT_EQ(rows.Height(), whole.height());
    EXPECT_EQ(rows.HasAlpha(), whole.hasAlphaChannel());
    const QImage expected =
        whole.convertToFormat(rows.HasAlpha() ? QImage::Format_RGBA8888 : QImage::Format_RGB888);
    const auto size = static_cast<std::size_t>(rows.Width()) * (rows.HasAlpha() ? 4 : 3);
    for (int time = 0; time < 2; ++time) {
        int y = 0, different = 0;
        rows.Read([&](const unsigned char* row) {
            different += std::memcmp(row, expected.constScanLine(y++), size) != 0 ? 1 : 0;
        });
        EXPECT_EQ(y, rows.Height());
        EXPECT_EQ(different, 0);
    }
}

TEST(PngRows, AreThoseOfTheWholeImage) {
    for (const QImage::Format format :
         {QImage::Format_ARGB32, QImage::Format_RGB32, QImage::Format_Indexed8, QImage::Format_Grayscale8,
          QImage::Format_Mono, QImage::Format_Grayscale16, QImage::Format_RGBA64}) {
        SCOPED_TRACE(format);
        ExpectRowsOf(FileOf(Picture(format), "PNG"));
    }
}

TEST(PngRows, AreThoseOfAnInterlacedImage) {
    ExpectRowsOf(InterlacedFileOf(37, 19, false));
    ExpectRowsOf(InterlacedFileOf(37, 19, true));
}

// 57 megabytes of pixels are more than one band.
TEST(PngRows, OfALargeInterlacedImageComeInBands) {
    ExpectRowsOf(InterlacedFileOf(4000, 4750, false));
}

TEST(PngRows, ADamagedImageIsAnErrorThatNamesTheItem) {
    for (const std::string& whole :
         {FileOf(Picture(QImage::Format_RGB32), "PNG"), InterlacedFileOf(37, 19, false)}) {
        const std::string head = whole.substr(0, 20), half = whole.substr(0, whole.size() / 2);
        const std::string said = "Image \"Logo\" is damaged and cannot be read";
        EXPECT_EQ(ErrorRaisedBy([&] { PngRows(head, "Logo"); }), said);
        EXPECT_EQ(ErrorRaisedBy([&] { PngRows(half, "Logo").Read([](const unsigned char*) {}); }), said);
    }
}

}  // namespace
}  // namespace rdl::image
