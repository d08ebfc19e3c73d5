// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "rdl/layout/report_kit.h"

namespace rdl::layout {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

const std::string Place = "<Top>0pt</Top><Left>0pt</Left><Height>20pt</Height><Width>100pt</Width>";

std::string HeaderedTable(const std::string& memberMore) {
    return Tablix(1, RowOf(Cell("Head", "Head")) + RowOf(Cell("V", "=RowNumber(Nothing)")),
                  "<TablixMember>" + memberMore +
                      "</TablixMember><TablixMember><Group Name=\"Details\"/></TablixMember>");
}

TEST(Pages, ATableGoesOnWhereThePageWasFull) {
    // 300 points hold 15 rows of 20: the header and 14 rows.
    const auto sink = PagesOf(BuildKit(Report(HeaderedTable("")), Sales(Many(20))));
    ASSERT_THAT(sink.bodies, SizeIs(2));
    EXPECT_THAT(sink.bodies[0], SizeIs(15));
    EXPECT_EQ(sink.bodies[0].back(), "14");
    EXPECT_EQ(sink.bodies[1].front(), "15");
}

TEST(Pages, AHeaderThatRepeatsStandsOnEveryPage) {
    const auto sink = PagesOf(BuildKit(
        Report(HeaderedTable("<KeepWithGroup>After</KeepWithGroup><RepeatOnNewPage>true</RepeatOnNewPage>")),
        Sales(Many(20))));
    ASSERT_THAT(sink.bodies, SizeIs(2));
    EXPECT_EQ(sink.bodies[1][0], "Head");
    EXPECT_EQ(sink.bodies[1][1], "15");
}

TEST(Pages, AGroupBreaksBetweenItsInstances) {
    const auto table =
        Tablix(1, RowOf(Cell("V", "=Fields!Region.Value")),
               "<TablixMember><Group Name=\"G\"><GroupExpressions><GroupExpression>=Fields!Region.Value"
               "</GroupExpression></GroupExpressions><PageBreak><BreakLocation>Between</BreakLocation>"
               "</PageBreak></Group></TablixMember>");
    const auto sink = PagesOf(BuildKit(Report(table), Sales({{"A", "", 1}, {"B", "", 1}, {"C", "", 1}})));
    EXPECT_THAT(sink.bodies, ElementsAre(ElementsAre("A"), ElementsAre("B"), ElementsAre("C")));
}

std::string BreakingGroup(const std::string& breakMore) {
    return "<TablixMember><Group Name=\"G\"><GroupExpressions><GroupExpression>=Fields!Region.Value"
           "</GroupExpression></GroupExpressions><PageBreak><BreakLocation>Between</BreakLocation>" +
           breakMore + "</PageBreak></Group></TablixMember>";
}

TEST(Pages, TheConditionsOfAGroupsBreakAreThoseOfEachInstance) {
    const auto sales = Sales({{"A", "", 1}, {"B", "", 1}, {"C", "", 1}});
    const auto disabled = Tablix(1, RowOf(Cell("V", "=Fields!Region.Value")),
                                 BreakingGroup("<Disabled>=First(Fields!Region.Value) = \"B\"</Disabled>"));
    EXPECT_THAT(PagesOf(BuildKit(Report(disabled), sales)).bodies,
                ElementsAre(ElementsAre("A", "B"), ElementsAre("C")));
    const auto reset =
        Tablix(1, RowOf(Cell("V", "=Fields!Region.Value")),
               BreakingGroup("<ResetPageNumber>=Fields!Region.Value = \"C\"</ResetPageNumber>"));
    const std::string footer =
        "<PageFooter><Height>20pt</Height><PrintOnFirstPage>true</PrintOnFirstPage><PrintOnLastPage>true"
        "</PrintOnLastPage><ReportItems>" +
        Box("F", "=Globals!PageNumber",
            "<Top>0pt</Top><Left>0pt</Left><Height>20pt</Height><Width>99pt</Width>") +
        "</ReportItems></PageFooter>";
    EXPECT_THAT(PagesOf(BuildKit(Report(reset, footer), sales)).margins,
                ElementsAre(ElementsAre("1"), ElementsAre("2"), ElementsAre("1")));
}

TEST(Pages, TheConditionsOfARegionsBreakCount) {
    const std::string place = "<Top>20pt</Top><Left>0pt</Left><Height>20pt</Height><Width>100pt</Width>";
    const auto pages = [&](const std::string& condition) {
        const auto items =
            Box("Top", "t", "<Top>0pt</Top><Left>0pt</Left><Height>20pt</Height><Width>100pt</Width>") +
            Tablix(1, RowOf(Cell("V", "x")), "<TablixMember/>", {},
                   place + "<PageBreak><BreakLocation>Start</BreakLocation>" + condition + "</PageBreak>");
        return PagesOf(BuildKit(Report(items), Sales({{"A", "", 1}}))).bodies.size();
    };
    EXPECT_EQ(pages(""), 2U);
    EXPECT_EQ(pages("<Disabled>true</Disabled>"), 1U);
    EXPECT_EQ(pages("<Disabled>=CountRows(\"Sales\") = 2</Disabled>"), 2U);
}

TEST(Pages, WhatStandsBelowATableFollowsItsLastRow) {
    const auto items =
        Tablix(1, RowOf(Cell("V", "=RowNumber(Nothing)")), "<TablixMember><Group Name=\"D\"/></TablixMember>",
               {}, "<Top>0pt</Top><Left>0pt</Left><Height>20pt</Height><Width>100pt</Width>") +
        Box("End", "End", "<Top>30pt</Top><Left>0pt</Left><Height>20pt</Height><Width>100pt</Width>");
    const auto sink = PagesOf(BuildKit(Report(items), Sales(Many(5))));
    ASSERT_THAT(sink.pages, SizeIs(1));
    double below = 0;
    double last = 0;
    for (const Op& op : sink.pages[0].ops) {
        if (const auto* text = std::get_if<TextOp>(&op)) {
            below = text->baseline - last;
            last = text->baseline;
        }
    }
    // The table of 5 rows ends at 100; 10 points later the box begins: 30 from the last row's top to the
    // box's.
    EXPECT_NEAR(below, 30, 0.01);
}

TEST(Pages, ATextThatGrowsMakesItsRowHigher) {
    const auto table =
        Tablix(1, RowOf(Cell("V", "one two three four five six seven eight nine ten eleven twelve thirteen")),
               "<TablixMember><Group Name=\"D\"/></TablixMember>");
    const auto grown = PagesOf(BuildKit(Report(table), Sales(Many(15))));
    EXPECT_GT(grown.bodies.size(), 1U);
}

TEST(Pages, HeaderAndFooterKnowTheNumbersOfPages) {
    const std::string page =
        "<PageFooter><Height>20pt</Height><PrintOnFirstPage>true</PrintOnFirstPage><PrintOnLastPage>true"
        "</PrintOnLastPage><ReportItems>" +
        Box("F", "=Globals!PageNumber &amp; \" of \" &amp; Globals!TotalPages", Place) +
        "</ReportItems></PageFooter>";
    const auto sink = PagesOf(BuildKit(Report(HeaderedTable(""), page), Sales(Many(30))));
    EXPECT_THAT(sink.margins,
                ElementsAre(ElementsAre("1 of 3"), ElementsAre("2 of 3"), ElementsAre("3 of 3")));
}

// The words of a header or footer with these print settings, on a report of so many rows.
TextSink WithMargin(const std::string& kind, const std::string& onFirst, const std::string& onLast,
                    int rows) {
    return PagesOf(
        BuildKit(Report(HeaderedTable(""), "<" + kind + "><Height>20pt</Height><PrintOnFirstPage>" + onFirst +
                                               "</PrintOnFirstPage><PrintOnLastPage>" + onLast +
                                               "</PrintOnLastPage><ReportItems>" + Box("M", "margin", Place) +
                                               "</ReportItems></" + kind + ">"),
                 Sales(Many(rows))));
}

TEST(Pages, HeaderAndFooterLeaveOutTheFirstOrLastPage) {
    for (const char* kind : {"PageHeader", "PageFooter"}) {
        EXPECT_THAT(WithMargin(kind, "false", "true", 30).margins,
                    ElementsAre(SizeIs(0), SizeIs(1), SizeIs(1)));
        EXPECT_THAT(WithMargin(kind, "true", "false", 30).margins, ElementsAre(SizeIs(1), SizeIs(1)));
    }
}

TEST(Pages, TheOnlyPageIsTheFirstToItsHeaderAndTheLastToItsFooter) {
    EXPECT_THAT(WithMargin("PageHeader", "true", "false", 1).margins, ElementsAre(SizeIs(1)));
    EXPECT_THAT(WithMargin("PageHeader", "false", "true", 1).margins, IsEmpty());
    EXPECT_THAT(WithMargin("PageFooter", "true", "false", 1).margins, IsEmpty());
    EXPECT_THAT(WithMargin("PageFooter", "false", "true", 1).margins, ElementsAre(SizeIs(1)));
}

TEST(Pages, AHeaderThatGrowsLosesNothing) {
    const std::string page =
        "<PageHeader><Height>40pt</Height><PrintOnFirstPage>true</PrintOnFirstPage><ReportItems>" +
        Box("Long", "one two three four five six seven eight nine ten eleven twelve",
            Place + "<CanGrow>true</CanGrow>") +
        "<Rectangle Name=\"R\"><Top>20pt</Top><Height>20pt</Height><KeepTogether>true</KeepTogether>"
        "<ReportItems>" +
        Box("Last", "last", Place) + "</ReportItems></Rectangle></ReportItems></PageHeader>";
    const auto sink = PagesOf(BuildKit(Report(HeaderedTable(""), page), Sales(Many(1))));
    EXPECT_EQ(sink.margins.at(0).back(), "last");
}

TEST(Pages, ABodyWiderThanThePageGoesOnToTheRight) {
    const std::string cells =
        Cell("A", "A") + Cell("B", "B") + Cell("C", "C") + Cell("D", "D") + Cell("E", "E");
    const auto sink = PagesOf(BuildKit(Report(Tablix(5, RowOf(cells), "<TablixMember/>")), Sales(Many(1))));
    EXPECT_THAT(sink.bodies, ElementsAre(ElementsAre("A", "B", "C", "D"), ElementsAre("E")));
}

TEST(Pages, ATextLongerThanAPageIsSplitByLines) {
    std::string text;
    for (int i = 0; i < 60; ++i) {
        text += "line" + std::to_string(i) + "\n";
    }
    const auto sink = PagesOf(BuildKit(Report(Box("T", text, "<CanGrow>true</CanGrow>" + Place)), Sales({})));
    ASSERT_GT(sink.bodies.size(), 2U);
    EXPECT_EQ(sink.bodies[0].front(), "line0");
    std::size_t lines = 0;
    for (const auto& body : sink.bodies) {
        lines += body.size();
    }
    EXPECT_EQ(lines, 60U);
}

TEST(Pages, ARowHigherThanThePageBelowItsHeaderIsSplit) {
    std::string text;
    for (int i = 0; i < 60; ++i) {
        text += "line" + std::to_string(i) + "\n";
    }
    const auto table = Tablix(1, RowOf(Cell("Head", "Head")) + RowOf(Cell("V", text)),
                              "<TablixMember><KeepWithGroup>After</KeepWithGroup><RepeatOnNewPage>true</"
                              "RepeatOnNewPage></TablixMember>"
                              "<TablixMember><Group Name=\"D\"/></TablixMember>");
    const auto sink = PagesOf(BuildKit(Report(table), Sales(Many(2))));
    EXPECT_GT(sink.bodies.size(), 4U);
    EXPECT_LT(sink.bodies.size(), 10U);
    EXPECT_EQ(sink.bodies[1].front(), "Head");
}

TEST(Pages, TheLimitOfPagesIsAnError) {
    const auto kit = BuildKit(Report(HeaderedTable("")), Sales(Many(1000)));
    TextSink sink;
    EXPECT_THROW(Paginate(*kit.report, sink, Limits{10}), Error);
}

TEST(Pages, NumbersStandRightAndTextsLeft) {
    const auto table =
        Tablix(2, RowOf(Cell("A", "=Fields!Product.Value") + Cell("B", "=Fields!Amount.Value")),
               "<TablixMember><Group Name=\"D\"/></TablixMember>");
    const auto sink = PagesOf(BuildKit(Report(table), Sales(Many(1))));
    std::vector<double> places;
    for (const Op& op : sink.pages[0].ops) {
        if (const auto* text = std::get_if<TextOp>(&op)) {
            places.push_back(text->x);
        }
    }
    ASSERT_THAT(places, SizeIs(2));
    EXPECT_NEAR(places[0], 0, 0.01);
    EXPECT_GT(places[1], 185);
}

}  // namespace
}  // namespace rdl::layout
