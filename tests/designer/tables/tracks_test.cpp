// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/tables/tracks.h"

#include "small_tables.h"

namespace designer::test {
namespace {

const std::string Columns = "<TablixColumn><Width>2cm</Width></TablixColumn>";
const std::string EmptyMembers = "<TablixMembers><TablixMember/><TablixMember/></TablixMembers>";
const std::string HeadMember = "<TablixMember><KeepWithGroup>After</KeepWithGroup></TablixMember>";

TEST(Tracks, AColumnIsAddedLeftWithTheLookOfItsNeighbour) {
    const std::string before = Report(ListTablix());
    std::string after = With(before, Columns, Columns + Columns);
    after = With(after, Cell("A", "Region"), NewCellText("Textbox1") + Cell("A", "Region"));
    after = With(after, Cell("C", "=Fields!Region.Value"),
                 NewCellText("Textbox2") + Cell("C", "=Fields!Region.Value"));
    after =
        With(after, EmptyMembers,
             "<TablixMembers><TablixMember></TablixMember><TablixMember/><TablixMember/></TablixMembers>");
    after = With(after, "<Width>5cm</Width></Tablix>", "<Width>7cm</Width></Tablix>");
    ExpectEdit(before, after, "Add column", [](Document& document, ElementId table) {
        EXPECT_EQ(AddTrack(document, table, Axis::Columns, 0, Side::Before, GroupSide::Inside), 0u);
    });
}

TEST(Tracks, AMergedCellGrowsOverAColumnAddedWithinIt) {
    std::string before = Report(ListTablix());
    before = With(before, Cell("A", "Region") + Cell("B", "Net"),
                  Cell("A", "Region", "<ColSpan>2</ColSpan>") + "<TablixCell/>");
    Document document(before);
    AddTrack(document, Region(document), Axis::Columns, 0, Side::After, GroupSide::Inside);
    EXPECT_NE(document.Text().find(Cell("A", "Region", "<ColSpan>3</ColSpan>") +
                                   "<TablixCell /><TablixCell/></TablixCells>"),
              std::string::npos)
        << document.Text();
}

TEST(Tracks, ARowBelowTheDetailsIsAPartOfTheirGroupOrNot) {
    const std::string before = Report(ListTablix());
    Document inside(before);
    EXPECT_EQ(AddTrack(inside, Region(inside), Axis::Rows, 1, Side::After, GroupSide::Inside), 2u);
    EXPECT_NE(inside.Text().find("<Group Name=\"Details\"/><TablixMembers><TablixMember/><TablixMember/>"
                                 "</TablixMembers></TablixMember></TablixMembers></TablixRowHierarchy>"),
              std::string::npos)
        << inside.Text();
    const std::string row = "<TablixRow><Height>5mm</Height><TablixCells>" + NewCellText("Textbox1") +
                            NewCellText("Textbox2") + "</TablixCells></TablixRow></TablixRows>";
    const std::string after =
        With(With(before, "</TablixRows>", row), "<Group Name=\"Details\"/></TablixMember>",
             "<Group Name=\"Details\"/></TablixMember><TablixMember><KeepWithGroup>Before</KeepWithGroup>"
             "</TablixMember>");
    ExpectEdit(before, after, "Add row", [](Document& document, ElementId table) {
        EXPECT_EQ(AddTrack(document, table, Axis::Rows, 1, Side::After, GroupSide::Outside), 2u);
    });
}

TEST(Tracks, ARowBesideTheHeadStaysWithTheGroupToo) {
    Document document(Report(ListTablix()));
    AddTrack(document, Region(document), Axis::Rows, 0, Side::Before, GroupSide::Inside);
    EXPECT_NE(document.Text().find("<TablixMembers>" + HeadMember + HeadMember), std::string::npos)
        << document.Text();
}

TEST(Tracks, WhatIsInNoGroupHasNoOutside) {
    ExpectRefusal(Report(ListTablix()), "The row is in no group", [](Document& document, ElementId table) {
        AddTrack(document, table, Axis::Rows, 0, Side::After, GroupSide::Outside);
    });
    ExpectRefusal(Report(ListTablix()), "The table has no such column",
                  [](Document& document, ElementId table) {
                      AddTrack(document, table, Axis::Columns, 2, Side::After, GroupSide::Inside);
                  });
}

TEST(Tracks, AColumnIsDeletedWithItsCellsAndItsMember) {
    const std::string before = Report(ListTablix());
    std::string after = With(before, Columns, "");
    after = With(after, Cell("A", "Region"), "");
    after = With(after, Cell("C", "=Fields!Region.Value"), "");
    after = With(after, EmptyMembers, "<TablixMembers><TablixMember/></TablixMembers>");
    after = With(after, "<Width>5cm</Width></Tablix>", "<Width>3cm</Width></Tablix>");
    ExpectEdit(before, after, "Delete column", [](Document& document, ElementId table) {
        DeleteTracks(document, table, Axis::Columns, 0, 1);
    });
}

TEST(Tracks, AMergedCellThatLosesItsFirstColumnIsWrittenInTheNext) {
    std::string before = Report(ListTablix());
    before = With(before, Cell("A", "Region") + Cell("B", "Net"),
                  Cell("A", "Region", "<ColSpan>2</ColSpan>") + "<TablixCell/>");
    Document document(before);
    DeleteTracks(document, Region(document), Axis::Columns, 0, 1);
    EXPECT_NE(document.Text().find("<TablixCells>" + Cell("A", "Region") + "</TablixCells>"),
              std::string::npos)
        << document.Text();
}

TEST(Tracks, TheGroupOfADeletedRowGoesToo) {
    const std::string before = Report(ListTablix());
    Document document(before);
    DeleteTracks(document, Region(document), Axis::Rows, 1, 1);
    EXPECT_EQ(document.Text().find("<Group "), std::string::npos);
    ExpectRefusal(document.Text(), "The table has no other row; delete the table itself",
                  [](Document& one, ElementId table) { DeleteTracks(one, table, Axis::Rows, 0, 1); });
}

TEST(Tracks, WhatIsStillUsedIsNotDeleted) {
    std::string before = Report(ListTablix());
    before = With(before, "<Value>Net<", "<Value>=ReportItems!a.Value &amp; 1<");
    ExpectRefusal(
        before, "What would be deleted is still used: =ReportItems!a.Value & 1",
        [](Document& document, ElementId table) { DeleteTracks(document, table, Axis::Columns, 0, 1); });
    before = With(Report(ListTablix()), "<Value>Net<", "<Value>=CountRows(\"Details\")<");
    ExpectRefusal(
        before, "What would be deleted is still used: =CountRows(\"Details\")",
        [](Document& document, ElementId table) { DeleteTracks(document, table, Axis::Rows, 1, 1); });
}

TEST(Tracks, AColumnMovesWithItsCells) {
    const std::string before = Report(ListTablix());
    std::string after = With(before, Columns + "<TablixColumn><Width>3cm</Width></TablixColumn>",
                             "<TablixColumn><Width>3cm</Width></TablixColumn>" + Columns);
    after = With(after, Cell("A", "Region") + Cell("B", "Net"), Cell("B", "Net") + Cell("A", "Region"));
    after = With(after, Cell("C", "=Fields!Region.Value") + Cell("D", "=Fields!Net_Amount.Value"),
                 Cell("D", "=Fields!Net_Amount.Value") + Cell("C", "=Fields!Region.Value"));
    for (const std::size_t from : {0, 1}) {
        ExpectEdit(before, after, "Move column", [from](Document& document, ElementId table) {
            MoveTrack(document, table, Axis::Columns, from, 1 - from);
        });
    }
}

TEST(Tracks, AMovedCellKeepsItsId) {
    Document document(Report(ListTablix()));
    const TablixShape before(document, Region(document));
    MoveTrack(document, Region(document), Axis::Columns, 0, 1);
    const TablixShape after(document, Region(document));
    EXPECT_EQ(before.Cell(Axis::Columns, 0, 1), after.Cell(Axis::Columns, 1, 1));
}

TEST(Tracks, ARowDoesNotMovePastAGroup) {
    ExpectRefusal(Report(ListTablix()), "A row cannot move past the rows of a group",
                  [](Document& document, ElementId table) { MoveTrack(document, table, Axis::Rows, 0, 1); });
}

TEST(Tracks, ASizeChangesItsOwnElementAndThatOfTheTable) {
    const std::string before = Report(ListTablix());
    std::string after =
        With(before, "<Width>3cm</Width></TablixColumn>", "<Width>4cm</Width></TablixColumn>");
    after = With(after, "<Width>5cm</Width></Tablix>", "<Width>6cm</Width></Tablix>");
    ExpectEdit(before, after, "Resize column", [](Document& document, ElementId table) {
        SetTrackSize(document, table, Axis::Columns, 1, 4 * 72 / 2.54);
    });
    ExpectEdit(before, With(before, "<Height>5mm<", "<Height>7.5mm<"), "Resize row",
               [](Document& document, ElementId table) {
                   SetTrackSize(document, table, Axis::Rows, 1, 7.5 * 72 / 25.4);
               });
}

TEST(Tracks, ADamagedTableIsRefused) {
    const std::string before =
        With(Report(ListTablix()), EmptyMembers, "<TablixMembers><TablixMember/></TablixMembers>");
    ExpectRefusal(before, "T cannot be changed: its body has 2 columns, its members ask for 1",
                  [](Document& document, ElementId table) {
                      AddTrack(document, table, Axis::Columns, 0, Side::After, GroupSide::Inside);
                  });
}

// A table that a program has made: its edits cost about as much as a few readings of the file.
TEST(Tracks, ALargeTableIsChanged) {
    std::string row =
        "<TablixRow><Height>5mm</Height><TablixCells><TablixCell/><TablixCell/></TablixCells></TablixRow>";
    std::string rows, members;
    for (int i = 0; i < 5000; ++i) {
        rows += row;
        members += "<TablixMember/>";
    }
    std::string report = Report(ListTablix("<TablixMember/><TablixMember/>" + members));
    report = With(report, "</TablixRows>", rows + "</TablixRows>");
    Document document(report);
    AddTrack(document, Region(document), Axis::Columns, 1, Side::After, GroupSide::Inside);
    EXPECT_NE(document.Text().find("\"Textbox5002\""), std::string::npos);
    DeleteTracks(document, Region(document), Axis::Columns, 0, 1);
    document.Undo();
    document.Undo();
    EXPECT_EQ(document.Bytes(), report);
}

// --- Table of 2005 ---

std::string OldBox(const std::string& name, const std::string& value) {
    return "<Textbox Name=\"" + name + "\"><Value>" + value + "</Value></Textbox>";
}
std::string OldCell(const std::string& name, const std::string& value, const std::string& span = {}) {
    return "<TableCell><ReportItems>" + OldBox(name, value) + "</ReportItems>" + span + "</TableCell>";
}
std::string OldRow(const std::string& cells) {
    return "<TableRow><TableCells>" + cells + "</TableCells><Height>5mm</Height></TableRow>";
}
std::string OldReport(const std::string& head = OldCell("A", "Region") + OldCell("B", "Net")) {
    return Report(
        "<Table Name=\"T\"><TableColumns><TableColumn><Width>2cm</Width></TableColumn><TableColumn>"
        "<Width>3cm</Width></TableColumn></TableColumns><Header><TableRows>" +
            OldRow(head) + "</TableRows></Header><Details><TableRows>" +
            OldRow(OldCell("C", "=Fields!Region.Value") + OldCell("D", "=Fields!Net_Amount.Value")) +
            "</TableRows></Details><DataSetName>Sales</DataSetName></Table>",
        "2005");
}
std::string NewOldCell(const std::string& name) {
    return "<TableCell><ReportItems><Textbox Name=\"" + name +
           "\"><Style /><CanGrow>true</CanGrow><Value></Value></Textbox></ReportItems></TableCell>";
}

TEST(OlderTables, AColumnIsAddedAtTheEndAndWithinAMergedCell) {
    const std::string before = OldReport(OldCell("A", "Region", "<ColSpan>2</ColSpan>"));
    std::string after = With(before, "<TableColumns>", "<TableColumns>");
    after = With(after, "<Width>3cm</Width></TableColumn>",
                 "<Width>3cm</Width></TableColumn><TableColumn><Width>3cm</Width></TableColumn>");
    after = With(after, OldCell("A", "Region", "<ColSpan>2</ColSpan>"),
                 OldCell("A", "Region", "<ColSpan>2</ColSpan>") + NewOldCell("Textbox1"));
    after = With(after, OldCell("D", "=Fields!Net_Amount.Value"),
                 OldCell("D", "=Fields!Net_Amount.Value") + NewOldCell("Textbox2"));
    ExpectEdit(before, after, "Add column", [](Document& document, ElementId table) {
        AddTrack(document, table, Axis::Columns, 1, Side::After, GroupSide::Inside);
    });
    Document within(before);
    AddTrack(within, Region(within), Axis::Columns, 0, Side::After, GroupSide::Inside);
    EXPECT_NE(within.Text().find("<ColSpan>3</ColSpan>"), std::string::npos);
}

TEST(OlderTables, ARowOutsideOfTheDetailsIsInTheFooter) {
    const std::string before = OldReport();
    const std::string footer = "<Footer><TableRows>" +
                               OldRow(NewOldCell("Textbox1") + NewOldCell("Textbox2")) +
                               "</TableRows></Footer>";
    ExpectEdit(before, With(before, "</Details>", "</Details>" + footer), "Add row",
               [](Document& document, ElementId table) {
                   EXPECT_EQ(AddTrack(document, table, Axis::Rows, 1, Side::After, GroupSide::Outside), 2u);
               });
    ExpectRefusal(before, "The row is in no group", [](Document& document, ElementId table) {
        AddTrack(document, table, Axis::Rows, 0, Side::Before, GroupSide::Outside);
    });
}

TEST(OlderTables, TheLastRowOfABandTakesItAlong) {
    const std::string before = OldReport();
    const std::string head = "<Header><TableRows>" + OldRow(OldCell("A", "Region") + OldCell("B", "Net")) +
                             "</TableRows></Header>";
    ExpectEdit(before, With(before, head, ""), "Delete row",
               [](Document& document, ElementId table) { DeleteTracks(document, table, Axis::Rows, 0, 1); });
}

TEST(OlderTables, ColumnsAreDeletedAndMoved) {
    const std::string before = OldReport(OldCell("A", "Region", "<ColSpan>2</ColSpan>"));
    Document document(before);
    DeleteTracks(document, Region(document), Axis::Columns, 1, 1);
    EXPECT_EQ(document.Text().find("ColSpan"), std::string::npos);
    EXPECT_EQ(document.Text().find("Name=\"D\"><Value>"), std::string::npos);
    ExpectRefusal(before, "A merged cell is in the way; split it first",
                  [](Document& one, ElementId table) { MoveTrack(one, table, Axis::Columns, 0, 1); });
    Document moved(OldReport());
    MoveTrack(moved, Region(moved), Axis::Columns, 1, 0);
    EXPECT_NE(moved.Text().find(OldCell("B", "Net") + OldCell("A", "Region")), std::string::npos);
}

}  // namespace
}  // namespace designer::test
