// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "rdl/raises.h"
#include "rdl/writers/docx_kit.h"

namespace rdl::writers {
namespace {

using namespace test;
using layout::Instance;
using layout::InstanceKind;
using layout::TableRow;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

DocxRead Document(std::vector<Instance> items, std::vector<Instance> header = {}) {
    return DocxRead(SampleReport(std::move(items), std::move(header)));
}

Instance Styled(const layout::CharStyle& style, const std::string& text = "x") {
    Instance item = TextItem(text);
    item.paragraphs[0].runs[0].style = std::make_shared<const layout::CharStyle>(style);
    return item;
}

Instance Boxed(const layout::BoxStyle& box) {
    Instance item = TextItem("x");
    item.box = std::make_shared<const layout::BoxStyle>(box);
    return item;
}

std::string StylesOf(const std::unique_ptr<layout::ReportInstance>& report) {
    return ZipPart(Docx(report), "word/styles.xml");
}

TEST(Docx, IsAPackageWithTitleAuthorLanguageAndTime) {
    const auto report = SampleReport({TextItem("body")}, {TextItem("head")});
    report->title = "Profit & <Loss>";
    report->author = "Ann";
    const std::string docx = Docx(report);
    for (const char* part : {"[Content_Types].xml", "_rels/.rels", "docProps/core.xml", "word/document.xml",
                             "word/styles.xml", "word/settings.xml", "word/header0.xml", "word/footer0.xml",
                             "word/header1.xml", "word/footer1.xml", "word/_rels/document.xml.rels"}) {
        EXPECT_NE(ZipPart(docx, part), "") << part;
        EXPECT_EQ(FaultOf(ZipPart(docx, part)), "") << part;
    }
    EXPECT_THAT(
        ZipPart(docx, "docProps/core.xml"),
        AllOf(HasSubstr("<dc:title>Profit &amp; &lt;Loss&gt;</dc:title><dc:creator>Ann</dc:creator>"
                        "<dc:language>en-US</dc:language>"),
              HasSubstr(
                  "<dcterms:created xsi:type=\"dcterms:W3CDTF\">2024-02-29T13:00:00Z</dcterms:created>")));
    EXPECT_THAT(ZipPart(docx, "[Content_Types].xml"),
                AllOf(HasSubstr("PartName=\"/word/header1.xml\""), Not(HasSubstr("header2.xml"))));
}

TEST(Docx, SameReportGivesTheSameBytes) {
    EXPECT_EQ(Docx(SampleReport({TableItem(NumberedRows(50))})),
              Docx(SampleReport({TableItem(NumberedRows(50))})));
}

TEST(Docx, TextIsEscapedAndCleaned) {
    const DocxRead document = Document({TextItem("a<b>&\"\x01\x1F\xEF\xBF\xBE|\xFF")});
    EXPECT_THAT(document.Texts("//w:tc"), ElementsAre("a<b>&\"|\uFFFD"));
}

TEST(Docx, SpacesLineFeedsAndTabsAreKept) {
    const DocxRead document = Document({TextItem(" a\r\nb\tc\u2028d\u2029e")});
    EXPECT_THAT(document.Texts("//w:tc"), ElementsAre(" a|b\tc|d|e"));
    EXPECT_EQ(document.Count("//w:t[@xml:space='preserve']"), 1);
}

TEST(Docx, LooksAreParagraphStyles) {
    layout::CharStyle style;
    style.family = "Courier New";
    style.size = 11.5F;
    style.bold = style.italic = true;
    style.decoration = layout::Decoration::Underline;
    style.color = 0xFF336699;
    const auto report = SampleReport({Styled(style), Styled(style, "y")});
    EXPECT_THAT(
        StylesOf(report),
        HasSubstr("<w:name w:val=\"Text 1\"/><w:basedOn w:val=\"Normal\"/><w:pPr><w:jc w:val=\"left\"/>"
                  "</w:pPr><w:rPr><w:rFonts w:ascii=\"Courier New\" w:hAnsi=\"Courier New\" "
                  "w:eastAsia=\"Courier New\" w:cs=\"Courier New\"/><w:b/><w:bCs/><w:i/><w:iCs/>"
                  "<w:color w:val=\"336699\"/><w:sz w:val=\"23\"/><w:szCs w:val=\"23\"/>"
                  "<w:u w:val=\"single\"/></w:rPr></w:style>"));
    EXPECT_THAT(DocxRead(report).Texts("//w:tc/w:p/w:pPr/w:pStyle/@w:val"), ElementsAre("Text1", "Text1"));
    EXPECT_EQ(DocxRead(report).Count("//w:tc//w:r/w:rPr"), 0);
}

TEST(Docx, RunsOfAnotherLookSayAllOfIt) {
    layout::CharStyle bold;
    bold.bold = true;
    Instance item = Styled(bold, "Bold");
    item.paragraphs[0].runs.push_back({"plain", std::make_shared<const layout::CharStyle>(), {}});
    EXPECT_THAT(Document({item}).xml(),
                HasSubstr("<w:b w:val=\"0\"/><w:bCs w:val=\"0\"/><w:i w:val=\"0\"/><w:iCs w:val=\"0\"/>"
                          "<w:strike w:val=\"0\"/><w:color w:val=\"000000\"/><w:sz w:val=\"20\"/>"
                          "<w:szCs w:val=\"20\"/><w:u w:val=\"none\"/></w:rPr><w:t>plain</w:t>"));
}

TEST(Docx, VeryManyLooksAreWrittenWithTheirText) {
    std::vector<Instance> items;
    for (int i = 0; i <= 2000; ++i) {
        layout::CharStyle style;
        style.color = 0xFF000000U + static_cast<unsigned>(i);
        items.push_back(Styled(style));
        items.back().y = i * 12.0;
    }
    const DocxRead document = Document(items);
    EXPECT_EQ(document.Count("//w:tc/w:p/w:pPr/w:pStyle"), 2000);
    EXPECT_THAT(document.Texts("//w:tc/w:p[not(w:pPr/w:pStyle)]/w:r/w:rPr/w:color/@w:val"),
                ElementsAre("0007D0"));
}

TEST(Docx, LanguageHasThePlaceOfItsScript) {
    const auto report = SampleReport({TextItem("a")});
    EXPECT_THAT(StylesOf(report), HasSubstr("<w:lang w:val=\"en-US\"/>"));
    report->language = "ja-JP";
    EXPECT_THAT(StylesOf(report), HasSubstr("<w:lang w:eastAsia=\"ja-JP\"/>"));
    report->language = "he-IL";
    EXPECT_THAT(StylesOf(report), HasSubstr("<w:lang w:bidi=\"he-IL\"/>"));
}

TEST(Docx, TablesHaveTheirGridAndHeading) {
    const DocxRead document = Document({TableItem(NumberedRows(3), 10)});
    EXPECT_THAT(document.Texts("/w:document/w:body/w:tbl/w:tblGrid/w:gridCol/@w:w"),
                ElementsAre("1600", "1200"));
    EXPECT_THAT(document.Texts("//w:tblPr/w:tblW/@w:w"), ElementsAre("2800"));
    EXPECT_THAT(document.Texts("//w:tblPr/w:tblInd/@w:w"), ElementsAre("200"));
    EXPECT_THAT(document.Texts("//w:tr[1]/w:tc"), ElementsAre("Name", "Sum"));
    EXPECT_THAT(document.Texts("//w:tr[3]/w:tc"), ElementsAre("Row 2", "1"));
    EXPECT_THAT(document.Texts("//w:tr[3]/w:tc/w:tcPr/w:tcW/@w:w"), ElementsAre("1600", "1200"));
    EXPECT_EQ(document.Count("//w:tr/w:trPr/w:cantSplit"), 3);
}

TEST(Docx, LeadingHeadingRowsRepeat) {
    auto table = NumberedRows(3);
    table->repeated = {0};
    const DocxRead document = Document({TableItem(table)});
    EXPECT_EQ(document.Count("//w:tr[1]/w:trPr/w:tblHeader"), 1);
    EXPECT_EQ(document.Count("//w:tblHeader"), 1);
}

TEST(Docx, CellsSpanColumnsAndRows) {
    auto table = std::make_shared<SampleTable>();
    table->columnWidths = {80, 0, 60, 20};
    table->rows = 4;
    table->make = [](std::size_t i, TableRow& row) {
        if (i % 2 == 0) {
            AddCell(row, TextItem("group"), 1, 2);
        }
        AddCell(row, TextItem("detail " + std::to_string(i)), 3);
        row.cells.back().column = 1;
        row.breakBefore = i == 3;
    };
    const DocxRead document = Document({TableItem(table)});
    EXPECT_EQ(document.Count("//w:tbl"), 2);
    EXPECT_THAT(document.Texts("//w:tbl[1]/w:tblGrid/w:gridCol/@w:w"),
                ElementsAre("1600", "10", "1190", "400"));
    EXPECT_THAT(document.Texts("//w:gridSpan/@w:val"), ElementsAre("3", "3", "3", "3"));
    EXPECT_THAT(document.Texts("//w:tc[w:tcPr/w:vMerge[not(@w:val)]]"), ElementsAre(""));
    // A cell that a page break splits begins again.
    EXPECT_EQ(document.Count("//w:vMerge[@w:val='restart']"), 3);
    EXPECT_EQ(document.Count("//w:pageBreakBefore"), 1);
}

// Word opens no document with more cells in a row.
TEST(Docx, ColumnsBeyondTheMostContinueInATableBelow) {
    auto table = std::make_shared<SampleTable>();
    table->columnWidths.assign(300, 5);
    table->rows = 1;
    table->make = [](std::size_t, TableRow& row) {
        for (int i = 0; i < 300; ++i) {
            AddCell(row, TextItem(std::to_string(i)));
        }
    };
    const DocxRead document = Document({TableItem(table)});
    EXPECT_EQ(document.Count("//w:gridCol[@w:w='100']"), 300);
    EXPECT_EQ(document.Count("//w:tbl"), 5);
    EXPECT_EQ(document.Count("//w:tbl[1]//w:tc"), 63);
    EXPECT_THAT(document.Texts("//w:tbl[5]//w:tc[last()]"), ElementsAre("299"));
}

TEST(Docx, MoreItemsBesideEachOtherThanARowMayHaveAreAnError) {
    std::vector<Instance> items;
    for (int i = 0; i < 64; ++i) {
        items.push_back(TextItem("x", i * 10.0, 0, 10));
    }
    EXPECT_EQ(
        ErrorRaisedBy([&] { Docx(SampleReport(items)); }),
        "Item \"Box\" makes a row of 64 cells, and a table of a text document has 63 side by side at most");
    items.pop_back();
    EXPECT_EQ(Document(items).Count("//w:tc"), 63);
}

// The widest paper has 1584 points.
TEST(Docx, TablesWiderThanAnyPaperContinueBelow) {
    auto table = NumberedRows(2);
    table->columnWidths = {1000, 600};
    const DocxRead document = Document({TableItem(table)});
    EXPECT_EQ(document.Count("//w:tbl"), 2);
    EXPECT_THAT(document.Texts("//w:tbl[1]//w:tc"), ElementsAre("Name", "Row 1"));
    EXPECT_THAT(document.Texts("//w:tbl[2]//w:tc"), ElementsAre("Sum", "1"));
}

TEST(Docx, HeightsAreExactUnlessTextMayGrow) {
    auto table = NumberedRows(2);
    const auto make = table->make;
    table->make = [make](std::size_t i, TableRow& row) {
        make(i, row);
        for (layout::TableCell& cell : row.cells) {
            cell.content.height = row.height;
            cell.content.canGrow = i == 1;
        }
    };
    const DocxRead document = Document({TableItem(table)});
    EXPECT_THAT(document.Texts("//w:trHeight/@w:hRule"), ElementsAre("exact", "atLeast"));
    EXPECT_THAT(document.Texts("//w:trHeight/@w:val"), ElementsAre("300", "300"));
}

TEST(Docx, BordersFillsAndDirectionsAreTheCells) {
    layout::BoxStyle box;
    box.top = {layout::LineStyle::Dashed, 0xFFFF0000, 1.5F};
    box.right = {layout::LineStyle::Double, 0xFF0000FF, 3};
    box.background = 0x8000FF00;  // half of green on white
    box.vAlign = layout::VAlign::Bottom;
    box.writingMode = layout::WritingMode::Rotate270;
    EXPECT_THAT(
        Document({Boxed(box)}).xml(),
        HasSubstr("<w:tcBorders><w:top w:val=\"dashed\" w:sz=\"12\" w:space=\"0\" w:color=\"FF0000\"/>"
                  "<w:right w:val=\"double\" w:sz=\"8\" w:space=\"0\" w:color=\"0000FF\"/></w:tcBorders>"
                  "<w:shd w:val=\"clear\" w:color=\"auto\" w:fill=\"7FFF7F\"/>"
                  "<w:textDirection w:val=\"btLr\"/><w:vAlign w:val=\"bottom\"/></w:tcPr>"));
}

TEST(Docx, MeasuresAreInTwips) {
    layout::BoxStyle box;
    box.paddingLeft = 2;
    box.paddingTop = 3;
    Instance item = Boxed(box);
    item.paragraphs[0].leftIndent = 10;
    item.paragraphs[0].hangingIndent = 5;
    item.paragraphs[0].spaceBefore = 1;
    item.paragraphs[0].lineHeight = 14;
    EXPECT_THAT(StylesOf(SampleReport({item})),
                HasSubstr("<w:spacing w:before=\"80\" w:after=\"0\" w:line=\"280\" w:lineRule=\"exact\"/>"
                          "<w:ind w:left=\"340\" w:right=\"0\" w:hanging=\"100\"/><w:jc w:val=\"left\"/>"));
}

TEST(Docx, ListsHaveTheirMarks) {
    Instance item = TextItem("one");
    item.paragraphs.push_back(item.paragraphs[0]);
    item.paragraphs[0].bulleted = true;
    item.paragraphs[1].listNumber = 2;
    const auto report = SampleReport({item});
    EXPECT_THAT(DocxRead(report).Texts("//w:tc/w:p"), ElementsAre("\u2022\tone", "2.\tone"));
    EXPECT_THAT(StylesOf(report), HasSubstr("<w:tabs><w:tab w:val=\"left\" w:pos=\"360\"/></w:tabs>"
                                            "<w:ind w:left=\"360\" w:right=\"0\" w:hanging=\"270\"/>"));
}

// In such a paragraph readers take left for the side where its lines begin.
TEST(Docx, TextFromRightToLeftIsMarked) {
    layout::BoxStyle box;
    box.rightToLeft = true;
    box.hAlign = layout::HAlign::Right;
    box.paddingLeft = 5;
    Instance item = Boxed(box);
    item.paragraphs[0].runs[0].text = "\u05D0\u05D1";
    item.paragraphs[0].runs.push_back({"abc", item.paragraphs[0].runs[0].style, {}});
    const auto report = SampleReport({item});
    EXPECT_THAT(StylesOf(report),
                HasSubstr("<w:bidi/><w:ind w:left=\"0\" w:right=\"100\"/><w:jc w:val=\"left\"/>"));
    EXPECT_THAT(DocxRead(report).xml(), HasSubstr("<w:r><w:rPr><w:rtl/></w:rPr><w:t>\u05D0\u05D1</w:t></w:r>"
                                                  "<w:r><w:t>abc</w:t></w:r>"));
}

TEST(Docx, TablesFromRightToLeftAreMarked) {
    auto table = NumberedRows(2);
    EXPECT_EQ(Document({TableItem(table)}).Count("//w:bidiVisual"), 0);
    table->rightToLeft = true;
    EXPECT_EQ(Document({TableItem(table)}).Count("//w:tblPr/w:bidiVisual"), 1);
}

TEST(Docx, LinksAreWebAddressesOrNothing) {
    for (const char* bad : {"javascript:alert(1)", "file:///etc/passwd", "\\\\server\\share", "x.doc"}) {
        Instance item = TextItem("click");
        item.hyperlink = bad;
        EXPECT_EQ(Document({item}).Count("//w:hyperlink"), 0) << bad;
    }
    Instance item = TextItem("click");
    item.hyperlink = "https://example.com/?a=\"&b \u00E9";
    item.toolTip = "Go <there>";
    Instance again = item;
    again.y = 20;
    const std::string docx = Docx(SampleReport({item, again}));
    const DocxRead document(ZipPart(docx, "word/document.xml"));
    EXPECT_THAT(document.Texts("//w:hyperlink"), ElementsAre("click", "click"));
    EXPECT_THAT(document.Texts("//w:hyperlink/@w:tooltip"), ElementsAre("Go <there>", "Go <there>"));
    const DocxRead relations(ZipPart(docx, "word/_rels/document.xml.rels"));
    EXPECT_THAT(relations.Texts("//Relationship[@TargetMode='External']/@Target"),
                ElementsAre("https://example.com/?a=%22&b%20%C3%A9"));
    EXPECT_EQ(document.Texts("//w:hyperlink[1]/@r:id").at(0),
              relations.Texts("//Relationship[@TargetMode='External']/@Id").at(0));
}

TEST(Docx, BookmarksLeadToTheirItem) {
    Instance from = TextItem("from"), to = TextItem("to", 0, 20), frame, inner = TextItem("inner");
    from.bookmarkLink = to.bookmark = "a b}";
    frame.kind = InstanceKind::Container;
    frame.y = 50;
    frame.width = frame.height = 50;
    frame.bookmark = "there";
    frame.children.push_back(inner);
    const DocxRead document = Document({from, to, to, frame});
    EXPECT_THAT(document.Texts("//w:hyperlink/@w:anchor"), ElementsAre("b1"));
    EXPECT_THAT(document.Texts("//w:bookmarkStart/@w:name"), ElementsAre("b1", "b2"));
    EXPECT_THAT(document.Texts("//w:p[w:bookmarkStart/@w:name='b1']"), ElementsAre("to"));
    EXPECT_THAT(document.Texts("//w:p[w:bookmarkStart/@w:name='b2']"), ElementsAre("inner"));
}

Instance Rectangle(const std::string& mark, double y, std::vector<Instance> children) {
    Instance rectangle;
    rectangle.kind = InstanceKind::Container;
    rectangle.name = "Rectangle1";
    rectangle.bookmark = mark;
    rectangle.documentMapLabel = mark;
    rectangle.y = y;
    rectangle.width = rectangle.height = 100;
    rectangle.children = std::move(children);
    return rectangle;
}

TEST(Docx, RectanglesWithinOthersHaveBookmarksAndLabelsToo) {
    const DocxRead document = Document({Rectangle(
        "outer", 0,
        {TextItem("title"), Rectangle("inner", 20, {TextItem("text", 0, 5), TextItem("more", 0, 20)}),
         Rectangle("empty", 90, {})})});
    EXPECT_THAT(document.Texts("/w:document/w:body/w:p[w:pPr/w:pStyle[starts-with(@w:val, 'TOC')]]"),
                ElementsAre("Contents", "outer", "inner", "empty"));
    EXPECT_THAT(document.Texts("//w:tc/w:p[w:bookmarkStart/@w:name='b1']"), ElementsAre("title"));
    EXPECT_THAT(document.Texts("//w:tc/w:p[w:bookmarkStart/@w:name='b2']"), ElementsAre("text"));
    EXPECT_EQ(document.Count("//w:bookmarkStart[@w:name='b3']"), 1);
}

TEST(Docx, ALineWithinARectangleLeavesItsBookmark) {
    Instance line = Rectangle("line", 0, {});
    line.kind = InstanceKind::Line;
    line.height = 0;
    const DocxRead document = Document({Rectangle("outer", 0, {line})});
    EXPECT_THAT(document.Texts("//w:bookmarkStart/@w:name"), ElementsAre("b1", "b2", "_Toc1", "_Toc2"));
}

TEST(Docx, ATableBesideATextHasOneEntryOfTheDocumentMap) {
    Instance table = TableItem(NumberedRows(2));
    table.documentMapLabel = "Rows";
    const DocxRead document = Document({table, TextItem("beside", 200)});
    EXPECT_THAT(document.Texts("/w:document/w:body/w:p[w:pPr/w:pStyle[starts-with(@w:val, 'TOC')]]"),
                ElementsAre("Contents", "Rows"));
}

TEST(Docx, DocumentMapIsATableOfContents) {
    auto table = NumberedRows(3);
    const auto make = table->make;
    table->make = [make](std::size_t i, TableRow& row) {
        make(i, row);
        if (i > 0) {
            row.labels = {{i == 1 ? "Row 1" : "Say \"2\"", static_cast<int>(i) - 1}};
        }
    };
    const DocxRead document = Document({TableItem(table)});
    EXPECT_THAT(document.Texts("/w:document/w:body/w:p[w:pPr/w:pStyle[starts-with(@w:val, 'TOC')]]"),
                ElementsAre("Contents", "Row 1", "Say \"2\""));
    EXPECT_THAT(document.Texts("//w:hyperlink/@w:anchor"), ElementsAre("_Toc1", "_Toc2"));
    EXPECT_EQ(document.Texts("//w:instrText").size(), 2U);
    // A label that the text shows is a heading; any other is an entry of its own.
    EXPECT_THAT(document.Texts("//w:tc/w:p[w:pPr/w:pStyle/@w:val='Heading1']"), ElementsAre("Row 1"));
    EXPECT_THAT(document.xml(), HasSubstr(" TC &quot;Say \\&quot;2\\&quot;&quot; \\f C \\l 2 "));
    EXPECT_THAT(document.Texts("//w:p[w:bookmarkStart/@w:name='_Toc2']"), ElementsAre("Row 2"));
    // The contents are a section without header.
    EXPECT_EQ(document.Count("//w:sectPr"), 2);
    EXPECT_EQ(document.Count("//w:p/w:pPr/w:sectPr/w:headerReference"), 0);
}

TEST(Docx, WithoutLabelsThereIsNoTableOfContents) {
    EXPECT_EQ(Document({TextItem("a")}).Count("//w:instrText"), 0);
}

TEST(Docx, PageMarksAreFieldsOfTheHeader) {
    const std::string docx = Docx(SampleReport({TextItem("body")}, {TextItem("Page \uE000 of \uE001")}));
    const DocxRead header(ZipPart(docx, "word/header1.xml"));
    EXPECT_THAT(header.Texts("//w:fldSimple/@w:instr"), ElementsAre(" PAGE ", " NUMPAGES "));
    EXPECT_THAT(header.Texts("//w:tc"), ElementsAre("Page 1 of 1"));
    EXPECT_THAT(ZipPart(docx, "word/document.xml"), Not(HasSubstr("Page ")));
}

TEST(Docx, PageSetupIsInTwips) {
    const auto report = SampleReport({TextItem("body")}, {TextItem("head")});
    layout::PageSetup& page = report->sections[0]->page;
    page.width = 842;
    page.height = 595;
    page.marginLeft = 36;
    page.marginTop = 30;
    page.headerOnFirst = false;
    page.columns = 2;
    page.columnSpacing = 10;
    EXPECT_THAT(
        DocxRead(report).xml(),
        HasSubstr("<w:pgSz w:w=\"16840\" w:h=\"11900\" w:orient=\"landscape\"/>"
                  "<w:pgMar w:top=\"1000\" w:right=\"0\" w:bottom=\"0\" w:left=\"720\" w:header=\"560\" "
                  "w:footer=\"0\" w:gutter=\"0\"/>"
                  "<w:cols w:num=\"2\" w:space=\"200\"/><w:titlePg/>"));
    const std::string docx = Docx(report);
    const DocxRead document(ZipPart(docx, "word/document.xml"));
    const DocxRead relations(ZipPart(docx, "word/_rels/document.xml.rels"));
    const std::string first = document.Texts("//w:headerReference[@w:type='first']/@r:id").at(0);
    EXPECT_THAT(relations.Texts("//Relationship[@Id='" + first + "']/@Target"), ElementsAre("header0.xml"));
}

TEST(Docx, SectionsHaveTheirOwnPages) {
    auto report = SampleReport({TextItem("one")}, {TextItem("head")});
    auto more = SampleReport({TextItem("two")});
    more->sections[0]->page.width = 1000;
    report->sections.push_back(std::move(more->sections[0]));
    const std::string docx = Docx(report);
    const DocxRead document(ZipPart(docx, "word/document.xml"));
    EXPECT_THAT(document.Texts("//w:sectPr/w:pgSz/@w:w"), ElementsAre("12240", "20000"));
    EXPECT_EQ(document.Count("/w:document/w:body/w:p/w:pPr/w:sectPr"), 1);
    EXPECT_THAT(DocxRead(ZipPart(docx, "word/header2.xml")).Texts("//w:p"), ElementsAre(""));
}

// Word processors join adjacent tables and give them the columns of the first.
TEST(Docx, ItemsBelowEachOtherShareColumns) {
    const DocxRead document = Document({TextItem("a", 0, 0, 100), TextItem("b", 50, 12, 100)});
    EXPECT_EQ(document.Count("//w:tbl"), 1);
    EXPECT_THAT(document.Texts("//w:gridCol/@w:w"), ElementsAre("1000", "1000", "1000"));
    EXPECT_THAT(document.Texts("//w:tr[1]/w:tc"), ElementsAre("a", ""));
    EXPECT_THAT(document.Texts("//w:tr[2]/w:tc"), ElementsAre("", "b"));
    EXPECT_THAT(document.Texts("//w:gridSpan/@w:val"), ElementsAre("2", "2"));
}

TEST(Docx, ItemsThatCannotShareColumnsAreKeptApart) {
    Instance frame;
    frame.kind = InstanceKind::Container;
    frame.y = 12;
    frame.width = 100;
    frame.height = 12;
    frame.keepTogether = true;
    frame.children.push_back(TextItem("b"));
    EXPECT_EQ(Document({TextItem("a"), frame}).Count("//w:tbl/following-sibling::*[1][self::w:tbl]"), 0);
    std::vector<Instance> many;
    for (int i = 0; i < 201; ++i) {
        many.push_back(TextItem("x", i, i * 12.0));
    }
    const DocxRead document = Document(many);
    EXPECT_EQ(document.Count("//w:tbl"), 2);
    EXPECT_EQ(document.Count("//w:tbl/following-sibling::*[1][self::w:tbl]"), 0);
}

TEST(Docx, TablesBesideTextAreNested) {
    const DocxRead document = Document({TableItem(NumberedRows(2)), TextItem("beside", 200, 0, 100, 30)});
    EXPECT_THAT(document.Texts("//w:tc/w:tbl/w:tr/w:tc"), ElementsAre("Name", "Sum", "Row 1", "1"));
    // A cell ends with a paragraph.
    EXPECT_EQ(document.Count("//w:tc[not(*[last()][self::w:p])]"), 0);
}

TEST(Docx, TablesWithoutRowsAreNone) {
    auto table = NumberedRows(0);
    EXPECT_EQ(Document({TableItem(table)}).Count("//w:tbl"), 0);
    table->noRowsMessage = "Nothing";
    EXPECT_THAT(Document({TableItem(table)}).Texts("/w:document/w:body/w:p[w:r]"), ElementsAre("Nothing"));
}

TEST(Docx, DrawingsAreAnErrorThatNamesThem) {
    Instance chart;
    chart.kind = InstanceKind::Drawing;
    chart.name = "Chart1";
    chart.width = chart.height = 10;
    EXPECT_EQ(ErrorRaisedBy([&] { Docx(SampleReport({chart})); }),
              "Drawing \"Chart1\" cannot be shown in a text document");
}

}  // namespace
}  // namespace rdl::writers
