// SPDX-License-Identifier: GPL-3.0-or-later
// Pictures in RTF documents.
#include <gtest/gtest.h>

#include <cstdio>

#include "rdl/image_bytes.h"
#include "rdl/values/error.h"
#include "rdl/writers/rtf_kit.h"

namespace rdl::writers {
namespace {

using namespace test;
using layout::Instance;

TEST(Rtf, ImagesAreInTheFile) {
    const std::string png = SmallPicture("PNG");
    const RtfDocument document = Document({PictureItem(png)});
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
    EXPECT_EQ(Document({PictureItem(SmallPicture("JPG"))}).Count("jpegblip"), 1);
}

TEST(Rtf, ImagesOfOtherKindsBecomePng) {
    const RtfDocument document = Document({PictureItem(SmallPicture("BMP"))});
    EXPECT_EQ(document.Count("pngblip"), 1);
    EXPECT_EQ(document.Hidden("pict").substr(0, 16), "89504e470d0a1a0a");
    EXPECT_THROW(Document({PictureItem("BM is not enough")}), Error);
    EXPECT_THROW(Document({PictureItem("<svg>")}), Error);
}

TEST(Rtf, ClippedImagesAreCropped) {
    Instance image = PictureItem(SmallPicture("PNG"));  // 8 by 4 pixels: 6 by 3 points
    image.sizing = Instance::Sizing::Clip;
    image.width = 4;
    const RtfDocument document = Document({image});
    EXPECT_EQ(document.Count("picwgoal120"), 1);
    EXPECT_EQ(document.Count("piccropr40"), 1);
    EXPECT_EQ(document.Count("piccropb0"), 1);
}

}  // namespace
}  // namespace rdl::writers
