// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "rdl/values/error.h"
#include "rdl/writers/sample_report.h"

namespace rdl::writers {
namespace {

using namespace test;
using layout::Instance;
using layout::TableRow;

std::string Html(const std::unique_ptr<layout::ReportInstance>& report) {
    StringOutput output;
    WriteHtml(*report, output, {});
    return output.bytes;
}

bool Has(const std::string& html, const std::string& piece) {
    return html.find(piece) != std::string::npos;
}

std::shared_ptr<SampleTable> Rows(std::size_t count) {
    auto table = NumberedRows(count);
    table->headerColumns = 1;
    table->make = [make = table->make](std::size_t i, TableRow& row) {
        make(i, row);
        row.breakBefore = i == 2;
    };
    return table;
}

TEST(Html, IsADocumentWithLanguageAndTitle) {
    const auto report = SampleReport({TextItem("body")});
    report->title = "Profit & <Loss>";
    const std::string html = Html(report);
    EXPECT_EQ(html.substr(0, 15), "<!DOCTYPE html>");
    EXPECT_TRUE(Has(html, "<html lang=\"en-US\">"));
    EXPECT_TRUE(Has(html, "<meta charset=\"utf-8\">"));
    EXPECT_TRUE(Has(html, "<title>Profit &amp; &lt;Loss&gt;</title>"));
}

TEST(Html, DocumentMapLeadsToItsPlaces) {
    auto title = TextItem("Title");
    title.documentMapLabel = "Start & end";
    title.bookmark = "top";
    auto table = Rows(3);
    table->make = [](std::size_t i, TableRow& row) {
        row.labels = {{"Row " + std::to_string(i), i == 0 ? 0 : 2}};
        AddCell(row, TextItem("x"));
        AddCell(row, TextItem("y"));
    };
    const std::string html = Html(SampleReport({title, TableItem(table, 0, 20)}));
    const std::size_t map = html.find("<nav><details>");
    ASSERT_NE(map, std::string::npos);
    EXPECT_LT(map, html.find("<section"));
    EXPECT_EQ(html.substr(map, html.find("</nav>") - map),
              "<nav><details>\n<summary>Contents</summary>\n<ul>\n"
              "<li><a href=\"#b1\">Start &amp; end</a></li>\n"
              "<li><a href=\"#m1\">Row 0</a><ul>\n"
              "<li><a href=\"#m2\">Row 1</a></li>\n"
              "<li><a href=\"#m3\">Row 2</a></li></ul>\n"
              "</li></ul>\n</details>");
    for (const char* id : {"id=\"b1\"", "id=\"m1\"", "id=\"m2\"", "id=\"m3\""}) {
        EXPECT_EQ(Count(html, id), 1u) << id;
    }
    EXPECT_FALSE(Has(Html(SampleReport({TextItem("body")})), "<nav>"));
}

TEST(Html, DocumentMapComesBackFromAnyDepth) {
    auto table = Rows(4);
    table->make = [](std::size_t i, TableRow& row) {
        constexpr int Levels[] = {0, 1, 2, 0};
        row.labels = {{std::to_string(i), Levels[i]}};
        AddCell(row, TextItem("x"));
    };
    const std::string html = Html(SampleReport({TableItem(table)}));
    EXPECT_TRUE(
        Has(html, "2</a></li></ul>\n</li></ul>\n</li>\n<li><a href=\"#m4\">3</a></li></ul>\n</details>"));
}

TEST(Html, AddressesAreInTheLettersOfAddresses) {
    auto item = TextItem("words");
    item.hyperlink = "https://example.com/a b?x=\u00FC&y={1}#z";
    EXPECT_TRUE(
        Has(Html(SampleReport({item})), "href=\"https://example.com/a%20b?x=%C3%BC&amp;y=%7B1%7D#z\""));
}

TEST(Html, HangingIndentsMoveTheLinesAfterTheFirst) {
    auto item = TextItem("words");
    item.paragraphs[0].hangingIndent = 20;
    EXPECT_TRUE(Has(Html(SampleReport({item})), "margin-left:20pt;text-indent:-20pt;"));
    item.paragraphs[0].hangingIndent = -20;
    EXPECT_TRUE(Has(Html(SampleReport({item})), "{text-indent:20pt;"));
}

TEST(Html, LinesOfListsGoOnAfterTheMark) {
    auto item = TextItem("words");
    item.paragraphs[0].bulleted = true;
    item.paragraphs[0].listLevel = 2;
    const std::string html = Html(SampleReport({item}));
    EXPECT_TRUE(Has(html, "margin-left:36pt;text-indent:-13.5pt;"));
    EXPECT_TRUE(Has(html, "\u2022 </span>words"));
}

TEST(Html, TextsOfRightToLeftBoxesStandAtTheRight) {
    auto item = TextItem("words");
    auto box = std::make_shared<layout::BoxStyle>();
    box->rightToLeft = true;
    item.box = box;
    EXPECT_TRUE(Has(Html(SampleReport({item})), "text-align:right"));
}

TEST(Html, MessageOfATableWithoutRowsHasItsLetters) {
    auto table = Rows(0);
    table->noRowsMessage = "Nothing <sold>";
    auto textStyle = std::make_shared<layout::CharStyle>();
    textStyle->bold = true;
    table->noRowsStyle = textStyle;
    const std::string html = Html(SampleReport({TableItem(table)}));
    EXPECT_TRUE(Has(html, "\">Nothing &lt;sold&gt;</p>"));
    EXPECT_TRUE(Has(html, "font-weight:"));
}

TEST(Html, HostileTextIsOnlyText) {
    const std::string html = Html(SampleReport({TextItem("<script>alert(\"1\")</script>&'\x01\xFF")}));
    EXPECT_FALSE(Has(html, "<script"));
    EXPECT_TRUE(Has(html, "&lt;script&gt;alert(&quot;1&quot;)&lt;/script&gt;&amp;&#39;\xEF\xBF\xBD<"));
}

TEST(Html, HostileFontNamesDoNotLeaveTheirQuotes) {
    Instance item = TextItem("x");
    auto style = std::make_shared<layout::CharStyle>();
    style->family = "A\"}</style><script>";
    item.paragraphs[0].runs[0].style = style;
    EXPECT_TRUE(Has(Html(SampleReport({item})), "font-family:\"Astylescript\""));
}

TEST(Html, LinksAreWebAddressesOrNothing) {
    for (const char* bad : {"javascript:alert(1)", " JavaScript:alert(1)", "java\tscript:alert(1)",
                            "data:text/html,x", "vbscript:x", "file:///etc/passwd"}) {
        Instance item = TextItem("click");
        item.hyperlink = bad;
        EXPECT_FALSE(Has(Html(SampleReport({item})), "href")) << bad;
    }
    Instance item = TextItem("click");
    item.hyperlink = "https://example.com/?a=1&b=\"2\"";
    EXPECT_TRUE(Has(Html(SampleReport({item})), "<a href=\"https://example.com/?a=1&amp;b=%222%22\""));
}

TEST(Html, BookmarksLeadToTheirItem) {
    Instance from = TextItem("from"), to = TextItem("to", 0, 20);
    from.bookmarkLink = to.bookmark = "a b";
    const std::string html = Html(SampleReport({from, to}));
    EXPECT_TRUE(Has(html, "href=\"#b1\""));
    EXPECT_EQ(Count(html, "id=\"b1\""), 1u);
}

TEST(Html, TablesHaveHeadsWithScope) {
    const std::string html = Html(SampleReport({TableItem(Rows(3))}));
    EXPECT_EQ(Count(html, "<thead>"), 1u);
    EXPECT_EQ(Count(html, "<tbody>"), 1u);
    EXPECT_EQ(Count(html, "scope=\"col\""), 2u);
    EXPECT_EQ(Count(html, "scope=\"row\""), 2u);
    EXPECT_EQ(Count(html, "<tr "), 3u);
    EXPECT_EQ(Count(html, "</tr>"), 3u);
    EXPECT_TRUE(Has(html, " bb\">"));
}

TEST(Html, CellsOfTheSameTextAreWrittenAsOthersAre) {
    const auto document = [](bool isMarked) {
        static const int item = 0, other = 0;
        auto table = std::make_shared<test::SampleTable>();
        table->columnWidths = {50, 50, 50};
        table->headerColumns = 1;
        table->rows = 4;
        table->make = [isMarked](std::size_t i, layout::TableRow& row) {
            row.columnHeader = i == 0;
            for (std::size_t column = 0; column < 3; ++column) {
                const bool isOther = i == 2 && column == 1;
                Instance text = TextItem(isOther ? "other" : "same");
                text.bookmark = isOther ? "here" : "";
                text.same = isMarked ? layout::SameText(1, isOther ? &other : &item) : layout::SameText();
                test::AddCell(row, text, 1, i == 1 && column == 2 ? 2 : 1);
            }
        };
        return Html(SampleReport({TableItem(table)}));
    };
    EXPECT_EQ(document(true), document(false));
}

TEST(Html, EqualStylesShareAClass) {
    const std::string few = Html(SampleReport({TableItem(Rows(10))}));
    const std::string many = Html(SampleReport({TableItem(Rows(1000))}));
    EXPECT_EQ(Count(few, "{"), Count(many, "{"));
}

TEST(Html, HeaderStandsOnceWithPageOne) {
    const std::string html =
        Html(SampleReport({TextItem("body")}, {TextItem("Page \xEE\x80\x80 of \xEE\x80\x81")}));
    EXPECT_EQ(Count(html, "<header "), 1u);
    EXPECT_TRUE(Has(html, "Page 1 of 1"));
}

TEST(Html, HeaderAndFooterHaveTheirBackground) {
    auto report = SampleReport({TextItem("body")}, {TextItem("head")});
    auto box = std::make_shared<layout::BoxStyle>();
    box->background = 0xFF102030;
    report->sections[0]->page.headerStyle = box;
    const std::string html = Html(report);
    const std::size_t at = html.find("<header class=\"") + 15;
    EXPECT_TRUE(Has(html, "." + html.substr(at, html.find('"', at) - at) + "{background-color:#102030"))
        << html;
}

TEST(Html, SlantedLinesHaveTheirWidthColourAndDashes) {
    Instance line;
    line.kind = layout::InstanceKind::Line;
    line.width = line.height = 50;
    auto box = std::make_shared<layout::BoxStyle>();
    box->top = {layout::LineStyle::Dashed, 0xFF000080, 3};
    line.box = box;
    EXPECT_TRUE(
        Has(Html(SampleReport({line})), "{stroke:#000080;stroke-width:3pt;stroke-dasharray:9pt 6pt;}"));
}

TEST(Html, ImagesAreWithinTheFile) {
    Instance image;
    image.kind = layout::InstanceKind::Image;
    image.name = "Logo";
    image.toolTip = "The logo";
    image.width = image.height = 50;
    image.imageBytes = std::make_shared<const std::string>("\x89PNG\r\n\x1A\nab");
    EXPECT_TRUE(
        Has(Html(SampleReport({image})), "src=\"data:image/png;base64,iVBORw0KGgphYg==\" alt=\"The logo\""));
    image.imageBytes = std::make_shared<const std::string>("<svg onload=alert(1)>");
    EXPECT_THROW(Html(SampleReport({image})), Error);
}

TEST(Html, NestingHasAnEnd) {
    Instance inner = TextItem("x");
    for (int i = 0; i < 200; ++i) {
        Instance outer;
        outer.kind = layout::InstanceKind::Container;
        outer.children.push_back(inner);
        inner = outer;
    }
    EXPECT_THROW(Html(SampleReport({inner})), Error);
}

TEST(Html, IsTheSameEveryTime) {
    EXPECT_EQ(Html(SampleReport({TableItem(Rows(20))})), Html(SampleReport({TableItem(Rows(20))})));
}

TEST(Html, EachSideHasItsPaddingAndItsBorder) {
    Instance item = TextItem("x");
    layout::BoxStyle box;
    box.paddingLeft = 1;
    box.paddingRight = 2;
    box.paddingTop = 3;
    box.paddingBottom = 4;
    box.left = {layout::LineStyle::Solid, 0xFF000001, 1};
    box.right = {layout::LineStyle::Solid, 0xFF000002, 2};
    box.top = {layout::LineStyle::Solid, 0xFF000003, 3};
    box.bottom = {layout::LineStyle::Solid, 0xFF000004, 4};
    item.box = std::make_shared<const layout::BoxStyle>(box);
    EXPECT_TRUE(Has(Html(SampleReport({item})),
                    "border-top:3pt solid #000003;border-right:2pt solid #000002;border-bottom:4pt solid "
                    "#000004;border-left:1pt solid #000001;padding:3pt 2pt 4pt 1pt;"));
}

TEST(Html, SeeThroughColoursSayHowMuch) {
    Instance item = TextItem("x");
    layout::BoxStyle box;
    box.background = 0x80102030;
    item.box = std::make_shared<const layout::BoxStyle>(box);
    EXPECT_TRUE(Has(Html(SampleReport({item})), "{background-color:#10203080;"));
    box.background = 0xFF102030;
    item.box = std::make_shared<const layout::BoxStyle>(box);
    EXPECT_TRUE(Has(Html(SampleReport({item})), "{background-color:#102030;"));
}

TEST(Html, SlantedLinesRiseOrFallAsTheyAreDrawn) {
    const auto ends = [](double width, double height) {
        Instance line;
        line.kind = layout::InstanceKind::Line;
        line.x = line.y = 100;
        line.width = width;
        line.height = height;
        const std::string html = Html(SampleReport({line}));
        const std::size_t at = html.find(" y1=");
        return html.substr(at + 1, html.find(" vector") - at - 1);
    };
    EXPECT_EQ(ends(50, 50), "y1=\"0\" y2=\"100\"");
    EXPECT_EQ(ends(50, -50), "y1=\"100\" y2=\"0\"");
    EXPECT_EQ(ends(-50, 50), "y1=\"100\" y2=\"0\"");
    EXPECT_EQ(ends(-50, -50), "y1=\"0\" y2=\"100\"");
}

}  // namespace
}  // namespace rdl::writers
