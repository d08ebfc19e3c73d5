// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/drawing/picture_cache.h"

#include <gtest/gtest.h>

#include "rdl/layout/drawing/drawing.h"
#include "rdl/layout/model/image_size.h"

namespace rdl::layout {
namespace {

DrawingInstance DrawingOf(PictureCache::Bytes image) {
    DrawingInstance drawing;
    drawing.content.ops.emplace_back(ImageOp{0, 0, 10, 10, std::move(image), "Gauge"});
    return drawing;
}

// Paints the bytes of the one image, and counts.
struct Painter {
    int painted = 0;
    PictureCache::Bytes operator()(const DrawingInstance& drawing) {
        ++painted;
        return std::get<ImageOp>(drawing.content.ops.front()).bytes;
    }
};

TEST(PictureCache, AreMadeOnceForDrawingsThatLookTheSame) {
    PictureCache cache;
    Painter painter;
    const auto paint = [&](const DrawingInstance& drawing) { return painter(drawing); };
    const auto image = std::make_shared<const std::string>("tile");
    EXPECT_EQ(cache.Of(DrawingOf(image), paint), cache.Of(DrawingOf(image), paint));
    EXPECT_EQ(painter.painted, 1);
    cache.Of(DrawingOf(std::make_shared<const std::string>("other")), paint);
    EXPECT_EQ(painter.painted, 2);
}

TEST(PictureCache, ImagesAreKeptSoThatNoOtherTakesTheirPlace) {
    PictureCache cache;
    auto image = std::make_shared<const std::string>("a picture of the data, gone with its row");
    const std::weak_ptr<const std::string> seen = image;
    cache.Of(DrawingOf(image),
             [](const DrawingInstance&) { return std::make_shared<const std::string>("painted"); });
    image.reset();
    EXPECT_FALSE(seen.expired());
}

TEST(ImageSizes, BitmapsFromTopToBottomHaveANegativeHeight) {
    const auto bitmap = [](std::int32_t height) {
        std::string bytes = "BM" + std::string(52, '\0');
        bytes[18] = 40;
        for (std::size_t i = 0; i < 4; ++i) {
            bytes[22 + i] = static_cast<char>(static_cast<std::uint32_t>(height) >> 8 * i & 0xFF);
        }
        return SizeOfImage(bytes);
    };
    for (const std::int32_t height : {20, -20}) {
        EXPECT_DOUBLE_EQ(bitmap(height).width, 30) << height;
        EXPECT_DOUBLE_EQ(bitmap(height).height, 15) << height;
    }
}

}  // namespace
}  // namespace rdl::layout
