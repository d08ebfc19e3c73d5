// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/tables/older_matrix.h"
#include "designer/document/tablix_grid.h"
#include "designer/tables/cells.h"
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

TEST(OlderMatrix, ANewGroupTakesAWidthThatIsNone) {
    const auto odd = [](const std::string& rows) { return With(rows, "2cm", "2 &lt;cm&gt;"); };
    ExpectEdit(MatrixReport(odd(Rows("R"))), MatrixReport(odd(Rows("R")) + odd(NewRows())), "Add group",
               [&](Document& document, ElementId matrix) {
                   AddGroup(document, matrix, Axis::Rows, GroupOfRows(document, "R"), GroupPlace::Child,
                            {"=Fields!Net_Amount.Value"});
               });
}

TEST(OlderMatrix, TheLastGroupOfASideStays) {
    ExpectEdit(MatrixReport(Rows("Q") + Rows("R")), MatrixReport(Rows("R")), "Delete group",
               [](Document& document, ElementId matrix) {
                   DeleteGroup(document, matrix, Axis::Rows, GroupOfRows(document, "Q"), OwnTracks::Stay);
               });
    ExpectRefusal(MatrixReport(Rows("R")), "The matrix has no other group of rows",
                  [](Document& document, ElementId matrix) {
                      DeleteGroup(document, matrix, Axis::Rows, GroupOfRows(document, "R"), OwnTracks::Go);
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

std::string Names(const Document& document, ElementId matrix) {
    const TablixGrid grid = GridOf(document, matrix);
    std::string names;
    for (const GridCell& cell : grid.cells) {
        names += document.Attribute(cell.item, "Name").value_or("") + "=" +
                 document.TextAt(cell.item, "Value").value_or("") + "|";
    }
    return std::to_string(grid.columns.size()) + "x" + std::to_string(grid.rows.size()) + " " + names;
}

TEST(OlderMatrix, AColumnIsAddedWithHeadings) {
    Document document(MatrixReport(Rows("R")));
    const ElementId matrix = Region(document);
    EXPECT_EQ(AddTrack(document, matrix, Axis::Columns, 0, Side::After, GroupSide::Inside), 1u);
    EXPECT_EQ(Names(document, matrix),
              "2x1 Textbox1=Net Amount|Textbox2=|HC==Fields!Region.Value|HR==Fields!Region.Value|"
              "X==Sum(Fields!Net_Amount.Value)|Textbox3=|");
    EXPECT_EQ(AddTrack(document, matrix, Axis::Columns, 1, Side::Before, GroupSide::Inside), 1u);
    EXPECT_EQ(Names(document, matrix),
              "3x1 Textbox1=Net Amount|Textbox4=|Textbox2=|HC==Fields!Region.Value|HR==Fields!Region.Value|"
              "X==Sum(Fields!Net_Amount.Value)|Textbox5=|Textbox3=|");
    MoveTrack(document, matrix, Axis::Columns, 0, 2);
    EXPECT_EQ(Names(document, matrix),
              "3x1 Textbox4=|Textbox2=|Textbox1=Net Amount|HC==Fields!Region.Value|HR==Fields!Region.Value|"
              "Textbox5=|Textbox3=|X==Sum(Fields!Net_Amount.Value)|");
    DeleteTracks(document, matrix, Axis::Columns, 0, 2);
    EXPECT_EQ(Names(document, matrix),
              "1x1 Textbox1=Net Amount|HC==Fields!Region.Value|HR==Fields!Region.Value|"
              "X==Sum(Fields!Net_Amount.Value)|");
    while (document.Undo()) {
    }
    EXPECT_EQ(document.Text(), MatrixReport(Rows("R")));
}

TEST(OlderMatrix, ARowIsAddedBeforeTheOnlyOne) {
    Document document(MatrixReport(Rows("Q") + Rows("R")));
    const ElementId matrix = Region(document);
    EXPECT_EQ(AddTrack(document, matrix, Axis::Rows, 0, Side::Before, GroupSide::Inside), 0u);
    EXPECT_EQ(Names(document, matrix),
              "1x2 HC==Fields!Region.Value|Textbox1=|Textbox2=Net Amount|HR==Fields!Region.Value|"
              "HQ==Fields!Region.Value|Textbox3=|X==Sum(Fields!Net_Amount.Value)|");
    EXPECT_NE(document.Text().find("</RowGrouping><RowGrouping><Width>2cm</Width><StaticRows><StaticRow>"),
              std::string::npos);
    EXPECT_NE(document.Text().find("<MatrixRows><MatrixRow><Height>1cm</Height><MatrixCells><MatrixCell>"
                                   "<ReportItems><Textbox Name=\"Textbox3\">"),
              std::string::npos);
}

TEST(OlderMatrix, TheOnlyTrackStaysAndNoneIsOutside) {
    ExpectRefusal(
        MatrixReport(Rows("R")), "The table has no other column; delete the table itself",
        [](Document& document, ElementId matrix) { DeleteTracks(document, matrix, Axis::Columns, 0, 1); });
    ExpectRefusal(MatrixReport(Rows("R")), "A row of a Matrix is within all of its groups",
                  [](Document& document, ElementId matrix) {
                      AddTrack(document, matrix, Axis::Rows, 0, Side::After, GroupSide::Outside);
                  });
}

TEST(OlderMatrix, AFieldInANewColumnGivesItItsHeading) {
    Document document(MatrixReport(Rows("R")));
    const ElementId matrix = Region(document);
    AddTrack(document, matrix, Axis::Columns, 0, Side::After, GroupSide::Inside);
    const auto put = [&](const char* field) {
        PutField(document, matrix, GridOf(document, matrix).cells.back().element, field);
        return Names(document, matrix);
    };
    EXPECT_NE(put("Net_Amount").find("Textbox2=Net Amount|"), std::string::npos);
    EXPECT_NE(put("Region").find("Textbox2=Net Amount|"), std::string::npos);
    AddTotal(document, matrix, Axis::Rows, GroupOfRows(document, "R"), Side::After);
    EXPECT_EQ(AddFieldColumn(document, matrix, 2, "Net_Amount"), 2u);
    const std::string names = Names(document, matrix);
    EXPECT_TRUE(names.ends_with("=Sum(Fields!Net_Amount.Value)|")) << names;
    EXPECT_NE(names.find("Textbox5=Net Amount|"), std::string::npos) << names;
}

// The columns of a total are those of its group.
TEST(OlderMatrix, TracksOfATotalAreThoseOfTheGroup) {
    Document document(MatrixReport(Rows("R")));
    const ElementId matrix = Region(document);
    AddTotal(document, matrix, Axis::Rows, GroupOfRows(document, "R"), Side::After);
    EXPECT_EQ(AddTrack(document, matrix, Axis::Rows, 1, Side::After, GroupSide::Inside), 1u);
    EXPECT_EQ(GridOf(document, matrix).rows.size(), 4u);
    EXPECT_THROW(DeleteTracks(document, matrix, Axis::Rows, 1, 2), EditError);
    EXPECT_THROW(MoveTrack(document, matrix, Axis::Rows, 2, 1), EditError);
    DeleteTracks(document, matrix, Axis::Rows, 2, 1);
    EXPECT_EQ(GridOf(document, matrix).rows.size(), 2u);
}

}  // namespace
}  // namespace designer::test
