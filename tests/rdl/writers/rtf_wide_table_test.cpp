// SPDX-License-Identifier: GPL-3.0-or-later
// Tables with more columns than word processors know.
#include <gmock/gmock.h>

#include <vector>

#include "rdl/writers/rtf_kit.h"

namespace rdl::writers {
namespace {

using namespace test;
using layout::TableRow;
using testing::ElementsAre;

// Columns "0", "1" and so on below a heading over all but the first.
std::shared_ptr<SampleTable> WideTable(int columns) {
    auto table = std::make_shared<SampleTable>();
    table->columnWidths.assign(static_cast<std::size_t>(columns), 10);
    table->headerColumns = 1;
    table->repeatRowHeaders = true;
    table->rows = 2;
    table->make = [columns](std::size_t i, TableRow& row) {
        row.columnHeader = i == 0;
        if (i == 0) {
            AddCell(row, TextItem("name"));
            AddCell(row, TextItem("all"), columns - 1);
            return;
        }
        for (int column = 0; column < columns; ++column) {
            AddCell(row, TextItem(std::to_string(column)));
        }
    };
    return table;
}

TEST(Rtf, ColumnsBeyondTheMostContinueInATableBelow) {
    const RtfDocument document = Document({TableItem(WideTable(100), 20)});
    ASSERT_EQ(document.rows.size(), 4U);
    EXPECT_THAT(document.rows[0].texts, ElementsAre("name", "all"));
    EXPECT_THAT(document.rows[0].edges, ElementsAre(600, 13000));
    ASSERT_EQ(document.rows[1].texts.size(), 63U);
    EXPECT_EQ(document.rows[1].texts.back(), "62");
    EXPECT_THAT(document.rows[2].texts, ElementsAre("name", "all"));
    EXPECT_THAT(document.rows[2].edges, ElementsAre(600, 8000));
    ASSERT_EQ(document.rows[3].texts.size(), 38U);  // the row header, and 63 to 99
    EXPECT_EQ(document.rows[3].texts[0], "0");
    EXPECT_EQ(document.rows[3].texts[1], "63");
    EXPECT_EQ(document.rows[3].texts.back(), "99");
}

TEST(Rtf, RowHeadersRepeatOnlyIfTheRegionWantsIt) {
    auto table = WideTable(300);
    table->columnWidths.assign(300, 5);
    table->repeatRowHeaders = false;
    const RtfDocument document = Document({TableItem(table)});
    ASSERT_EQ(document.rows.size(), 10U);
    EXPECT_THAT(document.rows[2].texts, ElementsAre("all"));
    EXPECT_EQ(document.rows[3].texts.front(), "63");
    EXPECT_EQ(document.rows[9].texts.front(), "252");
    EXPECT_EQ(document.rows[9].texts.back(), "299");
}

TEST(Rtf, CellsOverRowsAndColumnsAreCutWhereTheTableEnds) {
    auto table = std::make_shared<SampleTable>();
    table->columnWidths.assign(65, 10);
    table->rows = 2;
    table->make = [](std::size_t i, TableRow& row) {
        if (i == 0) {
            AddCell(row, TextItem("first"), 60);
            AddCell(row, TextItem("tall"), 5, 2);
        } else {
            AddCell(row, TextItem("below"), 60);
        }
    };
    const RtfDocument document = Document({TableItem(table)});
    ASSERT_EQ(document.rows.size(), 4U);
    EXPECT_THAT(document.rows[1].texts, ElementsAre("below", ""));
    EXPECT_THAT(document.rows[1].merges, ElementsAre("", "clvmrg"));
    EXPECT_THAT(document.rows[2].texts, ElementsAre("tall"));
    EXPECT_THAT(document.rows[3].merges, ElementsAre("clvmrg"));
    EXPECT_THAT(document.rows[3].edges, ElementsAre(400));
}

TEST(Rtf, TablesWiderThanAnyPaperContinueBelow) {
    auto table = NumberedRows(2);
    table->columnWidths = {1000, 600};
    const RtfDocument document = Document({TableItem(table)});
    ASSERT_EQ(document.rows.size(), 4U);
    EXPECT_THAT(document.rows[0].texts, ElementsAre("Name"));
    EXPECT_THAT(document.rows[2].texts, ElementsAre("Sum"));
    EXPECT_THAT(document.rows[3].edges, ElementsAre(12000));
}

}  // namespace
}  // namespace rdl::writers
