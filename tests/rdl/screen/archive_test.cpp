// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/screen/page_archive.h"

#include <gtest/gtest.h>

#include "rdl/screen/page_codec.h"
#include "rdl/screen/page_kit.h"

namespace rdl::screen::test {
namespace {

using namespace layout;

Page FullPage(const std::shared_ptr<const std::string>& image) {
    Page page = EmptyPage(612, 792);
    AddText(page, "Hello", 10, 20);
    page.ops.emplace_back(LineOp{1, 2, 3, 4, 0.5F, 0xFF112233, LineStyle::Dashed});
    page.ops.emplace_back(RectOp{5, 6, 7, 8, 0xFF445566});
    page.ops.emplace_back(PathOp{{{PathOp::Segment::Move, {1}, {2}}, {PathOp::Segment::LineTo, {3}, {4}}},
                                 0xFF010203,
                                 0xFF040506,
                                 2.5F,
                                 LineStyle::Solid});
    page.ops.emplace_back(ImageOp{9, 10, 11, 12, image, "Logo"});
    page.ops.emplace_back(ClipOp{1, 1, 2, 2});
    page.ops.emplace_back(UnclipOp{});
    page.ops.emplace_back(LinkOp{1, 2, 3, 4, "http://example.com/", "there"});
    page.ops.emplace_back(AnchorOp{7, 8, "there", "Chapter", 3});
    return page;
}

TEST(PageArchive, AllKindsOfObjectsComeBackAsTheyWere) {
    const auto image = std::make_shared<const std::string>("bytes of an image");
    PageArchive archive;
    archive.Add(FullPage(image));
    const Page page = archive.At(0);
    EXPECT_EQ(page.width, 612);
    EXPECT_EQ(page.text, "Hello");
    EXPECT_EQ(page.glyphs.size(), 5U);
    ASSERT_EQ(page.ops.size(), 9U);
    EXPECT_EQ(std::get<TextOp>(page.ops[0]).baseline, 20);
    EXPECT_EQ(std::get<LineOp>(page.ops[1]).style, LineStyle::Dashed);
    EXPECT_EQ(std::get<RectOp>(page.ops[2]).color, 0xFF445566U);
    EXPECT_EQ(std::get<PathOp>(page.ops[3]).segments.at(1).x[0], 3);
    EXPECT_EQ(std::get<PathOp>(page.ops[3]).strokeWidth, 2.5F);
    EXPECT_EQ(std::get<ImageOp>(page.ops[4]).name, "Logo");
    EXPECT_EQ(std::get<ImageOp>(page.ops[4]).bytes, image) << "as long as it is held it is the same";
    EXPECT_TRUE(std::holds_alternative<UnclipOp>(page.ops[6]));
    EXPECT_EQ(std::get<LinkOp>(page.ops[7]).bookmark, "there");
    EXPECT_EQ(std::get<AnchorOp>(page.ops[8]).label, "Chapter");
    EXPECT_EQ(std::get<AnchorOp>(page.ops[8]).level, 3);
}

TEST(PageArchive, ImagesThatNobodyHoldsAreReadAgain) {
    auto image = std::make_shared<const std::string>("bytes of an image");
    PageArchive archive;
    archive.Add(FullPage(image));
    archive.Add(FullPage(image));
    image.reset();
    const Page first = archive.At(0), second = archive.At(1);
    const auto& bytes = std::get<ImageOp>(first.ops[4]).bytes;
    ASSERT_TRUE(bytes);
    EXPECT_EQ(*bytes, "bytes of an image");
    EXPECT_EQ(std::get<ImageOp>(second.ops[4]).bytes, bytes) << "one image is in memory once";
}

TEST(PageArchive, PagesOfDifferentSizesKeepThem) {
    PageArchive archive;
    archive.Add(EmptyPage(612, 792));
    archive.Add(EmptyPage(842, 595));
    EXPECT_EQ(archive.Width(1), 842);
    EXPECT_EQ(archive.Height(0), 792);
    EXPECT_TRUE(archive.At(1).ops.empty());
}

TEST(PageArchive, ALongReportGoesToAFileAndComesBack) {
    PageArchive archive;
    // Random bytes do not pack, so that these pages are more than memory keeps.
    std::uint32_t seed = 1;
    const auto text = [&seed] {
        std::string bytes(std::size_t{1} << 20, ' ');
        for (char& c : bytes) {
            seed = seed * 1664525U + 1013904223U;
            c = static_cast<char>(seed >> 24);
        }
        return bytes;
    };
    Page page = EmptyPage();
    std::vector<std::string> texts;
    for (int i = 0; i < 18; ++i) {
        page.text = text();
        texts.push_back(page.text.substr(0, 100));
        archive.Add(page);
    }
    EXPECT_EQ(archive.At(0).text.substr(0, 100), texts.front());
    EXPECT_EQ(archive.At(17).text.substr(0, 100), texts.back());
    EXPECT_EQ(archive.At(5).text.substr(0, 100), texts.at(5));
}

TEST(PageArchive, HeadersLieOverTheBodyWithTheirOwnText) {
    Page body = EmptyPage(), header = EmptyPage();
    AddText(body, "Body", 10, 20);
    AddText(header, "Head", 10, 10);
    AppendPage(body, header);
    const auto& op = std::get<TextOp>(body.ops.at(1));
    EXPECT_EQ(body.text.substr(op.textBegin, op.textEnd - op.textBegin), "Head");
    EXPECT_EQ(op.firstGlyph, 4U);
}

}  // namespace
}  // namespace rdl::screen::test
