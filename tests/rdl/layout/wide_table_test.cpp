// SPDX-License-Identifier: GPL-3.0-or-later
// Borders and fills of tables and margins that are wider than a page of 400 points.
#include <gmock/gmock.h>

#include "rdl/layout/pages/cutter.h"
#include "rdl/layout/report_kit.h"

namespace rdl::layout {
namespace {

using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;
using testing::Le;
using testing::SizeIs;

std::string Bordered(const std::string& side, const std::string& color) {
    return "<" + side + "Border><Style>Solid</Style><Color>" + color + "</Color><Width>1pt</Width></" + side +
           "Border>";
}

constexpr Color Red = 0xFFFF0000, Blue = 0xFF0000FF, Lime = 0xFF00FF00;

std::vector<LineOp> LinesOf(const Page& page, Color color) {
    std::vector<LineOp> lines = Of<LineOp>(page);
    std::erase_if(lines, [color](const LineOp& line) { return line.color != color; });
    return lines;
}

// Five columns of 150 points: two on each page of 400, 100 points free.
std::string Wide(const std::string& cellStyle, const std::string& tableStyle, double width = 150) {
    std::string cells;
    for (const char* name : {"A", "B", "C", "D", "E"}) {
        cells += Cell(name, name, "<Style>" + cellStyle + "</Style>");
    }
    std::string table = Tablix(5, RowOf(cells), "<TablixMember/>", {}, "<Style>" + tableStyle + "</Style>");
    const std::string wanted = "<Width>" + std::to_string(static_cast<int>(width)) + "pt</Width>";
    for (std::size_t at = 0; (at = table.find("<Width>100pt</Width>", at)) != std::string::npos;) {
        table.replace(at, 20, wanted);
    }
    return Report(table);
}

TEST(WideTable, TheTablesOwnBorderEndsWithItsLastColumnOnEachPage) {
    const auto sink = PagesOf(BuildKit(
        Wide("", Bordered("Top", "#ff0000") + Bordered("Left", "#0000ff") + Bordered("Right", "#00ff00")),
        Sales({})));
    ASSERT_THAT(sink.pages, SizeIs(3));
    const double ends[] = {300, 300, 150};
    for (std::size_t page = 0; page < 3; ++page) {
        SCOPED_TRACE(page);
        const auto tops = LinesOf(sink.pages[page], Red);
        ASSERT_THAT(tops, SizeIs(1));
        EXPECT_NEAR(tops[0].x1, 0, 0.01);
        EXPECT_NEAR(tops[0].x2, ends[page], 0.01);
        ASSERT_THAT(LinesOf(sink.pages[page], Blue), SizeIs(1));
        EXPECT_NEAR(LinesOf(sink.pages[page], Blue)[0].x1, 0, 0.01);
        ASSERT_THAT(LinesOf(sink.pages[page], Lime), SizeIs(1));
        EXPECT_NEAR(LinesOf(sink.pages[page], Lime)[0].x1, ends[page], 0.01);
    }
}

TEST(WideTable, TheTablesFillEndsWithItsLastColumnOnEachPage) {
    const auto sink = PagesOf(BuildKit(Wide("", "<BackgroundColor>#ff0000</BackgroundColor>"), Sales({})));
    ASSERT_THAT(sink.pages, SizeIs(3));
    for (std::size_t page = 0; page < 3; ++page) {
        auto fills = Of<RectOp>(sink.pages[page]);
        std::erase_if(fills, [](const RectOp& fill) { return fill.color != Red; });
        ASSERT_THAT(fills, SizeIs(1));
        EXPECT_NEAR(fills[0].width, page == 2 ? 150 : 300, 0.01);
    }
}

TEST(WideTable, ALeftBorderBeginsItsOwnPageOnly) {
    const auto sink = PagesOf(BuildKit(Wide(Bordered("Left", "#0000ff"), ""), Sales({})));
    ASSERT_THAT(sink.pages, SizeIs(3));
    EXPECT_THAT(LinesOf(sink.pages[0], Blue), ElementsAre(Field(&LineOp::x1, 0), Field(&LineOp::x1, 150)));
    EXPECT_THAT(LinesOf(sink.pages[1], Blue), ElementsAre(Field(&LineOp::x1, 0), Field(&LineOp::x1, 150)));
    EXPECT_THAT(LinesOf(sink.pages[2], Blue), ElementsAre(Field(&LineOp::x1, 0)));
}

// Columns that fill a page to its edge: the last right border of a page and the first left one of the next
// stand at the same place of the body.
TEST(WideTable, BordersAtThePagesEdgeBelongToTheirOwnPage) {
    const auto sink = PagesOf(
        BuildKit(Wide(Bordered("Left", "#0000ff") + Bordered("Right", "#00ff00"), "", 200), Sales({})));
    ASSERT_THAT(sink.pages, SizeIs(3));
    for (std::size_t page = 0; page < 2; ++page) {
        SCOPED_TRACE(page);
        EXPECT_THAT(LinesOf(sink.pages[page], Blue),
                    ElementsAre(Field(&LineOp::x1, 0), Field(&LineOp::x1, 200)));
        EXPECT_THAT(LinesOf(sink.pages[page], Lime),
                    ElementsAre(Field(&LineOp::x1, 200), Field(&LineOp::x1, 400)));
    }
}

TEST(WideTable, ABorderThatTwoColumnsShareIsDrawnOnBothPages) {
    const auto sink = PagesOf(
        BuildKit(Wide(Bordered("Left", "#0000ff") + Bordered("Right", "#0000ff"), "", 200), Sales({})));
    ASSERT_THAT(sink.pages, SizeIs(3));
    EXPECT_THAT(LinesOf(sink.pages[1], Blue),
                ElementsAre(Field(&LineOp::x1, 0), Field(&LineOp::x1, 200), Field(&LineOp::x1, 400)));
}

// Three pages of 100 points side by side; the second has a text within two clips.
TEST(CutPages, OnlyAPageThatDrawsInAClipHasIt) {
    Page wide;
    wide.ops = {ClipOp{0, 0, 300, 50},        ClipOp{110, 5, 40, 20},
                RectOp{120, 8, 10, 4, Red},   UnclipOp{},
                RectOp{90, 30, 5, 5, Blue},   UnclipOp{},
                RectOp{280, 60, 10, 10, Lime}};
    std::deque<Page> pages;
    CutPages(wide, 0, 100, 3, pages);
    ASSERT_THAT(pages, SizeIs(3));
    EXPECT_THAT(Of<ClipOp>(pages[0]), ElementsAre(Field(&ClipOp::x, 0)));
    EXPECT_THAT(Of<UnclipOp>(pages[0]), SizeIs(1));
    EXPECT_THAT(Of<RectOp>(pages[0]), ElementsAre(Field(&RectOp::color, Blue)));
    EXPECT_THAT(Of<ClipOp>(pages[1]), ElementsAre(Field(&ClipOp::x, -100), Field(&ClipOp::x, 10)));
    EXPECT_THAT(Of<UnclipOp>(pages[1]), SizeIs(2));
    EXPECT_THAT(Of<RectOp>(pages[1]), ElementsAre(AllOf(Field(&RectOp::x, 20), Field(&RectOp::color, Red))));
    EXPECT_THAT(Of<ClipOp>(pages[2]), IsEmpty());
    EXPECT_THAT(Of<RectOp>(pages[2]), ElementsAre(AllOf(Field(&RectOp::x, 80), Field(&RectOp::color, Lime))));
}

TEST(CutPages, AnAreaStandsOnEveryPageThatItReaches) {
    Page wide;
    wide.ops = {RectOp{50, 0, 400, 10, Red}};
    std::deque<Page> pages;
    CutPages(wide, 0, 100, 4, pages);
    const double from[] = {50, 0, 0, 0}, width[] = {50, 100, 100, 100};
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_THAT(Of<RectOp>(pages[i]),
                    ElementsAre(AllOf(Field(&RectOp::x, from[i]), Field(&RectOp::width, width[i]))));
    }
}

std::string Headed(const std::string& items) {
    return Report(Box("T", "body", "<Height>20pt</Height><Width>100pt</Width>"),
                  "<PageHeader><Height>50pt</Height><PrintOnFirstPage>true</PrintOnFirstPage><ReportItems>" +
                      items +
                      "</ReportItems></PageHeader><LeftMargin>40pt</LeftMargin>"
                      "<RightMargin>60pt</RightMargin>");
}

struct MarginSink final : PageSink {
    void Body(int, Page&) override {}
    void Margins(int, Page& content) override { page = content; }
    Page page;
};

Page HeaderOf(const std::string& items) {
    MarginSink sink;
    const BuiltKit kit = BuildKit(Headed(items), Sales({}));
    Paginate(*kit.report, sink);
    return sink.page;
}

// Between the margins there are 300 points, from 40 to 340.
TEST(WideHeader, LinesAndBoxesEndAtTheRightMargin) {
    const Page page = HeaderOf(
        "<Line Name=\"L\"><Top>10pt</Top><Left>0pt</Left><Height>0pt</Height><Width>350pt</Width><Style>"
        "<Border><Style>Solid</Style><Color>#ff0000</Color></Border></Style></Line>" +
        Box("B", "wide",
            "<Top>20pt</Top><Left>100pt</Left><Height>20pt</Height><Width>250pt</Width><Style>"
            "<BackgroundColor>#0000ff</BackgroundColor><Border><Style>Solid</Style><Color>#00ff00</Color>"
            "</Border></Style>"));
    EXPECT_THAT(Of<LineOp>(page), Each(AllOf(Field(&LineOp::x1, Le(340)), Field(&LineOp::x2, Le(340)))));
    ASSERT_THAT(LinesOf(page, Red), SizeIs(1));
    EXPECT_NEAR(LinesOf(page, Red)[0].x2, 340, 0.01);
    ASSERT_THAT(Of<RectOp>(page), SizeIs(1));
    EXPECT_NEAR(Of<RectOp>(page)[0].width, 200, 0.01);
    EXPECT_THAT(LinesOf(page, Lime), SizeIs(3));  // open where it is cut, as a box of the body is
}

TEST(WideHeader, TextsAreKeptAndWhatBeginsInTheMarginHasNoBox) {
    const Page page = HeaderOf(
        Box("B", "in the margin",
            "<Top>20pt</Top><Left>310pt</Left><Height>20pt</Height><Width>50pt</Width><Style>"
            "<BackgroundColor>#0000ff</BackgroundColor><Border><Style>Solid</Style></Border></Style>"));
    EXPECT_THAT(TextSink::Texts(page), testing::Not(IsEmpty()));
    EXPECT_THAT(Of<RectOp>(page), IsEmpty());
    EXPECT_THAT(Of<LineOp>(page), IsEmpty());
}

}  // namespace
}  // namespace rdl::layout
