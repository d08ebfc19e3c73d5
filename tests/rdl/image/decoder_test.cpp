// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/image/decoder.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <initializer_list>
#include <string>
#include <thread>

#include "rdl/image_bytes.h"
#include "rdl/raises.h"
#include "rdl/values/error.h"

namespace rdl::image {
namespace {

// Colours, and a slope of transparency from the left to the right.
QImage Picture() {
    QImage image(37, 19, QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            image.setPixel(x, y, qRgba(x * 6, y * 13, (x * y) % 256, x * 7 % 256));
        }
    }
    return image;
}

std::string Complaint(const std::string& bytes) {
    return ErrorRaisedBy([&] { DecodeImage(bytes, "Logo"); });
}

TEST(ImageDecoder, EveryKindOfPngHasItsPixels) {
    QImage seeThrough = Picture().convertToFormat(QImage::Format_Indexed8);
    seeThrough.setColor(3, qRgba(10, 20, 30, 0));
    for (const QImage& image :
         {Picture(), Picture().convertToFormat(QImage::Format_RGB32),
          Picture().convertToFormat(QImage::Format_RGB32).convertToFormat(QImage::Format_Indexed8),
          seeThrough, Picture().convertToFormat(QImage::Format_Grayscale8),
          Picture().convertToFormat(QImage::Format_Mono),
          Picture().convertToFormat(QImage::Format_Grayscale16),
          Picture().convertToFormat(QImage::Format_RGBA64)}) {
        const std::string bytes = FileOf(image, "PNG");
        const QImage expected = QImage::fromData(QByteArray::fromStdString(bytes));
        const QImage decoded = DecodeImage(bytes, "Logo");
        EXPECT_EQ(decoded.hasAlphaChannel(), expected.hasAlphaChannel()) << image.format();
        EXPECT_EQ(decoded.convertToFormat(QImage::Format_ARGB32),
                  expected.convertToFormat(QImage::Format_ARGB32))
            << image.format();
    }
}

TEST(ImageDecoder, DamagedPicturesAreTheErrorAndNothingElse) {
    const QImage picture = Picture().convertToFormat(QImage::Format_RGB32);
    testing::internal::CaptureStderr();
    for (const char* format : {"PNG", "JPEG", "BMP"}) {
        const std::string whole = FileOf(picture, format);
        EXPECT_EQ(Complaint(whole), "") << format;
        EXPECT_EQ(Complaint(whole.substr(0, 20)), "Image \"Logo\" is damaged and cannot be read") << format;
        Complaint(whole.substr(0, whole.size() / 2));  // some show their upper half
        std::string changed = whole;
        std::fill(changed.begin() + 60, changed.begin() + 90, '\x55');
        Complaint(changed);
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

std::string Doubt(const std::string& bytes) {
    return ErrorRaisedBy([&] { CheckImage(bytes, "Logo"); });
}

// A GIF of 8 by 8 points in two colours, with a comment before its picture and another picture after it.
std::string TwoPictures() {
    const auto bytes = [](std::initializer_list<int> numbers) {
        std::string out;
        for (const int number : numbers) {
            out += static_cast<char>(number);
        }
        return out;
    };
    const std::string picture = bytes(
        {0x2C, 0, 0, 0, 0, 8, 0, 8, 0, 0, 2, 8, 0x84, 0x8F, 0xA9, 0xCB, 0xED, 0x0F, 0xA3, 0x2B, 1, 0x00, 0});
    return "GIF89a" + bytes({8, 0, 8, 0, 0x80, 0, 0, 0, 0, 0, 255, 255, 255}) + bytes({0x21, 0xFE, 4}) +
           "text" + bytes({0}) + picture + picture + bytes({0x3B});
}

// Some formats contain the bytes of the picture unchanged, so that only the reader of the document would
// notice.
TEST(ImageDecoder, APictureThatIsCutShortIsDamaged) {
    const QImage picture = Picture().convertToFormat(QImage::Format_RGB32);
    const std::string damaged = "Image \"Logo\" is damaged and cannot be read";
    for (const char* format : {"PNG", "JPEG", "BMP"}) {
        const std::string whole = FileOf(picture, format);
        EXPECT_EQ(Doubt(whole), "") << format;
        EXPECT_EQ(Doubt(whole + "something below"), "") << format;
        for (const double part : {0.3, 0.6, 0.95}) {
            const auto size = static_cast<std::size_t>(static_cast<double>(whole.size()) * part);
            EXPECT_EQ(Doubt(whole.substr(0, size)), damaged) << format << " " << part;
        }
        EXPECT_EQ(Doubt(whole.substr(0, whole.size() - (format[0] == 'P' ? 13 : 2))), damaged) << format;
    }
}

TEST(ImageDecoder, AGifHasItsFirstPictureWhole) {
    const std::string whole = TwoPictures();
    EXPECT_EQ(Doubt(whole), "");
    const std::size_t first = whole.size() - 1 - 23;
    EXPECT_EQ(Doubt(whole.substr(0, first)), "");
    for (std::size_t size = 13; size < first; ++size) {
        EXPECT_EQ(Doubt(whole.substr(0, size)), "Image \"Logo\" is damaged and cannot be read") << size;
    }
}

// The headers of bitmaps say how their rows are kept.
TEST(ImageDecoder, ABitmapOfFewColorsOrAnOlderHeaderIsWhole) {
    const QImage picture = Picture().convertToFormat(QImage::Format_RGB32);
    for (const auto format : {QImage::Format_Mono, QImage::Format_Indexed8, QImage::Format_RGB32}) {
        const std::string whole = FileOf(picture.convertToFormat(format), "BMP");
        EXPECT_EQ(Doubt(whole), "") << format;
        EXPECT_EQ(Doubt(whole.substr(0, whole.size() - 3)), "Image \"Logo\" is damaged and cannot be read")
            << format;
    }
}

TEST(ImageDecoder, LinesOfOthersReachStandardErrorMeanwhile) {
    const std::string whole = FileOf(Picture(), "PNG");
    const std::string cut = whole.substr(0, whole.size() / 2);
    std::atomic<bool> done = false;
    int written = 0;
    testing::internal::CaptureStderr();
    std::thread journal([&] {
        while (!done) {
            written += write(STDERR_FILENO, "a line\n", 7) == 7 ? 1 : 0;
        }
    });
    for (int i = 0; i < 2000; ++i) {
        EXPECT_EQ(Complaint(cut), "Image \"Logo\" is damaged and cannot be read");
    }
    done = true;
    journal.join();
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), written);
}

}  // namespace
}  // namespace rdl::image
