// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "rdl/format/format.h"
#include "rdl/raises.h"
#include "rdl/values/error.h"
#include "rdl/writers/sample_report.h"
#include "rdl/writers/xls_kit.h"

namespace rdl::writers {
namespace {

using namespace test;
using layout::Instance;
using layout::TableRow;

std::shared_ptr<SampleTable> Rows(std::size_t count) {
    auto table = std::make_shared<SampleTable>();
    table->columnWidths = {80, 60, 60};
    table->rows = count;
    table->make = [](std::size_t i, TableRow& row) {
        if (i == 0) {
            row.columnHeader = true;
            for (const char* name : {"Name", "Amount", "Day"}) {
                AddCell(row, TextItem(name));
            }
            return;
        }
        AddCell(row, TextItem("Row " + std::to_string(i)));
        AddCell(row, ValueItem(Value::Real(1.5 * static_cast<double>(i)), "x", "#,##0.00"));
        AddCell(row, ValueItem(Value::DateTime(MakeTicks(2024, 1, 31)), "x", "yyyy-MM-dd"));
    };
    table->repeated = {0};
    return table;
}

TEST(Xls, IsACompoundFileTheSameEveryTime) {
    const std::string one = Workbook(SampleReport({TableItem(Rows(50))}));
    EXPECT_EQ(one.substr(0, 8), "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1");
    EXPECT_EQ(one, Workbook(SampleReport({TableItem(Rows(50))})));
}

TEST(Xls, NumbersAndDatesAreTyped) {
    if (!HasReader()) {
        GTEST_SKIP();
    }
    EXPECT_EQ(Ask(Workbook(SampleReport({TableItem(Rows(3))})),
                  "print(s.cell_value(0,0), s.cell(1,1).ctype, s.cell_value(1,1), s.cell(1,2).ctype, "
                  "s.cell_value(1,2))\n"
                  "f = lambda r, c: b.format_map[b.xf_list[s.cell_xf_index(r, c)].format_key].format_str\n"
                  "print(f(1,1), f(1,2))"),
              "Name 2 1.5 3 45322.0\n#,##0.00 yyyy-mm-dd\n");
}

TEST(Xls, DecimalsAreNumbersUnlessTheyHaveTooManyDigits) {
    if (!HasReader()) {
        GTEST_SKIP();
    }
    auto table = std::make_shared<SampleTable>();
    table->columnWidths = {80};
    table->rows = 3;
    table->make = [](std::size_t i, TableRow& row) {
        const char* const texts[] = {"-1234.50", "0.3333333333333333333333333333", "1234567890123456.25"};
        AddCell(row, ValueItem(Value::Decimal(Decimal::OfText(texts[i]).value()), texts[i], "0.00"));
    };
    EXPECT_EQ(Ask(Workbook(SampleReport({TableItem(table)})),
                  "print([(s.cell(r, 0).ctype, s.cell_value(r, 0)) for r in range(3)])"),
              "[(2, -1234.5), (2, 0.3333333333333333), (1, '1234567890123456.25')]\n");
}

TEST(Xls, PastTheFormatsOfAWorkbookDatesStayDates) {
    if (!HasReader()) {
        GTEST_SKIP();
    }
    auto table = std::make_shared<SampleTable>();
    table->columnWidths = {80};
    table->rows = 8 * 8 * 8 * 8 + 1;
    table->make = [](std::size_t i, TableRow& row) {
        auto item =
            ValueItem(Value::DateTime(MakeTicks(2024, 1, 31)), "x", i % 2 == 0 ? "yyyy-MM-dd" : "dd.MM.yyyy");
        auto box = std::make_shared<layout::BoxStyle>();
        constexpr float Widths[] = {0.25F, 1, 1.5F, 3};
        std::size_t digits = i;
        for (layout::Border* border : {&box->left, &box->right, &box->top, &box->bottom}) {
            border->style = digits % 8 < 4 ? layout::LineStyle::Solid : layout::LineStyle::Dashed;
            border->width = Widths[digits % 4];
            border->style = digits % 8 == 7 ? layout::LineStyle::Double : border->style;
            border->style = digits % 8 == 4 ? layout::LineStyle::Dotted : border->style;
            border->style = digits % 8 == 5 ? layout::LineStyle::DashDot : border->style;
            digits /= 8;
        }
        item.box = box;
        AddCell(row, item);
    };
    EXPECT_EQ(Ask(Workbook(SampleReport({TableItem(table)})),
                  "print({s.cell(i, 0).ctype for i in range(s.nrows)}, s.nrows, len(b.xf_list) < 4050)\n"
                  "f = lambda r: b.format_map[b.xf_list[s.cell_xf_index(r, 0)].format_key].format_str\n"
                  "print(f(4096), f(4095))"),
              "{3} 4097 True\nyyyy-mm-dd dd.mm.yyyy\n");
}

TEST(Xls, TextThatLooksLikeAFormulaStaysText) {
    if (!HasReader()) {
        GTEST_SKIP();
    }
    EXPECT_EQ(Ask(Workbook(SampleReport({TextItem("=1+1"), TextItem("12", 0, 20)})),
                  "print(s.cell(0,0).ctype, s.cell_value(0,0)); print(s.cell(2,0).ctype, s.cell_value(2,0))"),
              "1 =1+1\n1 12\n");
}

TEST(Xls, LongTextsGoOnInFurtherRecords) {
    if (!HasReader()) {
        GTEST_SKIP();
    }
    auto table = std::make_shared<SampleTable>();
    table->columnWidths = {80};
    table->rows = 300;
    table->make = [](std::size_t i, TableRow& row) {
        const std::string unit = i % 3 == 0 ? "ab" : i % 3 == 1 ? "\u00E9" : "\u20AC\U0001F600";
        std::string text = std::to_string(i);
        for (std::size_t k = 0; k < i * 7; ++k) {
            text += unit;
        }
        AddCell(row, TextItem(text));
    };
    EXPECT_EQ(
        Ask(Workbook(SampleReport({TableItem(table)})),
            "u = ['ab', chr(0xe9), chr(0x20ac) + chr(0x1f600)]\n"
            "print(all(s.cell_value(i, 0) == str(i) + u[i % 3] * (i * 7) for i in range(300)), s.nrows)"),
        "True 300\n");
}

TEST(Xls, MoreRowsThanASheetHoldsGoOnWithTheirHeading) {
    if (!HasReader()) {
        GTEST_SKIP();
    }
    auto table = std::make_shared<SampleTable>();
    table->columnWidths = {80};
    table->rows = 66'000;
    table->repeated = {0};
    table->make = [](std::size_t i, TableRow& row) {
        row.columnHeader = i == 0;
        AddCell(row, ValueItem(Value::Integer(static_cast<std::int64_t>(i)), "x", ""));
    };
    EXPECT_EQ(Ask(Workbook(SampleReport({TableItem(table)})),
                  "t = b.sheet_by_index(1)\n"
                  "print(b.nsheets, b.sheet_names(), s.nrows + t.nrows, t.cell_value(0, 0), t.cell_value(1, "
                  "0) == s.nrows)"),
              "2 ['Sales', 'Sales (2)'] 66001 0.0 True\n");
}

TEST(Xls, PageBreaksBeginSheetsNamedByPage) {
    if (!HasReader()) {
        GTEST_SKIP();
    }
    auto table = Rows(5);
    const auto make = table->make;
    table->make = [make](std::size_t i, TableRow& row) {
        make(i, row);
        row.breakBefore = i == 3;
        row.pageName = i < 3 ? "North" : "So/uth:a very long name of a page that does not fit";
    };
    EXPECT_EQ(Ask(Workbook(SampleReport({TableItem(table)})),
                  "print(b.sheet_names(), s.nrows, b.sheet_by_index(1).col_values(0))"),
              "['North', 'So_uth_a very long name of a pa'] 3 ['Name', 'Row 3', 'Row 4']\n");
}

// A number distinguishes equal names, also where another page has that name already.
TEST(Xls, PagesOfOneNameAreNumberedInOrder) {
    if (!HasReader()) {
        GTEST_SKIP();
    }
    auto table = Rows(2001);
    const auto make = table->make;
    table->make = [make](std::size_t i, TableRow& row) {
        make(i, row);
        row.breakBefore = i > 0;
        row.pageName = i == 2 ? "Shop (3)" : i % 2 == 0 ? "Shop" : "SHOP";
    };
    EXPECT_EQ(Ask(Workbook(SampleReport({TableItem(table)})),
                  "n = b.sheet_names()\nprint(len(n), len(set(x.lower() for x in n)), n[:5], n[-1])"),
              "2001 2001 ['Shop', 'SHOP (2)', 'Shop (3)', 'SHOP (4)', 'Shop (5)'] Shop (2001)\n");
}

TEST(Xls, BookmarksLeadToTheirCell) {
    if (!HasReader()) {
        GTEST_SKIP();
    }
    Instance from = TextItem("from"), lost = TextItem("lost", 0, 20), to = TextItem("to", 0, 40);
    from.bookmarkLink = to.bookmark = "a \u00FC b";
    lost.bookmarkLink = "nowhere";
    to.breakBefore = true;
    EXPECT_EQ(Ask(Workbook(SampleReport({from, lost, to})),
                  "print([(h.frowx, h.fcolx, h.type, h.textmark) for h in s.hyperlink_list])\n"
                  "n = b.name_map['bookmark_1'][0]\nsheet, row, column = n.area2d()[0], n.area2d()[1], "
                  "n.area2d()[3]\n"
                  "print(sheet.number, row, column, sheet.cell_value(row, column))"),
              "[(0, 0, 'workbook', 'Bookmark_1')]\n1 0 0 to\n");
}

TEST(Xls, TablesFromRightToLeftTurnTheirSheet) {
    if (!HasReader()) {
        GTEST_SKIP();
    }
    auto table = Rows(3);
    EXPECT_EQ(Ask(Workbook(SampleReport({TableItem(table)})), "print(s.columns_from_right_to_left)"), "0\n");
    table->rightToLeft = true;
    EXPECT_EQ(Ask(Workbook(SampleReport({TableItem(table)})), "print(s.columns_from_right_to_left)"), "1\n");
}

// Left, centre and right are 1 to 3 of a cell's horizontal places; top, middle and bottom 0 to 2.
TEST(Xls, PlacesInTurnedTextsTurnWithThem) {
    if (!HasReader()) {
        GTEST_SKIP();
    }
    const auto places = [](layout::WritingMode mode, layout::HAlign along, layout::VAlign across) {
        Instance item = TextItem("x");
        layout::BoxStyle box;
        box.writingMode = mode;
        box.vAlign = across;
        item.box = std::make_shared<const layout::BoxStyle>(box);
        item.paragraphs[0].align = along;
        return Ask(Workbook(SampleReport({item})),
                   "a = b.xf_list[s.cell_xf_index(0, 0)].alignment\n"
                   "print(a.hor_align, a.vert_align, a.rotation)");
    };
    using enum layout::WritingMode;
    using layout::HAlign, layout::VAlign;
    EXPECT_EQ(places(Horizontal, HAlign::Left, VAlign::Middle), "1 1 0\n");
    EXPECT_EQ(places(Vertical, HAlign::General, VAlign::Top), "3 0 180\n");
    EXPECT_EQ(places(Vertical, HAlign::Center, VAlign::Middle), "2 1 180\n");
    EXPECT_EQ(places(Vertical, HAlign::Right, VAlign::Bottom), "1 2 180\n");
    EXPECT_EQ(places(Rotate270, HAlign::Left, VAlign::Middle), "2 2 90\n");
    EXPECT_EQ(places(Rotate270, HAlign::Right, VAlign::Top), "1 0 90\n");
    EXPECT_EQ(places(Rotate270, HAlign::Center, VAlign::Bottom), "3 1 90\n");
}

// A program indents by about 8 points for each level, on the side at which the text begins.
TEST(Xls, WidePaddingIsAnIndent) {
    if (!HasReader()) {
        GTEST_SKIP();
    }
    const auto indent = [](float left, float right, layout::HAlign align) {
        Instance item = TextItem("x");
        layout::BoxStyle box;
        box.paddingLeft = left;
        box.paddingRight = right;
        item.box = std::make_shared<const layout::BoxStyle>(box);
        item.paragraphs[0].align = align;
        return Ask(Workbook(SampleReport({item})),
                   "a = b.xf_list[s.cell_xf_index(0, 0)].alignment\nprint(a.hor_align, a.indent_level)");
    };
    using layout::HAlign;
    EXPECT_EQ(indent(2, 2, HAlign::General), indent(0, 0, HAlign::General));
    EXPECT_EQ(indent(17, 2, HAlign::General), "1 2\n");
    EXPECT_EQ(indent(40, 2, HAlign::Left), "1 5\n");
    EXPECT_EQ(indent(900, 2, HAlign::Left), "1 15\n");
    EXPECT_EQ(indent(40, 2, HAlign::Right), "3 0\n");
    EXPECT_EQ(indent(2, 24, HAlign::Right), "3 3\n");
    EXPECT_EQ(indent(40, 40, HAlign::Center), "2 0\n");
}

TEST(Xls, ItemsThatBeginPagesNameTheirSheets) {
    if (!HasReader()) {
        GTEST_SKIP();
    }
    Instance first = TextItem("one"), second = TextItem("two", 0, 20), third = TextItem("three", 0, 40);
    first.pageName = "Start";
    second.breakBefore = third.breakBefore = true;
    second.pageName = "Middle";
    EXPECT_EQ(Ask(Workbook(SampleReport({first, second, third})), "print(b.sheet_names())"),
              "['Start', 'Middle', 'Middle (2)']\n");
}

TEST(Xls, ItemsBesideEachOtherShareRowsAndColumns) {
    if (!HasReader()) {
        GTEST_SKIP();
    }
    EXPECT_EQ(Ask(Workbook(SampleReport({TextItem("tall", 0, 0, 100, 40), TextItem("upper", 100, 0, 100, 20),
                                         TextItem("lower", 100.4, 20, 100, 20)},
                                        {TextItem("Page \xEE\x80\x80")})),
                  "print(s.col_values(0), s.col_values(1), s.merged_cells)"),
              "['Page 1', 'tall', ''] ['', 'upper', 'lower'] [(1, 3, 0, 1)]\n");
}

TEST(Xls, SpansOfRowsAreMerged) {
    if (!HasReader()) {
        GTEST_SKIP();
    }
    auto table = std::make_shared<SampleTable>();
    table->columnWidths = {50, 50};
    table->rows = 4;
    table->make = [](std::size_t i, TableRow& row) {
        if (i % 2 == 0) {
            AddCell(row, TextItem("group"), 1, 2);
        }
        AddCell(row, TextItem("detail " + std::to_string(i)));
        row.cells.back().column = 1;
    };
    EXPECT_EQ(Ask(Workbook(SampleReport({TableItem(table)})), "print(s.merged_cells, s.col_values(1))"),
              "[(0, 2, 0, 1), (2, 4, 0, 1)] ['detail 0', 'detail 1', 'detail 2', 'detail 3']\n");
}

TEST(Xls, RowsAreAsHighAsTheTextOfTheirMergedCells) {
    if (!HasReader()) {
        GTEST_SKIP();
    }
    auto table = std::make_shared<SampleTable>();
    table->columnWidths = {100, 100, 100};
    table->rows = 3;
    table->make = [](std::size_t i, TableRow& row) {
        row.canGrow = true;
        AddCell(row, TextItem("one\ntwo\nthree\nfour"), i == 0 ? 2 : 1);
        row.cells[0].content.canGrow = i < 2;
        AddCell(row, TextItem("edge"), i == 0 ? 1 : 2);
    };
    // Four lines of 10 points are more than 44 points high; rows without merged text are the programs' to
    // fit.
    EXPECT_EQ(Ask(Workbook(SampleReport({TableItem(table)})),
                  "for r in range(3): i = s.rowinfo_map[r]; print(i.height > 880, bool(i.height_mismatch))"),
              "True True\nTrue False\nFalse False\n");
}

TEST(Xls, PicturesKeepTheSizeThatTheirSizingGives) {
    Instance image;
    image.kind = layout::InstanceKind::Image;
    image.name = "Logo";
    image.width = 100;
    image.height = 50;
    image.imageBytes = std::make_shared<const std::string>(
        std::string("\x89PNG\r\n\x1A\n\0\0\0\x0DIHDR\0\0\0\x40\0\0\0\x40\x08\x02\0\0\0\0\0\0\0", 33));
    const auto anchorOf = [&image](Instance::Sizing sizing) {
        image.sizing = sizing;
        const std::string book = Workbook(SampleReport({image}));
        const std::size_t at = book.find(std::string("\x00\x00\x10\xF0\x12\x00\x00\x00\x02\x00", 10));
        return at == std::string::npos ? std::string() : book.substr(at + 18, 8);
    };
    // 64 pixels are 48 points: at their own size, and 50 points at the height of the box.
    EXPECT_EQ(anchorOf(Instance::Sizing::Fit), std::string("\x01\0\0\0\x01\0\0\0", 8));
    EXPECT_EQ(anchorOf(Instance::Sizing::FitProportional), std::string("\0\0\xFF\x01\x01\0\0\0", 8));
    EXPECT_EQ(anchorOf(Instance::Sizing::Clip), std::string("\0\0\xEB\x01\0\0\xF4\0", 8));
}

TEST(Xls, TheInitialPageNameNamesSheetsWithoutAnother) {
    if (!HasReader()) {
        GTEST_SKIP();
    }
    Instance second = TextItem("two", 0, 50);
    second.breakBefore = true;
    second.pageName = "Second";
    const auto report = SampleReport({TextItem("one"), second});
    report->pageName = "Start";
    EXPECT_EQ(Ask(Workbook(report), "print(b.sheet_names())"), "['Start', 'Second']\n");
}

TEST(Xls, OverlappingItemsAreBothThere) {
    if (!HasReader()) {
        GTEST_SKIP();
    }
    EXPECT_EQ(Ask(Workbook(SampleReport({TextItem("one"), TextItem("two")})), "print(s.row_values(0))"),
              "['one', 'two']\n");
}

TEST(Xls, PicturesAreInTheFileOnce) {
    std::string png = "\x89PNG\r\n\x1A\n";
    png += "not decoded by the writer, only carried";
    Instance image;
    image.kind = layout::InstanceKind::Image;
    image.name = "Logo";
    image.width = image.height = 50;
    image.imageBytes = std::make_shared<const std::string>(png);
    Instance second = image;
    second.y = 100;
    const std::string book = Workbook(SampleReport({image, second}));
    const std::size_t at = book.find(png);
    ASSERT_NE(at, std::string::npos);
    EXPECT_EQ(book.find(png, at + 1), std::string::npos);
    image.imageBytes = std::make_shared<const std::string>("<svg>");
    EXPECT_THROW(Workbook(SampleReport({image})), Error);
}

TEST(Xls, AGifBecomesAPng) {
    constexpr unsigned char RedPixel[] = {0x47, 0x49, 0x46, 0x38, 0x39, 0x61, 0x01, 0x00, 0x01,
                                          0x00, 0x80, 0x00, 0x00, 0xFF, 0x00, 0x00, 0x00, 0x00,
                                          0x00, 0x2C, 0x00, 0x00, 0x00, 0x00, 0x01, 0x00, 0x01,
                                          0x00, 0x00, 0x02, 0x02, 0x44, 0x01, 0x00, 0x3B};
    Instance image;
    image.kind = layout::InstanceKind::Image;
    image.name = "Logo";
    image.width = image.height = 50;
    image.imageBytes = std::make_shared<const std::string>(RedPixel, RedPixel + sizeof RedPixel);
    const std::string book = Workbook(SampleReport({image}));
    EXPECT_EQ(book.find("GIF89a"), std::string::npos);
    EXPECT_NE(book.find("\x89PNG\r\n\x1A\n"), std::string::npos);

    image.imageBytes = std::make_shared<const std::string>("GIF89a and nothing after it");
    const std::string error = ErrorRaisedBy([&] { Workbook(SampleReport({image})); });
    EXPECT_NE(error.find("Image \"Logo\""), std::string::npos) << error;
}

TEST(Xls, ATextLongerThanACellHoldsIsAnError) {
    std::string text(32767, 'x');
    EXPECT_NO_THROW(Workbook(SampleReport({TextItem(text)})));
    EXPECT_EQ(ErrorRaisedBy([&] { Workbook(SampleReport({TextItem(text + "y")})); }),
              "Text box \"Box\" has more than the 32,767 characters that a cell of an Excel workbook holds");
    std::string wide;  // counted in characters, not in bytes
    for (int i = 0; i < 32767; ++i) {
        wide += "\u00E9";
    }
    EXPECT_NO_THROW(Workbook(SampleReport({TextItem(wide)})));
}

TEST(Xls, MoreColumnsThanASheetHasAreAnError) {
    std::vector<Instance> items;
    for (int i = 0; i < 300; ++i) {
        items.push_back(TextItem("x", i * 10.0, 0, 10));
    }
    EXPECT_THROW(Workbook(SampleReport(items)), Error);
}

TEST(Xls, ColoursKeepTheirRedAndBlue) {
    if (!HasReader()) {
        GTEST_SKIP();
    }
    layout::Instance item = TextItem("x");
    layout::BoxStyle box;
    box.background = 0xFF102030;
    box.left = {layout::LineStyle::Solid, 0xFF405060, 1};
    box.right = {layout::LineStyle::Solid, 0xFF708090, 1};
    box.top = {layout::LineStyle::Solid, 0xFFA0B0C0, 1};
    box.bottom = {layout::LineStyle::Solid, 0xFFD0E0F0, 1};
    item.box = std::make_shared<const layout::BoxStyle>(box);
    layout::CharStyle textStyle;
    textStyle.color = 0xFF010203;
    item.paragraphs[0].runs[0].style = std::make_shared<const layout::CharStyle>(textStyle);
    EXPECT_EQ(Ask(Workbook(SampleReport({item})),
                  "x = b.xf_list[s.cell_xf_index(0, 0)]\nm = b.colour_map\n"
                  "print(m[x.background.pattern_colour_index], m[b.font_list[x.font_index].colour_index])\n"
                  "e = x.border\n"
                  "print(m[e.left_colour_index], m[e.right_colour_index])\n"
                  "print(m[e.top_colour_index], m[e.bottom_colour_index])"),
              "(16, 32, 48) (1, 2, 3)\n(64, 80, 96) (112, 128, 144)\n(160, 176, 192) (208, 224, 240)\n");
}

TEST(Xls, WholeNumbersOfAnySizeAreThemselves) {
    if (!HasReader()) {
        GTEST_SKIP();
    }
    static constexpr double Numbers[] = {536870910,  536870911,  536870912,   -536870911,
                                         -536870912, 1073741824, -1073741825, 9007199254740991};
    auto table = std::make_shared<SampleTable>();
    table->columnWidths = {80};
    table->rows = std::size(Numbers);
    table->make = [](std::size_t i, TableRow& row) {
        AddCell(row, ValueItem(Value::Real(Numbers[i]), "n", "0"));
    };
    EXPECT_EQ(Ask(Workbook(SampleReport({TableItem(table)})),
                  "print([int(s.cell_value(r, 0)) for r in range(s.nrows)])"),
              "[536870910, 536870911, 536870912, -536870911, -536870912, 1073741824, -1073741825, "
              "9007199254740991]\n");
}

TEST(Xls, TurnedTextRunsDownOrUp) {
    if (!HasReader()) {
        GTEST_SKIP();
    }
    const auto rotation = [](layout::WritingMode mode) {
        layout::Instance item = TextItem("x");
        layout::BoxStyle box;
        box.writingMode = mode;
        item.box = std::make_shared<const layout::BoxStyle>(box);
        return Ask(Workbook(SampleReport({item})),
                   "print(b.xf_list[s.cell_xf_index(0, 0)].alignment.rotation)");
    };
    EXPECT_EQ(rotation(layout::WritingMode::Horizontal), "0\n");
    EXPECT_EQ(rotation(layout::WritingMode::Rotate270), "90\n");
    EXPECT_EQ(rotation(layout::WritingMode::Vertical), "180\n");
}

}  // namespace
}  // namespace rdl::writers
