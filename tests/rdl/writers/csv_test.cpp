// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "rdl/format/format.h"
#include "rdl/layout/drawing/drawing.h"
#include "rdl/layout/report_kit.h"
#include "rdl/writers/csv/csv_lines.h"
#include "rdl/writers/csv/shared_values.h"
#include "rdl/writers/sample_report.h"

namespace rdl::writers {
namespace {

using layout::BuildKit;
using layout::Cell;
using layout::Report;
using layout::RowOf;
using layout::Tablix;

const std::string Mark = "\xEF\xBB\xBF";

std::string Csv(layout::ReportInstance& report, bool unformatted = false) {
    StringOutput output;
    Options options;
    options.choices.unformatted = unformatted;
    WriteCsv(report, output, options);
    EXPECT_EQ(output.bytes.substr(0, 3), Mark);
    return output.bytes.substr(3);
}

std::string CsvOf(const std::string& items, const std::vector<layout::SaleRow>& rows,
                  bool unformatted = false) {
    return Csv(*BuildKit(Report(items), layout::Sales(rows)).report, unformatted);
}

const std::vector<layout::SaleRow> Four = {
    {"North", "Pen", 1}, {"North", "Ink", 2}, {"South", "Pen", 3}, {"South", "Ink", 4}};

std::string Group(const std::string& field, const std::string& more = {}) {
    return "<TablixMember><Group Name=\"By" + field + "\"><GroupExpressions><GroupExpression>=Fields!" +
           field + ".Value</GroupExpression></GroupExpressions></Group>" + more;
}

std::string Header(const std::string& name, const std::string& value) {
    return "<TablixHeader><Size>50pt</Size><CellContents>" + layout::Box(name, value) +
           "</CellContents></TablixHeader>";
}

const std::string Static = "<TablixMember/>";
const std::string Details = "<TablixMember><Group Name=\"Details\"/></TablixMember>";

TEST(Csv, FieldsAreQuotedWhereTheyMust) {
    const auto field = [](std::string_view text) {
        std::string line;
        AppendField(line, text);
        return line;
    };
    EXPECT_EQ(field("a b"), "a b");
    EXPECT_EQ(field("a,b"), "\"a,b\"");
    EXPECT_EQ(field("say \"a\""), "\"say \"\"a\"\"\"");
    EXPECT_EQ(field("a\nb"), "\"a\nb\"");
    EXPECT_EQ(field("a\rb"), "\"a\rb\"");
    EXPECT_EQ(field(""), "");
    EXPECT_EQ(field("=1+1"), "=1+1");
    EXPECT_EQ(field("-1"), "-1");
}

TEST(Csv, UnformattedValuesAreThoseThatProgramsRead) {
    EXPECT_EQ(PlainText(Value::Real(1234567.5)), "1234567.5");
    EXPECT_EQ(PlainText(Value::Real(1e300)), "1e+300");
    EXPECT_EQ(PlainText(Value::Integer(-12)), "-12");
    EXPECT_EQ(PlainText(Value::Boolean(true)), "true");
    EXPECT_EQ(PlainText(Value::DateTime(MakeTicks(2025, 6, 30))), "2025-06-30");
    EXPECT_EQ(PlainText(Value::DateTime(MakeTicks(2025, 6, 30, 17, 5, 9) + 5'000'000)),
              "2025-06-30T17:05:09.5");
    EXPECT_EQ(PlainText(Value()), "");
}

TEST(Csv, TableHasARecordForEachDetail) {
    const std::string rows =
        RowOf(Cell("h1", "Product") + Cell("h2", "Amount")) +
        RowOf(Cell("Product", "=Fields!Product.Value") +
              Cell("Amount", "=Fields!Amount.Value", "<Style><Format>0.00</Format></Style>"));
    EXPECT_EQ(CsvOf(Tablix(2, rows, Static + Details), Four),
              "Product,Amount\r\nPen,1.00\r\nInk,2.00\r\nPen,3.00\r\nInk,4.00\r\n");
}

TEST(Csv, TableWithoutRowsHasItsHeader) {
    const std::string rows =
        RowOf(Cell("Product", "=Fields!Product.Value") + Cell("Amount", "=Fields!Amount.Value"));
    EXPECT_EQ(CsvOf(Tablix(2, rows, Details), {}), "Product,Amount\r\n");
}

TEST(Csv, ValuesOfGroupsAndTheirTotalsAreRepeated) {
    const std::string rows =
        RowOf(Cell("Region", "=Fields!Region.Value") + Cell("Count", "=CountRows()")) +
        RowOf(Cell("Product", "=Fields!Product.Value") + Cell("Amount", "=Fields!Amount.Value")) +
        RowOf(Cell("caption", "Sum") + Cell("Sum", "=Sum(Fields!Amount.Value)")) +
        RowOf(Cell("all", "All") + Cell("Total", "=Sum(Fields!Amount.Value)"));
    const std::string members =
        Group("Region", "<TablixMembers>" + Static + Details + Static + "</TablixMembers></TablixMember>") +
        Static;
    EXPECT_EQ(CsvOf(Tablix(2, rows, members), Four),
              "Region,Count,Product,Amount,Sum,Total\r\n"
              "North,2,Pen,1,3,10\r\n"
              "North,2,Ink,2,3,10\r\n"
              "South,2,Pen,3,7,10\r\n"
              "South,2,Ink,4,7,10\r\n");
}

TEST(Csv, GroupWithoutDetailsIsARecord) {
    const std::string rows =
        RowOf(Cell("Region", "=Fields!Region.Value") + Cell("Count", "=CountRows()")) +
        RowOf(Cell("Product", "=Fields!Product.Value") + Cell("Amount", "=Fields!Amount.Value"));
    const std::string hidden =
        "<TablixMember><Group Name=\"Details\"/><Visibility><Hidden>true</Hidden></Visibility>"
        "</TablixMember>";
    const std::string members =
        Group("Region", "<TablixMembers>" + Static + hidden + "</TablixMembers></TablixMember>");
    EXPECT_EQ(CsvOf(Tablix(2, rows, members), Four),
              "Region,Count,Product,Amount\r\nNorth,2,,\r\nSouth,2,,\r\n");
}

TEST(Csv, MatrixHasARecordForEachCell) {
    const std::string members = Group("Region", Header("Region", "=Fields!Region.Value") + "</TablixMember>");
    const std::string columns =
        Group("Product", Header("Product", "=Fields!Product.Value") + "</TablixMember>");
    EXPECT_EQ(CsvOf(Tablix(1, RowOf(Cell("Amount", "=Sum(Fields!Amount.Value)")), members, columns), Four),
              "Region,Product,Amount\r\n"
              "North,Pen,1\r\nNorth,Ink,2\r\nSouth,Pen,3\r\nSouth,Ink,4\r\n");
}

// Headings over several columns, and totals below the cells of each column.
TEST(Csv, MatrixRecordsHaveTheHeadingsAndTotalsOfTheirColumn) {
    const std::string rows = RowOf(Cell("Amount", "=Sum(Fields!Amount.Value)")) +
                             RowOf(Cell("Below", "=Sum(Fields!Amount.Value) * 10"));
    const std::string members =
        Group("Region", Header("Region", "=Fields!Region.Value") + "</TablixMember>") + Static;
    const std::string columns =
        Group("Product", Header("Product", "=Fields!Product.Value") + "<TablixMembers>" +
                             Group("Amount", Header("Size", "=Fields!Amount.Value") + "</TablixMember>") +
                             "</TablixMembers></TablixMember>");
    EXPECT_EQ(CsvOf(Tablix(1, rows, members, columns), Four),
              "Region,Product,Size,Amount,Below\r\n"
              "North,Pen,1,1,10\r\nNorth,Pen,3,,30\r\nNorth,Ink,2,2,20\r\nNorth,Ink,4,,40\r\n"
              "South,Pen,1,,10\r\nSouth,Pen,3,3,30\r\nSouth,Ink,2,,20\r\nSouth,Ink,4,4,40\r\n");
}

TEST(Csv, TextsOfOneNameHaveAColumnEach) {
    auto report = test::SampleReport({});
    auto& items = report->sections.front()->items;
    for (const char* text : {"one", "two", "three"}) {
        layout::Instance& item = items.emplace_back(test::TextItem(text));
        item.name = "box";
        item.column = "Box";
    }
    EXPECT_EQ(Csv(*report), "Box,Box,Box\r\none,two,three\r\n");
}

TEST(CsvPlaces, FindValuesByColumnInTheirOrder) {
    CsvPlaces places;
    places.Add({0, 2, 4, "a"});
    places.Add({1, -1, -1, "b"});
    places.Add({2, 3, 4, "c"});
    EXPECT_EQ(places.Everywhere(), CsvPlaces::Numbers{1});
    EXPECT_EQ(places.Only(1), CsvPlaces::Numbers());
    EXPECT_EQ(places.Only(3), (CsvPlaces::Numbers{0, 2}));
    EXPECT_EQ(places.Only(4), CsvPlaces::Numbers());
    EXPECT_EQ(places.Only(-1), CsvPlaces::Numbers());
    EXPECT_EQ(places.Holding(3), (CsvPlaces::Numbers{0, 1, 2}));
    EXPECT_EQ(places.Holding(-1), CsvPlaces::Numbers{1});
}

TEST(Csv, RowsOfOneDetailAreOneRecord) {
    const std::string rows =
        RowOf(Cell("Product", "=Fields!Product.Value")) + RowOf(Cell("Amount", "=Fields!Amount.Value"));
    const std::string members = "<TablixMember><Group Name=\"Details\"/><TablixMembers>" + Static + Static +
                                "</TablixMembers></TablixMember>";
    EXPECT_EQ(CsvOf(Tablix(1, rows, members), {{"North", "Pen", 1}, {"North", "Pen", 1}}),
              "Product,Amount\r\nPen,1\r\nPen,1\r\n");
}

TEST(Csv, TextsOutsideOfTablesComeFirstAndConstantsAreNotData) {
    const std::string items = layout::Box("title", "Sales") + layout::Box("rows", "=CountRows(\"Data\")") +
                              Tablix(1, RowOf(Cell("Product", "=Fields!Product.Value")), Details);
    EXPECT_EQ(CsvOf(items, {{"North", "Pen", 1}}), "rows\r\n1\r\n\r\nProduct\r\nPen\r\n");
}

TEST(Csv, DataElementsNameAndOmitColumns) {
    const std::string rows =
        RowOf(Cell("a", "=Fields!Product.Value", "<DataElementName>What</DataElementName>") +
              Cell("b", "=Fields!Amount.Value", "<DataElementOutput>NoOutput</DataElementOutput>") +
              Cell("c", "x", "<DataElementOutput>Output</DataElementOutput>"));
    EXPECT_EQ(CsvOf(Tablix(3, rows, Details), {{"North", "Pen", 1}}), "What,c\r\nPen,x\r\n");
}

TEST(Csv, RepeatedValuesAreThereInEveryRecord) {
    const std::string rows =
        RowOf(Cell("Region", "=Fields!Region.Value", "<HideDuplicates>Data</HideDuplicates>"));
    EXPECT_EQ(CsvOf(Tablix(1, rows, Details), {{"North", "Pen", 1}, {"North", "Ink", 2}}),
              "Region\r\nNorth\r\nNorth\r\n");
}

TEST(Csv, InnerTablesRepeatWhatIsAroundThem) {
    std::string inner = Tablix(1, RowOf(Cell("Product", "=Fields!Product.Value")), Details);
    inner.replace(inner.find("\"Sales\""), 7, "\"Inner\"");
    inner.replace(inner.find("\"Details\""), 9, "\"InnerDetails\"");
    const std::string cell = "<TablixCell><CellContents><Rectangle Name=\"r\"><ReportItems>" +
                             layout::Box("Region", "=Fields!Region.Value") + inner +
                             "</ReportItems></Rectangle></CellContents></TablixCell>";
    EXPECT_EQ(CsvOf(Tablix(1, RowOf(cell), Group("Region", "</TablixMember>")), Four),
              "Region,Product\r\nNorth,Pen\r\nNorth,Ink\r\nSouth,Pen\r\nSouth,Ink\r\n");
}

TEST(Csv, UnformattedCellsAreTyped) {
    const std::string rows =
        RowOf(Cell("Amount", "=Fields!Amount.Value * 1000.5", "<Style><Format>N1</Format></Style>") +
              Cell("Day", "=DateSerial(2025, 6, 30)"));
    const std::string table = Tablix(2, rows, Details);
    EXPECT_EQ(CsvOf(table, {{"North", "Pen", 2}}, true), "Amount,Day\r\n2001,2025-06-30\r\n");
}

TEST(Csv, TableOfADataSetIsWrittenAsItIs) {
    Table table = layout::Sales({{"North, far", "Pen", 1}});
    StringOutput output;
    WriteCsv(table, output);
    EXPECT_EQ(output.bytes, Mark + "Region,Product,Amount\r\n\"North, far\",Pen,1\r\n");
}

TEST(Csv, ChartIsTheTableOfItsPoints) {
    layout::Instance chart;
    chart.kind = layout::InstanceKind::Drawing;
    chart.name = "Chart1";
    auto drawing = std::make_shared<layout::DrawingInstance>();
    drawing->data.columns = {"Category", "Series", "Value"};
    drawing->data.rows = {{Value::Text("Pen"), Value::Text("North"), Value::Real(1.5)}};
    chart.drawing = drawing;
    EXPECT_EQ(Csv(*test::SampleReport({chart})), "Category,Series,Value\r\nPen,North,1.5\r\n");
}

}  // namespace
}  // namespace rdl::writers
