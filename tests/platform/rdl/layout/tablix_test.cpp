#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/rdl/layout/report_kit.h"

namespace rdl::layout {
namespace {

using testing::ElementsAre;

const std::vector<SaleRow> FourSales{
    {"North", "Pen", 10}, {"South", "Ink", 20}, {"North", "Ink", 30}, {"South", "Pen", 5}};
const std::string Details = "<TablixMember><Group Name=\"Details\"/></TablixMember>";

std::string DetailTable(const std::string& value, const std::string& more = {}) {
    return Tablix(1, RowOf(Cell("Value", value)), Details, {}, more);
}

// A header with the region, its sales, a footer with a sum.
std::string Grouped(const std::string& footer, const std::string& groupMore = {},
                    const std::string& memberMore = {}) {
    return Tablix(
        1,
        RowOf(Cell("Head", "=Fields!Region.Value")) + RowOf(Cell("Detail", "=Fields!Amount.Value")) +
            RowOf(Cell("Foot", footer)),
        "<TablixMember><Group Name=\"ByRegion\"><GroupExpressions><GroupExpression>=Fields!Region.Value"
        "</GroupExpression></GroupExpressions>" +
            groupMore + "</Group>" + memberMore + "<TablixMembers><TablixMember/>" + Details +
            "<TablixMember/></TablixMembers></TablixMember>");
}

TEST(Tablix, ADetailGroupHasARowForEachRowOfTheData) {
    const auto kit = BuildKit(Report(DetailTable("=Fields!Product.Value")), Sales(FourSales));
    EXPECT_THAT(Rows(kit.Table()), ElementsAre("Pen", "Ink", "Ink", "Pen"));
}

TEST(Tablix, AFieldMayBeChosenByAnExpression) {
    const auto kit = BuildKit(Report(DetailTable("=Fields(&quot;Pro&quot; &amp; &quot;DUCT&quot;).Value")),
                              Sales(FourSales));
    EXPECT_THAT(Rows(kit.Table()), ElementsAre("Pen", "Ink", "Ink", "Pen"));
}

TEST(Tablix, TheReportsOwnFunctionsAreCalled) {
    std::string report = Report(DetailTable("=Code.Twice(Fields!Amount.Value)"));
    report.insert(report.find("<DataSources>"),
                  "<Code>Public Function Twice(ByVal x As Integer) As Integer\n  Return 2 * x\nEnd "
                  "Function</Code>");
    EXPECT_THAT(Rows(BuildKit(report, Sales(FourSales)).Table()), ElementsAre("20", "40", "60", "10"));
}

TEST(Tablix, GroupsStandInTheOrderOfTheirFirstRowAndAddUpTheirOwn) {
    const auto kit = BuildKit(Report(Grouped("=Sum(Fields!Amount.Value)")), Sales(FourSales));
    EXPECT_THAT(Rows(kit.Table()), ElementsAre("North", "10", "30", "40", "South", "20", "5", "25"));
}

TEST(Tablix, GroupsSortByAnAggregate) {
    const auto kit = BuildKit(
        Report(Grouped(
            "=Sum(Fields!Amount.Value)", {},
            "<SortExpressions><SortExpression><Value>=Sum(Fields!Amount.Value)</Value></SortExpression>"
            "</SortExpressions>")),
        Sales(FourSales));
    EXPECT_THAT(Rows(kit.Table()), ElementsAre("South", "20", "5", "25", "North", "10", "30", "40"));
}

TEST(Tablix, AGroupFilterSeesTheGroupsAggregates) {
    const auto kit = BuildKit(
        Report(Grouped(
            "=Sum(Fields!Amount.Value)",
            "<Filters><Filter><FilterExpression>=Sum(Fields!Amount.Value)</"
            "FilterExpression><Operator>GreaterThan"
            "</Operator><FilterValues><FilterValue>=30</FilterValue></FilterValues></Filter></Filters>")),
        Sales(FourSales));
    EXPECT_THAT(Rows(kit.Table()), ElementsAre("North", "10", "30", "40"));
}

TEST(Tablix, ANamedScopeReachesPastTheGroup) {
    const auto kit =
        BuildKit(Report(Grouped("=Sum(Fields!Amount.Value) / Sum(Fields!Amount.Value, \"Sales\") * 65")),
                 Sales(FourSales));
    EXPECT_THAT(Rows(kit.Table()), ElementsAre("North", "10", "30", "40", "South", "20", "5", "25"));
}

TEST(Tablix, RunningValuesBeginAnewInTheirScope) {
    const auto kit = BuildKit(
        Report(Tablix(3,
                      RowOf(Cell("A", "=RunningValue(Fields!Amount.Value, Sum, \"ByRegion\")") +
                            Cell("B", "=RunningValue(Fields!Amount.Value, Sum, \"Sales\")") +
                            Cell("C", "=RowNumber(\"ByRegion\")")),
                      "<TablixMember><Group Name=\"ByRegion\"><GroupExpressions><GroupExpression>"
                      "=Fields!Region.Value</GroupExpression></GroupExpressions></Group><TablixMembers>" +
                          Details + "</TablixMembers></TablixMember>")),
        Sales(FourSales));
    EXPECT_THAT(Rows(kit.Table()), ElementsAre("10|10|1", "40|40|2", "20|60|1", "25|65|2"));
}

TEST(Tablix, RowsAskedForBackwardsSayTheSame) {
    const auto kit =
        BuildKit(Report(DetailTable("=RunningValue(Fields!Amount.Value, Sum, Nothing)")), Sales(FourSales));
    const auto forward = Rows(kit.Table());
    EXPECT_THAT(forward, ElementsAre("10", "30", "60", "65"));
    layout::TableRow row;
    for (std::size_t i = forward.size(); i-- > 0;) {
        kit.Table().Row(i, row);
        EXPECT_EQ(row.cells.front().content.PlainText(), forward[i]);
    }
}

TEST(Tablix, PreviousIsTheRowBefore) {
    const auto kit = BuildKit(Report(DetailTable("=Fields!Amount.Value - Previous(Fields!Amount.Value)")),
                              Sales(FourSales));
    EXPECT_EQ(Rows(kit.Table()).at(1), "10");
    EXPECT_EQ(Rows(kit.Table()).at(3), "-25");
}

TEST(Tablix, DuplicatesAreHiddenWithinTheirScope) {
    const auto kit = BuildKit(
        Report(Tablix(1, RowOf(Cell("V", "=Fields!Region.Value", "<HideDuplicates>Data</HideDuplicates>")),
                      Details)),
        Sales({{"North", "", 1}, {"North", "", 2}, {"South", "", 3}, {"North", "", 4}}));
    EXPECT_THAT(Rows(kit.Table()), ElementsAre("North", "", "South", "North"));
}

TEST(Tablix, NoRowsShowTheMessage) {
    const auto kit =
        BuildKit(Report(DetailTable("x", "<NoRowsMessage>Nothing sold</NoRowsMessage>")), Sales({}));
    EXPECT_EQ(kit.Table().noRowsMessage, "Nothing sold");
    EXPECT_THAT(PagesOf(kit).bodies, ElementsAre(ElementsAre("Nothing sold")));
}

std::string MatrixOf(const std::string& value) {
    const auto header = [](const std::string& name, const std::string& text) {
        return "<TablixHeader><Size>50pt</Size><CellContents>" + Box(name, text) +
               "</CellContents></TablixHeader>";
    };
    const auto group = [](const std::string& name, const std::string& key) {
        return "<Group Name=\"" + name + "\"><GroupExpressions><GroupExpression>" + key +
               "</GroupExpression></GroupExpressions></Group>";
    };
    return Tablix(
        2, RowOf(Cell("V", value) + Cell("T", "=Sum(Fields!Amount.Value)")),
        "<TablixMember>" + group("ByRegion", "=Fields!Region.Value") + header("R", "=Fields!Region.Value") +
            "</TablixMember>",
        "<TablixMember>" + group("ByProduct", "=Fields!Product.Value") +
            header("P", "=Fields!Product.Value") + "</TablixMember><TablixMember>" + header("H", "Total") +
            "</TablixMember>",
        "<TablixCorner><TablixCornerRows><TablixCornerRow><TablixCornerCell><CellContents>" +
            Box("Corner", "Sales") +
            "</CellContents></TablixCornerCell></TablixCornerRow></TablixCornerRows></TablixCorner>");
}

TEST(Matrix, CellsAddUpWhereRowAndColumnMeet) {
    const auto kit = BuildKit(Report(MatrixOf("=Sum(Fields!Amount.Value)")), Sales(FourSales));
    EXPECT_THAT(Rows(kit.Table()), ElementsAre("Sales|Pen|Ink|Total", "North|10|30|40", "South|5|20|25"));
    EXPECT_THAT(kit.Table().columnWidths, ElementsAre(50, 100, 100, 100));
    EXPECT_EQ(kit.Table().headerColumns, 1);
}

TEST(Matrix, AColumnGroupAsScopeGivesTheColumnsTotal) {
    const auto kit = BuildKit(Report(MatrixOf("=Sum(Fields!Amount.Value, \"ByProduct\")")), Sales(FourSales));
    EXPECT_THAT(Rows(kit.Table()), ElementsAre("Sales|Pen|Ink|Total", "North|15|50|40", "South|15|50|25"));
}

TEST(Matrix, AMissingCombinationIsEmpty) {
    const auto kit = BuildKit(Report(MatrixOf("=Sum(Fields!Amount.Value)")),
                              Sales({{"North", "Pen", 1}, {"South", "Ink", 2}}));
    EXPECT_THAT(Rows(kit.Table()), ElementsAre("Sales|Pen|Ink|Total", "North|1||1", "South||2|2"));
}

}  // namespace
}  // namespace rdl::layout
