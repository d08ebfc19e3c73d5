// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/tables/older_matrix.h"
#include "designer/tables/groups.h"
#include "small_tables.h"

namespace designer::test {
namespace {

std::string OldBox(const std::string& name, const std::string& value) {
    return "<ReportItems><Textbox Name=\"" + name + "\"><Value>" + value + "</Value></Textbox></ReportItems>";
}

std::string Rows(const std::string& name, const std::string& more = {}) {
    return "<RowGrouping><Width>2cm</Width><DynamicRows><Grouping Name=\"" + name +
           "\"><GroupExpressions><GroupExpression>=Fields!Region.Value</GroupExpression></GroupExpressions>"
           "</Grouping>" +
           more + OldBox("H" + name, "=Fields!Region.Value") + "</DynamicRows></RowGrouping>";
}

std::string MatrixReport(const std::string& rowGroupings) {
    return Report(
        "<Matrix Name=\"M\"><ColumnGroupings><ColumnGrouping><Height>1cm</Height><DynamicColumns>"
        "<Grouping Name=\"C\"><GroupExpressions><GroupExpression>=Fields!Region.Value"
        "</GroupExpression></GroupExpressions></Grouping>" +
            OldBox("HC", "=Fields!Region.Value") +
            "</DynamicColumns></ColumnGrouping></ColumnGroupings><RowGroupings>" + rowGroupings +
            "</RowGroupings><MatrixRows><MatrixRow><Height>1cm</Height><MatrixCells><MatrixCell>" +
            OldBox("X", "=Sum(Fields!Net_Amount.Value)") +
            "</MatrixCell></MatrixCells></MatrixRow></MatrixRows><MatrixColumns><MatrixColumn>"
            "<Width>3cm</Width></MatrixColumn></MatrixColumns><DataSetName>Sales</DataSetName>"
            "</Matrix>",
        "2005");
}

ElementId GroupOfRows(const Document& document, const std::string& name) {
    for (const RegionGroup& group : GroupsOf(document, Region(document), Axis::Rows)) {
        if (group.name == name) {
            return group.member;
        }
    }
    return NoElement;
}

std::string NewRows() {
    return "<RowGrouping><Width>2cm</Width><DynamicRows><Grouping Name=\"Net_AmountGroup\"><GroupExpressions>"
           "<GroupExpression>=Fields!Net_Amount.Value</GroupExpression></GroupExpressions></"
           "Grouping><Sorting>"
           "<SortBy><SortExpression>=Fields!Net_Amount.Value</SortExpression></SortBy></Sorting><ReportItems>"
           "<Textbox Name=\"Textbox1\"><Style "
           "/><CanGrow>true</CanGrow><Value>=Fields!Net_Amount.Value</Value>"
           "</Textbox></ReportItems></DynamicRows></RowGrouping>";
}

TEST(OlderMatrix, GroupsAreAddedAroundAndWithin) {
    const std::string before = MatrixReport(Rows("R"));
    const NewGroup group{"=Fields!Net_Amount.Value"};
    ExpectEdit(
        before, MatrixReport(NewRows() + Rows("R")), "Add group", [&](Document& document, ElementId matrix) {
            AddGroup(document, matrix, Axis::Rows, GroupOfRows(document, "R"), GroupPlace::Parent, group);
        });
    ExpectEdit(
        before, MatrixReport(Rows("R") + NewRows()), "Add group", [&](Document& document, ElementId matrix) {
            const ElementId added =
                AddGroup(document, matrix, Axis::Rows, GroupOfRows(document, "R"), GroupPlace::Child, group);
            EXPECT_EQ(added, GroupOfRows(document, "Net_AmountGroup"));
        });
    ExpectRefusal(before, "A Matrix of an older schema cannot have groups beside each other",
                  [&](Document& document, ElementId matrix) {
                      AddGroup(document, matrix, Axis::Rows, GroupOfRows(document, "R"), GroupPlace::After,
                               group);
                  });
}

TEST(OlderMatrix, TheLastGroupOfASideStays) {
    ExpectEdit(MatrixReport(Rows("Q") + Rows("R")), MatrixReport(Rows("R")), "Delete group",
               [](Document& document, ElementId matrix) {
                   DeleteGroup(document, matrix, Axis::Rows, GroupOfRows(document, "Q"), false);
               });
    ExpectRefusal(MatrixReport(Rows("R")), "The matrix has no other group of rows",
                  [](Document& document, ElementId matrix) {
                      DeleteGroup(document, matrix, Axis::Rows, GroupOfRows(document, "R"), true);
                  });
}

TEST(OlderMatrix, ATotalIsAddedOnce) {
    const auto total = [](const std::string& position) {
        return "<Subtotal><ReportItems><Textbox "
               "Name=\"Textbox1\"><Style><FontWeight>Bold</FontWeight></Style>"
               "<CanGrow>true</CanGrow><Value>Total</Value></Textbox></ReportItems>" +
               position + "</Subtotal>";
    };
    const auto add = [](Side side) {
        return [side](Document& document, ElementId matrix) {
            AddTotal(document, matrix, Axis::Rows, GroupOfRows(document, "R"), side);
        };
    };
    ExpectEdit(MatrixReport(Rows("R")), MatrixReport(Rows("R", total(""))), "Add total", add(Side::After));
    ExpectEdit(MatrixReport(Rows("R")), MatrixReport(Rows("R", total("<Position>Before</Position>"))),
               "Add total", add(Side::Before));
    ExpectRefusal(MatrixReport(Rows("R", total(""))), "The group has a total already", add(Side::After));
}

}  // namespace
}  // namespace designer::test
