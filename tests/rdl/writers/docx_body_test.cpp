// SPDX-License-Identifier: GPL-3.0-or-later
// The headings of a Word document, and the background of its items.
#include <gmock/gmock.h>

#include "rdl/writers/docx_kit.h"

namespace rdl::writers {
namespace {

using namespace test;
using layout::Instance;
using layout::TableRow;
using testing::ElementsAre;

TEST(DocxBody, ALabelIsTheHeadingOfTheCellThatShowsIt) {
    auto table = NumberedRows(3);
    table->make = [](std::size_t i, TableRow& row) {
        AddCell(row, TextItem("No. " + std::to_string(i)));
        AddCell(row, TextItem(i == 0 ? "North" : "Tea"));
        AddCell(row, TextItem("x"));
        row.labels = i == 0   ? std::vector<layout::MapLabel>{{"North", 0}}
                     : i == 1 ? std::vector<layout::MapLabel>{{"Tea", 1}, {"Nowhere", 1}}
                              : std::vector<layout::MapLabel>();
    };
    table->columnWidths = {80, 60, 60};
    const DocxRead document(SampleReport({TableItem(table)}));
    EXPECT_THAT(document.Texts("//w:tc/w:p[w:pPr/w:pStyle/@w:val='Heading1']"), ElementsAre("North"));
    EXPECT_THAT(document.Texts("//w:tc/w:p[w:pPr/w:pStyle/@w:val='Heading2']"), ElementsAre("Tea"));
    EXPECT_THAT(document.Texts("//w:hyperlink/@w:anchor"), ElementsAre("_Toc1", "_Toc2", "_Toc3"));
    for (const char* name : {"_Toc1", "_Toc2", "_Toc3"}) {
        EXPECT_EQ(document.Count(std::string("//w:bookmarkStart[@w:name='") + name + "']"), 1) << name;
    }
    // What no cell shows is a hidden entry in the row's first cell.
    EXPECT_THAT(document.Texts("//w:p[w:bookmarkStart/@w:name='_Toc3']"), ElementsAre("No. 1"));
}

layout::BoxStylePtr Backdrop(layout::Color color) {
    auto style = std::make_shared<layout::BoxStyle>();
    style->background = color;
    return style;
}

// A body 500 points wide and 100 high.
TEST(DocxBody, ABodysFillIsThatOfItsCellsAndGaps) {
    Instance own = TextItem("own", 100);
    own.box = Backdrop(0xFF00FF00);
    auto report = SampleReport({TextItem("a"), own, TextItem("below", 0, 40)}, {TextItem("head")});
    report->sections.front()->bodyStyle = Backdrop(0xFF000080);
    report->sections.front()->page.headerStyle = Backdrop(0xFFFF0000);
    const std::string docx = Docx(report);
    const DocxRead document(ZipPart(docx, "word/document.xml"));
    EXPECT_THAT(document.Texts("//w:tc/w:tcPr/w:shd/@w:fill"),
                ElementsAre("000080", "00FF00", "000080", "000080", "000080"));
    EXPECT_THAT(document.Texts("//w:body/w:p/w:pPr/w:shd/@w:fill"), ElementsAre("000080", "000080"));
    EXPECT_THAT(document.Texts("//w:body/w:p[w:pPr/w:shd]/w:pPr/w:spacing/@w:line"),
                ElementsAre("560", "960"));
    EXPECT_EQ(document.Count("//w:tbl[sum(w:tblGrid/w:gridCol/@w:w) = 10000]"), 2);
    const DocxRead header(ZipPart(docx, "word/header1.xml"));
    EXPECT_THAT(header.Texts("//w:shd/@w:fill"), ElementsAre("FF0000", "FF0000", "FF0000"));
}

}  // namespace
}  // namespace rdl::writers
