// SPDX-License-Identifier: GPL-3.0-or-later
// Cells of a matrix without rows, whose texts are made once.
#include <gmock/gmock.h>

#include "rdl/layout/report_kit.h"

namespace rdl::layout {
namespace {

using testing::ElementsAre;

std::string Member(const std::string& name, const std::string& key, const std::string& more = {}) {
    return "<TablixMember><Group Name=\"" + name + "\"><GroupExpressions><GroupExpression>=Fields!" + key +
           ".Value</GroupExpression></GroupExpressions>" + more + "</Group></TablixMember>";
}

// Regions by products, each pair of which has one sale at most.
BuiltKit Matrix(const std::string& cell, const std::string& more = {}, const std::string& code = {},
                const std::string& rowGroupMore = {}) {
    std::string report = Report(
        Tablix(1, RowOf(Cell("C", cell, more)), Member("R", "Region", rowGroupMore), Member("P", "Product")));
    report.insert(report.find("<ReportSections>"), code);
    return BuildKit(report, Sales({{"North", "Pen", 1}, {"South", "Ink", 2}, {"West", "Cap", 3}}));
}

TEST(SparseMatrix, CellsWithoutRowsAreMarkedAsTheSame) {
    const BuiltKit kit = Matrix("=Sum(Fields!Amount.Value) &amp; \".\"");
    EXPECT_THAT(Rows(kit.Table()), ElementsAre("1.|.|.", ".|2.|.", ".|.|3."));
    TableRow first, second;
    kit.Table().Row(0, first);
    kit.Table().Row(1, second);
    EXPECT_FALSE(first.cells[0].content.same.IsSet());
    EXPECT_TRUE(first.cells[1].content.same.IsSet());
    EXPECT_TRUE(first.cells[1].content.same.IsSameAs(second.cells[0].content.same));
    EXPECT_FALSE(second.cells[1].content.same.IsSet());
}

TEST(SparseMatrix, CellThatLosesItsRowsLosesItsText) {
    const BuiltKit kit = Matrix("=First(Fields!Product.Value) &amp; \".\"");
    TableRow row;
    for (const std::size_t index : {0, 1, 0, 2, 1}) {
        kit.Table().Row(index, row);
        for (std::size_t column = 0; column < 3; ++column) {
            const std::string product = index == 0 ? "Pen." : index == 1 ? "Ink." : "Cap.";
            EXPECT_EQ(row.cells[column].content.PlainText(), column == index ? product : ".");
        }
    }
}

TEST(SparseMatrix, MovedTextLeavesNoMark) {
    const BuiltKit kit = Matrix("=CountRows() &amp; \" sales\"");
    TableRow row;
    kit.Table().Row(0, row);
    const Instance taken = std::move(row.cells[1].content);
    EXPECT_TRUE(taken.same.IsSet());
    kit.Table().Row(0, row);
    EXPECT_EQ(row.cells[1].content.PlainText(), "0 sales");
}

// Columns and texts of a row that is built in part.
std::vector<std::string> Within(TableInstance& table, std::size_t index, const TableColumns& columns) {
    TableRow row;
    table.RowWithin(index, columns, row);
    std::vector<std::string> cells;
    for (const TableCell& cell : row.cells) {
        cells.push_back(std::to_string(cell.column) + " " + cell.content.PlainText());
    }
    return cells;
}

TEST(SparseMatrix, RowIsBuiltInPart) {
    const BuiltKit kit = Matrix("=First(Fields!Product.Value) &amp; \".\"");
    EXPECT_THAT(Within(kit.Table(), 1, {0, 1, 2}), ElementsAre("1 Ink."));
    EXPECT_THAT(Within(kit.Table(), 1, {1, 2, 3}), ElementsAre("0 .", "2 ."));
    EXPECT_THAT(Within(kit.Table(), 1, {0, 0, 9}), ElementsAre("0 .", "1 Ink.", "2 ."));
    EXPECT_THAT(Within(kit.Table(), 0, {0, 2, 3}), ElementsAre("2 ."));
}

// The code may count how often it is called, and a duplicate is one of the cell before it.
TEST(SparseMatrix, RowWhoseCellsDependOnEachOtherIsBuiltWhole) {
    const BuiltKit withCode =
        Matrix("=First(Fields!Product.Value) &amp; \".\"", {}, "<Code>Dim n As Integer = 0</Code>");
    EXPECT_THAT(Within(withCode.Table(), 1, {0, 1, 2}), ElementsAre("0 .", "1 Ink.", "2 ."));
    const BuiltKit hiding = Matrix("=1", "<HideDuplicates>R</HideDuplicates>");
    EXPECT_EQ(Within(hiding.Table(), 1, {0, 1, 2}).size(), 3U);
}

TEST(SparseMatrix, IsFlatWithoutTotalsAndRegionsInItsCells) {
    EXPECT_TRUE(Matrix("=CountRows()").Table().IsFlat());
    const std::string totals = Report(Tablix(1, RowOf(Cell("C", "=CountRows()")) + RowOf(Cell("D", "all")),
                                             Member("R", "Region") + "<TablixMember/>"));
    EXPECT_FALSE(BuildKit(totals, Sales({{"North", "Pen", 1}})).Table().IsFlat());
    const std::string inner = Tablix(1, RowOf(Cell("C", "x")), Member("Q", "Product"));
    std::string outer = Tablix(1, RowOf(Cell("X", "x")), Member("R", "Region"));
    const std::size_t begin = outer.find("<Textbox Name=\"X\""), end = outer.find("</Textbox>", begin) + 10;
    std::string renamed = inner;
    renamed.replace(renamed.find("Name=\""), 6, "Name=\"In");
    outer.replace(begin, end - begin,
                  "<Rectangle Name=\"box\"><ReportItems>" + renamed + "</ReportItems></Rectangle>");
    EXPECT_FALSE(BuildKit(Report(outer), Sales({{"North", "Pen", 1}})).Table().IsFlat());
}

TEST(SparseMatrix, ShareOfTheRowsTotalIsThatOfEachRow) {
    const BuiltKit kit = Matrix("=CountRows() &amp; \"/\" &amp; Sum(Fields!Amount.Value, \"R\")");
    EXPECT_THAT(Rows(kit.Table()), ElementsAre("1/1|0/1|0/1", "0/2|1/2|0/2", "0/3|0/3|1/3"));
}

TEST(SparseMatrix, RunningTotalRunsThroughCellsWithoutRows) {
    const BuiltKit kit = Matrix("=RunningValue(Fields!Amount.Value, Sum, \"P\") &amp; \".\"");
    EXPECT_THAT(Rows(kit.Table()), ElementsAre("1.|.|.", "1.|2.|.", "1.|2.|3."));
}

TEST(SparseMatrix, VariableOfTheRowIsThatOfEachRow) {
    const BuiltKit kit = Matrix("=CountRows() &amp; Variables!V.Value", {}, {},
                                "<Variables><Variable Name=\"V\"><Value>=First(Fields!Region.Value)</Value>"
                                "</Variable></Variables>");
    EXPECT_THAT(Rows(kit.Table()),
                ElementsAre("1North|0North|0North", "0South|1South|0South", "0West|0West|1West"));
}

TEST(SparseMatrix, StyleMayDependOnTheRow) {
    const BuiltKit kit = Matrix("=Sum(Fields!Amount.Value)",
                                "<Style><BackgroundColor>=IIf(Sum(Fields!Amount.Value, \"R\") = 2, \"Red\", "
                                "\"Blue\")</BackgroundColor></Style>");
    TableRow row;
    kit.Table().Row(0, row);
    EXPECT_EQ(row.cells[2].content.box->background, 0xFF0000FFu);
    kit.Table().Row(1, row);
    EXPECT_EQ(row.cells[2].content.box->background, 0xFFFF0000u);
}

TEST(SparseMatrix, CodeOfTheReportIsCalledForEachCell) {
    const BuiltKit kit =
        Matrix("=Code.NextOne()", {},
               "<Code>Dim n As Integer = 0\nPublic Function NextOne() As Integer\nn = n + 1\n"
               "Return n\nEnd Function</Code>");
    EXPECT_THAT(Rows(kit.Table()), ElementsAre("1|2|3", "4|5|6", "7|8|9"));
}

}  // namespace
}  // namespace rdl::layout
