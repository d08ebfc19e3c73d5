// SPDX-License-Identifier: GPL-3.0-or-later
// What begins hidden until its group is toggled leaves the group's own header and totals.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "rdl/layout/report_kit.h"

namespace rdl::layout {
namespace {

using testing::ElementsAre;

const std::vector<SaleRow> FourSales{
    {"North", "Pen", 10}, {"South", "Ink", 20}, {"North", "Ink", 30}, {"South", "Pen", 5}};

std::string HeaderOf(const std::string& name, const std::string& value) {
    std::string cell = Cell(name, value);
    const std::string begin = "<TablixCell>", end = "</TablixCell>";
    cell.replace(cell.find(begin), begin.size(), "<TablixHeader><Size>1in</Size>");
    cell.replace(cell.find(end), end.size(), "</TablixHeader>");
    return cell;
}

std::string GroupBy(const std::string& field, const std::string& inner, const std::string& visibility = {}) {
    return "<TablixMember><Group Name=\"By" + field + "\"><GroupExpressions><GroupExpression>=Fields!" +
           field + ".Value</GroupExpression></GroupExpressions></Group>" +
           HeaderOf(field, "=Fields!" + field + ".Value") + inner + visibility + "</TablixMember>";
}

std::string Members(const std::string& members) {
    return "<TablixMembers>" + members + "</TablixMembers>";
}

std::string HiddenBy(const std::string& toggle) {
    return "<Visibility><Hidden>true</Hidden>" +
           (toggle.empty() ? "" : "<ToggleItem>" + toggle + "</ToggleItem>") + "</Visibility>";
}

std::string Matrix(const std::string& rows, const std::string& columns) {
    std::string report = Report(Tablix(1, RowOf(Cell("Sum", "=Sum(Fields!Amount.Value)")), rows));
    const std::string hierarchy = "<TablixColumnHierarchy>";
    const std::size_t begin = report.find(hierarchy) + hierarchy.size();
    const std::size_t end = report.find("</TablixColumnHierarchy>");
    return report.replace(begin, end - begin, Members(columns));
}

TEST(Collapse, AGroupWhoseMembersWaitToBeToggledShowsItsTotals) {
    const auto kit = BuildKit(
        Matrix(GroupBy("Region", Members(GroupBy("Product", {}, HiddenBy("Region")))), "<TablixMember/>"),
        Sales(FourSales));
    EXPECT_THAT(Rows(kit.Table()), ElementsAre("North|40", "South|25"));
}

TEST(Collapse, TheGroupsHeaderReachesOverTheHeadersThatAreHidden) {
    const auto kit = BuildKit(
        Matrix(GroupBy("Region", Members(GroupBy("Product", {}, HiddenBy("Region")))), "<TablixMember/>"),
        Sales(FourSales));
    TableRow row;
    kit.Table().Row(0, row);
    ASSERT_EQ(row.cells.size(), 2U);
    EXPECT_EQ(row.cells[0].columnSpan, 2);
    EXPECT_EQ(row.cells[1].column, 2);
}

TEST(Collapse, ColumnsDoSoAsWell) {
    const auto kit = BuildKit(
        Matrix(GroupBy("Product", {}),
               GroupBy("Region", Members("<TablixMember><Group Name=\"Each\"/>" + HeaderOf("Head", "x") +
                                         HiddenBy("Region") + "</TablixMember>"))),
        Sales(FourSales));
    EXPECT_THAT(Rows(kit.Table()), ElementsAre("North|South", "", "Pen|10|5", "Ink|30|20"));
    TableRow row;
    kit.Table().Row(0, row);
    EXPECT_EQ(row.cells[0].rowSpan, 2);
}

TEST(Collapse, BothWaysAtOnce) {
    const auto kit = BuildKit(
        Matrix(GroupBy("Region", Members("<TablixMember><Group Name=\"Rows\"/>" + HeaderOf("A", "x") +
                                         HiddenBy("Region") + "</TablixMember>")),
               GroupBy("Product", Members("<TablixMember><Group Name=\"Columns\"/>" + HeaderOf("B", "x") +
                                          HiddenBy("Product") + "</TablixMember>"))),
        Sales(FourSales));
    EXPECT_THAT(Rows(kit.Table()), ElementsAre("Pen|Ink", "", "North|10|30", "South|5|20"));
}

TEST(Collapse, MembersThatAreHiddenForGoodTakeTheirGroupWithThem) {
    const auto kit =
        BuildKit(Matrix(GroupBy("Region", Members(GroupBy("Product", {}, HiddenBy({})))), "<TablixMember/>"),
                 Sales(FourSales));
    EXPECT_THAT(Rows(kit.Table()), ElementsAre());
}

TEST(Collapse, AGroupWithAVisibleMemberShowsThatAlone) {
    const auto kit = BuildKit(
        Report(Tablix(
            1,
            RowOf(Cell("Detail", "=Fields!Amount.Value")) + RowOf(Cell("Sum", "=Sum(Fields!Amount.Value)")),
            GroupBy("Region", Members("<TablixMember><Group Name=\"Each\"/>" + HiddenBy("Region") +
                                      "</TablixMember><TablixMember/>")))),
        Sales(FourSales));
    EXPECT_THAT(Rows(kit.Table()), ElementsAre("North|40", "South|25"));
}

}  // namespace
}  // namespace rdl::layout
