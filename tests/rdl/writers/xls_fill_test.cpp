// SPDX-License-Identifier: GPL-3.0-or-later
// The backgrounds of items that hold others, and texts with less room than they asked for.
#include <gtest/gtest.h>

#include <QImage>

#include "rdl/image_bytes.h"
#include "rdl/writers/sample_report.h"
#include "rdl/writers/xls_kit.h"

namespace rdl::writers {
namespace {

using namespace test;
using layout::Instance;
using layout::InstanceKind;
using layout::TableRow;

layout::BoxStylePtr Background(layout::Color color) {
    auto box = std::make_shared<layout::BoxStyle>();
    box->background = color;
    return box;
}

Instance Container(double x, double y, double width, double height, layout::Color color,
                   std::vector<Instance> children) {
    Instance item;
    item.kind = InstanceKind::Container;
    item.name = "Frame";
    item.x = x;
    item.y = y;
    item.width = width;
    item.height = height;
    item.box = Background(color);
    item.children = std::move(children);
    return item;
}

// The colours of all cells, row by row: red, green and blue in hexadecimal, - for none.
std::string Colors(const std::string& workbook) {
    return Ask(workbook,
               "def c(r, k):\n"
               "    if k >= s.row_len(r): return '-'\n"
               "    f = b.xf_list[s.cell_xf_index(r, k)].background\n"
               "    m = b.colour_map.get(f.pattern_colour_index)\n"
               "    return '%02x%02x%02x' % m if f.fill_pattern and m else '-'\n"
               "for r in range(s.nrows): print(' '.join(c(r, k) for k in range(s.ncols)))");
}

constexpr layout::Color Yellow = 0xFFFFFF00, Green = 0xFF008040, Blue = 0xFF123456;

class XlsFills : public testing::Test {
 protected:
    void SetUp() override {
        if (!HasReader()) {
            GTEST_SKIP() << "no reader of workbooks";
        }
    }
};

TEST_F(XlsFills, CellsAndGapsOfAContainerHaveItsBackground) {
    // A title on the left, a gap, a number on the right.
    const auto report = SampleReport({Container(
        0, 0, 300, 30, Green, {TextItem("Title", 0, 0, 100, 12), TextItem("1", 200, 0, 100, 12)})});
    EXPECT_EQ(Colors(Workbook(report)), "008040 008040 008040\n");
}

TEST_F(XlsFills, AnItemsOwnBackgroundLiesAbove) {
    Instance own = TextItem("Own", 100, 0, 100, 12);
    own.box = Background(Blue);
    const auto report = SampleReport(
        {Container(0, 0, 300, 12, Yellow, {TextItem("A"), std::move(own), TextItem("C", 200, 0, 100, 12)})});
    EXPECT_EQ(Colors(Workbook(report)), "ffff00 123456 ffff00\n");
}

TEST_F(XlsFills, AContainerInAContainerLiesAboveAndEnds) {
    const auto report = SampleReport(
        {Container(0, 0, 200, 40, Yellow,
                   {Container(0, 0, 100, 12, Blue, {TextItem("A")}), TextItem("B", 0, 20, 100, 12)})});
    EXPECT_EQ(Colors(Workbook(report)), "123456 ffff00\nffff00 ffff00\nffff00 ffff00\n");
}

layout::BoxStylePtr Framed() {
    auto box = std::make_shared<layout::BoxStyle>();
    layout::Border line;
    line.style = layout::LineStyle::Solid;
    line.width = 1;
    box->left = box->right = box->top = box->bottom = line;
    return box;
}

// The lines around all cells, row by row: l, t, r and b, - for none.
std::string Lines(const std::string& workbook, int sheet = 0) {
    return Ask(workbook, "s = b.sheet_by_index(" + std::to_string(sheet) +
                             ")\n"
                             "def c(r, k):\n"
                             "    if k >= s.row_len(r): return '-'\n"
                             "    f = b.xf_list[s.cell_xf_index(r, k)].border\n"
                             "    return ''.join(n for n, w in (('l', f.left_line_style), ('t', "
                             "f.top_line_style), ('r', f.right_line_style), ('b', f.bottom_line_style)) if "
                             "w) or '-'\n"
                             "for r in range(s.nrows): print(' '.join(c(r, k) for k in range(s.ncols)))");
}

// Rows are written as soon as they are complete: the last line is above the row below.
TEST_F(XlsFills, ARectangleHasItsFrame) {
    Instance frame = Container(
        0, 0, 300, 60, 0,
        {TextItem("A", 0, 0, 100, 12), TextItem("B", 200, 20, 100, 12), TextItem("C", 100, 48, 100, 12)});
    frame.box = Framed();
    EXPECT_EQ(Lines(Workbook(SampleReport({frame}))), "lt t tr\nl - r\nl - r\nl - r\nl - r\nt t t\n");
}

TEST_F(XlsFills, ACellsOwnLinesLieAboveTheFrame) {
    Instance own = TextItem("A");
    auto box = std::make_shared<layout::BoxStyle>();
    box->top.style = layout::LineStyle::Double;
    box->top.width = 3;
    own.box = box;
    Instance frame = Container(0, 0, 100, 12, 0, {own});
    frame.box = Framed();
    EXPECT_EQ(Ask(Workbook(SampleReport({frame})),
                  "f = b.xf_list[s.cell_xf_index(0, 0)].border\nprint(f.top_line_style, f.left_line_style)"),
              "6 1\n");
}

TEST_F(XlsFills, AFrameInARowIsAsHighAsTheRow) {
    auto table = std::make_shared<SampleTable>();
    table->columnWidths = {80, 60};
    table->rows = 1;
    table->make = [](std::size_t, TableRow& row) {
        Instance low = Container(0, 0, 80, 40, 0, {TextItem("A", 0, 0, 80, 12)});
        Instance high =
            Container(0, 0, 60, 40, 0, {TextItem("B", 0, 0, 60, 12), TextItem("C", 0, 12, 60, 12)});
        low.box = high.box = Framed();
        AddCell(row, std::move(low));
        AddCell(row, std::move(high));
    };
    EXPECT_EQ(Lines(Workbook(SampleReport({TableItem(table)}))), "ltr ltr\nlrb lrb\n");
}

Instance Picture(double x, double y, double width, double height) {
    Instance item = Container(x, y, width, height, 0, {});
    item.kind = InstanceKind::Image;
    item.name = "Picture";
    item.imageBytes = std::make_shared<const std::string>(FileOf(QImage(4, 4, QImage::Format_RGB32), "PNG"));
    item.mimeType = "image/png";
    item.box = Framed();
    return item;
}

TEST_F(XlsFills, APictureHasItsFrameAndBackground) {
    EXPECT_EQ(Lines(Workbook(SampleReport({Picture(0, 0, 100, 60)}))), "ltrb\n");
    Instance colored = Picture(0, 0, 100, 60);
    colored.box = Background(Yellow);
    EXPECT_EQ(Colors(Workbook(SampleReport({colored}))), "ffff00\n");
}

TEST_F(XlsFills, APictureBesideTextsHasItsFrameAroundAllTheirRows) {
    EXPECT_EQ(Lines(Workbook(SampleReport({Picture(0, 0, 100, 40), TextItem("A", 100, 0, 50, 20),
                                           TextItem("B", 100, 20, 50, 20), TextItem("C", 0, 40, 50, 20)}))),
              "lt tr -\nlb rb -\n- - -\n");
}

TEST_F(XlsFills, ARectangleBesideSeveralRowsOfATableIsAsHighAsThey) {
    Instance low = Container(200, 0, 60, 45, 0, {TextItem("A", 0, 0, 60, 12)});
    low.box = Framed();
    Instance table = TableItem(NumberedRows(4));
    table.height = 45;
    EXPECT_EQ(Lines(Workbook(SampleReport({table, low, TextItem("B", 0, 80, 80)}))),
              "- - - ltr\n- - - lr\n- - - lr\n- - - lrb\n- - - -\n- - - -\n");
}

TEST_F(XlsFills, ATablesFrameGoesOnInFurtherSheetsAndEndsBelowIt) {
    auto table = std::make_shared<SampleTable>();
    table->columnWidths = {80};
    table->rows = 3;
    table->make = [](std::size_t i, TableRow& row) {
        row.breakBefore = i == 1;
        AddCell(row, TextItem("A"));
    };
    Instance item = TableItem(table);
    item.box = Framed();
    item.width = 80;
    const std::string workbook = Workbook(SampleReport({item}));
    EXPECT_EQ(Lines(workbook), "ltr\n");
    EXPECT_EQ(Lines(workbook, 1), "lr\nlr\nt\n");
}

TEST_F(XlsFills, WhatIsBelowHasNone) {
    const auto report =
        SampleReport({Container(0, 0, 100, 12, Yellow, {TextItem("A")}), TextItem("B", 0, 12, 100, 12)});
    EXPECT_EQ(Colors(Workbook(report)), "ffff00\n-\n");
}

TEST_F(XlsFills, ATablesBackgroundGoesOnInFurtherSheets) {
    auto table = std::make_shared<SampleTable>();
    table->columnWidths = {80, 60};
    table->rows = 2;
    table->make = [](std::size_t i, TableRow& row) {
        row.breakBefore = i == 1;
        AddCell(row, TextItem("A"));  // and nothing in the second column
    };
    Instance item = TableItem(table);
    item.box = Background(Yellow);
    item.width = 140;
    const std::string workbook = Workbook(SampleReport({item}));
    EXPECT_EQ(Colors(workbook), "ffff00 ffff00\n");
    EXPECT_EQ(Ask(workbook,
                  "s = b.sheet_by_index(1)\n"
                  "print([b.xf_list[s.cell_xf_index(0, k)].background.fill_pattern for k in range(2)])"),
              "[1, 1]\n");
}

TEST_F(XlsFills, TheBodysBackgroundIsBehindEverything) {
    auto report = SampleReport({TextItem("A", 0, 0, 100, 12)});
    report->sections.front()->bodyStyle = Background(Green);
    report->sections.front()->bodyWidth = 200;
    EXPECT_EQ(Colors(Workbook(report)), "008040 008040\n");
}

TEST_F(XlsFills, AWordThatLostItsRoomToAnotherItemIsNotBroken) {
    Instance wide = TextItem("Telephone", 0, 0, 100, 12);
    wide.canGrow = true;
    // The second item covers all but the first ten points.
    const auto report = SampleReport({TextItem("x", 10, 0, 90, 12), std::move(wide)});
    const std::string wraps =
        "for k in range(s.ncols):\n"
        "    if s.cell_value(0, k) == 'Telephone': print(b.xf_list[s.cell_xf_index(0, "
        "k)].alignment.text_wrapped)";
    EXPECT_EQ(Ask(Workbook(report), wraps), "0\n");
}

TEST_F(XlsFills, ATextWithTheRoomItAskedForWraps) {
    Instance wide = TextItem("Telephone and address", 0, 0, 60, 12);
    wide.canGrow = true;
    EXPECT_EQ(Ask(Workbook(SampleReport({std::move(wide)})),
                  "print(b.xf_list[s.cell_xf_index(0, 0)].alignment.text_wrapped)"),
              "1\n");
}

// Where the texts of a sheet begin and end, in points from its top.
std::string Places(const std::string& workbook) {
    return Ask(workbook,
               "def h(r): return s.rowinfo_map[r].height / 20 if r in s.rowinfo_map else 12.75\n"
               "def y(r): return round(sum(h(k) for k in range(r)))\n"
               "m = {(a, c): b for a, b, c, d in s.merged_cells}\n"
               "for r in range(s.nrows):\n"
               "    for c in range(s.row_len(r)):\n"
               "        if s.cell_value(r, c): print(s.cell_value(r, c), y(r), y(m.get((r, c), r + 1)))");
}

Instance Three(double x, layout::Color color) {
    return Container(
        x, 0, 150, 90, color,
        {TextItem("one", 0, 0, 100, 20), TextItem("two", 0, 30, 100, 20), TextItem("three", 0, 60, 100, 20)});
}

// What is in a rectangle is as far down as it is, whatever is beside the rectangle.
TEST_F(XlsFills, ItemsInARectangleBesideATallOneStayWhereTheyAre) {
    EXPECT_EQ(Places(Workbook(SampleReport({Three(0, 0), TextItem("box", 200, 0, 100, 60)}))),
              "one 0 20\nbox 0 60\ntwo 30 50\nthree 60 80\n");
    EXPECT_EQ(Places(Workbook(SampleReport(
                  {Three(0, 0), Container(200, 0, 100, 90, 0,
                                          {TextItem("a", 0, 15, 50, 15), TextItem("b", 0, 45, 50, 15)})}))),
              "one 0 20\na 15 30\ntwo 30 50\nb 45 60\nthree 60 80\n");
}

TEST_F(XlsFills, RectanglesBesideATallItemHaveTheirFillsInEachOther) {
    Instance outer = Three(0, Yellow);
    outer.children.push_back(Container(100, 30, 50, 30, Blue, {TextItem("in", 0, 0, 50, 30)}));
    const std::string workbook = Workbook(SampleReport({outer, TextItem("box", 150, 0, 100, 60)}));
    EXPECT_EQ(Colors(workbook),
              "ffff00 ffff00 -\nffff00 ffff00 -\nffff00 123456 -\nffff00 123456 -\nffff00 ffff00 -\n"
              "ffff00 ffff00 -\n");
}

TEST_F(XlsFills, AnUprightLineBesideOthersRunsAlongTheirRows) {
    Instance line = TextItem("", 120, 0, 0, 90);
    line.kind = InstanceKind::Line;
    line.paragraphs.clear();
    line.box = Framed();
    const std::string workbook =
        Workbook(SampleReport({Three(0, 0), line, TextItem("box", 200, 0, 100, 60)}));
    EXPECT_EQ(Places(workbook), "one 0 20\nbox 0 60\ntwo 30 50\nthree 60 80\n");
    EXPECT_EQ(Lines(workbook), "- - l - -\n- - l - -\n- - l - -\n- - l - -\n- - l - -\n- - l - -\n");
}

}  // namespace
}  // namespace rdl::writers
