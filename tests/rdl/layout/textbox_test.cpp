// SPDX-License-Identifier: GPL-3.0-or-later
// Where a text stands in its box, and how the box fits its text.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "rdl/layout/report_kit.h"

namespace rdl::layout {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

const std::string Place = "<Top>0pt</Top><Left>0pt</Left><Height>100pt</Height><Width>100pt</Width>";

std::vector<TextOp> TextsOf(const std::string& items, const std::vector<SaleRow>& rows = {}) {
    std::vector<TextOp> texts;
    const TextSink sink = PagesOf(BuildKit(Report(items), Sales(rows)));
    for (const Op& op : sink.pages.at(0).ops) {
        if (const auto* text = std::get_if<TextOp>(&op)) {
            texts.push_back(*text);
        }
    }
    return texts;
}

TextOp Only(const std::string& style, const std::string& more = {}) {
    return TextsOf(Box("T", "x", Place + "<Style>" + style + "</Style>" + more)).at(0);
}

TEST(Textbox, VerticalAlignMovesTheText) {
    const double top = Only("").baseline;
    const double middle = Only("<VerticalAlign>Middle</VerticalAlign>").baseline;
    const double bottom = Only("<VerticalAlign>Bottom</VerticalAlign>").baseline;
    EXPECT_NEAR(middle - top, bottom - middle, 0.01);
    EXPECT_GT(bottom, 90);
    EXPECT_LT(top, 12);
}

TEST(Textbox, PaddingIsLeftFreeOnEachSide) {
    const std::string padding = "<PaddingLeft>7pt</PaddingLeft><PaddingTop>5pt</PaddingTop>";
    EXPECT_NEAR(Only(padding).x, 7, 0.01);
    EXPECT_NEAR(Only(padding).baseline - Only("").baseline, 5, 0.01);
    EXPECT_NEAR(Only("<VerticalAlign>Bottom</VerticalAlign>").baseline -
                    Only("<VerticalAlign>Bottom</VerticalAlign><PaddingBottom>9pt</PaddingBottom>").baseline,
                9, 0.01);
}

TEST(Textbox, TextRunsDownOrUpByItsWritingMode) {
    EXPECT_EQ(Only("<WritingMode>Vertical</WritingMode>").rotation, 90);
    EXPECT_EQ(Only("<WritingMode>Rotate270</WritingMode>").rotation, 270);
    EXPECT_EQ(Only("<WritingMode>tb-rl</WritingMode>").rotation, 90);
    EXPECT_EQ(Only("<WritingMode>Horizontal</WritingMode>").rotation, 0);
}

// A table of three rows of 20 points; the first column has the group's header over all of them.
std::vector<TextOp> TextsBesideRows(const std::string& header) {
    const std::string members =
        "<TablixMember><Group Name=\"G\"><GroupExpressions><GroupExpression>=Fields!Region.Value"
        "</GroupExpression></GroupExpressions></Group><TablixHeader><Size>30pt</Size><CellContents>" +
        header +
        "</CellContents></TablixHeader><TablixMembers><TablixMember><Group Name=\"D\"/></TablixMember>"
        "</TablixMembers></TablixMember>";
    return TextsOf(Tablix(1, RowOf(Cell("Amount", "=Fields!Amount.Value")), members), Many(3));
}

std::string Turned(const std::string& value, const std::string& align) {
    return Box(
        "Turned", value,
        "<Style><WritingMode>Vertical</WritingMode><VerticalAlign>" + align + "</VerticalAlign></Style>");
}

TEST(Textbox, ATurnedTextHasTheLengthOfAllRowsBesideIt) {
    for (const std::string align : {"Top", "Middle"}) {
        std::size_t turned = 0;
        for (const TextOp& text : TextsBesideRows(Turned("Long name", align))) {
            turned += text.rotation == 90 ? 1 : 0;
        }
        EXPECT_EQ(turned, 1U) << align;  // one line
    }
}

TEST(Textbox, ATurnedTextHasTheLengthToWhichItsRowHasGrown) {
    const std::string high = Cell("High",
                                  "=&quot;a&quot; &amp; vbLf &amp; &quot;b&quot; &amp; vbLf &amp; "
                                  "&quot;c&quot; &amp; vbLf &amp; &quot;d&quot;");
    const std::string turned =
        "<TablixCell><CellContents>" + Turned("Big one", "Top") + "</CellContents></TablixCell>";
    const auto texts = TextsOf(Tablix(2, RowOf(turned + high), "<TablixMember/>"));
    EXPECT_THAT(texts, SizeIs(5));
}

TEST(Textbox, FromRightToLeftBeginsAtTheRight) {
    EXPECT_GT(Only("<Direction>RTL</Direction>").x, 90);
    EXPECT_NEAR(Only("<Direction>RTL</Direction><TextAlign>Left</TextAlign>").x, 0, 0.01);
}

std::string Below(const std::string& more) {
    return Box("T", "", "<Top>0pt</Top><Left>0pt</Left><Height>40pt</Height><Width>100pt</Width>" + more) +
           Box("B", "below", "<Top>50pt</Top><Left>0pt</Left><Height>20pt</Height><Width>100pt</Width>");
}

TEST(Textbox, ThatShrinksPullsUpWhatIsBelow) {
    const double fixed = TextsOf(Below("")).at(0).baseline;
    const double shrunk = TextsOf(Below("<CanShrink>true</CanShrink>")).at(0).baseline;
    EXPECT_NEAR(fixed - shrunk, 40, 0.01);
}

TEST(Textbox, ThatCannotGrowHidesWhatDoesNotFit) {
    const auto page =
        PagesOf(BuildKit(Report(Box("T", "one two three four five six seven eight nine ten",
                                    "<Top>0pt</Top><Left>0pt</Left><Height>15pt</Height><Width>60pt"
                                    "</Width>")),
                         Sales({})))
            .pages.at(0);
    std::vector<ClipOp> clips;
    for (const Op& op : page.ops) {
        if (const auto* clip = std::get_if<ClipOp>(&op)) {
            clips.push_back(*clip);
        }
    }
    ASSERT_THAT(clips, SizeIs(1));
    EXPECT_NEAR(clips[0].height, 15, 0.01);
}

std::string Paragraphs(const std::string& first, const std::string& second) {
    const auto paragraph = [](const std::string& more) {
        return "<Paragraph><TextRuns><TextRun><Value>a b</Value></TextRun></TextRuns>" + more +
               "</Paragraph>";
    };
    return "<Textbox Name=\"T\"><CanGrow>true</CanGrow><Paragraphs>" + paragraph(first) + paragraph(second) +
           "</Paragraphs>" + Place + "</Textbox>";
}

TEST(Paragraph, SpacesAndIndentsAreKept) {
    const auto plain = TextsOf(Paragraphs("", ""));
    const auto spaced = TextsOf(Paragraphs("<SpaceAfter>8pt</SpaceAfter>",
                                           "<SpaceBefore>4pt</SpaceBefore><LeftIndent>15pt</LeftIndent>"));
    EXPECT_NEAR(spaced.at(1).baseline - plain.at(1).baseline, 12, 0.01);
    EXPECT_NEAR(spaced.at(1).x, 15, 0.01);
}

TEST(Paragraph, LineHeightIsTheDistanceOfLines) {
    const std::string style = "<Style><LineHeight>30pt</LineHeight></Style>";
    const auto texts = TextsOf(Paragraphs(style, style));
    EXPECT_NEAR(texts.at(1).baseline - texts.at(0).baseline, 30, 0.01);
}

TEST(Paragraph, ListsAreNumberedAndMarked) {
    const std::string numbered = "<ListStyle>Numbered</ListStyle><ListLevel>1</ListLevel>";
    const auto sink = PagesOf(BuildKit(Report(Paragraphs(numbered, numbered)), Sales({})));
    EXPECT_THAT(sink.bodies.at(0), ElementsAre("a b", "1.", "a b", "2."));
    const auto marked =
        PagesOf(BuildKit(Report(Paragraphs("<ListStyle>Bulleted</ListStyle>", "")), Sales({})));
    EXPECT_THAT(marked.bodies.at(0), ElementsAre("a b", "\xE2\x80\xA2", "a b"));
}

TEST(Paragraph, AHangingIndentMovesTheLinesAfterTheFirst) {
    const auto texts = TextsOf(
        "<Textbox Name=\"T\"><CanGrow>true</CanGrow><Paragraphs><Paragraph><TextRuns><TextRun>"
        "<Value>one two three four five six seven</Value></TextRun></TextRuns><HangingIndent>"
        "20pt</HangingIndent></Paragraph></Paragraphs>" +
        Place + "</Textbox>");
    ASSERT_GT(texts.size(), 1U);
    EXPECT_NEAR(texts[0].x, 0, 0.01);
    EXPECT_NEAR(texts[1].x, 20, 0.01);
}

TEST(Body, KnowsTheNumberOfPages) {
    const auto sink = PagesOf(BuildKit(
        Report(
            Box("T", "=Globals!PageNumber &amp; \" of \" &amp; Globals!TotalPages",
                "<Top>0pt</Top><Left>0pt</Left><Height>20pt</Height><Width>100pt</Width>") +
            "<Rectangle Name=\"R\"><Top>30pt</Top><Left>0pt</Left><Height>20pt</Height><Width>100pt</Width>"
            "<PageBreak><BreakLocation>Start</BreakLocation></PageBreak><ReportItems>" +
            Box("U", "x", "<Height>20pt</Height><Width>100pt</Width>") + "</ReportItems></Rectangle>"),
        Sales({})));
    EXPECT_THAT(sink.bodies, ElementsAre(ElementsAre("1 of 2"), ElementsAre("x")));
}

TEST(Textbox, ALinkOfOneRunHasTheAreaOfItsText) {
    const std::string box =
        "<Textbox Name=\"T\"><Paragraphs><Paragraph><TextRuns><TextRun><Value>See </Value></TextRun><TextRun>"
        "<Value>here</Value><ActionInfo><Actions><Action><Hyperlink>https://example.com/</Hyperlink></Action>"
        "</Actions></ActionInfo></TextRun></TextRuns></Paragraph></Paragraphs>" +
        Place + "</Textbox>";
    const TextSink sink = PagesOf(BuildKit(Report(box), Sales({})));
    const Page& page = sink.pages.at(0);
    const std::vector<TextOp> texts = Of<TextOp>(page);
    const std::vector<LinkOp> links = Of<LinkOp>(page);
    ASSERT_THAT(texts, SizeIs(2));
    ASSERT_THAT(links, SizeIs(1));
    double width = 0;
    for (std::uint32_t i = 0; i < texts[1].glyphCount; ++i) {
        width += static_cast<double>(page.glyphs[texts[1].firstGlyph + i].advance);
    }
    EXPECT_EQ(links[0].uri, "https://example.com/");
    EXPECT_NEAR(links[0].x, texts[1].x, 0.001);
    EXPECT_NEAR(links[0].width, width, 0.001);
    EXPECT_LT(links[0].y, texts[1].baseline);
    EXPECT_GT(links[0].y + links[0].height, texts[1].baseline);
}

TEST(Textbox, TurnedTextBeginsAtItsCorner) {
    const TextOp down = Only("<WritingMode>Vertical</WritingMode>");
    const TextOp up = Only("<WritingMode>Rotate270</WritingMode>");
    EXPECT_NEAR(down.baseline, 0, 0.01);
    EXPECT_NEAR(up.baseline, 100, 0.01);
    EXPECT_GT(down.x, 85);
    EXPECT_LT(up.x, 15);
}

TEST(Paragraph, AListBeginsWithOneAfterAParagraphInBetween) {
    const auto paragraph = [](const std::string& more) {
        return "<Paragraph><TextRuns><TextRun><Value>a</Value></TextRun></TextRuns>" + more + "</Paragraph>";
    };
    const std::string numbered = "<ListStyle>Numbered</ListStyle><ListLevel>1</ListLevel>";
    const std::string bulleted = "<ListStyle>Bulleted</ListStyle><ListLevel>1</ListLevel>";
    const std::string between = "<ListLevel>1</ListLevel>";
    const auto numbers = [&](const std::string& middle) {
        const auto kit = BuildKit(Report("<Textbox Name=\"T\"><Paragraphs>" + paragraph(numbered) +
                                         paragraph(middle) + paragraph(numbered) + "</Paragraphs></Textbox>"),
                                  Sales({}));
        const auto& item = kit.report->sections.front()->items.front();
        return std::pair(item.paragraphs.at(0).listNumber, item.paragraphs.at(2).listNumber);
    };
    EXPECT_EQ(numbers(between), std::pair(1, 1));
    EXPECT_EQ(numbers(bulleted), std::pair(1, 2));
    EXPECT_EQ(numbers(numbered), std::pair(1, 3));
}

TEST(Body, ItemsOfOneHeightFollowEachOtherFromTheLeft) {
    const auto kit = BuildKit(Report(Box("C", "c", "<Top>5pt</Top><Left>0pt</Left>") +
                                     Box("B", "b", "<Left>100pt</Left>") + Box("A", "a", "<Left>0pt</Left>")),
                              Sales({}));
    std::string names;
    for (const Instance& item : kit.report->sections.front()->items) {
        names += item.name;
    }
    EXPECT_EQ(names, "ABC");
}

TEST(Textbox, WeightsFromHalfBoldOnAreBold) {
    const auto isBold = [](const std::string& weight) {
        const auto kit = BuildKit(
            Report(Box("T", "x", "<Style><FontWeight>" + weight + "</FontWeight></Style>")), Sales({}));
        return kit.report->sections.front()->items.front().paragraphs.front().runs.front().style->bold;
    };
    for (const char* weight : {"SemiBold", "600", "Bold", "700", "Heavy"}) {
        EXPECT_TRUE(isBold(weight)) << weight;
    }
    for (const char* weight : {"Medium", "599", "500", "Normal", "Lighter", "nonsense"}) {
        EXPECT_FALSE(isBold(weight)) << weight;
    }
}

}  // namespace
}  // namespace rdl::layout
