// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <limits>
#include <memory>
#include <string>

#include "rdl/format/format.h"
#include "rdl/raises.h"
#include "rdl/values/error.h"
#include "rdl/writers/rtf_kit.h"
#include "rdl/writers/sample_report.h"

namespace rdl::writers {
namespace {

using namespace test;
using layout::Instance;
using layout::InstanceKind;
using layout::TableRow;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

std::shared_ptr<SampleTable> Rows(std::size_t count) {
    auto table = NumberedRows(count);
    table->repeated = {0};
    return table;
}

TEST(Rtf, IsADocumentWithTitleAuthorAndTime) {
    const auto report = SampleReport({TextItem("body")});
    report->title = "Profit {and} Loss\\";
    report->author = "Ann";
    const std::string rtf = Rtf(report);
    EXPECT_EQ(rtf.substr(0, 6), "{\\rtf1");
    const RtfDocument document = RtfReader::Read(rtf);
    EXPECT_TRUE(document.balanced);
    EXPECT_EQ(document.Hidden("title"), "Profit {and} Loss\\");
    EXPECT_EQ(document.Hidden("author"), "Ann");
    EXPECT_THAT(rtf, HasSubstr("\\creatim\\yr2024\\mo2\\dy29\\hr13\\min0"));
}

TEST(Rtf, HostileTextIsOnlyText) {
    const RtfDocument document = Document({TextItem("}}{\\object\\objdata 00}\\par\x01\x7F{\\*")});
    ASSERT_EQ(document.rows.size(), 1u);
    EXPECT_THAT(document.rows[0].texts, ElementsAre("}}{\\object\\objdata 00}\\par{\\*"));
    EXPECT_EQ(document.Count("object"), 0);
}

TEST(Rtf, HostileFontNamesStayInTheFontTable) {
    Instance item = TextItem("x");
    auto style = std::make_shared<layout::CharStyle>();
    style->family = "A;}{\\object\n";
    item.paragraphs[0].runs[0].style = style;
    const RtfDocument document = Document({item});
    EXPECT_EQ(document.Count("object"), 0);
    EXPECT_THAT(document.Hidden("fonttbl"), HasSubstr("A}{\\object"));
}

TEST(Rtf, CharactersBeyondAsciiAreUnits) {
    // U+00E9, U+20AC, U+FB01 above 32767, U+1F600 in two units; what is no UTF-8 is U+FFFD.
    const RtfDocument document = Document({TextItem("\u00E9\u20AC\uFB01\U0001F600\xFF")});
    EXPECT_THAT(document.rows.at(0).texts, ElementsAre("<233><8364><-1279><-10179><-8704><-3>"));
}

TEST(Rtf, LineFeedsAndTabsAreKept) {
    EXPECT_THAT(Document({TextItem("a\r\nb\tc")}).rows.at(0).texts, ElementsAre("a|b\tc"));
    EXPECT_THAT(Document({TextItem("a\u2028b\u2029c")}).rows.at(0).texts, ElementsAre("a|b|c"));
}

TEST(Rtf, LettersAreFontsColorsAndWeights) {
    Instance item = TextItem("x");
    layout::CharStyle style;
    style.family = "Courier New";
    style.size = 11.5F;
    style.bold = style.italic = true;
    style.decoration = layout::Decoration::Underline;
    style.color = 0xFF336699;
    item.paragraphs[0].runs[0].style = std::make_shared<const layout::CharStyle>(style);
    const std::string rtf = Rtf(SampleReport({item}));
    EXPECT_THAT(rtf, HasSubstr("{\\colortbl;\\red51\\green102\\blue153;}"));
    EXPECT_THAT(rtf, HasSubstr("\\f1\\fs23\\b\\i\\ul\\cf1 x"));
    EXPECT_THAT(rtf, HasSubstr("{\\f1\\fnil\\fcharset0 Courier New;}"));
}

// Word processors have a second set of looks for texts in scripts that run from right to left.
TEST(Rtf, TextsFromRightToLeftHaveTheirLooksTwice) {
    Instance item = TextItem("\xD7\x90");
    layout::CharStyle style;
    style.family = "Courier New";
    style.size = 9;
    style.bold = style.italic = true;
    item.paragraphs[0].runs[0].style = std::make_shared<const layout::CharStyle>(style);
    EXPECT_THAT(Rtf(SampleReport({item})),
                HasSubstr("\\rtlch\\af1\\afs18\\ab\\ai\\ltrch\\f1\\fs18\\b\\i\\cf1 "));
    item.paragraphs[0].runs[0].text = "1";
    EXPECT_THAT(Rtf(SampleReport({item})), Not(HasSubstr("\\afs")));
    layout::BoxStyle box;
    box.rightToLeft = true;
    item.box = std::make_shared<const layout::BoxStyle>(box);
    EXPECT_THAT(Rtf(SampleReport({item})), HasSubstr("\\afs18\\ab\\ai\\ltrch\\f1\\fs18\\b\\i\\cf1 1"));
}

TEST(Rtf, CellsOfTablesFromRightToLeftHaveTheirLooksTwice) {
    auto table = Rows(3);
    EXPECT_THAT(Rtf(SampleReport({TableItem(table)})), Not(HasSubstr("\\afs")));
    table->rightToLeft = true;
    EXPECT_THAT(Rtf(SampleReport({TableItem(table)})), HasSubstr("\\afs"));
}

TEST(Rtf, LooksOfTheFirstRunEndWithIt) {
    Instance item = TextItem("Bold");
    layout::CharStyle bold;
    bold.bold = true;
    bold.decoration = layout::Decoration::Underline;
    item.paragraphs[0].runs[0].style = std::make_shared<const layout::CharStyle>(bold);
    layout::RunInstance plain;
    plain.text = "plain";
    plain.style = std::make_shared<const layout::CharStyle>();
    item.paragraphs[0].runs.push_back(plain);
    EXPECT_THAT(Rtf(SampleReport({item})), HasSubstr(" Bold{\\plain\\f0\\fs20\\cf1 plain}"));
}

TEST(Rtf, NumbersGoRightAndTextLeft) {
    EXPECT_EQ(Document({ValueItem(Value::Integer(7), "7", "")}).Count("qr"), 1);
    EXPECT_EQ(Document({TextItem("7")}).Count("qr"), 0);
}

TEST(Rtf, PaddingAndIndentsAddUp) {
    Instance item = TextItem("x");
    layout::BoxStyle box;
    box.paddingLeft = 2;
    box.paddingTop = 3;
    item.box = std::make_shared<const layout::BoxStyle>(box);
    item.paragraphs[0].leftIndent = 10;
    item.paragraphs[0].hangingIndent = 5;
    item.paragraphs[0].spaceBefore = 1;
    const RtfDocument document = Document({item});
    EXPECT_EQ(document.Count("li340"), 1);
    EXPECT_EQ(document.Count("fi-100"), 1);
    EXPECT_EQ(document.Count("sb80"), 1);
}

TEST(Rtf, ListsHaveTheirMarks) {
    Instance item = TextItem("one");
    item.paragraphs.push_back(item.paragraphs[0]);
    item.paragraphs[0].bulleted = true;
    item.paragraphs[1].listNumber = 2;
    EXPECT_THAT(Document({item}).rows.at(0).texts, ElementsAre("<8226>\tone|2.\tone"));
}

TEST(Rtf, LinksAreWebAddressesOrNothing) {
    for (const char* bad : {"javascript:alert(1)", "file:///etc/passwd", "\\\\server\\share", "tel:1",
                            "x.doc", " data:text/html,x", "ftps:x"}) {
        Instance item = TextItem("click");
        item.hyperlink = bad;
        EXPECT_EQ(Document({item}).Count("fldinst"), 0) << bad;
    }
    Instance item = TextItem("click");
    item.hyperlink = "https://example.com/?a=\"}\\b \u00E9";
    const RtfDocument document = Document({item});
    EXPECT_EQ(document.Hidden("fldinst"), "HYPERLINK \"https://example.com/?a=%22%7D%5Cb%20%C3%A9\"");
    EXPECT_THAT(document.rows.at(0).texts, ElementsAre("click"));
}

TEST(Rtf, BookmarksLeadToTheirItem) {
    Instance from = TextItem("from"), to = TextItem("to", 0, 20);
    from.bookmarkLink = to.bookmark = "a b}";
    const RtfDocument document = Document({from, to, to});
    EXPECT_EQ(document.Hidden("fldinst"), "HYPERLINK \\l \"b1\"");
    EXPECT_EQ(document.Hidden("bkmkstart"), "b1");
    EXPECT_EQ(document.Count("bkmkstart"), 1);
}

Instance Rectangle(const std::string& bookmark, std::vector<Instance> children) {
    Instance rectangle;
    rectangle.kind = layout::InstanceKind::Container;
    rectangle.name = "Rectangle1";
    rectangle.bookmark = bookmark;
    rectangle.width = rectangle.height = 60;
    rectangle.children = std::move(children);
    return rectangle;
}

TEST(Rtf, TablesAndRectanglesHaveBookmarksToo) {
    Instance table = TableItem(Rows(2));
    table.bookmark = "here";
    Instance frame;
    frame.kind = InstanceKind::Container;
    frame.y = 50;
    frame.width = frame.height = 50;
    frame.bookmark = "there";
    frame.children.push_back(TextItem("x"));
    EXPECT_EQ(Document({table, frame}).Count("bkmkstart"), 2);
}

TEST(Rtf, RectanglesWithinOthersHaveBookmarksToo) {
    Instance inner = Rectangle("inner", {TextItem("x", 0, 5)}), empty = Rectangle("empty", {});
    empty.y = 20;
    EXPECT_THAT(Rtf(SampleReport({Rectangle("outer", {inner, empty, TextItem("y", 0, 40)})})),
                AllOf(HasSubstr("{\\*\\bkmkstart b1}"), HasSubstr("{\\*\\bkmkstart b2}"),
                      HasSubstr("{\\*\\bkmkstart b3}")));
}

TEST(Rtf, MessageOfATableWithoutRowsHasItsLetters) {
    auto table = Rows(0);
    table->noRowsMessage = "Nothing";
    auto textStyle = std::make_shared<layout::CharStyle>();
    textStyle->bold = true;
    table->noRowsStyle = textStyle;
    EXPECT_THAT(Rtf(SampleReport({TableItem(table)})), HasSubstr("\\b\\cf1 Nothing\\par"));
}

TEST(Rtf, PaperIsAsWideAsItsContentNeeds) {
    auto table = Rows(2);
    table->columnWidths = {300, 400};
    const auto report = SampleReport({TableItem(table, 20)});
    layout::PageSetup& page = report->sections[0]->page;
    page.width = 595;
    page.marginLeft = page.marginRight = 50;
    EXPECT_THAT(Rtf(report), AllOf(HasSubstr("\\paperw16400"), HasSubstr("\\pgwsxn16400")));
    table->columnWidths = {1000, 1000};  // past the widest paper of word processors
    EXPECT_THAT(Rtf(report), HasSubstr("\\paperw31680"));
    table->columnWidths = {200, 200};
    EXPECT_THAT(Rtf(report), HasSubstr("\\paperw11900"));
}

TEST(Rtf, TablesRepeatTheirHeading) {
    const RtfDocument document = Document({TableItem(Rows(3), 10)});
    ASSERT_EQ(document.rows.size(), 3u);
    EXPECT_THAT(document.rows[0].texts, ElementsAre("Name", "Sum"));
    EXPECT_THAT(document.rows[2].texts, ElementsAre("Row 2", "1"));
    EXPECT_THAT(document.rows[2].edges, ElementsAre(1800, 3000));
    EXPECT_TRUE(document.rows[0].heading);
    EXPECT_FALSE(document.rows[1].heading);
    EXPECT_EQ(document.Count("trleft200"), 3);
}

TEST(Rtf, HeightsAreExactUnlessTextMayGrow) {
    auto table = Rows(3);
    const auto make = table->make;
    table->make = [make](std::size_t i, TableRow& row) {
        make(i, row);
        row.cells[0].content.height = row.cells[1].content.height = row.height;
        row.cells[0].content.canGrow = i >= 1;
        row.cells[0].content.paragraphs[0].runs[0].text = i < 2 ? "text" : "";
    };
    const RtfDocument document = Document({TableItem(table)});
    EXPECT_EQ(document.rows.at(0).height, -300);
    EXPECT_EQ(document.rows.at(1).height, 300);
    EXPECT_EQ(document.rows.at(2).height, 300);  // room for a line
}

TEST(Rtf, PagesBreakBeforeRowsAndHeadingsAreThereAgain) {
    auto table = Rows(4);
    const auto make = table->make;
    table->make = [make](std::size_t i, TableRow& row) {
        make(i, row);
        row.breakBefore = i == 2;
    };
    const RtfDocument document = Document({TableItem(table)});
    EXPECT_EQ(document.Count("pagebb"), 1);
    ASSERT_EQ(document.rows.size(), 5u);
    EXPECT_EQ(document.rows[2].texts[0], "Name");
    EXPECT_TRUE(document.rows[2].heading);
    EXPECT_EQ(document.rows[3].texts[0], "Row 2");
}

TEST(Rtf, CellsOverSeveralRowsAreMerged) {
    auto table = std::make_shared<SampleTable>();
    table->columnWidths = {80, 60, 20};
    table->rows = 4;
    table->make = [](std::size_t i, TableRow& row) {
        if (i % 2 == 0) {
            AddCell(row, TextItem("group"), 1, 2);
        }
        AddCell(row, TextItem("detail " + std::to_string(i)), 2);
        row.cells.back().column = 1;
        row.breakBefore = i == 3;
    };
    const RtfDocument document = Document({TableItem(table)});
    ASSERT_EQ(document.rows.size(), 4u);
    EXPECT_THAT(document.rows[0].merges, ElementsAre("clvmgf", ""));
    EXPECT_THAT(document.rows[1].merges, ElementsAre("clvmrg", ""));
    EXPECT_THAT(document.rows[1].texts, ElementsAre("", "detail 1"));
    EXPECT_THAT(document.rows[0].edges, ElementsAre(1600, 3200));
    EXPECT_THAT(document.rows[3].merges, ElementsAre("clvmgf", ""));  // starts again on its page
}

TEST(Rtf, PlacesThatNoCellCoversAreEmptyCells) {
    auto table = std::make_shared<SampleTable>();
    table->columnWidths = {10, 20, 30};
    table->rows = 1;
    table->make = [](std::size_t, TableRow& row) {
        AddCell(row, TextItem("x"));
        row.cells[0].column = 1;
    };
    const RtfDocument document = Document({TableItem(table)});
    EXPECT_THAT(document.rows.at(0).texts, ElementsAre("", "x", ""));
}

TEST(Rtf, BordersAndBackgroundsAreTheCells) {
    Instance item = TextItem("x");
    layout::BoxStyle box;
    box.top = {layout::LineStyle::Dashed, 0xFFFF0000, 1.5F};
    box.right = {layout::LineStyle::Solid, 0xFFFF0000, 1};
    box.background = 0xFF00FF00;
    box.vAlign = layout::VAlign::Bottom;
    item.box = std::make_shared<const layout::BoxStyle>(box);
    const std::string rtf = Rtf(SampleReport({item}));
    EXPECT_THAT(rtf, HasSubstr("\\clbrdrt\\brdrdash\\brdrw30\\brdrcf1\\clbrdrr\\brdrs\\brdrw20\\brdrcf1"));
    EXPECT_THAT(rtf, HasSubstr("\\clvertalb\\clcbpat2"));
    EXPECT_THAT(rtf, HasSubstr("{\\colortbl;\\red255\\green0\\blue0;\\red0\\green255\\blue0;"));
}

TEST(Rtf, ItemsBesideEachOtherShareRows) {
    const RtfDocument document =
        Document({TextItem("tall", 0, 0, 100, 40), TextItem("upper", 120, 0, 100, 20),
                  TextItem("lower", 120.3, 20, 100, 20)});
    ASSERT_EQ(document.rows.size(), 2u);
    EXPECT_THAT(document.rows[0].texts, ElementsAre("tall", "", "upper"));
    EXPECT_THAT(document.rows[0].merges, ElementsAre("clvmgf", "", ""));
    EXPECT_THAT(document.rows[1].texts, ElementsAre("", "", "lower"));
    EXPECT_THAT(document.rows[1].merges, ElementsAre("clvmrg", "", ""));
    EXPECT_EQ(document.rows[0].edges[1], 2400);
}

TEST(Rtf, OverlappingItemsAreAllThere) {
    const RtfDocument document = Document({TextItem("one"), TextItem("two"), TextItem("three", 50, 0, 100)});
    EXPECT_THAT(document.rows.at(0).texts, ElementsAre("one|two", "three"));
}

TEST(Rtf, RectanglesBecomeTheLookOfTheirCells) {
    Instance frame;
    frame.kind = InstanceKind::Container;
    frame.x = 10;
    frame.width = 100;
    frame.height = 50;
    layout::BoxStyle box;
    box.background = 0xFF0000FF;
    box.left = {layout::LineStyle::Solid, layout::Black, 1};
    frame.box = std::make_shared<const layout::BoxStyle>(box);
    frame.children.push_back(TextItem("inner", 20, 10, 40, 20));
    const RtfDocument document = Document({frame});
    ASSERT_EQ(document.rows.size(), 3u);
    EXPECT_THAT(document.rows[1].texts, ElementsAre("", "inner", ""));
    EXPECT_THAT(document.rows[1].edges, ElementsAre(600, 1400, 2200));
    EXPECT_EQ(document.Count("clbrdrl"), 3);
    EXPECT_EQ(document.Count("clcbpat2"), 7);  // one beside another like it is one cell
}

TEST(Rtf, LinesAreBordersWithoutCellsOfTheirOwn) {
    Instance line;
    line.kind = InstanceKind::Line;
    line.width = 200;
    line.y = 30;
    layout::BoxStyle box;
    box.top = {layout::LineStyle::Solid, layout::Black, 2};
    line.box = std::make_shared<const layout::BoxStyle>(box);
    const RtfDocument alone = Document({line});
    ASSERT_EQ(alone.rows.size(), 1u);
    EXPECT_EQ(alone.Count("clbrdrt"), 1);
    Instance upright = line;
    upright.width = 0;
    upright.x = 50;
    upright.y = 0;
    upright.height = 12;
    const RtfDocument beside = Document({TextItem("a", 0, 0, 50), TextItem("b", 50, 0, 50), upright});
    EXPECT_THAT(beside.rows.at(0).texts, ElementsAre("a", "b"));
    EXPECT_EQ(beside.Count("clbrdrl"), 1);
}

TEST(Rtf, TablesBesideTextAreNested) {
    Instance beside = TextItem("beside", 200, 0, 100, 30);
    const RtfDocument document = Document({TableItem(Rows(2)), beside});
    ASSERT_EQ(document.rows.size(), 1u);
    EXPECT_THAT(document.rows[0].texts, ElementsAre("Name|Sum|Row 1|1|", "", "beside"));
    EXPECT_EQ(document.Count("nestrow"), 2);
}

TEST(Rtf, DrawingsAreAnErrorThatNamesThem) {
    Instance chart;
    chart.kind = InstanceKind::Drawing;
    chart.name = "Chart1";
    chart.width = chart.height = 10;
    EXPECT_THAT(ErrorRaisedBy([&] { Rtf(SampleReport({chart})); }), HasSubstr("\"Chart1\""));
}

TEST(Rtf, MoreCellsThanARowMayHaveAreAnError) {
    std::vector<Instance> items;
    for (int i = 0; i < 70; ++i) {
        items.push_back(TextItem("x", i * 10.0, 0, 10));
    }
    items.front().name = "First";
    EXPECT_THAT(ErrorRaisedBy([&] { Rtf(SampleReport(items)); }), HasSubstr("\"First\""));
}

TEST(Rtf, NestingHasAnEnd) {
    Instance inner = TextItem("x");
    for (int i = 0; i < 200; ++i) {
        Instance outer;
        outer.kind = InstanceKind::Container;
        outer.children.push_back(inner);
        inner = outer;
    }
    EXPECT_THROW(Rtf(SampleReport({inner})), Error);
}

TEST(Rtf, PlacesThatAreNoNumbersAreBounded) {
    Instance item = TextItem("x", std::numeric_limits<double>::quiet_NaN(), 0,
                             std::numeric_limits<double>::infinity(), 1e300);
    EXPECT_THAT(Document({item}).rows.at(0).texts, ElementsAre("x"));
}

TEST(Rtf, IsTheSameEveryTime) {
    EXPECT_EQ(Rtf(SampleReport({TableItem(Rows(20))})), Rtf(SampleReport({TableItem(Rows(20))})));
}

TEST(Rtf, SeeThroughColoursAreThoseThatTheyMakeOnPaper) {
    const auto table = [](layout::Color color) {
        Instance item = TextItem("x");
        layout::CharStyle style;
        style.color = color;
        item.paragraphs[0].runs[0].style = std::make_shared<const layout::CharStyle>(style);
        const std::string rtf = Rtf(SampleReport({item}));
        const std::size_t at = rtf.find("{\\colortbl;") + 11;
        return rtf.substr(at, rtf.find('}', at) - at);
    };
    EXPECT_EQ(table(0xFF102030), "\\red16\\green32\\blue48;");
    EXPECT_EQ(table(0x80FF0000), "\\red255\\green127\\blue127;");
    EXPECT_EQ(table(0x01000000), "\\red254\\green254\\blue254;");
}

TEST(Rtf, IndentsOfEachSideAddUp) {
    Instance item = TextItem("x");
    layout::BoxStyle box;
    box.paddingRight = 2;
    box.paddingBottom = 3;
    item.box = std::make_shared<const layout::BoxStyle>(box);
    item.paragraphs[0].rightIndent = 10;
    item.paragraphs[0].spaceAfter = 1;
    const RtfDocument document = Document({item});
    EXPECT_EQ(document.Count("ri240"), 1);
    EXPECT_EQ(document.Count("sa80"), 1);
}

}  // namespace
}  // namespace rdl::writers
