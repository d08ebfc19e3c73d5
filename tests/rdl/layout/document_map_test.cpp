// SPDX-License-Identifier: GPL-3.0-or-later
// Groups that begin at the same row: their labels in the document map and the names of their pages.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "rdl/layout/report_kit.h"

namespace rdl::layout {
namespace {

using testing::ElementsAre;

const std::vector<SaleRow> ThreeSales{{"North", "Pen", 1}, {"North", "Ink", 2}, {"South", "Pen", 3}};

std::string GroupBy(const std::string& field, const std::string& more, const std::string& members) {
    return "<TablixMember><Group Name=\"By" + field + "\"><GroupExpressions><GroupExpression>=Fields!" +
           field + ".Value</GroupExpression></GroupExpressions>" + more + "</Group><TablixMembers>" +
           members + "</TablixMembers></TablixMember>";
}

// Regions, their products, and the amounts of those.
std::string Nested(const std::string& outerMore, const std::string& innerMore) {
    const std::string details = "<TablixMember><Group Name=\"Details\"/></TablixMember>";
    return Report(Tablix(1, RowOf(Cell("Amount", "=Fields!Amount.Value")),
                         GroupBy("Region", outerMore, GroupBy("Product", innerMore, details))));
}

std::string Label(const std::string& value) {
    return "<DocumentMapLabel>" + value + "</DocumentMapLabel>";
}

std::string PageNamed(const std::string& value) {
    return "<PageBreak><BreakLocation>Between</BreakLocation></PageBreak><PageName>" + value + "</PageName>";
}

// The entries of the document map, each with its level.
std::vector<std::string> MapOf(const BuiltKit& kit) {
    std::vector<std::string> entries;
    for (const Page& page : PagesOf(kit).pages) {
        for (const AnchorOp& anchor : Of<AnchorOp>(page)) {
            entries.push_back(std::to_string(anchor.level) + " " + anchor.label);
        }
    }
    return entries;
}

std::vector<std::string> PageNamesOf(const BuiltKit& kit) {
    std::vector<std::string> names;
    layout::TableRow row;
    for (std::size_t i = 0; i < kit.Table().RowCount(); ++i) {
        kit.Table().Row(i, row);
        names.push_back(row.pageName);
    }
    return names;
}

TEST(DocumentMap, ARowThatBeginsTwoGroupsHasTheLabelsOfBoth) {
    const auto kit =
        BuildKit(Nested(Label("=Fields!Region.Value"), Label("=Fields!Product.Value")), Sales(ThreeSales));
    EXPECT_THAT(MapOf(kit), ElementsAre("0 North", "1 Pen", "1 Ink", "0 South", "1 Pen"));
}

TEST(DocumentMap, AnEmptyLabelIsNoEntry) {
    const auto kit =
        BuildKit(Nested(Label("=Fields!Region.Value"), Label("=IIf(Fields!Amount.Value = 2, \"Two\", \"\")")),
                 Sales(ThreeSales));
    EXPECT_THAT(MapOf(kit), ElementsAre("0 North", "1 Two", "0 South"));
}

TEST(PageNames, OfAnOuterGroupStayWhenAnInnerOneHasALabel) {
    const auto kit = BuildKit(Nested(PageNamed("=Fields!Region.Value"), Label("=Fields!Product.Value")),
                              Sales(ThreeSales));
    EXPECT_THAT(PageNamesOf(kit), ElementsAre("North", "", "South"));
}

TEST(PageNames, OfTheInnermostGroupThatHasOneCount) {
    const auto kit = BuildKit(Nested(PageNamed("=Fields!Region.Value"),
                                     PageNamed("=IIf(Fields!Amount.Value = 3, \"\", Fields!Product.Value)")),
                              Sales(ThreeSales));
    EXPECT_THAT(PageNamesOf(kit), ElementsAre("Pen", "Ink", "South"));
}

}  // namespace
}  // namespace rdl::layout
