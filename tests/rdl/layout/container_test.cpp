// SPDX-License-Identifier: GPL-3.0-or-later
// Items beside and upon each other, on pages that end between or within them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "rdl/layout/report_kit.h"

namespace rdl::layout {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

std::string At(double left, double top, double width, double height, const std::string& more = {}) {
    const auto points = [](const char* name, double size) {
        return "<" + std::string(name) + ">" + std::to_string(size) + "pt</" + name + ">";
    };
    return points("Top", top) + points("Left", left) + points("Height", height) + points("Width", width) +
           more;
}

std::string NumberedRows(const std::string& place, const std::string& more = {}) {
    return Tablix(1, RowOf(Cell("V", "=RowNumber(Nothing)")),
                  "<TablixMember><Group Name=\"D\"/></TablixMember>", {}, place + more);
}

const std::string Framed = "<Style><Border><Style>Solid</Style><Width>2pt</Width></Border></Style>";

// Lines of the frame that are level, on a page.
std::size_t LevelLines(const Page& page) {
    std::size_t count = 0;
    for (const LineOp& line : Of<LineOp>(page)) {
        count += line.y1 == line.y2 && line.width == 2 ? 1 : 0;
    }
    return count;
}

TEST(Places, WhatStandsBelowATableWithoutAHeightIsMovedDown) {
    const auto items = NumberedRows("<Top>10pt</Top>") + Box("Below", "below", At(0, 60, 50, 20));
    EXPECT_THAT(PagesOf(BuildKit(Report(items), Sales(Many(3)))).bodies,
                ElementsAre(ElementsAre("1", "2", "3", "below")));
    const Page page = PagesOf(BuildKit(Report(items), Sales(Many(9)))).pages.at(0);
    const auto texts = Of<TextOp>(page);
    ASSERT_EQ(texts.size(), 10u);
    EXPECT_GT(texts[9].baseline, texts[8].baseline);
}

// All of the second row and the third begin below the same items.
TEST(Places, ThousandsOfItemsAreMovedDownByOneAboveThem) {
    constexpr int Count = 3'000;
    std::string items;
    for (const int row : {0, 1, 2}) {
        for (int i = 0; i < Count; ++i) {
            const bool grows = row == 0 && i == 7;
            items += Box("b" + std::to_string(row) + "_" + std::to_string(i), grows ? "two words" : "x",
                         At(0.1 * i, 40.0 * row, 30, 20, grows ? "<CanGrow>true</CanGrow>" : ""));
        }
    }
    const Page page = PagesOf(BuildKit(Report(items), Sales({}))).pages.at(0);
    const auto texts = Of<TextOp>(page);
    ASSERT_EQ(texts.size(), 3u * Count + 1);  // the one that grows has two lines
    const double growth = texts[8].baseline - texts[7].baseline;
    EXPECT_GT(growth, 5);
    for (std::size_t i = Count + 1; i < texts.size(); ++i) {
        const double row = i <= 2u * Count ? 1 : 2;
        const double moved = texts[i].baseline - texts[0].baseline - 40 * row;
        ASSERT_NEAR(moved, texts[Count + 1].baseline - texts[0].baseline - 40, 0.001) << i;
        ASSERT_GT(moved, 0) << i;
    }
}

// A rectangle of one colour around a text, as the content of a cell.
std::string Coloured(const std::string& text) {
    return "<CellContents><Rectangle Name=\"R" + text + "\"><ReportItems>" +
           Box(text, text, At(0, 0, 50, 15)) +
           "</ReportItems><Style><BackgroundColor>Red</BackgroundColor></Style></Rectangle></CellContents>";
}

// The height of the last coloured rectangle on a page.
double HeightOfColour(const Page& page) {
    double height = 0;
    for (const RectOp& rect : Of<RectOp>(page)) {
        height = rect.color == 0xFFFF0000 ? rect.height : height;
    }
    return height;
}

// Rows of a group's details with a header beside them.
std::string BesideRows(const std::string& header) {
    return Tablix(1, RowOf(Cell("V", "=RowNumber(Nothing)")),
                  "<TablixMember><Group Name=\"G\"><GroupExpressions><GroupExpression>=Fields!Region.Value"
                  "</GroupExpression></GroupExpressions></Group><TablixHeader><Size>80pt</Size>" +
                      header +
                      "</TablixHeader><TablixMembers><TablixMember><Group Name=\"D\"/></TablixMember>"
                      "</TablixMembers></TablixMember>");
}

TEST(Rectangles, InARowTheyAreAsHighAsTheRow) {
    const std::string high = Cell("High", "=&quot;a&quot; &amp; StrDup(4, vbLf) &amp; &quot;b&quot;");
    const auto items =
        Tablix(2, RowOf("<TablixCell>" + Coloured("x") + "</TablixCell>" + high), "<TablixMember/>");
    const Page page = PagesOf(BuildKit(Report(items), Sales({}))).pages.at(0);
    EXPECT_GT(HeightOfColour(page), 50);
}

TEST(Rectangles, BesideSeveralRowsTheyAreAsHighAsThose) {
    const Page page = PagesOf(BuildKit(Report(BesideRows(Coloured("x"))), Sales(Many(3)))).pages.at(0);
    EXPECT_NEAR(HeightOfColour(page), 60, 0.1);
    EXPECT_THAT(Of<TextOp>(page), SizeIs(4));
}

TEST(Rectangles, BesideSeveralRowsTheyDoNotMakeTheFirstRowHigher) {
    std::string high = Coloured("x");
    high.replace(high.find("15.0"), 4, "55.0");
    const auto texts = Of<TextOp>(PagesOf(BuildKit(Report(BesideRows(high)), Sales(Many(4)))).pages.at(0));
    ASSERT_THAT(texts, SizeIs(5));
    EXPECT_NEAR(texts[1].baseline - texts[0].baseline, 20, 0.1);
    const auto rows = Of<TextOp>(PagesOf(BuildKit(Report(BesideRows(high)), Sales(Many(1)))).pages.at(0));
    EXPECT_THAT(rows, SizeIs(2));
}

TEST(Rectangles, BesideRowsOfSeveralPagesTheyAreOnEachOfThem) {
    const auto sink = PagesOf(BuildKit(Report(BesideRows(Coloured("x"))), Sales(Many(20))));
    ASSERT_THAT(sink.pages, SizeIs(2));
    EXPECT_NEAR(HeightOfColour(sink.pages[0]), 300, 0.1);
    EXPECT_NEAR(HeightOfColour(sink.pages[1]), 100, 0.1);
    EXPECT_EQ(sink.bodies[1].back(), "x");
}

TEST(Rectangles, BesideRowsTheyContinueIfTheyNeedSeveralPages) {
    std::string high = Coloured("x");
    high.replace(high.find("15.0"), 4, "400.0");
    EXPECT_THAT(PagesOf(BuildKit(Report(BesideRows(high)), Sales(Many(3)))).pages, SizeIs(2));
}

TEST(Layers, TheHigherIndexLiesAbove) {
    const auto items = Box("Above", "above", At(0, 0, 50, 20, "<ZIndex>2</ZIndex>")) +
                       Box("Below", "below", At(10, 5, 50, 20, "<ZIndex>1</ZIndex>"));
    EXPECT_THAT(PagesOf(BuildKit(Report(items), Sales({}))).bodies,
                ElementsAre(ElementsAre("below", "above")));
}

TEST(Layers, OfEqualIndexesTheLaterItemLiesAbove) {
    const auto items = Box("First", "first", At(0, 10, 50, 20)) + Box("Second", "second", At(0, 0, 50, 20));
    EXPECT_THAT(PagesOf(BuildKit(Report(items), Sales({}))).bodies,
                ElementsAre(ElementsAre("first", "second")));
}

TEST(RepeatWith, AnItemAboveATableStandsAboveItOnEveryPage) {
    const auto items = Box("Title", "Title", At(0, 0, 100, 20, "<RepeatWith>Sales</RepeatWith>")) +
                       NumberedRows(At(0, 30, 100, 20));
    const auto sink = PagesOf(BuildKit(Report(items), Sales(Many(20))));
    // 30 points above, so 13 rows of 20 a page.
    ASSERT_THAT(sink.bodies, SizeIs(2));
    EXPECT_THAT(sink.bodies[1], ElementsAre("Title", "14", "15", "16", "17", "18", "19", "20"));
    const auto texts = Of<TextOp>(sink.pages[1]);
    EXPECT_NEAR(texts[1].baseline - texts[0].baseline, 30, 0.01);
}

TEST(RepeatWith, AnItemBelowATableStandsBelowEachOfItsParts) {
    const auto items = NumberedRows(At(0, 0, 100, 20)) +
                       Box("Sum", "Sum", At(0, 25, 100, 20, "<RepeatWith>Sales</RepeatWith>"));
    const auto sink = PagesOf(BuildKit(Report(items), Sales(Many(20))));
    ASSERT_THAT(sink.bodies, SizeIs(2));
    EXPECT_THAT(sink.bodies[0], SizeIs(14));  // 13 rows, 5 points, 20 for the item
    EXPECT_EQ(sink.bodies[0].back(), "Sum");
    EXPECT_EQ(sink.bodies[1].back(), "Sum");
}

TEST(RepeatWith, AnItemBesideATableGoesWithIt) {
    const auto items = Box("Mark", "Mark", At(150, 0, 100, 20, "<RepeatWith>Sales</RepeatWith>")) +
                       NumberedRows(At(0, 0, 100, 20));
    const auto sink = PagesOf(BuildKit(Report(items), Sales(Many(20))));
    EXPECT_THAT(sink.bodies, ElementsAre(testing::Contains("Mark"), testing::Contains("Mark")));
}

TEST(RepeatWith, ATableThatEndsOnItsPageTakesNothingAlong) {
    const auto items = Box("Title", "Title", At(0, 0, 100, 20, "<RepeatWith>Sales</RepeatWith>")) +
                       NumberedRows(At(0, 30, 100, 20));
    const auto sink = PagesOf(BuildKit(Report(items), Sales(Many(3))));
    EXPECT_THAT(sink.bodies, ElementsAre(ElementsAre("Title", "1", "2", "3")));
}

TEST(Borders, CloseAtAPageBreakUnlessOmitted) {
    for (const bool omits : {false, true}) {
        const auto rectangle =
            "<Rectangle Name=\"R\">" +
            At(0, 0, 120, 20,
               Framed + "<OmitBorderOnPageBreak>" + (omits ? "true" : "false") + "</OmitBorderOnPageBreak>") +
            "<ReportItems>" + NumberedRows(At(0, 0, 100, 20)) + "</ReportItems></Rectangle>";
        const auto sink = PagesOf(BuildKit(Report(rectangle), Sales(Many(40))));
        ASSERT_THAT(sink.pages, SizeIs(3));
        EXPECT_EQ(LevelLines(sink.pages[0]), omits ? 1U : 2U);
        EXPECT_EQ(LevelLines(sink.pages[1]), omits ? 0U : 2U);
        EXPECT_EQ(LevelLines(sink.pages[2]), omits ? 1U : 2U);
    }
}

TEST(Borders, OfATableAreOmittedAtAPageBreakToo) {
    const auto sink =
        PagesOf(BuildKit(Report(NumberedRows(At(0, 0, 100, 20),
                                             Framed + "<OmitBorderOnPageBreak>true</OmitBorderOnPageBreak>")),
                         Sales(Many(20))));
    ASSERT_THAT(sink.pages, SizeIs(2));
    EXPECT_EQ(LevelLines(sink.pages[0]), 1U);
    EXPECT_EQ(LevelLines(sink.pages[1]), 1U);
}

// Colours of the lines of a box with a border of that style, the level ones.
std::vector<Color> ReliefOf(const std::string& style) {
    const auto sink = PagesOf(
        BuildKit(Report(Box("T", "x",
                            At(10, 10, 50, 20,
                               "<Style><Border><Style>" + style +
                                   "</Style><Color>#808080</Color><Width>4pt</Width></Border></Style>"))),
                 Sales({})));
    std::vector<Color> colors;
    for (const LineOp& line : Of<LineOp>(sink.pages[0])) {
        if (line.y1 == line.y2) {
            colors.push_back(line.color);
        }
    }
    return colors;
}

TEST(Borders, ReliefsAreLitFromAbove) {
    constexpr Color Dark = 0xFF404040, Light = 0xFFBFBFBF;
    EXPECT_THAT(ReliefOf("Inset"), ElementsAre(Dark, Light));  // top, bottom
    EXPECT_THAT(ReliefOf("Outset"), ElementsAre(Light, Dark));
    EXPECT_THAT(ReliefOf("Groove"), ElementsAre(Dark, Light, Light, Dark));
    EXPECT_THAT(ReliefOf("Ridge"), ElementsAre(Light, Dark, Dark, Light));
}

std::string Footer(const std::string& value) {
    return "<PageFooter><Height>20pt</Height><PrintOnFirstPage>true</PrintOnFirstPage><PrintOnLastPage>true"
           "</PrintOnLastPage><ReportItems>" +
           Box("F", value, At(0, 0, 300, 20)) + "</ReportItems></PageFooter>";
}

std::string BrokenBefore(const std::string& name, double top, const std::string& more,
                         const std::string& breakMore = {}) {
    return "<Rectangle Name=\"" + name + "\">" +
           At(0, top, 100, 20,
              "<PageBreak><BreakLocation>Start</BreakLocation>" + breakMore + "</PageBreak>" + more) +
           "<ReportItems>" + Box(name + "Text", name, At(0, 0, 100, 20)) + "</ReportItems></Rectangle>";
}

TEST(PageName, OfAnItemNamesItsPageAndTheNextOnes) {
    const auto items = BrokenBefore("A", 0, "<PageName>One</PageName>") +
                       BrokenBefore("B", 30, "<PageName>=\"T\" &amp; \"wo\"</PageName>") +
                       BrokenBefore("C", 60, "");
    const auto sink = PagesOf(BuildKit(Report(items, Footer("=Globals!PageName")), Sales({})));
    EXPECT_THAT(sink.margins, ElementsAre(ElementsAre("One"), ElementsAre("Two"), ElementsAre("Two")));
}

TEST(PageNumber, BeginsAgainAtTheBreakOfAnItem) {
    const auto items = BrokenBefore("A", 0, "") + BrokenBefore("B", 30, "") +
                       BrokenBefore("C", 60, "", "<ResetPageNumber>true</ResetPageNumber>");
    const auto sink = PagesOf(BuildKit(
        Report(items, Footer("=Globals!PageNumber &amp; \"/\" &amp; Globals!TotalPages &amp; \" \" &amp; "
                             "Globals!OverallPageNumber &amp; \"/\" &amp; Globals!OverallTotalPages")),
        Sales({})));
    EXPECT_THAT(sink.margins,
                ElementsAre(ElementsAre("1/2 1/3"), ElementsAre("2/2 2/3"), ElementsAre("1/1 3/3")));
}

TEST(PageBreaks, OneThatIsDisabledIsNone) {
    for (const bool disabled : {false, true}) {
        const auto items = BrokenBefore("A", 0, "") +
                           BrokenBefore("B", 30, "", disabled ? "<Disabled>=1 = 1</Disabled>" : "");
        EXPECT_THAT(PagesOf(BuildKit(Report(items), Sales({}))).bodies, SizeIs(disabled ? 1 : 2));
    }
}

TEST(ReportItems, AggregatesInAFooterGoOverThePage) {
    const auto sink = PagesOf(BuildKit(
        Report(
            NumberedRows(At(0, 0, 100, 20)),
            Footer(
                "=First(ReportItems!V.Value) &amp; \"-\" &amp; Last(ReportItems!V.Value) &amp; \" \" &amp; "
                "Sum(ReportItems!V.Value) &amp; \" \" &amp; Count(ReportItems!V.Value)")),
        Sales(Many(16))));
    EXPECT_THAT(sink.margins, ElementsAre(ElementsAre("1-14 105 14"), ElementsAre("15-16 31 2")));
}

TEST(ReportItems, AreFoundWithoutRegardToCase) {
    const auto items =
        Box("Total", "7", At(0, 0, 100, 20)) +
        Box("Twice", "=ReportItems!TOTAL.Value &amp; ReportItems(\"total\").Value", At(0, 30, 100, 20));
    const auto sink = PagesOf(BuildKit(Report(items, Footer("=ReportItems!total.Value")), Sales({})));
    EXPECT_THAT(sink.bodies, ElementsAre(ElementsAre("7", "77")));
    EXPECT_THAT(sink.margins, ElementsAre(ElementsAre("7")));
}

TEST(ReportItems, OneThatThereIsNotShowsAsAnError) {
    const auto sink =
        PagesOf(BuildKit(Report(Box("T", "=ReportItems!Moon.Value", At(0, 0, 100, 20))), Sales({})));
    EXPECT_THAT(sink.bodies, ElementsAre(ElementsAre("#Error")));
}

TEST(PageName, OfTheReportIsThatOfItsFirstPages) {
    std::string report = Report(BrokenBefore("A", 0, "") + BrokenBefore("B", 30, "<PageName>Two</PageName>"),
                                Footer("=Globals!PageName"));
    report.insert(report.find("<DataSources>"), "<InitialPageName>=\"O\" &amp; \"ne\"</InitialPageName>");
    EXPECT_THAT(PagesOf(BuildKit(report, Sales({}))).margins,
                ElementsAre(ElementsAre("One"), ElementsAre("Two")));
}

// A heading above the first row of the group is no reason to keep the name of the report.
TEST(PageName, OfAGroupReplacesThatOfTheReport) {
    std::string report = Report(
        Tablix(1, RowOf(Cell("Head", "Region")) + RowOf(Cell("V", "=Fields!Region.Value")),
               "<TablixMember/><TablixMember><Group Name=\"G\"><GroupExpressions><GroupExpression>"
               "=Fields!Region.Value</GroupExpression></GroupExpressions><PageBreak><BreakLocation>Between"
               "</BreakLocation></PageBreak><PageName>=Fields!Region.Value</PageName></Group>"
               "</TablixMember>"),
        Footer("=Globals!PageName"));
    report.insert(report.find("<DataSources>"), "<InitialPageName>All</InitialPageName>");
    EXPECT_THAT(PagesOf(BuildKit(report, Sales({{"North", "Pen", 1}, {"South", "Pen", 1}}))).margins,
                ElementsAre(ElementsAre("North"), ElementsAre("South")));
}

TEST(Borders, OfThePageStandAtItsMargins) {
    const auto sink = PagesOf(BuildKit(
        Report("",
               Framed +
                   "<LeftMargin>10pt</LeftMargin><RightMargin>20pt</RightMargin><TopMargin>30pt</TopMargin>"
                   "<BottomMargin>40pt</BottomMargin>"),
        Sales({})));
    ASSERT_EQ(LevelLines(sink.pages.at(0)), 2U);
    const auto lines = Of<LineOp>(sink.pages[0]);
    EXPECT_EQ(lines[0].x1, 10);
    EXPECT_EQ(lines[0].x2, 380);
    EXPECT_EQ(lines[0].y1, 30);
    EXPECT_EQ(lines[1].y1, 260);
}

std::string HidingRows() {
    return Tablix(1, RowOf(Cell("V", "=Fields!Region.Value", "<HideDuplicates>Data</HideDuplicates>")),
                  "<TablixMember><Group Name=\"D\"/></TablixMember>");
}

TEST(Duplicates, AreShownAgainAtTheTopOfAPage) {
    const auto sink = PagesOf(BuildKit(Report(HidingRows()), Sales(Many(40))));
    EXPECT_THAT(sink.bodies, ElementsAre(ElementsAre("North"), ElementsAre("North"), ElementsAre("North")));
}

// A rectangle that is 60 points high with a table at 10 that grows to 100 points.
double FrameHeight(bool consumes) {
    std::string report = Report("<Rectangle Name=\"R\">" + At(0, 0, 120, 60, Framed) + "<ReportItems>" +
                                NumberedRows(At(0, 10, 100, 20)) + "</ReportItems></Rectangle>");
    if (consumes) {
        report.insert(report.find("<DataSources>"),
                      "<ConsumeContainerWhitespace>true</ConsumeContainerWhitespace>");
    }
    const auto sink = PagesOf(BuildKit(report, Sales(Many(5))));
    double lowest = 0;
    for (const LineOp& line : Of<LineOp>(sink.pages.at(0))) {
        lowest = std::max(lowest, line.y2);
    }
    return lowest;
}

TEST(Container, KeepsTheRoomBelowWhatGrowsUnlessItIsConsumed) {
    EXPECT_NEAR(FrameHeight(false), 140, 0.01);
    EXPECT_NEAR(FrameHeight(true), 110, 0.01);
}

TEST(Container, ThatIsKeptTogetherWaitsForThePageThatHoldsIt) {
    const auto rectangle = [](const std::string& keep) {
        return Box("T", "T", At(0, 0, 100, 20)) + "<Rectangle Name=\"R\">" +
               At(0, 150, 100, 20, "<KeepTogether>" + keep + "</KeepTogether>") + "<ReportItems>" +
               NumberedRows(At(0, 0, 100, 20)) + "</ReportItems></Rectangle>";
    };
    const auto kept = PagesOf(BuildKit(Report(rectangle("true")), Sales(Many(10))));
    EXPECT_THAT(kept.bodies, ElementsAre(SizeIs(1), SizeIs(10)));
    const auto parted = PagesOf(BuildKit(Report(rectangle("false")), Sales(Many(10))));
    EXPECT_THAT(parted.bodies, ElementsAre(SizeIs(8), SizeIs(3)));
}

TEST(Container, WhatStandsBelowALineMovesWithTheTableAboveIt) {
    const auto baseline = [](int rows) {
        const auto items = NumberedRows(At(0, 20, 100, 20)) + "<Line Name=\"L\">" + At(0, 100, 100, 0) +
                           "</Line>" + Box("B", "below", At(0, 110, 100, 20));
        return Of<TextOp>(PagesOf(BuildKit(Report(items), Sales(Many(rows)))).pages.at(0)).back().baseline;
    };
    EXPECT_NEAR(baseline(3) - baseline(1), 40, 0.01);
}

}  // namespace
}  // namespace rdl::layout
