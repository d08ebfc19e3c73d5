// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <sys/resource.h>

#include <filesystem>

#include "rdl/image_bytes.h"
#include "rdl/raises.h"
#include "rdl/writers/sample_report.h"
#include "rdl/writers/zip_kit.h"

namespace rdl::writers {
namespace {

using layout::Instance;
using layout::TableRow;
using test::AddCell;
using test::NumberedRows;
using test::SampleReport;
using test::TableItem;
using test::TextItem;
using test::ValueItem;
using test::ZipPart;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

std::string Book(const std::unique_ptr<layout::ReportInstance>& report) {
    StringOutput output;
    Options options;
    options.nowTicks = 638'000'000'000'000'000;
    WriteXlsx(*report, output, options);
    return output.bytes;
}

std::string Sheet(const std::string& book, int number = 1) {
    return ZipPart(book, "xl/worksheets/sheet" + std::to_string(number) + ".xml");
}

TEST(Xlsx, CellsAreTyped) {
    Instance date = ValueItem(Value::DateTime(638'868'384'000'000'000), "30.06.2025", "d");
    date.y = 12;
    Instance text = TextItem("a <b> \x01", 0, 24);
    Instance flag = ValueItem(Value::Boolean(true), "True", "");
    flag.y = 36;
    const std::string book =
        Book(SampleReport({ValueItem(Value::Real(1234.5), "1,234.50", "N2"), date, text, flag}));
    EXPECT_THAT(Sheet(book),
                AllOf(HasSubstr("<v>1234.5</v>"), HasSubstr("<v>45838</v>"),
                      HasSubstr("t=\"inlineStr\"><is><t xml:space=\"preserve\">a &lt;b&gt; </t>"),
                      HasSubstr("t=\"b\"><v>1</v>")));
    EXPECT_THAT(ZipPart(book, "xl/styles.xml"), HasSubstr("formatCode=\"#,##0.00"));
}

// Readers take _x0041_ for an escaped A (ECMA-376 Part 1, 22.9.2.19).
TEST(Xlsx, TextsThatLookLikeEscapesStayAsTheyAre) {
    const auto shown = [](const std::string& text) {
        const std::string sheet = Sheet(Book(SampleReport({TextItem(text)})));
        const std::size_t begin = sheet.find("<is><t>") + 7;
        return sheet.substr(begin, sheet.find("</t>", begin) - begin);
    };
    EXPECT_EQ(shown("a _x0041_ b"), "a _x005F_x0041_ b");
    EXPECT_EQ(shown("_x00e4__x00E4_"), "_x005F_x00e4__x005F_x00E4_");
    EXPECT_EQ(shown("_x004_ _x0041 x0041_ _X0041_ _x00G1_"), "_x004_ _x0041 x0041_ _X0041_ _x00G1_");
    EXPECT_EQ(shown("_x_x0041_"), "_x_x005F_x0041_");
    Instance named = TextItem("a");
    named.pageName = "_x0041_";
    const std::string book = Book(SampleReport({named}));
    EXPECT_THAT(ZipPart(book, "xl/workbook.xml"), HasSubstr("<sheet name=\"_x005F_x0041_\""));
}

TEST(Xlsx, SameReportGivesTheSameBytes) {
    EXPECT_EQ(Book(SampleReport({TableItem(NumberedRows(50))})),
              Book(SampleReport({TableItem(NumberedRows(50))})));
}

TEST(Xlsx, PropertiesNameTheReportAndTheMoment) {
    EXPECT_THAT(ZipPart(Book(SampleReport({TextItem("a")})), "docProps/core.xml"),
                AllOf(HasSubstr("<dc:title>Sales</dc:title>"), HasSubstr("2022-09-")));
}

TEST(Xlsx, PageBreaksBeginSheetsWithTheirNames) {
    Instance second = TextItem("b", 0, 20);
    second.breakBefore = true;
    second.pageName = "Two/2";
    const std::string book = Book(SampleReport({TextItem("a"), second}));
    EXPECT_THAT(ZipPart(book, "xl/workbook.xml"), AllOf(HasSubstr("<sheet name=\"Sales\" sheetId=\"1\""),
                                                        HasSubstr("<sheet name=\"Two_2\" sheetId=\"2\"")));
    EXPECT_THAT(Sheet(book, 2), HasSubstr(">b</t>"));
}

std::size_t OpenFiles() {
    const std::filesystem::directory_iterator files("/proc/self/fd");
    return static_cast<std::size_t>(std::distance(begin(files), end(files)));
}

std::vector<Instance> TextsOnSheets(int count) {
    std::vector<Instance> texts;
    for (int i = 0; i < count; ++i) {
        texts.push_back(TextItem("text " + std::to_string(i), 0, 20 * i));
        texts.back().breakBefore = i > 0;
    }
    return texts;
}

TEST(Xlsx, BookHasMoreSheetsThanTheProcessMayHaveFilesOpen) {
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &before), 0);
    const rlimit few{OpenFiles() + 20, before.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &few), 0);
    const std::string book = Book(SampleReport(TextsOnSheets(100)));
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &before), 0);
    for (const int number : {1, 2, 50, 99, 100}) {
        EXPECT_THAT(Sheet(book, number), HasSubstr(">text " + std::to_string(number - 1) + "</t>"));
    }
}

// Rows of a complete sheet that are too many for the memory of a spool come from its file.
TEST(Xlsx, SheetsWithManyRowsKeepThemAll) {
    Instance first = TableItem(NumberedRows(150'000));
    Instance second = TableItem(NumberedRows(3));
    second.y = first.height + 20;
    second.breakBefore = true;
    const std::string book = Book(SampleReport({first, second}));
    const std::string sheet = Sheet(book, 1);
    EXPECT_THAT(sheet.substr(0, 2000), HasSubstr("<row r=\"1\""));
    EXPECT_THAT(sheet.substr(sheet.size() - 2000), HasSubstr("<row r=\"150000\""));
    std::size_t rows = 0;
    for (std::size_t at = sheet.find("<row "); at != std::string::npos; at = sheet.find("<row ", at + 1)) {
        ++rows;
    }
    EXPECT_EQ(rows, 150'000u);
    EXPECT_THAT(Sheet(book, 2), HasSubstr("<row r=\"3\""));
}

TEST(Xlsx, BookThatFailsLeavesNoFileOpen) {
    std::vector<Instance> items = TextsOnSheets(3);
    items.back().paragraphs[0].runs[0].text = std::string(40'000, 'a');
    Book(SampleReport(TextsOnSheets(1)));
    const std::size_t before = OpenFiles();
    EXPECT_NE(ErrorRaisedBy([&] { Book(SampleReport(items)); }), "");
    EXPECT_EQ(OpenFiles(), before);
}

TEST(Xlsx, SheetHoldsMoreRowsThanTheOlderFormat) {
    auto table = NumberedRows(70'000);
    const std::string book = Book(SampleReport({TableItem(table)}));
    EXPECT_THAT(Sheet(book), HasSubstr("<row r=\"70000\""));
    EXPECT_EQ(ZipPart(book, "xl/worksheets/sheet2.xml"), "");
}

TEST(Xlsx, HeadingStaysInViewAndOnEachPage) {
    const std::string book = Book(SampleReport({TableItem(NumberedRows(5))}));
    EXPECT_THAT(Sheet(book), HasSubstr("<pane ySplit=\"1\" topLeftCell=\"A2\""));
    EXPECT_THAT(
        ZipPart(book, "xl/workbook.xml"),
        HasSubstr("<definedName name=\"_xlnm.Print_Titles\" localSheetId=\"0\">Sales!$1:$1</definedName>"));
}

TEST(Xlsx, CellsThatSpanAreMerged) {
    auto table = std::make_shared<test::SampleTable>();
    table->columnWidths = {50, 50};
    table->rows = 2;
    table->make = [](std::size_t i, TableRow& row) {
        if (i == 0) {
            AddCell(row, TextItem("tall"), 1, 2);
            AddCell(row, TextItem("a"));
        } else {
            layout::TableCell cell;
            cell.column = 1;
            cell.content = TextItem("b");
            row.cells.push_back(cell);
        }
    };
    EXPECT_THAT(Sheet(Book(SampleReport({TableItem(table)}))),
                HasSubstr("<mergeCells count=\"1\"><mergeCell ref=\"A1:A2\"/></mergeCells>"));
}

TEST(Xlsx, LinksLeadToAddressesAndBookmarks) {
    Instance web = TextItem("web");
    web.hyperlink = "https://example.org/a?b=c";
    Instance inside = TextItem("inside", 0, 20);
    inside.bookmarkLink = "there";
    Instance lost = TextItem("lost", 0, 40);
    lost.bookmarkLink = "nowhere";
    Instance target = TextItem("target", 0, 60);
    target.bookmark = "there";
    const std::string book = Book(SampleReport({web, inside, lost, target}));
    EXPECT_THAT(Sheet(book),
                AllOf(HasSubstr("<hyperlink ref=\"A1\" r:id=\"rId1\""), HasSubstr("location=\"Bookmark_1\""),
                      Not(HasSubstr("Bookmark_2")), HasSubstr(">web</t>")));
    EXPECT_THAT(ZipPart(book, "xl/workbook.xml"), HasSubstr("<definedName name=\"Bookmark_1\">Sales!$A$"));
}

TEST(Xlsx, FillsBordersAndFontsAreThoseOfTheItem) {
    auto box = std::make_shared<layout::BoxStyle>();
    box->background = 0xFF102030;
    box->bottom.style = layout::LineStyle::Double;
    auto font = std::make_shared<layout::CharStyle>();
    font->family = "Liberation Serif";
    font->bold = true;
    font->size = 14;
    Instance text = TextItem("a");
    text.box = box;
    text.paragraphs[0].runs[0].style = font;
    EXPECT_THAT(
        ZipPart(Book(SampleReport({text})), "xl/styles.xml"),
        AllOf(HasSubstr("<fonts count=\"2\"><font><sz val=\"10\"/><color theme=\"1\"/><name val=\"Arial\"/>"),
              HasSubstr("<fgColor rgb=\"FF102030\"/>"), HasSubstr("<bottom style=\"double\">"),
              HasSubstr("<b/><sz val=\"14\"/>"), HasSubstr("<name val=\"Liberation Serif\"/>")));
}

TEST(Xlsx, EachSideHasItsBorderAndColour) {
    auto box = std::make_shared<layout::BoxStyle>();
    box->left = {layout::LineStyle::Solid, 0xFF102030, 1};
    box->right = {layout::LineStyle::Dashed, 0xFF405060, 1};
    box->top = {layout::LineStyle::Dotted, 0xFF708090, 1};
    box->bottom = {layout::LineStyle::Double, 0xFFA0B0C0, 1};
    Instance text = TextItem("a");
    text.box = box;
    EXPECT_THAT(ZipPart(Book(SampleReport({text})), "xl/styles.xml"),
                HasSubstr("<left style=\"thin\"><color rgb=\"FF102030\"/></left>"
                          "<right style=\"dashed\"><color rgb=\"FF405060\"/></right>"
                          "<top style=\"dotted\"><color rgb=\"FF708090\"/></top>"
                          "<bottom style=\"double\"><color rgb=\"FFA0B0C0\"/></bottom>"));
}

TEST(Xlsx, ImageHasTheSizeOfItsItem) {
    Instance image;
    image.kind = layout::InstanceKind::Image;
    image.name = "Logo";
    image.width = 60;
    image.height = 90;
    image.imageBytes = std::make_shared<const std::string>(FileOf(QImage(2, 3, QImage::Format_RGB32), "PNG"));
    const std::string book = Book(SampleReport({image}));
    // 80 by 120 pixels: within column A, and to the end of the row, which is as high.
    EXPECT_THAT(
        ZipPart(book, "xl/drawings/drawing1.xml"),
        AllOf(HasSubstr("<xdr:from><xdr:col>0</xdr:col><xdr:colOff>0</xdr:colOff><xdr:row>0</xdr:row>"),
              HasSubstr("<a:ext cx=\"762000\" cy=\"1143000\"/>")));
    EXPECT_EQ(ZipPart(book, "xl/media/image1.png"), *image.imageBytes);
}

TEST(Xlsx, RowThatMayGrowHasRoomForItsLine) {
    auto font = std::make_shared<layout::CharStyle>();
    font->size = 20;
    Instance text = TextItem("a", 0, 0, 100, 12);
    text.paragraphs[0].runs[0].style = font;
    EXPECT_THAT(Sheet(Book(SampleReport({text}))), HasSubstr(" ht=\"12\""));
    text.canGrow = true;
    EXPECT_THAT(Sheet(Book(SampleReport({text}))), HasSubstr(" ht=\"25.5\""));
}

TEST(Xlsx, TextThatNoCellHoldsIsAnError) {
    EXPECT_EQ(ErrorRaisedBy([] { Book(SampleReport({TextItem(std::string(40'000, 'a'))})); }),
              "Text box \"Box\" has more than the 32,767 characters that a cell of an Excel workbook holds");
}

}  // namespace
}  // namespace rdl::writers
