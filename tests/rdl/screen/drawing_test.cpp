// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "rdl/image_bytes.h"
#include "rdl/raises.h"
#include "rdl/screen/page_kit.h"
#include "rdl/values/error.h"

namespace rdl::screen::test {
namespace {

using namespace layout;

TEST(Drawing, AHairLineTakesOnePixelAtAnyPlaceAndSize) {
    for (const double y : {10.0, 10.2, 10.5, 10.8}) {
        for (const double scale : {0.5, 0.81, 1.0, 1.25}) {
            Page page = EmptyPage();
            page.ops.emplace_back(LineOp{20, y, 60, y, 0.25F, Black, LineStyle::Solid});
            const QImage image = Drawn(page, scale);
            const int x = static_cast<int>(40 * scale);
            EXPECT_EQ(DarkPixels(image, QRect(x, 0, 1, image.height())), 1) << y << " at " << scale;
        }
    }
}

TEST(Drawing, BordersMeetInTheCorners) {
    Page page = EmptyPage();
    page.ops.emplace_back(LineOp{10.3, 10.3, 50.6, 10.3, 0.5F, Black, LineStyle::Solid});
    page.ops.emplace_back(LineOp{50.6, 10.3, 50.6, 30.3, 0.5F, Black, LineStyle::Solid});
    page.ops.emplace_back(LineOp{10.3, 30.3, 50.6, 30.3, 0.5F, Black, LineStyle::Solid});
    page.ops.emplace_back(LineOp{10.3, 10.3, 10.3, 30.3, 0.5F, Black, LineStyle::Solid});
    const QImage image = Drawn(page);
    for (const QPoint corner : {QPoint(10, 10), QPoint(50, 10), QPoint(10, 30), QPoint(50, 30)}) {
        EXPECT_EQ(DarkPixels(image, QRect(corner, QSize(1, 1))), 1) << corner.x() << "," << corner.y();
    }
}

TEST(Drawing, AreasSideBySideHaveNoSeam) {
    Page page = EmptyPage();
    page.ops.emplace_back(RectOp{10.3, 10, 20.3, 10, Black});
    page.ops.emplace_back(RectOp{30.6, 10, 20, 10, Black});
    const QImage image = Drawn(page);
    EXPECT_EQ(DarkPixels(image, QRect(10, 15, 41, 1)), 41);
    EXPECT_EQ(qGray(image.pixel(30, 15)), 0);
}

TEST(Drawing, DottedAndDoubleLinesHaveGaps) {
    Page page = EmptyPage();
    page.ops.emplace_back(LineOp{10, 10, 90, 10, 2, Black, LineStyle::Dotted});
    page.ops.emplace_back(LineOp{10, 30, 90, 30, 6, Black, LineStyle::Double});
    page.ops.emplace_back(LineOp{10, 40, 90, 40, 2, Black, LineStyle::None});
    const QImage image = Drawn(page);
    EXPECT_NEAR(DarkPixels(image, QRect(10, 9, 80, 2)), 80, 8);
    EXPECT_EQ(DarkPixels(image, QRect(50, 26, 1, 8)), 4);
    EXPECT_EQ(DarkPixels(image, QRect(0, 36, 100, 8)), 0);
}

// Dashes of three quarters of a point and gaps of half a point, whatever the line's width is less than a
// quarter.
TEST(Drawing, ALineWithoutWidthHasDashesAllTheSame) {
    for (const float width : {0.0F, 0.1F}) {
        Page page = EmptyPage();
        page.ops.emplace_back(LineOp{10, 10, 90, 10, width, Black, LineStyle::Dashed});
        EXPECT_NEAR(DarkPixels(Drawn(page, 8)), 80 * 8 * 0.6, 30) << width;
    }
}

TEST(Drawing, ClipsHoldUntilTheyEnd) {
    Page page = EmptyPage();
    page.ops.emplace_back(ClipOp{10, 10, 20, 20});
    page.ops.emplace_back(RectOp{0, 0, 100, 50, Black});
    page.ops.emplace_back(UnclipOp{});
    page.ops.emplace_back(RectOp{60, 0, 10, 10, Black});
    EXPECT_EQ(DarkPixels(Drawn(page)), 20 * 20 + 10 * 10);
}

TEST(Drawing, NothingIsDrawnOutsideOfThePage) {
    Page page = EmptyPage(40, 40);
    page.ops.emplace_back(RectOp{30, 30, 30, 30, Black});
    QImage image(80, 80, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    PagePainter().Draw(page, painter);
    painter.end();
    EXPECT_EQ(DarkPixels(image), 10 * 10);
}

TEST(Drawing, APieceOfThePageIsWhatThatPieceIsOfTheWhole) {
    Page page = EmptyPage(200, 100);
    AddText(page, "The quick brown fox jumps", 5, 30, {"Arial"}, 14);
    AddText(page, "turned", 150, 90, {"Arial"}, 14, 270);
    page.ops.emplace_back(LineOp{5, 50, 195, 50, 1, Black, LineStyle::Solid});
    const QImage whole = Drawn(page, 2);
    const QRect area(90, 40, 130, 120);
    QImage piece(area.size(), QImage::Format_RGB32);
    piece.fill(Qt::white);
    QPainter painter(&piece);
    painter.translate(-area.topLeft());
    painter.scale(2, 2);
    PagePainter().Draw(page, painter);
    painter.end();
    EXPECT_GT(DarkPixels(piece), 100);
    EXPECT_EQ(piece, whole.copy(area));
}

TEST(Drawing, TextStandsOnItsBaseline) {
    Page page = EmptyPage();
    AddText(page, "HHH", 10, 30, {"Arial"}, 20);
    const QImage image = Drawn(page);
    EXPECT_GT(DarkPixels(image, QRect(10, 16, 45, 14)), 60);
    EXPECT_EQ(DarkPixels(image, QRect(0, 31, 100, 19)), 0);
    EXPECT_EQ(DarkPixels(image, QRect(0, 0, 100, 14)), 0);
}

TEST(Drawing, TurnedTextRunsUpwards) {
    Page page = EmptyPage(50, 100);
    AddText(page, "HHHH", 30, 90, {"Arial"}, 20, 270);
    const QImage image = Drawn(page);
    EXPECT_GT(DarkPixels(image, QRect(15, 40, 16, 50)), 60);
    EXPECT_EQ(DarkPixels(image, QRect(32, 0, 18, 100)), 0);
}

TEST(Drawing, BoldAndSlantThatTheFontLacksAreMade) {
    // A font whose file has neither: fall-back fonts of scripts come in one weight.
    const auto darkness = [](bool bold, bool italic) {
        Page page = EmptyPage(200, 50);
        AddText(page, "\u0E01\u0E02\u0E04\u0E07", 10, 30, {"Arial", bold, italic}, 24);
        return DarkPixels(Drawn(page, 2));
    };
    EXPECT_GT(darkness(false, false), 0);
    EXPECT_GE(darkness(true, false), darkness(false, false));
    EXPECT_GT(darkness(false, true), 0);
}

TEST(Drawing, SeeThroughColoursLetThePaperShow) {
    Page page = EmptyPage();
    page.ops.emplace_back(RectOp{0, 0, 50, 50, 0x80000000});
    page.ops.emplace_back(RectOp{50, 0, 50, 50, Transparent});
    const QImage image = Drawn(page);
    EXPECT_NEAR(qGray(image.pixel(20, 20)), 127, 2);
    EXPECT_EQ(qGray(image.pixel(70, 20)), 255);
}

TEST(Drawing, PathsAreFilledAndStroked) {
    Page page = EmptyPage();
    using S = PathOp::Segment;
    page.ops.emplace_back(PathOp{{{S::Move, {20}, {10}},
                                  {S::LineTo, {60}, {10}},
                                  {S::LineTo, {60}, {40}},
                                  {S::LineTo, {20}, {40}},
                                  {S::Close, {}, {}}},
                                 0xFFFF0000,
                                 0xFF0000FF,
                                 4,
                                 LineStyle::Solid});
    const QImage image = Drawn(page);
    EXPECT_EQ(image.pixelColor(40, 25), QColor(255, 0, 0));
    EXPECT_EQ(image.pixelColor(20, 25), QColor(0, 0, 255));
    EXPECT_EQ(image.pixelColor(10, 25), QColor(255, 255, 255));
}

std::shared_ptr<const std::string> Png(const QImage& image) {
    return std::make_shared<const std::string>(FileOf(image, "PNG"));
}

TEST(Drawing, ImagesFillTheirAreaAndKeepTheirColours) {
    QImage picture(300, 300, QImage::Format_RGB32);
    picture.fill(QColor(0, 128, 0));
    Page page = EmptyPage();
    page.ops.emplace_back(ImageOp{10, 10, 30, 30, Png(picture), "Logo"});
    const QImage image = Drawn(page);
    EXPECT_EQ(image.pixelColor(11, 11), QColor(0, 128, 0));
    EXPECT_EQ(image.pixelColor(39, 39), QColor(0, 128, 0));
    EXPECT_EQ(image.pixelColor(41, 41), QColor(255, 255, 255));
}

TEST(Drawing, AFineRasterThatShrinksBecomesGrey) {
    QImage picture(400, 400, QImage::Format_RGB32);
    for (int y = 0; y < 400; ++y) {
        for (int x = 0; x < 400; ++x) {
            picture.setPixel(x, y, (x + y) % 2 ? 0xFF000000 : 0xFFFFFFFF);
        }
    }
    Page page = EmptyPage();
    page.ops.emplace_back(ImageOp{0, 0, 40, 40, Png(picture), "Raster"});
    EXPECT_NEAR(qGray(Drawn(page).pixel(20, 20)), 127, 20);
}

TEST(Drawing, ADamagedImageIsAnErrorThatNamesItAndThePainterIsAsBefore) {
    Page page = EmptyPage();
    page.ops.emplace_back(ClipOp{0, 0, 10, 10});
    page.ops.emplace_back(
        ImageOp{0, 0, 40, 40, std::make_shared<const std::string>("\x89PNG\r\n\x1A\nnothing"), "Logo"});
    QImage image(100, 50, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    EXPECT_EQ(ErrorRaisedBy([&] { PagePainter().Draw(page, painter); }),
              "Image \"Logo\" is damaged and cannot be read");
    EXPECT_FALSE(painter.hasClipping());
    painter.fillRect(50, 20, 10, 10, Qt::black);
    painter.end();
    EXPECT_EQ(DarkPixels(image), 100);
}

}  // namespace
}  // namespace rdl::screen::test
