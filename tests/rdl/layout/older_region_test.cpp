// SPDX-License-Identifier: GPL-3.0-or-later
// Tables, lists and matrices of the schemas of 2003 and 2005, run over data.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "rdl/layout/report_kit.h"

namespace rdl::layout {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

const std::vector<SaleRow> FourSales{
    {"North", "Pen", 10}, {"South", "Ink", 20}, {"North", "Ink", 30}, {"South", "Pen", 5}};

// Page settings stand in the report, those of columns in the body.
std::string OlderReport(const std::string& items, const std::string& more = {},
                        const std::string& bodyMore = {}) {
    return "<Report xmlns=\"http://schemas.microsoft.com/sqlserver/reporting/2005/01/reportdefinition\">"
           "<DataSources><DataSource Name=\"S\"><ConnectionProperties><DataProvider>SQLITE</DataProvider>"
           "<ConnectString>x</ConnectString></ConnectionProperties></DataSource></DataSources>"
           "<DataSets><DataSet Name=\"Data\"><Query><DataSourceName>S</DataSourceName><CommandText>x"
           "</CommandText></Query><Fields><Field Name=\"Region\"><DataField>Region</DataField></Field>"
           "<Field Name=\"Product\"><DataField>Product</DataField></Field><Field Name=\"Amount\"><DataField>"
           "Amount</DataField></Field></Fields></DataSet></DataSets>" +
           more + "<Body><ReportItems>" + items + "</ReportItems><Height>100pt</Height>" + bodyMore +
           "</Body><Width>400pt</Width><PageHeight>300pt</PageHeight><PageWidth>400pt</PageWidth></Report>";
}

std::string Item(const std::string& value, const std::string& more = {}) {
    static int count = 0;
    return "<ReportItems><Textbox Name=\"T" + std::to_string(++count) + "\"><Value>" + value + "</Value>" +
           more + "</Textbox></ReportItems>";
}

std::string TableRowOf(const std::vector<std::string>& values, const std::string& more = {}) {
    std::string cells;
    for (const std::string& value : values) {
        cells += "<TableCell>" + Item(value) + "</TableCell>";
    }
    return "<TableRows><TableRow><Height>20pt</Height><TableCells>" + cells + "</TableCells>" + more +
           "</TableRow></TableRows>";
}

std::string TableOf(const std::string& bands, const std::string& secondColumn = {}) {
    return "<Table Name=\"Sales\"><DataSetName>Data</DataSetName><TableColumns><TableColumn><Width>100pt"
           "</Width></TableColumn><TableColumn><Width>100pt</Width>" +
           secondColumn + "</TableColumn></TableColumns>" + bands + "</Table>";
}

const std::string Details =
    "<Details>" + TableRowOf({"=Fields!Product.Value", "=Fields!Amount.Value"}) + "</Details>";

std::string ByRegion(const std::string& groupingMore, const std::string& more) {
    return "<TableGroups><TableGroup><Grouping Name=\"G\"><GroupExpressions><GroupExpression>"
           "=Fields!Region.Value</GroupExpression></GroupExpressions>" +
           groupingMore + "</Grouping>" + more + "</TableGroup></TableGroups>";
}

std::vector<std::string> RowsOf(const std::string& item) {
    const auto kit = BuildKit(OlderReport(item), Sales(FourSales));
    return Rows(kit.Table());
}

TEST(OlderTable, ShowsHeaderGroupsDetailsAndFooters) {
    EXPECT_THAT(RowsOf(TableOf(
                    "<Header>" + TableRowOf({"Product", "Amount"}) + "</Header>" +
                    ByRegion("", "<Header>" + TableRowOf({"=Fields!Region.Value", ""}) + "</Header><Footer>" +
                                     TableRowOf({"sum", "=Sum(Fields!Amount.Value)"}) + "</Footer>") +
                    Details + "<Footer>" + TableRowOf({"All", "=Sum(Fields!Amount.Value)"}) + "</Footer>")),
                ElementsAre("Product|Amount", "North|", "Pen|10", "Ink|30", "sum|40", "South|", "Ink|20",
                            "Pen|5", "sum|25", "All|65"));
}

TEST(OlderTable, SortsGroupsAndDetails) {
    EXPECT_THAT(RowsOf(TableOf(
                    ByRegion("",
                             "<Sorting><SortBy><SortExpression>=Fields!Region.Value</SortExpression>"
                             "<Direction>Descending</Direction></SortBy></Sorting>") +
                    "<Details><Sorting><SortBy><SortExpression>=Fields!Amount.Value</SortExpression></SortBy>"
                    "</Sorting>" +
                    TableRowOf({"=Fields!Product.Value", "=Fields!Amount.Value"}) + "</Details>")),
                ElementsAre("Pen|5", "Ink|20", "Pen|10", "Ink|30"));
}

TEST(OlderTable, GroupsItsDetails) {
    EXPECT_THAT(RowsOf(TableOf(
                    "<Details><Grouping Name=\"D\"><GroupExpressions><GroupExpression>=Fields!Product.Value"
                    "</GroupExpression></GroupExpressions></Grouping>" +
                    TableRowOf({"=Fields!Product.Value", "=Sum(Fields!Amount.Value)"}) + "</Details>")),
                ElementsAre("Pen|15", "Ink|50"));
}

TEST(OlderTable, LeavesHiddenRowsAndColumnsOut) {
    EXPECT_THAT(
        RowsOf(TableOf("<Details>" +
                       TableRowOf({"=Fields!Product.Value", "x"},
                                  "<Visibility><Hidden>=Fields!Amount.Value &lt; 20</Hidden></Visibility>") +
                       "</Details>")),
        ElementsAre("Ink|x", "Ink|x"));
    EXPECT_THAT(RowsOf(TableOf(Details, "<Visibility><Hidden>true</Hidden></Visibility>")),
                ElementsAre("Pen", "Ink", "Ink", "Pen"));
}

TEST(OlderTable, HidesDetailsThatAToggleWouldShow) {
    EXPECT_THAT(RowsOf(TableOf("<Header>" + TableRowOf({"Product", "Amount"}) + "</Header><Details>" +
                               TableRowOf({"=Fields!Product.Value", "x"}) +
                               "<Visibility><Hidden>true</Hidden><ToggleItem>T1</ToggleItem></Visibility>"
                               "</Details>")),
                ElementsAre("Product|Amount"));
}

TEST(OlderTable, FiltersItsGroups) {
    EXPECT_THAT(RowsOf(TableOf(
                    ByRegion("<Filters><Filter><FilterExpression>=Sum(Fields!Amount.Value)</FilterExpression>"
                             "<Operator>GreaterThan</Operator><FilterValues><FilterValue>=30</FilterValue>"
                             "</FilterValues></Filter></Filters>",
                             "") +
                    Details)),
                ElementsAre("Pen|10", "Ink|30"));
}

TEST(OlderTable, ACellMaySpanColumns) {
    const auto kit = BuildKit(
        OlderReport(TableOf("<Details><TableRows><TableRow><Height>20pt</Height><TableCells><TableCell>" +
                            Item("wide") +
                            "<ColSpan>2</ColSpan></TableCell></TableCells></TableRow></TableRows>"
                            "</Details>")),
        Sales({{"", "", 1}}));
    TableRow row;
    kit.Table().Row(0, row);
    ASSERT_THAT(row.cells, SizeIs(1));
    EXPECT_EQ(row.cells[0].columnSpan, 2);
    EXPECT_DOUBLE_EQ(row.cells[0].content.width, 200);
}

TEST(OlderTable, BreaksThePageAtTheEndOfAGroup) {
    const auto sink = PagesOf(
        BuildKit(OlderReport(TableOf(ByRegion("<PageBreakAtEnd>true</PageBreakAtEnd>", "") + Details)),
                 Sales(FourSales)));
    EXPECT_THAT(sink.bodies,
                ElementsAre(ElementsAre("Pen", "10", "Ink", "30"), ElementsAre("Ink", "20", "Pen", "5")));
}

TEST(OlderTable, HeadersOfTableAndGroupAreRepeatedAsTold) {
    std::vector<SaleRow> many(30, SaleRow{"North", "Pen", 1});
    const std::string repeat = "<RepeatOnNewPage>true</RepeatOnNewPage>";
    const auto sink = PagesOf(BuildKit(
        OlderReport(TableOf(
            "<Header>" + TableRowOf({"Product", "Amount"}) + repeat + "</Header>" +
            ByRegion("", "<Header>" + TableRowOf({"=Fields!Region.Value", "-"}) + repeat + "</Header>") +
            Details)),
        Sales(many)));
    ASSERT_THAT(sink.bodies, SizeIs(3));
    for (const auto& body : sink.bodies) {
        EXPECT_THAT(std::vector<std::string>(body.begin(), body.begin() + 4),
                    ElementsAre("Product", "Amount", "North", "-"));
    }
}

TEST(OlderList, RepeatsItsItemsForEachInstance) {
    const auto sink = PagesOf(BuildKit(
        OlderReport(
            "<List Name=\"L\"><DataSetName>Data</DataSetName><Height>40pt</Height><Width>200pt</Width>"
            "<Grouping Name=\"G\"><GroupExpressions><GroupExpression>=Fields!Region.Value"
            "</GroupExpression></GroupExpressions></Grouping><Sorting><SortBy><SortExpression>"
            "=Fields!Region.Value</SortExpression><Direction>Descending</Direction></SortBy></Sorting>" +
            Item("=Fields!Region.Value &amp; Sum(Fields!Amount.Value)",
                 "<Height>20pt</Height><Width>100pt</Width>") +
            "</List>"),
        Sales(FourSales)));
    EXPECT_THAT(sink.bodies, ElementsAre(ElementsAre("South25", "North40")));
}

std::string MatrixOf(const std::string& position, const std::string& style = {}) {
    const auto grouping = [](const std::string& name, const std::string& field) {
        return "<Grouping Name=\"" + name + "\"><GroupExpressions><GroupExpression>=Fields!" + field +
               ".Value</GroupExpression></GroupExpressions></Grouping>";
    };
    return "<Matrix Name=\"M\"><DataSetName>Data</DataSetName><Corner>" + Item("Sales") +
           "</Corner><ColumnGroupings><ColumnGrouping><Height>20pt</Height><DynamicColumns>" +
           grouping("C", "Product") + "<Subtotal>" + Item("Total") + "<Position>" + position + "</Position>" +
           style + "</Subtotal>" + Item("=Fields!Product.Value") +
           "</DynamicColumns></ColumnGrouping></ColumnGroupings><RowGroupings><RowGrouping><Width>60pt</"
           "Width>"
           "<DynamicRows>" +
           grouping("R", "Region") + Item("=Fields!Region.Value") +
           "</DynamicRows></RowGrouping></RowGroupings><MatrixRows><MatrixRow><Height>20pt</"
           "Height><MatrixCells>"
           "<MatrixCell>" +
           Item("=Sum(Fields!Amount.Value)") +
           "</MatrixCell></MatrixCells></MatrixRow></MatrixRows><MatrixColumns><MatrixColumn><Width>50pt</"
           "Width>"
           "</MatrixColumn></MatrixColumns></Matrix>";
}

TEST(OlderMatrix, HasItsSubtotalsWhereTheyAreTold) {
    EXPECT_THAT(RowsOf(MatrixOf("After")),
                ElementsAre("Sales|Pen|Ink|Total", "North|10|30|40", "South|5|20|25"));
    EXPECT_THAT(RowsOf(MatrixOf("Before")),
                ElementsAre("Sales|Total|Pen|Ink", "North|40|10|30", "South|25|5|20"));
}

TEST(OlderMatrix, ASubtotalsStyleIsThatOfItsCells) {
    const auto kit =
        BuildKit(OlderReport(MatrixOf("After", "<Style><BackgroundColor>Yellow</BackgroundColor></Style>")),
                 Sales(FourSales));
    TableRow row;
    kit.Table().Row(1, row);
    EXPECT_EQ(row.cells.back().content.box->background, 0xFFFFFF00);
    EXPECT_EQ(row.cells[1].content.box->background, Transparent);
}

TEST(OlderMatrix, StaticRowsStandBelowEachOther) {
    const std::string matrix =
        "<Matrix "
        "Name=\"M\"><DataSetName>Data</DataSetName><ColumnGroupings><ColumnGrouping><Height>20pt</Height>"
        "<DynamicColumns><Grouping Name=\"C\"><GroupExpressions><GroupExpression>=Fields!Product.Value"
        "</GroupExpression></GroupExpressions></Grouping>" +
        Item("=Fields!Product.Value") +
        "</DynamicColumns></ColumnGrouping></ColumnGroupings><RowGroupings><RowGrouping><Width>60pt</Width>"
        "<StaticRows><StaticRow>" +
        Item("Sum") + "</StaticRow><StaticRow>" + Item("Count") +
        "</StaticRow></StaticRows></RowGrouping></RowGroupings><MatrixRows><MatrixRow><Height>20pt</Height>"
        "<MatrixCells><MatrixCell>" +
        Item("=Sum(Fields!Amount.Value)") +
        "</MatrixCell></MatrixCells></MatrixRow><MatrixRow><Height>20pt</Height><MatrixCells><MatrixCell>" +
        Item("=CountRows()") +
        "</MatrixCell></MatrixCells></MatrixRow></MatrixRows><MatrixColumns><MatrixColumn><Width>50pt</Width>"
        "</MatrixColumn></MatrixColumns></Matrix>";
    EXPECT_THAT(RowsOf(matrix), ElementsAre("Pen|Ink", "Sum|15|50", "Count|2|2"));
}

TEST(OlderReport, ColumnsStandInTheBody) {
    const auto kit =
        BuildKit(OlderReport("", "", "<Columns>3</Columns><ColumnSpacing>6pt</ColumnSpacing>"), Sales({}));
    EXPECT_EQ(kit.report->sections[0]->page.columns, 3);
    EXPECT_DOUBLE_EQ(kit.report->sections[0]->page.columnSpacing, 6);
}

TEST(OlderReport, StylesMayBeExpressions) {
    const auto kit = BuildKit(
        OlderReport(
            TableOf("<Details>" + TableRowOf({"a", "b"}) + "</Details>")
                .replace(0, 0,
                         "<Textbox Name=\"X\"><Value>x</Value><Style><BackgroundColor>=IIf(1 = 1, "
                         "\"Lime\", \"Red\")</BackgroundColor><FontSize>=4 * 3 &amp; \"pt\"</FontSize>"
                         "<BorderStyle><Default>=\"Solid\"</Default></BorderStyle></Style></Textbox>")),
        Sales({}));
    const Instance& box = kit.report->sections[0]->items.at(0);
    ASSERT_EQ(box.name, "X");
    EXPECT_EQ(box.box->background, 0xFF00FF00);
    EXPECT_EQ(box.box->left.style, LineStyle::Solid);
    EXPECT_FLOAT_EQ(box.paragraphs[0].runs[0].style->size, 12);
}

}  // namespace
}  // namespace rdl::layout
