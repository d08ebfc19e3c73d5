// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/document/editing.h"
#include "designer/tables/groups.h"
#include "small_tables.h"

namespace designer::test {
namespace {

constexpr const char* Run1 = "Paragraphs/Paragraph/TextRuns/TextRun/";

// The item in a cell of the body.
ElementId ItemAt(const Document& document, std::size_t row, std::size_t column) {
    const TablixShape shape(document, Region(document));
    return ItemInCell(document, shape.Cell(Axis::Rows, row, column));
}

std::string Look(const Document& document, ElementId item) {
    const auto text = [&](const std::string& path) { return document.TextAt(item, path).value_or("-"); };
    return text(std::string(Run1) + "Value") + " " + text(std::string(Run1) + "Style/FontWeight") + " " +
           text(std::string(Run1) + "Style/FontSize") + " " + text("Style/BackgroundColor");
}

// A group with a row of its own, which is large on grey, and details on white.
Document GroupWithHead() {
    Document document(Report(ListTablix(
        "<TablixMember><Group Name=\"G\"><GroupExpressions><GroupExpression>=Fields!Region.Value"
        "</GroupExpression></GroupExpressions></Group><TablixMembers><TablixMember/><TablixMember><Group "
        "Name=\"Details\"/></TablixMember></TablixMembers></TablixMember>")));
    for (const std::size_t column : {0, 1}) {
        SetText(document, ItemAt(document, 0, column), "Style/BackgroundColor", "Grey");
        SetText(document, ItemAt(document, 0, column), std::string(Run1) + "Style/FontSize", "20pt");
        SetText(document, ItemAt(document, 1, column), "Style/BackgroundColor", "White");
    }
    return document;
}

TEST(Totals, LookLikeWhatTheySumAndAreBold) {
    Document document = GroupWithHead();
    const ElementId group = GroupsOf(document, Region(document), Axis::Rows).front().member;
    EXPECT_EQ(AddTotal(document, Region(document), Axis::Rows, group, Side::After), 2u);
    EXPECT_EQ(Look(document, ItemAt(document, 2, 0)), "Total Bold - White");
    EXPECT_EQ(Look(document, ItemAt(document, 2, 1)), "=Sum(Fields!Net_Amount.Value) Bold - White");
}

TEST(Totals, AHeaderOfATotalIsBold) {
    Document document(Report(ListTablix(
        "<TablixMember><Group Name=\"G\"><GroupExpressions><GroupExpression>=Fields!Region.Value"
        "</GroupExpression></GroupExpressions></Group><TablixHeader><Size>2cm</Size><CellContents>" +
        Box("H", "=Fields!Region.Value") +
        "</CellContents></TablixHeader><TablixMembers><TablixMember/><TablixMember><Group Name=\"Details\"/>"
        "</TablixMember></TablixMembers></TablixMember>")));
    const ElementId group = GroupsOf(document, Region(document), Axis::Rows).front().member;
    AddTotal(document, Region(document), Axis::Rows, group, Side::After);
    const TablixShape shape(document, Region(document));
    const ElementId header = shape.Members(Axis::Rows).back().header;
    EXPECT_EQ(Look(document, ItemInCell(document, header)), "Total Bold - -");
}

TEST(Totals, OfATableOfAnOlderSchemaAreBoldInEveryCell) {
    const auto cell = [](const std::string& name, const std::string& value, const std::string& colour) {
        return "<TableCell><ReportItems><Textbox Name=\"" + name + "\"><Style><BackgroundColor>" + colour +
               "</BackgroundColor></Style><Value>" + value + "</Value></Textbox></ReportItems></TableCell>";
    };
    const auto row = [](const std::string& cells) {
        return "<TableRows><TableRow><TableCells>" + cells +
               "</TableCells><Height>5mm</Height></TableRow></TableRows>";
    };
    Document document(Report(
        "<Table Name=\"T\"><TableColumns><TableColumn><Width>2cm</Width></TableColumn><TableColumn><Width>2cm"
        "</Width></TableColumn></TableColumns><TableGroups><TableGroup><Grouping "
        "Name=\"G\"><GroupExpressions>"
        "<GroupExpression>=Fields!Region.Value</GroupExpression></GroupExpressions></Grouping><Header>" +
            row(cell("A", "=Fields!Region.Value", "Grey") + cell("B", "", "Grey")) +
            "</Header></TableGroup></TableGroups><Details>" +
            row(cell("C", "=Fields!Region.Value", "White") + cell("D", "=Fields!Net_Amount.Value", "White")) +
            "</Details><DataSetName>Sales</DataSetName></Table>",
        "2005"));
    const ElementId table = Region(document);
    const ElementId group = GroupsOf(document, table, Axis::Rows).front().member;
    AddTotal(document, table, Axis::Rows, group, Side::After);
    std::string looks;
    for (const ElementId one :
         ChildrenNamed(document, table, "Footer/TableRows/TableRow/TableCells", "TableCell")) {
        const ElementId item = ItemInCell(document, one);
        looks += document.TextAt(item, "Value").value_or("-") + " " +
                 document.TextAt(item, "Style/FontWeight").value_or("-") + " " +
                 document.TextAt(item, "Style/BackgroundColor").value_or("-") + "\n";
    }
    EXPECT_EQ(looks, "Total Bold White\n=Sum(Fields!Net_Amount.Value) Bold White\n");
}

}  // namespace
}  // namespace designer::test
