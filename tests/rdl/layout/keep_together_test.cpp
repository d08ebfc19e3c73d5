// SPDX-License-Identifier: GPL-3.0-or-later
// Tables whose details are hidden, as a report with drilldown shows them at first.
#include <gmock/gmock.h>

#include "rdl/layout/report_kit.h"

namespace rdl::layout {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::SizeIs;

// A group with a header row that is kept with the group's details; these are hidden as `details` says.
std::string Drilldown(const std::string& details, const std::string& footer = {}) {
    const std::string header = RowOf(Cell("G", "=Fields!Region.Value"));
    const std::string detail = RowOf(Cell("D", "=Fields!Product.Value"));
    return Tablix(
        1, RowOf(Cell("Head", "Head")) + header + detail + (footer.empty() ? "" : RowOf(Cell("F", "End"))),
        "<TablixMember><KeepWithGroup>After</KeepWithGroup><RepeatOnNewPage>true</RepeatOnNewPage></"
        "TablixMember>"
        "<TablixMember><Group Name=\"Regions\"><GroupExpressions><GroupExpression>=Fields!Region.Value"
        "</GroupExpression></GroupExpressions></Group><TablixMembers>"
        "<TablixMember><KeepWithGroup>After</KeepWithGroup></TablixMember>"
        "<TablixMember><Group Name=\"Details\"/>" +
            details + "</TablixMember>" + footer + "</TablixMembers></TablixMember>");
}

const std::string Hidden = "<Visibility><Hidden>true</Hidden></Visibility>";

std::vector<SaleRow> Groups(int count, std::vector<std::string>& names) {
    names.clear();
    for (int i = 0; i < count; ++i) {
        names.push_back("G" + std::to_string(100 + i));
    }
    std::vector<SaleRow> rows;
    for (const std::string& name : names) {
        rows.push_back({name.c_str(), "Pen", 1});
    }
    return rows;
}

// 300 points hold 15 rows of 20: the head and 14 groups.
TEST(HiddenDetails, GroupsFillThePagesFromTheFirst) {
    std::vector<std::string> names;
    const auto sink = PagesOf(BuildKit(Report(Drilldown(Hidden)), Sales(Groups(70, names))));
    ASSERT_THAT(sink.bodies, SizeIs(5));
    EXPECT_THAT(sink.bodies, Each(SizeIs(15)));
}

TEST(HiddenDetails, AFooterIsKeptWithItsOwnGroupOnly) {
    std::vector<std::string> names;
    const auto sink = PagesOf(BuildKit(
        Report(Drilldown(Hidden, "<TablixMember><KeepWithGroup>Before</KeepWithGroup></TablixMember>")),
        Sales(Groups(14, names))));
    // Each group is two rows that stay together: seven of them below the head.
    ASSERT_THAT(sink.bodies, SizeIs(2));
    EXPECT_THAT(sink.bodies, Each(SizeIs(15)));
}

TEST(HiddenDetails, AHeaderIsStillKeptWithDetailsThatAreShown) {
    std::vector<std::string> names;
    // Head and seven groups of two rows are 15 rows: the eighth group's header would stand alone at the foot
    // if the page held 16.
    const auto sink = PagesOf(BuildKit(Report(Drilldown("")), Sales(Groups(9, names))));
    ASSERT_THAT(sink.bodies, SizeIs(2));
    EXPECT_THAT(sink.bodies[0], SizeIs(15));
    EXPECT_EQ(sink.bodies[1][1], "G107");
    EXPECT_EQ(sink.bodies[1][2], "Pen");
}

TEST(HiddenDetails, AHeaderDoesNotStandAloneAtTheFoot) {
    std::vector<std::string> names;
    std::string report = Report(Drilldown(""));
    const auto at = report.find("<PageHeight>300pt");
    report.replace(at, 17, "<PageHeight>320pt");  // 16 rows
    const auto sink = PagesOf(BuildKit(report, Sales(Groups(9, names))));
    ASSERT_THAT(sink.bodies, SizeIs(2));
    EXPECT_THAT(sink.bodies[0], SizeIs(15));
    EXPECT_EQ(sink.bodies[1][1], "G107");
}

const std::string Upper = Box("T", "Text", "<Height>270pt</Height><Width>100pt</Width>");

std::string GroupOf(const std::string& name, const std::string& field, const std::string& breaks) {
    return "<Group Name=\"" + name + "\"><GroupExpressions><GroupExpression>=Fields!" + field +
           ".Value</GroupExpression></GroupExpressions>" + breaks + "</Group>";
}

std::string BreakAt(const std::string& location) {
    return "<PageBreak><BreakLocation>" + location + "</BreakLocation></PageBreak>";
}

// A row that breaks the page anyway takes nothing along from the page before.
TEST(KeptRows, ABreakBeforeTheNextRowEndsWhatIsKeptWithIt) {
    const std::string table =
        Tablix(1, RowOf(Cell("D", "=Fields!Product.Value")),
               "<TablixMember>" + GroupOf("Regions", "Region", "") + "<TablixMembers><TablixMember>" +
                   GroupOf("Products", "Product", BreakAt("Between")) +
                   "</TablixMember></TablixMembers><KeepTogether>true</KeepTogether>"
                   "</TablixMember>",
               {}, "<Top>270pt</Top>");
    const auto sink =
        PagesOf(BuildKit(Report(Upper + table), Sales({{"North", "Pen", 1}, {"North", "Ink", 1}})));
    EXPECT_THAT(sink.bodies, ElementsAre(ElementsAre("Text", "Pen"), ElementsAre("Ink")));
}

const std::string HeadMember = "<TablixMember><KeepWithGroup>After</KeepWithGroup></TablixMember>";

// The headings of a group stay with its first instance: a page with nothing but them says nothing.
TEST(KeptRows, ABreakAtTheStartOfAGroupIsBeforeItsHeadings) {
    const auto pages = [](const std::string& location, const std::string& above) {
        const std::string table =
            Tablix(1, RowOf(Cell("Head", "Head")) + RowOf(Cell("D", "=Fields!Product.Value")),
                   HeadMember + "<TablixMember>" + GroupOf("Regions", "Region", BreakAt(location)) +
                       "</TablixMember>",
                   {}, "<Top>20pt</Top>");
        return PagesOf(BuildKit(Report(above + table), Sales({{"North", "Pen", 1}, {"South", "Ink", 1}})))
            .bodies;
    };
    const std::string title = Box("T", "Title", "<Height>20pt</Height><Width>100pt</Width>");
    EXPECT_THAT(pages("Start", ""), ElementsAre(ElementsAre("Head", "Pen"), ElementsAre("Ink")));
    EXPECT_THAT(pages("StartAndEnd", ""), ElementsAre(ElementsAre("Head", "Pen"), ElementsAre("Ink")));
    EXPECT_THAT(pages("Start", title),
                ElementsAre(ElementsAre("Title"), ElementsAre("Head", "Pen"), ElementsAre("Ink")));
    EXPECT_THAT(pages("Between", title),
                ElementsAre(ElementsAre("Title", "Head", "Pen"), ElementsAre("Ink")));
}

TEST(KeptRows, ABreakAtTheStartOfAnInnerGroupIsBeforeTheHeadingOfTheOuterOne) {
    const std::string table =
        Tablix(1,
               RowOf(Cell("Head", "Head")) + RowOf(Cell("R", "=Fields!Region.Value")) +
                   RowOf(Cell("D", "=Fields!Product.Value")),
               HeadMember + "<TablixMember>" + GroupOf("Regions", "Region", "") + "<TablixMembers>" +
                   HeadMember + "<TablixMember>" + GroupOf("Products", "Product", BreakAt("Start")) +
                   "</TablixMember></TablixMembers></TablixMember>");
    const auto sink = PagesOf(
        BuildKit(Report(table), Sales({{"North", "Pen", 1}, {"North", "Ink", 1}, {"South", "Cup", 1}})));
    EXPECT_THAT(sink.bodies, ElementsAre(ElementsAre("Head", "North", "Pen"), ElementsAre("Ink"),
                                         ElementsAre("South", "Cup")));
}

TEST(KeptRows, ABreakAfterARowEndsWhatIsKeptWithIt) {
    const std::string table = Tablix(
        1, RowOf(Cell("D", "=Fields!Product.Value")) + RowOf(Cell("Foot", "Foot")),
        "<TablixMember><Group Name=\"Regions\"><GroupExpressions><GroupExpression>=Fields!Region.Value"
        "</GroupExpression></GroupExpressions></Group><TablixMembers><TablixMember><Group Name=\"Products\">"
        "<GroupExpressions><GroupExpression>=Fields!Product.Value</GroupExpression></GroupExpressions>"
        "<PageBreak><BreakLocation>End</BreakLocation></PageBreak></Group></TablixMember><TablixMember/>"
        "</TablixMembers><KeepTogether>true</KeepTogether></TablixMember>",
        {}, "<Top>270pt</Top>");
    const auto sink = PagesOf(BuildKit(Report(Upper + table), Sales({{"North", "Pen", 1}})));
    EXPECT_THAT(sink.bodies, ElementsAre(ElementsAre("Text", "Pen"), ElementsAre("Foot")));
}

TEST(KeptRows, ARowGoesAlongWithTheNextThatHasNoRoom) {
    const std::string table =
        Tablix(1, RowOf(Cell("Head", "Head")) + RowOf(Cell("D", "=Fields!Product.Value")),
               "<TablixMember><KeepWithGroup>After</KeepWithGroup></TablixMember>"
               "<TablixMember><Group Name=\"Details\"/></TablixMember>",
               {}, "<Top>270pt</Top>");
    const auto sink = PagesOf(BuildKit(Report(Upper + table), Sales({{"North", "Pen", 1}})));
    EXPECT_THAT(sink.bodies, ElementsAre(ElementsAre("Text"), ElementsAre("Head", "Pen")));
}

}  // namespace
}  // namespace rdl::layout
