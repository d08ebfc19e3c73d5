// SPDX-License-Identifier: GPL-3.0-or-later
// Lists of paragraphs in the logical structure of a PDF document.
#include <gmock/gmock.h>

#include <vector>

#include "rdl/writers/pdf/pdf_structure_kit.h"

namespace rdl::writers::test {
namespace {

using layout::Instance;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

class PdfListTest : public PdfStructureTest {};

struct ListLine {
    const char* text;
    int level, number;  // of a list: level from 1, number 0 for a bullet; level 0: no list
};

Instance ListOf(const std::vector<ListLine>& lines, double height = 200) {
    Instance item = TextItem("", 0, 0, 200, height);
    const layout::ParagraphInstance plain = item.paragraphs.front();
    item.paragraphs.clear();
    for (const ListLine& line : lines) {
        item.paragraphs.push_back(plain);
        layout::ParagraphInstance& paragraph = item.paragraphs.back();
        paragraph.runs.front().text = line.text;
        paragraph.listLevel = line.level;
        paragraph.listNumber = line.number;
        paragraph.bulleted = line.level > 0 && line.number == 0;
    }
    return item;
}

TEST_F(PdfListTest, ListsHaveItemsWithLabelAndBody) {
    const std::string pdf = Tagged({ListOf({{"Before", 0, 0},
                                            {"one", 1, 0},
                                            {"deep", 2, 1},
                                            {"deeper", 2, 2},
                                            {"two", 1, 0},
                                            {"first", 1, 1},
                                            {"After", 0, 0}})});
    EXPECT_EQ(Structure(pdf),
              "Document\n"
              "  Div\n"
              "    P (block)\n"
              "      \"Before \"\n"
              "    L (block):\n"
              "       /ListNumbering /Disc\n"
              "      LI (block)\n"
              "        Lbl (block)\n"
              "          \"\u2022 \"\n"
              "        LBody (block)\n"
              "          \"one \"\n"
              "          L (block):\n"
              "             /ListNumbering /Decimal\n"
              "            LI (block)\n"
              "              Lbl (block)\n"
              "                \"1. \"\n"
              "              LBody (block)\n"
              "                \"deep \"\n"
              "            LI (block)\n"
              "              Lbl (block)\n"
              "                \"2. \"\n"
              "              LBody (block)\n"
              "                \"deeper \"\n"
              "      LI (block)\n"
              "        Lbl (block)\n"
              "          \"\u2022 \"\n"
              "        LBody (block)\n"
              "          \"two \"\n"
              "    L (block):\n"
              "       /ListNumbering /Decimal\n"
              "      LI (block)\n"
              "        Lbl (block)\n"
              "          \"1. \"\n"
              "        LBody (block)\n"
              "          \"first \"\n"
              "    P (block)\n"
              "      \"After\"\n");
}

TEST_F(PdfListTest, ListOverPagesIsOne) {
    std::vector<ListLine> lines;
    for (int i = 0; i < 150; ++i) {
        lines.push_back({"line", 1, 0});
    }
    Instance list = ListOf(lines);
    list.canGrow = true;
    const std::string pdf = Tagged({list});
    EXPECT_THAT(PdfOnDisk(pdf).Run("pdfinfo {}").said, testing::ContainsRegex("Pages: +[2-9]"));
    const std::string said = Structure(pdf);
    EXPECT_EQ(Count(said, "L (block):"), 1u);
    EXPECT_EQ(Count(said, "LI (block)"), 150u);
    EXPECT_EQ(Count(said, "LBody (block)"), 150u);
}

TEST_F(PdfListTest, ListInACellIsOfTheCellAndOneThatIsALinkIsNone) {
    auto table = std::make_shared<SampleTable>();
    table->columnWidths = {200};
    table->rows = 1;
    table->make = [](std::size_t, layout::TableRow& row) { AddCell(row, ListOf({{"one", 1, 0}}, 20)); };
    EXPECT_THAT(Structure(Tagged({TableItem(table)})),
                HasSubstr("      TD\n        L (block):\n           /ListNumbering /Disc\n"));
    Instance link = ListOf({{"one", 1, 0}}, 20);
    link.hyperlink = "https://example.com";
    EXPECT_THAT(Structure(Tagged({link})), AllOf(HasSubstr("P (block)"), Not(HasSubstr("L (block)"))));
    Instance heading = ListOf({{"one", 1, 0}}, 20);
    heading.documentMapLabel = "1";
    EXPECT_THAT(Structure(Tagged({heading})), AllOf(HasSubstr("H1 (block)"), Not(HasSubstr("L (block)"))));
}

}  // namespace
}  // namespace rdl::writers::test
