// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "rdl/layout/report_kit.h"
#include "rdl/raises.h"

namespace rdl::layout {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

// 16 by 8 pixels, which are 12 by 6 points.
const std::string Tile =
    "iVBORw0KGgoAAAANSUhEUgAAABAAAAAICAIAAAB/FOjAAAAAFElEQVR42mM4cec/"
    "SYhhVAMtNAAAWyZRkIjypxUAAAAASUVORK5CYII=";

const std::string Place = "<Top>0pt</Top><Left>10pt</Left><Height>18pt</Height><Width>24pt</Width>";

std::string WithImages(std::string report) {
    report.insert(report.find("<ReportSections>"),
                  "<EmbeddedImages><EmbeddedImage Name=\"tile\"><MIMEType>image/png</MIMEType><ImageData>" +
                      Tile + "</ImageData></EmbeddedImage></EmbeddedImages>");
    return report;
}

std::string Background(const std::string& more, const std::string& value = "tile") {
    return "<Style><BackgroundImage><Source>Embedded</Source><Value>" + value + "</Value>" + more +
           "</BackgroundImage></Style>";
}

std::vector<ImageOp> TilesBehind(const std::string& item) {
    return Of<ImageOp>(PagesOf(BuildKit(WithImages(Report(item)), Sales({}))).pages.at(0));
}

std::vector<ImageOp> TilesBehindBox(const std::string& more) {
    return TilesBehind(Box("T", "x", Place + Background(more)));
}

TEST(BackgroundImage, IsRepeatedBothWaysUnlessTold) {
    for (const char* word : {"", "<BackgroundRepeat>Repeat</BackgroundRepeat>",
                             "<BackgroundRepeat>Default</BackgroundRepeat>"}) {
        const auto tiles = TilesBehindBox(word);
        ASSERT_THAT(tiles, SizeIs(6)) << word;  // 2 across, 3 down
        EXPECT_NEAR(tiles[1].x, 22, 0.01);
        EXPECT_NEAR(tiles[5].y, 12, 0.01);
        EXPECT_NEAR(tiles[0].width, 12, 0.01);
        EXPECT_EQ(tiles[0].bytes, tiles[5].bytes);
    }
}

TEST(BackgroundImage, IsRepeatedInOneDirection) {
    EXPECT_THAT(TilesBehindBox("<BackgroundRepeat>RepeatX</BackgroundRepeat>"), SizeIs(2));
    EXPECT_THAT(TilesBehindBox("<BackgroundRepeat>RepeatY</BackgroundRepeat>"), SizeIs(3));
}

TEST(BackgroundImage, StandsOnceWhereItsPositionSays) {
    const auto placed = [](const std::string& position) {
        const auto tiles =
            TilesBehindBox("<BackgroundRepeat>Clip</BackgroundRepeat><Position>" + position + "</Position>");
        return tiles.size() == 1 ? std::pair(tiles[0].x, tiles[0].y) : std::pair(-1.0, -1.0);
    };
    EXPECT_EQ(placed("TopLeft"), std::pair(10.0, 0.0));
    EXPECT_EQ(placed("Top"), std::pair(16.0, 0.0));
    EXPECT_EQ(placed("Right"), std::pair(22.0, 6.0));
    EXPECT_EQ(placed("Center"), std::pair(16.0, 6.0));
    EXPECT_EQ(placed("BottomRight"), std::pair(22.0, 12.0));
    EXPECT_EQ(placed("Default"), std::pair(10.0, 0.0));
}

TEST(BackgroundImage, OfTheFirstSchemasIsNotRepeatedByNoRepeat) {
    EXPECT_THAT(TilesBehindBox("<BackgroundRepeat>NoRepeat</BackgroundRepeat>"), SizeIs(1));
}

TEST(BackgroundImage, StandsBehindRectangleTableAndText) {
    EXPECT_THAT(TilesBehind("<Rectangle Name=\"R\">" + Place + Background("") + "</Rectangle>"), SizeIs(6));
    const auto kit =
        BuildKit(WithImages(Report(Tablix(1, RowOf(Cell("V", "x")), "<TablixMember/>", {}, Background("")))),
                 Sales({}));
    const Page page = PagesOf(kit).pages.at(0);
    ASSERT_THAT(page.ops, testing::Not(IsEmpty()));
    std::size_t firstText = 0, lastImage = 0;
    for (std::size_t i = page.ops.size(); i-- > 0;) {
        firstText = std::holds_alternative<TextOp>(page.ops[i]) ? i : firstText;
        lastImage = lastImage == 0 && std::holds_alternative<ImageOp>(page.ops[i]) ? i : lastImage;
    }
    EXPECT_LT(lastImage, firstText);
    EXPECT_THAT(Of<ImageOp>(page), SizeIs(9 * 4));  // 100 by 20 points
}

TEST(BackgroundImage, ComesFromTheDataByRow) {
    const auto table =
        Tablix(1,
               RowOf(Cell("V", "x",
                          "<Style><BackgroundImage><Source>Database</Source><Value>=IIf("
                          "Fields!Amount.Value &gt; 1, Fields!Product.Value, Nothing)</Value>"
                          "<BackgroundRepeat>Clip</BackgroundRepeat></BackgroundImage></Style>")),
               "<TablixMember><Group Name=\"D\"/></TablixMember>");
    const auto kit = BuildKit(Report(table), Sales({{"", Tile.c_str(), 1}, {"", Tile.c_str(), 2}}));
    const auto images = Of<ImageOp>(PagesOf(kit).pages.at(0));
    ASSERT_THAT(images, SizeIs(1));
    EXPECT_NEAR(images[0].y, 20, 0.01);
}

TEST(BackgroundImage, OfBodyAndPageHeaderIsDrawn) {
    std::string report = WithImages(
        Report("", "<PageHeader><Height>6pt</Height><PrintOnFirstPage>true</PrintOnFirstPage>" +
                       Background("<BackgroundRepeat>RepeatY</BackgroundRepeat>") + "</PageHeader>"));
    report.insert(report.find("</Body>"), Background("<BackgroundRepeat>Clip</BackgroundRepeat>"));
    const auto kit = BuildKit(report, Sales({}));
    ASSERT_TRUE(kit.report->sections[0]->bodyStyle->picture);
    struct MarginSink final : PageSink {
        std::size_t images = 0;
        void Body(int, Page&) override {}
        void Margins(int, Page& content) override { images += Of<ImageOp>(content).size(); }
    } sink;
    Paginate(*kit.report, sink);
    EXPECT_EQ(sink.images, 1U);
}

TEST(BackgroundImage, AnUnknownNameFromAnExpressionEndsTheRun) {
    EXPECT_THAT(ErrorRaisedBy([&] {
                    BuildKit(
                        WithImages(Report(Box("T", "x", Place + Background("", "=\"no\" &amp; \"ne\"")))),
                        Sales({}));
                }),
                HasSubstr("Image \"T\": the report has no embedded image \"none\""));
}

// The body of the reports here is 100 points high.
TEST(BodyFill, IsAsHighAsTheBodyUnlessItsSpaceIsConsumed) {
    const auto filled = [](const std::string& items, bool consumes) {
        std::string report = Report(items);
        report.insert(report.find("</Body>"), "<Style><BackgroundColor>Navy</BackgroundColor></Style>");
        if (consumes) {
            report.insert(report.find("<DataSources>"),
                          "<ConsumeContainerWhitespace>true</ConsumeContainerWhitespace>");
        }
        const auto kit = BuildKit(report, Sales(Many(20)));
        std::vector<double> heights;
        for (const Page& page : PagesOf(kit).pages) {
            for (const RectOp& area : Of<RectOp>(page)) {
                if (area.color == 0xFF000080) {
                    heights.push_back(std::round(area.height));
                }
            }
        }
        return heights;
    };
    const std::string box =
        Box("T", "x", "<Top>10pt</Top><Left>0pt</Left><Height>20pt</Height><Width>90pt</Width>");
    EXPECT_THAT(filled(box, false), ElementsAre(100));
    EXPECT_THAT(filled(box, true), ElementsAre(30));
    EXPECT_THAT(filled("", false), ElementsAre(100));
    // 20 rows of 20 points on pages of 300; the body has 80 points below its table.
    const std::string table =
        Tablix(1, RowOf(Cell("V", "x")), "<TablixMember><Group Name=\"D\"/></TablixMember>");
    EXPECT_THAT(filled(table, false), ElementsAre(300, 180));
    EXPECT_THAT(filled(table, true), ElementsAre(300, 100));
}

std::vector<RectOp> GradientOf(const std::string& type) {
    auto areas =
        Of<RectOp>(PagesOf(BuildKit(Report(Box("T", "x",
                                               Place +
                                                   "<Style><BackgroundColor>#000000</BackgroundColor>"
                                                   "<BackgroundGradientType>" +
                                                   type +
                                                   "</BackgroundGradientType><BackgroundGradientEndColor>"
                                                   "#0000FF</BackgroundGradientEndColor></Style>")),
                                    Sales({})))
                       .pages.at(0));
    return areas;
}

TEST(BackgroundGradient, RunsFromTheBackgroundColorToTheEndColor) {
    const auto across = GradientOf("LeftRight");
    ASSERT_GT(across.size(), 10U);
    EXPECT_EQ(across[1].color, 0xFF000000);
    EXPECT_EQ(across.back().color, 0xFF0000FF);
    EXPECT_NEAR(across.back().x + across.back().width, 34, 0.01);
    EXPECT_NEAR(across.back().height, 18, 0.01);
    const auto down = GradientOf("TopBottom");
    EXPECT_NEAR(down.back().width, 24, 0.01);
    EXPECT_GT(down.back().y, 17);
}

TEST(BackgroundGradient, OfACenterLineRunsToBothSides) {
    const auto up = GradientOf("HorizontalCenter");
    EXPECT_EQ(up[2].color, 0xFF0000FF);  // the edge
    EXPECT_EQ(up.back().color, 0xFF000000);
    EXPECT_NEAR(up.back().y + up.back().height / 2, 9, 0.01);
    EXPECT_NEAR(up.back().width, 24, 0.01);
    const auto aside = GradientOf("VerticalCenter");
    EXPECT_NEAR(aside.back().x + aside.back().width / 2, 22, 0.01);
    EXPECT_NEAR(aside.back().height, 18, 0.01);
}

TEST(BackgroundGradient, OfTheCenterIsRound) {
    const auto page =
        PagesOf(BuildKit(Report(Box("T", "x",
                                    Place + "<Style><BackgroundColor>Red</BackgroundColor>"
                                            "<BackgroundGradientType>Center</BackgroundGradientType>"
                                            "<BackgroundGradientEndColor>Blue"
                                            "</BackgroundGradientEndColor></Style>")),
                         Sales({})))
            .pages.at(0);
    EXPECT_EQ(Of<RectOp>(page).back().color, 0xFF0000FF);
    EXPECT_EQ(Of<PathOp>(page).back().fill, 0xFFFF0000);
    EXPECT_EQ(Of<PathOp>(page).back().segments.at(1).kind, PathOp::Segment::CurveTo);
}

TEST(BackgroundGradient, OfADiagonalBeginsInOneCornerAndEndsInTheOther) {
    const auto kit =
        BuildKit(Report(Box("T", "x",
                            Place + "<Style><BackgroundColor>Red</BackgroundColor><BackgroundGradientType>"
                                    "DiagonalRight</BackgroundGradientType><BackgroundGradientEndColor>Blue"
                                    "</BackgroundGradientEndColor></Style>")),
                 Sales({}));
    const auto shapes = Of<PathOp>(PagesOf(kit).pages.at(0));
    ASSERT_GT(shapes.size(), 10U);
    EXPECT_EQ(shapes.back().fill, 0xFF0000FF);
    for (const PathOp::Segment& segment : shapes.back().segments) {
        if (segment.kind != PathOp::Segment::Close) {  // near the bottom left corner
            EXPECT_NEAR(segment.x[0], 10, 1);
            EXPECT_NEAR(segment.y[0], 18, 1);
        }
    }
}

TEST(BackgroundGradient, WithoutAnEndColorIsThePlainColor) {
    const auto kit =
        BuildKit(Report(Box("T", "x",
                            Place + "<Style><BackgroundColor>Red</BackgroundColor><BackgroundGradientType>"
                                    "LeftRight</BackgroundGradientType></Style>")),
                 Sales({}));
    EXPECT_THAT(Of<RectOp>(PagesOf(kit).pages.at(0)), SizeIs(2));  // the body's and the box's
}

}  // namespace
}  // namespace rdl::layout
