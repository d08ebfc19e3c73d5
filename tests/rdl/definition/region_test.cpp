// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>

#include "rdl/definition/rdl_text.h"

namespace rdl::test {
namespace {

using testing::HasSubstr;
using Keep = TablixMember::KeepWithGroup;

std::string Box(const std::string& value) {
    return "<ReportItems><Textbox><Value>" + value + "</Value></Textbox></ReportItems>";
}

std::string Row(const std::string& first, const std::string& second) {
    return "<TableRow><Height>1cm</Height><TableCells><TableCell>" + Box(first) + "</TableCell><TableCell>" +
           Box(second) + "</TableCell></TableCells></TableRow>";
}

const std::string Columns =
    "<TableColumns><TableColumn><Width>1in</Width></TableColumn><TableColumn><Width>2in</Width></"
    "TableColumn></TableColumns>";

TEST(ReportTable, BecomesATablixWithItsRowsInOrder) {
    const Definition report = Parse(WithItems(
        "<Table Name=\"t\"><DataSetName>d</DataSetName>" + Columns + "<Header><TableRows>" + Row("h1", "h2") +
        "</TableRows><RepeatOnNewPage>true</RepeatOnNewPage></Header><TableGroups><TableGroup><Grouping "
        "Name=\"g\">"
        "<GroupExpressions><GroupExpression>=Fields!A.Value</GroupExpression></GroupExpressions>"
        "<PageBreakAtEnd>true</PageBreakAtEnd></Grouping><Sorting><SortBy><SortExpression>=Fields!A.Value"
        "</SortExpression><Direction>Descending</Direction></SortBy></Sorting><Header><TableRows>" +
        Row("gh1", "gh2") + "</TableRows></Header><Footer><TableRows>" + Row("gf1", "gf2") +
        "</TableRows></Footer></TableGroup></TableGroups><Details><TableRows>" + Row("d1", "d2") +
        "</TableRows></Details><Footer><TableRows>" + Row("f1", "f2") + "</TableRows></Footer></Table>"));
    const auto& tablix = OnlyItem<Tablix>(report);
    EXPECT_EQ(tablix.dataSetName, "d");
    std::vector<std::string> texts;
    for (const TablixRow& row : tablix.rows) {
        texts.push_back(TextOf(row.cells.at(0).item.get()));
    }
    EXPECT_THAT(texts, testing::ElementsAre("h1", "gh1", "d1", "gf1", "f1"));
    EXPECT_DOUBLE_EQ(tablix.width, 3 * 72);
    ASSERT_EQ(tablix.rowMembers.size(), 3u);
    EXPECT_TRUE(tablix.rowMembers[0].repeatOnNewPage);
    EXPECT_EQ(tablix.rowMembers[0].keepWithGroup, Keep::After);
    EXPECT_EQ(tablix.rowMembers[2].keepWithGroup, Keep::Before);
    const TablixMember& group = tablix.rowMembers[1];
    EXPECT_EQ(group.group->name, "g");
    EXPECT_EQ(group.group->expressions.at(0).source, "=Fields!A.Value");
    EXPECT_EQ(group.group->pageBreak.location, PageBreak::Location::End);
    EXPECT_TRUE(group.sorts.at(0).descending);
    ASSERT_EQ(group.members.size(), 3u);
    ASSERT_TRUE(group.members[1].group);
    EXPECT_TRUE(group.members[1].group->expressions.empty());
    EXPECT_TRUE(group.members[1].members.empty());
}

TEST(ReportTable, SpanningCellCoversTheNextAndFillsBoth) {
    const Definition report = Parse(WithItems(
        "<Table>" + Columns + "<Details><TableRows><TableRow><Height>1cm</Height><TableCells><TableCell>" +
        Box("x") + "<ColSpan>2</ColSpan></TableCell></TableCells></TableRow></TableRows></Details></Table>"));
    const TablixRow& row = OnlyItem<Tablix>(report).rows.at(0);
    ASSERT_EQ(row.cells.size(), 2u);
    EXPECT_EQ(row.cells[0].colSpan, 2);
    EXPECT_DOUBLE_EQ(row.cells[0].item->width, 3 * 72);
    EXPECT_EQ(row.cells[1].item, nullptr);
}

TEST(ReportTable, DetailRowsBecomeMembersOfOneGroup) {
    const Definition report =
        Parse(WithItems("<Table>" + Columns + "<Details><TableRows>" + Row("a", "b") + Row("c", "d") +
                        "</TableRows><Visibility><Hidden>true</Hidden></Visibility></Details></Table>"));
    const auto& members = OnlyItem<Tablix>(report).rowMembers;
    ASSERT_EQ(members.size(), 1u);
    EXPECT_EQ(members[0].members.size(), 2u);
    EXPECT_EQ(members[0].visibility.hidden.source, "true");
}

TEST(ReportTable, MoreCellsThanColumnsIsAnError) {
    EXPECT_THAT(ErrorOf(WithItems(
                    "<Table Name=\"t\"><TableColumns><TableColumn/></TableColumns><Details><TableRows>" +
                    Row("a", "b") + "</TableRows></Details></Table>")),
                HasSubstr("Table t: a row has more cells"));
}

TEST(ReportTable, WithoutRowsOrColumnsIsAnError) {
    EXPECT_THAT(ErrorOf(WithItems("<Table Name=\"t\">" + Columns + "</Table>")), HasSubstr("no rows"));
    EXPECT_THAT(ErrorOf(WithItems("<Table Name=\"t\"/>")), HasSubstr("no columns"));
}

TEST(ReportList, BecomesOneCellWithARectangle) {
    const Definition report = Parse(WithItems(
        "<List Name=\"l\"><Height>1in</Height><Width>4in</Width><Grouping Name=\"g\"><GroupExpressions>"
        "<GroupExpression>=1</GroupExpression></GroupExpressions></Grouping><NoRows>nothing</NoRows>"
        "<ReportItems><Textbox><Left>1in</Left><Value>x</Value></Textbox></ReportItems></List>"));
    const auto& tablix = OnlyItem<Tablix>(report);
    EXPECT_EQ(tablix.noRowsMessage.source, "nothing");
    EXPECT_EQ(tablix.rowMembers.at(0).group->name, "g");
    const auto& rectangle = dynamic_cast<const Rectangle&>(*tablix.rows.at(0).cells.at(0).item);
    EXPECT_DOUBLE_EQ(rectangle.width, 4 * 72);
    EXPECT_DOUBLE_EQ(rectangle.items.at(0)->left, 72);
    EXPECT_DOUBLE_EQ(rectangle.items.at(0)->width, 3 * 72);
}

std::string Grouping(const std::string& side, const std::string& size, const std::string& name,
                     const std::string& subtotal) {
    return "<" + side + "Grouping><" + size + ">1in</" + size + "><Dynamic" + side + "s><Grouping Name=\"" +
           name + "\"><GroupExpressions><GroupExpression>=Fields!" + name +
           ".Value</GroupExpression></GroupExpressions></Grouping>" + Box(name) + subtotal + "</Dynamic" +
           side + "s></" + side + "Grouping>";
}

std::string Subtotal(const std::string& text, const std::string& rest = "") {
    return "<Subtotal>" + Box(text) + rest + "</Subtotal>";
}

std::string Matrix(const std::string& columns, const std::string& rows) {
    return "<Matrix Name=\"m\"><Corner>" + Box("corner") + "</Corner><ColumnGroupings>" + columns +
           "</ColumnGroupings><RowGroupings>" + rows +
           "</RowGroupings><MatrixRows><MatrixRow><Height>1cm</Height><MatrixCells><MatrixCell>" +
           Box("cell") +
           "</MatrixCell></MatrixCells></MatrixRow></MatrixRows><MatrixColumns><MatrixColumn><Width>2in</"
           "Width>"
           "</MatrixColumn></MatrixColumns></Matrix>";
}

TEST(ReportMatrix, SubtotalsAreStaticMembersBesideTheirGroups) {
    const Definition report = Parse(WithItems(
        Matrix(Grouping("Column", "Height", "Year", Subtotal("all years")) +
                   Grouping("Column", "Height", "Quarter", Subtotal("year")),
               Grouping("Row", "Width", "Region", Subtotal("all regions", "<Position>Before</Position>")))));
    const auto& tablix = OnlyItem<Tablix>(report);
    ASSERT_EQ(tablix.columnMembers.size(), 2u);
    const TablixMember& year = tablix.columnMembers[0];
    EXPECT_EQ(year.group->name, "Year");
    EXPECT_EQ(year.headerSize, 72);
    ASSERT_EQ(year.members.size(), 2u);
    EXPECT_EQ(year.members[0].group->name, "Quarter");
    EXPECT_FALSE(year.members[1].group);
    EXPECT_EQ(TextOf(year.members[1].header.get()), "year");
    const TablixMember& total = tablix.columnMembers[1];
    EXPECT_EQ(TextOf(total.header.get()), "all years");
    EXPECT_EQ(total.headerSize, 144);
    EXPECT_EQ(total.headerRowSpan, 2);
    EXPECT_TRUE(total.members.empty());
    ASSERT_EQ(tablix.rowMembers.size(), 2u);
    EXPECT_EQ(TextOf(tablix.rowMembers[0].header.get()), "all regions");
    EXPECT_EQ(tablix.rowMembers[1].group->name, "Region");
    EXPECT_EQ(tablix.columnWidths.size(), 3u);
    ASSERT_EQ(tablix.rows.size(), 2u);
    EXPECT_EQ(TextOf(tablix.rows[1].cells.at(2).item.get()), "cell");
    ASSERT_EQ(tablix.corner.size(), 2u);
    EXPECT_EQ(tablix.corner[0].at(0).rowSpan, 2);
    EXPECT_TRUE(tablix.repeatColumnHeaders);
}

TEST(ReportMatrix, SubtotalStyleGoesOverTheCells) {
    const Definition report = Parse(WithItems(
        Matrix(Grouping("Column", "Height", "Year", Subtotal("t", "<Style><Color>Red</Color></Style>")),
               Grouping("Row", "Width", "Region", ""))));
    const auto& cells = OnlyItem<Tablix>(report).rows.at(0).cells;
    const auto color = [](const TablixCell& cell) {
        return dynamic_cast<const Textbox&>(*cell.item)
            .paragraphs[0]
            .runs[0]
            .style.Find(StyleProperty::Color);
    };
    EXPECT_EQ(color(cells.at(0)), nullptr);
    ASSERT_NE(color(cells.at(1)), nullptr);
    EXPECT_EQ(color(cells.at(1))->source, "Red");
}

TEST(ReportMatrix, StaticColumnsTakeTheirOwnCells) {
    const std::string matrix =
        "<Matrix><ColumnGroupings>" + Grouping("Column", "Height", "Year", Subtotal("all")) +
        "<ColumnGrouping><Height>1in</Height><StaticColumns><StaticColumn>" + Box("Sum") +
        "</StaticColumn><StaticColumn>" + Box("Count") +
        "</StaticColumn></StaticColumns></ColumnGrouping></ColumnGroupings><RowGroupings>" +
        Grouping("Row", "Width", "Region", "") +
        "</RowGroupings><MatrixRows><MatrixRow><Height>1cm</Height><MatrixCells><MatrixCell>" + Box("s") +
        "</MatrixCell><MatrixCell>" + Box("c") +
        "</MatrixCell></MatrixCells></MatrixRow></MatrixRows><MatrixColumns><MatrixColumn><Width>2in</"
        "Width></MatrixColumn>"
        "<MatrixColumn><Width>1in</Width></MatrixColumn></MatrixColumns></Matrix>";
    const Definition report = Parse(WithItems(matrix));
    const auto& tablix = OnlyItem<Tablix>(report);
    std::vector<std::string> texts;
    for (const TablixCell& cell : tablix.rows.at(0).cells) {
        texts.push_back(TextOf(cell.item.get()));
    }
    EXPECT_THAT(texts, testing::ElementsAre("s", "c", "s", "c"));
    EXPECT_THAT(tablix.columnWidths, testing::ElementsAre(144, 72, 144, 72));
    EXPECT_EQ(tablix.columnMembers.at(1).headerRowSpan, 1);
    EXPECT_EQ(tablix.columnMembers.at(1).members.size(), 2u);
}

TEST(ReportMatrix, WithoutGroupingsIsAnError) {
    EXPECT_THAT(ErrorOf(WithItems("<Matrix Name=\"m\"/>")), HasSubstr("Matrix m"));
}

std::string TablixOf(const std::string& rowMembers) {
    return "<Tablix "
           "Name=\"t\"><TablixBody><TablixColumns><TablixColumn><Width>1in</Width></TablixColumn></"
           "TablixColumns>"
           "<TablixRows><TablixRow><Height>1cm</Height><TablixCells><TablixCell><CellContents><Textbox "
           "Name=\"x\"><Value>v"
           "</Value></Textbox></CellContents></TablixCell></TablixCells></TablixRow></TablixRows></"
           "TablixBody>"
           "<TablixColumnHierarchy><TablixMembers><TablixMember/></TablixMembers></TablixColumnHierarchy>"
           "<TablixRowHierarchy><TablixMembers>" +
           rowMembers + "</TablixMembers></TablixRowHierarchy></Tablix>";
}

TEST(ReportTablix, MembersWithHeadersGroupsAndSorts) {
    const Definition report = Parse(WithItems(
        TablixOf(
            "<TablixMember><Group Name=\"g\"><GroupExpressions><GroupExpression>=1</GroupExpression>"
            "</GroupExpressions><PageBreak><BreakLocation>Between</BreakLocation></PageBreak></Group>"
            "<SortExpressions><SortExpression><Value>=2</Value></SortExpression></SortExpressions>"
            "<TablixHeader><Size>3cm</Size><CellContents><Textbox Name=\"h\"/></CellContents></TablixHeader>"
            "<KeepWithGroup>After</KeepWithGroup><RepeatOnNewPage>true</RepeatOnNewPage></TablixMember>"),
        Ns2008));
    const TablixMember& member = OnlyItem<Tablix>(report).rowMembers.at(0);
    EXPECT_EQ(member.group->pageBreak.location, PageBreak::Location::Between);
    EXPECT_EQ(member.sorts.at(0).value.source, "=2");
    EXPECT_NEAR(member.headerSize, 85.04, 0.01);
    EXPECT_EQ(member.header->name, "h");
    EXPECT_EQ(member.keepWithGroup, Keep::After);
    EXPECT_TRUE(member.repeatOnNewPage);
}

TEST(ReportTablix, ASizeThatIsNotGivenIsThatOfItsParts) {
    const std::string header =
        "<TablixHeader><Size>3cm</Size><CellContents><Textbox Name=\"h\"/></CellContents></TablixHeader>";
    const Definition report =
        Parse(WithItems(TablixOf("<TablixMember>" + header + "</TablixMember>"), Ns2008));
    EXPECT_NEAR(OnlyItem<Tablix>(report).height, 28.35, 0.01);
    EXPECT_NEAR(OnlyItem<Tablix>(report).width, 72 + 85.04, 0.01);
}

TEST(ReportTablix, MembersThatDoNotFitTheBodyAreAnError) {
    EXPECT_THAT(ErrorOf(WithItems(TablixOf("<TablixMember/><TablixMember/>"), Ns2008)),
                HasSubstr("Tablix t: its body has 1 rows, its members ask for 2"));
}

TEST(ReportTablix, UnknownFilterOperatorIsAnError) {
    EXPECT_THAT(
        ErrorOf(WithItems(
            TablixOf(
                "<TablixMember><Group Name=\"g\"><Filters><Filter><FilterExpression>=1"
                "</FilterExpression><Operator>Near</Operator></Filter></Filters></Group></TablixMember>"),
            Ns2008)),
        HasSubstr("\"Near\""));
}

// A Tablix without a size of its own is as wide as its columns and the row headers of all levels.
TEST(ReportTablix, HeadersOfAllLevelsCountForItsSize) {
    const auto member = [](const std::string& size, const std::string& inner) {
        return "<TablixMember><TablixHeader><Size>" + size + "</Size></TablixHeader>" +
               (inner.empty() ? "" : "<TablixMembers>" + inner + "</TablixMembers>") + "</TablixMember>";
    };
    const Definition report = Parse(WithItems(
        "<Tablix Name=\"t\"><TablixBody><TablixColumns><TablixColumn><Width>100pt</Width></TablixColumn>"
        "</TablixColumns><TablixRows><TablixRow><Height>20pt</Height><TablixCells><TablixCell/></TablixCells>"
        "</TablixRow></TablixRows></TablixBody><TablixColumnHierarchy><TablixMembers>" +
        member("7pt", member("5pt", "")) +
        "</TablixMembers></TablixColumnHierarchy><TablixRowHierarchy><TablixMembers>" +
        member("50pt", member("30pt", "")) +
        "</TablixMembers></TablixRowHierarchy><DataSetName>d</DataSetName></Tablix>"));
    EXPECT_DOUBLE_EQ(OnlyItem<Tablix>(report).width, 180);
    EXPECT_DOUBLE_EQ(OnlyItem<Tablix>(report).height, 32);
}

TEST(ReportTable, ADetailRowKeepsWhatItsVisibilitySays) {
    std::string row = Row("d1", "d2");
    row.insert(row.find("</TableRow>"), "<Visibility><Hidden>=Fields!A.Value</Hidden></Visibility>");
    const Definition report =
        Parse(WithItems("<Table Name=\"t\"><DataSetName>d</DataSetName>" + Columns + "<Details><TableRows>" +
                        row + "</TableRows></Details></Table>"));
    const TablixMember& details = OnlyItem<Tablix>(report).rowMembers.at(0);
    ASSERT_EQ(details.members.size(), 1U);
    EXPECT_EQ(details.members[0].visibility.hidden.source, "=Fields!A.Value");
}

}  // namespace
}  // namespace rdl::test
