// SPDX-License-Identifier: GPL-3.0-or-later
// Aggregates of aggregates, and the names of groups in the totals of a matrix.
#include <gmock/gmock.h>

#include "rdl/layout/report_kit.h"

namespace rdl::layout {
namespace {

using testing::ElementsAre;

std::string Group(const std::string& name, const std::string& expression) {
    return "<Group Name=\"" + name + "\"><GroupExpressions><GroupExpression>" + expression +
           "</GroupExpression></GroupExpressions></Group>";
}

Table Amounts() {
    return Sales({{"North", "Tea", 10}, {"North", "Coffee", 20}, {"South", "Tea", 13}, {"South", "Tea", 4}});
}

// A table with a row for each region that shows `value`.
std::vector<std::string> ByRegion(const std::string& value) {
    const BuiltKit kit = BuildKit(
        Report(Tablix(1, RowOf(Cell("V", value)),
                      "<TablixMember>" + Group("Regions", "=Fields!Region.Value") + "</TablixMember>")),
        Amounts());
    return Rows(kit.Table());
}

// A matrix of regions by products, with a column of totals; each cell shows `value`.
std::vector<std::string> Matrix(const std::string& value) {
    const BuiltKit kit = BuildKit(
        Report(Tablix(2, RowOf(Cell("V", value) + Cell("T", value)),
                      "<TablixMember>" + Group("Regions", "=Fields!Region.Value") + "</TablixMember>",
                      "<TablixMember>" + Group("Products", "=Fields!Product.Value") +
                          "</TablixMember><TablixMember/>")),
        Amounts());
    return Rows(kit.Table());
}

TEST(NestedAggregate, WithoutAScopeTheInnerOneIsOverTheInnermostGroup) {
    EXPECT_THAT(ByRegion("=Max(Sum(Fields!Amount.Value), \"Sales\")"), ElementsAre("30", "30"));
    EXPECT_THAT(ByRegion("=Min(Sum(Fields!Amount.Value), \"Sales\")"), ElementsAre("17", "17"));
    EXPECT_THAT(ByRegion("=Avg(Count(Fields!Amount.Value), \"Sales\")"), ElementsAre("2", "2"));
}

TEST(NestedAggregate, ANamedScopeIsTheSame) {
    EXPECT_THAT(ByRegion("=Max(Sum(Fields!Amount.Value, \"Regions\"), \"Sales\")"), ElementsAre("30", "30"));
}

TEST(NestedAggregate, InAMatrixTheInnerOneIsOverACell) {
    // Columns are Tea, Coffee and their total; South has no coffee.
    EXPECT_THAT(Matrix("=Max(Sum(Fields!Amount.Value), \"Sales\")"), ElementsAre("20|20|30", "20|20|30"));
    EXPECT_THAT(Matrix("=Max(Sum(Fields!Amount.Value), \"Regions\")"), ElementsAre("20|20|30", "17|17|17"));
    EXPECT_THAT(Matrix("=Max(Sum(Fields!Amount.Value), \"Products\")"), ElementsAre("17|20|30", "17|20|30"));
}

TEST(NestedAggregate, OutsideOfAllGroupsItIsOverEverything) {
    const BuiltKit kit = BuildKit(
        Report(Tablix(1, RowOf(Cell("V", "=Max(Sum(Fields!Amount.Value), \"Sales\")")), "<TablixMember/>")),
        Amounts());
    EXPECT_THAT(Rows(kit.Table()), ElementsAre("47"));
}

TEST(MatrixTotal, TheNameOfTheGroupIsThatOfItsParentInItsTotal) {
    EXPECT_THAT(Matrix("=Sum(Fields!Amount.Value, \"Products\")"), ElementsAre("27|20|47", "27|20|47"));
    EXPECT_THAT(Matrix("=Sum(Fields!Amount.Value, \"Regions\")"), ElementsAre("30|30|30", "17|17|17"));
}

TEST(MatrixTotal, TheTotalIsNotInScopeOfTheGroup) {
    EXPECT_THAT(Matrix("=InScope(\"Products\")"), ElementsAre("True|True|False", "True|True|False"));
}

TEST(MatrixTotal, ATableHasNoSuchNames) {
    const BuiltKit kit = BuildKit(
        Report(Tablix(
            1, RowOf(Cell("V", "=1")) + RowOf(Cell("T", "=Sum(Fields!Amount.Value, \"Regions\")")),
            "<TablixMember>" + Group("Regions", "=Fields!Region.Value") + "</TablixMember><TablixMember/>")),
        Amounts());
    EXPECT_EQ(Rows(kit.Table()).back(), "#Error");
}

}  // namespace
}  // namespace rdl::layout
