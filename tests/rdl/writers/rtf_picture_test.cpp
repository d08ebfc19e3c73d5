// SPDX-License-Identifier: GPL-3.0-or-later
// Pictures in RTF documents.
#include <gtest/gtest.h>

#include <QImage>
#include <cstdio>

#include "rdl/image_bytes.h"
#include "rdl/values/error.h"
#include "rdl/writers/rtf_kit.h"

namespace rdl::writers {
namespace {

using namespace test;
using layout::Instance;
using layout::InstanceKind;

Instance Picture(const std::string& bytes) {
    Instance image;
    image.kind = InstanceKind::Image;
    image.name = "Logo";
    image.width = 50;
    image.height = 25;
    image.imageBytes = std::make_shared<const std::string>(bytes);
    return image;
}

std::string Encoded(const char* format) {
    QImage image(8, 4, QImage::Format_RGB32);
    image.fill(0x336699);
    return FileOf(image, format);
}

TEST(Rtf, ImagesAreInTheFile) {
    const std::string png = Encoded("PNG");
    const RtfDocument document = Document({Picture(png)});
    std::string hex;
    for (const char c : png) {
        char digits[3];
        std::snprintf(digits, sizeof digits, "%02x", static_cast<unsigned char>(c));
        hex += digits;
    }
    EXPECT_EQ(document.Hidden("pict"), hex);
    EXPECT_EQ(document.Count("pngblip"), 1);
    EXPECT_EQ(document.Count("picwgoal1000"), 1);
    EXPECT_EQ(document.Count("pichgoal500"), 1);
    EXPECT_EQ(Document({Picture(Encoded("JPG"))}).Count("jpegblip"), 1);
}

TEST(Rtf, ImagesOfOtherKindsBecomePng) {
    const RtfDocument document = Document({Picture(Encoded("BMP"))});
    EXPECT_EQ(document.Count("pngblip"), 1);
    EXPECT_EQ(document.Hidden("pict").substr(0, 16), "89504e470d0a1a0a");
    EXPECT_THROW(Document({Picture("BM is not enough")}), Error);
    EXPECT_THROW(Document({Picture("<svg>")}), Error);
}

TEST(Rtf, ClippedImagesAreCropped) {
    Instance image = Picture(Encoded("PNG"));  // 8 by 4 pixels: 6 by 3 points
    image.sizing = Instance::Sizing::Clip;
    image.width = 4;
    const RtfDocument document = Document({image});
    EXPECT_EQ(document.Count("picwgoal120"), 1);
    EXPECT_EQ(document.Count("piccropr40"), 1);
    EXPECT_EQ(document.Count("piccropb0"), 1);
}

}  // namespace
}  // namespace rdl::writers
