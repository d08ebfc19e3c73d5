// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/tables/groups.h"

#include "designer/tables/cells.h"
#include "designer/tables/fields.h"
#include "small_tables.h"

namespace designer::test {
namespace {

ElementId GroupNamed(const Document& document, ElementId table, const std::string& name,
                     Axis axis = Axis::Rows) {
    for (const RegionGroup& group : GroupsOf(document, table, axis)) {
        if (group.name == name) {
            return group.member;
        }
    }
    return NoElement;
}

const std::string ByRegion =
    "<GroupExpressions><GroupExpression>=Fields!Region.Value</GroupExpression></GroupExpressions></Group>"
    "<SortExpressions><SortExpression><Value>=Fields!Region.Value</Value></SortExpression></SortExpressions>";
const std::string Details = "<TablixMember><Group Name=\"Details\"/></TablixMember>";

// What is listed of the rows' groups.
std::string Listed(const Document& document, Axis axis = Axis::Rows) {
    std::string text;
    for (const RegionGroup& group : GroupsOf(document, Region(document), axis)) {
        text += std::string(static_cast<std::size_t>(group.depth) * 2, ' ') + group.name + " " +
                group.expression + " " + std::to_string(group.first) + "+" + std::to_string(group.count) +
                "\n";
    }
    return text;
}

TEST(Groups, AParentWithHeaderRowShowsItsValueInTheFirstCell) {
    const std::string before = Report(ListTablix());
    std::string after =
        With(before, Details,
             "<TablixMember><Group Name=\"RegionGroup\">" + ByRegion +
                 "<TablixMembers><TablixMember><KeepWithGroup>After</KeepWithGroup></TablixMember>" +
                 Details + "</TablixMembers></TablixMember>");
    const std::string row = "<TablixRow><Height>5mm</Height><TablixCells>" +
                            NewCellText("Textbox1", "=Fields!Region.Value", true) +
                            NewCellText("Textbox2", "", true) + "</TablixCells></TablixRow>";
    after = With(after, "</TablixRow><TablixRow>", "</TablixRow>" + row + "<TablixRow>");
    ExpectEdit(before, after, "Add group", [](Document& document, ElementId table) {
        AddGroup(document, table, Axis::Rows, GroupNamed(document, table, "Details"), GroupPlace::Parent,
                 {"=Fields!Region.Value", true, false});
    });
}

TEST(Groups, AParentWithoutRowsGetsAHeaderBesideAllRows) {
    Document document(Report(ListTablix()));
    const ElementId table = Region(document);
    AddGroup(document, table, Axis::Rows, GroupNamed(document, table, "Details"), GroupPlace::Parent,
             {"=Fields!Region.Value", false, false});
    const auto header = [](const std::string& box) {
        return "<TablixHeader><Size>2.54cm</Size><CellContents>" + box + "</CellContents></TablixHeader>";
    };
    const std::string padding =
        "<Style><PaddingLeft>2pt</PaddingLeft><PaddingRight>2pt</PaddingRight><PaddingTop>2pt</PaddingTop>"
        "<PaddingBottom>2pt</PaddingBottom></Style>";
    const auto padded = [&](const std::string& name, const std::string& value) {
        return With(NewBox(name, value), "<Style /></Textbox>", padding + "</Textbox>");
    };
    const std::string members = "<TablixMember>" + header(padded("Textbox2", "")) +
                                "<KeepWithGroup>After</KeepWithGroup></TablixMember>" +
                                "<TablixMember><Group Name=\"RegionGroup\">" + ByRegion +
                                header(padded("Textbox1", "=Fields!Region.Value")) + "<TablixMembers>" +
                                Details + "</TablixMembers></TablixMember>";
    EXPECT_EQ(document.Text(), With(Report(ListTablix(members)), "<Width>5cm</Width></Tablix>",
                                    "<Width>7.54cm</Width></Tablix>"));
}

TEST(Groups, ChildAndNeighbour) {
    Document document(Report(ListTablix()));
    const ElementId table = Region(document);
    AddGroup(document, table, Axis::Rows, GroupNamed(document, table, "Details"), GroupPlace::Parent,
             {"=Fields!Region.Value", true, true});
    EXPECT_EQ(Listed(document), "RegionGroup =Fields!Region.Value 1+3\n  Details  2+1\n");
    AddGroup(document, table, Axis::Rows, GroupNamed(document, table, "RegionGroup"), GroupPlace::Child,
             {"=Fields!Net_Amount.Value", true, false});
    EXPECT_EQ(Listed(document),
              "RegionGroup =Fields!Region.Value 1+4\n  Net_AmountGroup =Fields!Net_Amount.Value 2+2\n"
              "    Details  3+1\n");
    AddGroup(document, table, Axis::Rows, GroupNamed(document, table, "RegionGroup"), GroupPlace::After,
             {"=Fields!Region.Value", false, false});
    EXPECT_EQ(Listed(document),
              "RegionGroup =Fields!Region.Value 1+4\n  Net_AmountGroup =Fields!Net_Amount.Value 2+2\n"
              "    Details  3+1\nRegionGroup1 =Fields!Region.Value 5+1\n");
}

TEST(Groups, RefusalsSayWhy) {
    const std::string before = Report(ListTablix());
    ExpectRefusal(before, "A group needs an expression: =Fields!Region.Value",
                  [](Document& document, ElementId table) {
                      AddGroup(document, table, Axis::Rows, GroupNamed(document, table, "Details"),
                               GroupPlace::Parent, {"Region", false, false});
                  });
    ExpectRefusal(before, "The details have one row for each row of data and hold no group",
                  [](Document& document, ElementId table) {
                      AddGroup(document, table, Axis::Rows, GroupNamed(document, table, "Details"),
                               GroupPlace::Child, {"=1", false, false});
                  });
    ExpectRefusal(before, "A group beside another one has one track only: no header and no footer",
                  [](Document& document, ElementId table) {
                      AddGroup(document, table, Axis::Rows, GroupNamed(document, table, "Details"),
                               GroupPlace::After, {"=1", true, false});
                  });
}

TEST(Groups, AGroupIsDeletedWithOrWithoutItsRows) {
    const std::string before = Report(ListTablix());
    ExpectEdit(before,
               With(before, "<TablixMember><Group Name=\"Details\"/></TablixMember>",
                    "<TablixMember></TablixMember>"),
               "Delete group", [](Document& document, ElementId table) {
                   DeleteGroup(document, table, Axis::Rows, GroupNamed(document, table, "Details"),
                               OwnTracks::Stay);
               });
    Document document(before);
    DeleteGroup(document, Region(document), Axis::Rows, GroupNamed(document, Region(document), "Details"),
                OwnTracks::Go);
    EXPECT_EQ(TablixShape(document, Region(document)).Count(Axis::Rows), 1u);
}

TEST(Groups, ATotalSumsTheNumbersOfTheDetails) {
    const std::string before = Report(ListTablix());
    const std::string row = "<TablixRow><Height>5mm</Height><TablixCells>" +
                            NewCellText("Textbox1", "Total", true) +
                            NewCellText("Textbox2", "=Sum(Fields!Net_Amount.Value)", true) +
                            "</TablixCells></TablixRow></TablixRows>";
    const std::string after =
        With(With(before, "</TablixRows>", row), Details,
             Details + "<TablixMember><KeepWithGroup>Before</KeepWithGroup></TablixMember>");
    ExpectEdit(before, after, "Add total", [](Document& document, ElementId table) {
        EXPECT_EQ(AddTotal(document, table, Axis::Rows, GroupNamed(document, table, "Details"), Side::After),
                  2u);
    });
    ExpectRefusal(With(before, "=Fields!Net_Amount.Value", "=Fields!Region.Value &amp; 1"),
                  "The group shows no number that can be summed; run the data set with rows, or set the type "
                  "of the field in its Properties",
                  [](Document& document, ElementId table) {
                      AddTotal(document, table, Axis::Rows, GroupNamed(document, table, "Details"),
                               Side::After);
                  });
}

// Of 2005: two groups, of which only the inner one has a header.
TEST(Groups, ATotalOfATableIsInWhatIsAroundTheGroup) {
    const auto group = [](const std::string& name, const std::string& rows) {
        return "<TableGroup><Grouping Name=\"" + name +
               "\"><GroupExpressions><GroupExpression>=Fields!Region.Value</GroupExpression></"
               "GroupExpressions>"
               "</Grouping>" +
               rows + "</TableGroup>";
    };
    const auto row = [](const std::string& first, const std::string& second) {
        const auto cell = [](const std::string& name, const std::string& value) {
            return "<TableCell><ReportItems><Textbox Name=\"" + name + "\"><Value>" + value +
                   "</Value></Textbox></ReportItems></TableCell>";
        };
        return "<TableRows><TableRow><TableCells>" + cell(first, "=Fields!Region.Value") +
               cell(second, "=Fields!Net_Amount.Value") +
               "</TableCells><Height>5mm</Height></TableRow></TableRows>";
    };
    Document document(Report(
        "<Table Name=\"T\"><TableColumns><TableColumn><Width>2cm</Width></TableColumn>"
        "<TableColumn><Width>2cm</Width></TableColumn></TableColumns><TableGroups>" +
            group("Outer", "") + group("Inner", "<Header>" + row("A", "B") + "</Header>") +
            "</TableGroups><Details>" + row("C", "D") + "</Details><DataSetName>Sales</DataSetName></Table>",
        "2005"));
    const ElementId table = Region(document);
    EXPECT_EQ(AddTotal(document, table, Axis::Rows, GroupNamed(document, table, "Outer"), Side::Before), 0u);
    EXPECT_EQ(
        document.TextAt(table, "Header/TableRows/TableRow/TableCells/TableCell/ReportItems/Textbox/Value"),
        "Total");
    EXPECT_EQ(AddTotal(document, table, Axis::Rows, GroupNamed(document, table, "Inner"), Side::After), 3u);
    const ElementId outer = GroupNamed(document, table, "Outer");
    EXPECT_NE(document.Find(outer, "Footer/TableRows/TableRow"), NoElement);
    EXPECT_NE(document.Text().find("<Value>=Sum(Fields!Net_Amount.Value)</Value>"), std::string::npos);
    AddGroup(document, table, Axis::Rows, outer, GroupPlace::Parent,
             {"=Fields!Net_Amount.Value", true, true});
    EXPECT_EQ(Listed(document),
              "Net_AmountGroup =Fields!Net_Amount.Value 1+5\n  Outer =Fields!Region.Value 2+3\n"
              "    Inner =Fields!Region.Value 2+2\n        3+1\n");
}

TEST(Fields, AFieldOfItsValue) {
    EXPECT_EQ(FieldOfValue(" = fields!Net_Amount.value "), "Net_Amount");
    EXPECT_EQ(FieldOfValue("=Fields!A.Value + Fields!B.Value"), "");
    EXPECT_EQ(FieldOfValue("Fields!A.Value"), "");
    EXPECT_EQ(FieldOfValue("=Fields!.Value"), "");
}

TEST(Cells, AFieldIsShownAndNamedInTheHead) {
    const std::string before = With(Report(ListTablix()), "<Value>Net<", "<Value><");
    std::string after = With(before, Cell("B", ""), Cell("B", "Region"));
    after = With(after, "=Fields!Net_Amount.Value", "=Fields!Region.Value");
    Document document(before);
    const TablixShape shape(document, Region(document));
    PutField(document, Region(document), shape.Cell(Axis::Rows, 1, 1), "Region");
    EXPECT_EQ(document.Text(),
              With(With(before, Cell("B", ""), Cell("B", "Region")), Cell("D", "=Fields!Net_Amount.Value"),
                   Cell("D", "=Fields!Region.Value")));
    EXPECT_EQ(document.UndoName(), "Show Region");
}

TEST(Cells, OutsideOfTheDetailsANumberIsSummed) {
    Document document(Report(ListTablix()));
    const TablixShape shape(document, Region(document));
    PutField(document, Region(document), shape.Cell(Axis::Rows, 0, 1), "Net_Amount");
    EXPECT_EQ(document.Text(),
              With(Report(ListTablix()), "<Value>Net<", "<Value>=Sum(Fields!Net_Amount.Value)<"));
}

TEST(Cells, AFieldMakesAColumnWithItsHead) {
    Document document(Report(ListTablix()));
    EXPECT_EQ(AddFieldColumn(document, Region(document), 2, "Net_Amount"), 2u);
    const auto right = [](const std::string& cell) {
        return With(cell, "<Style /></Paragraph>", "<Style><TextAlign>Right</TextAlign></Style></Paragraph>");
    };
    std::string after = Report(ListTablix());
    after = With(after, Cell("B", "Net"), Cell("B", "Net") + right(NewCellText("Textbox1", "Net Amount")));
    after = With(
        after, Cell("D", "=Fields!Net_Amount.Value"),
        Cell("D", "=Fields!Net_Amount.Value") + right(NewCellText("Textbox2", "=Fields!Net_Amount.Value")));
    after = With(
        after, "<TablixColumn><Width>3cm</Width></TablixColumn>",
        "<TablixColumn><Width>3cm</Width></TablixColumn><TablixColumn><Width>3cm</Width></TablixColumn>");
    after = With(after, "<TablixMember/><TablixMember/>",
                 "<TablixMember/><TablixMember/><TablixMember></TablixMember>");
    after = With(after, "<Width>5cm</Width></Tablix>", "<Width>8cm</Width></Tablix>");
    EXPECT_EQ(document.Text(), after);
    EXPECT_EQ(document.UndoCount(), 1u);
}

TEST(Cells, MergedAndSplitAgain) {
    const std::string before = Report(ListTablix());
    const std::string merged =
        With(before, Cell("A", "Region") + Cell("B", "Net"),
             Cell("A", "Region Net", "<ColSpan>2</ColSpan>") + "<TablixCell></TablixCell>");
    ExpectEdit(before, merged, "Merge cells",
               [](Document& document, ElementId table) { MergeCells(document, table, 0, 0, 2); });
    ExpectEdit(merged,
               With(merged, Cell("A", "Region Net", "<ColSpan>2</ColSpan>") + "<TablixCell></TablixCell>",
                    Cell("A", "Region Net") + NewCellText("Textbox1")),
               "Split cell", [](Document& document, ElementId table) { SplitCell(document, table, 0, 1); });
    ExpectRefusal(before, "Cells cannot be merged if one of them has an expression and another one a text",
                  [](Document& document, ElementId table) { MergeCells(document, table, 1, 0, 2); });
    ExpectRefusal(before, "The cell is not merged",
                  [](Document& document, ElementId table) { SplitCell(document, table, 1, 0); });
}

}  // namespace
}  // namespace designer::test
