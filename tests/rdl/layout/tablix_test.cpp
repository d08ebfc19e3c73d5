// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <map>

#include "rdl/layout/report_kit.h"
#include "rdl/raises.h"

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

std::string ErrorOf(const std::string& report) {
    return ErrorRaisedBy([&] { BuildKit(report, Sales(FourSales)); });
}

TEST(Tablix, AGroupThatCannotBeWorkedOutEndsTheRun) {
    EXPECT_EQ(ErrorOf(Report(Tablix(1, RowOf(Cell("V", "x")),
                                    "<TablixMember><Group Name=\"G\"><GroupExpressions><GroupExpression>"
                                    "=CInt(Fields!Region.Value)</GroupExpression></GroupExpressions></Group>"
                                    "</TablixMember>"))),
              "Group G: its expression cannot be computed: Conversion from text \"North\" to a number is "
              "not possible");
}

TEST(Tablix, AFilterThatCannotBeWorkedOutNamesItsOwner) {
    EXPECT_EQ(ErrorOf(Report(Grouped(
                  "x",
                  "<Filters><Filter><FilterExpression>=1\\0</FilterExpression><Operator>Equal</Operator>"
                  "<FilterValues><FilterValue>1</FilterValue></FilterValues></Filter></Filters>"))),
              "Group ByRegion: a filter cannot be computed: Division by zero");
}

TEST(Tablix, ASortThatCannotBeWorkedOutNamesItsOwner) {
    EXPECT_EQ(ErrorOf(Report(Tablix(1, RowOf(Cell("V", "x")),
                                    "<TablixMember><Group Name=\"G\"><GroupExpressions><GroupExpression>"
                                    "=Fields!Region.Value</GroupExpression></GroupExpressions></Group>"
                                    "<SortExpressions><SortExpression><Value>=1\\0</Value></SortExpression>"
                                    "</SortExpressions></TablixMember>"))),
              "Group G: a sort cannot be computed: Division by zero");
}

TEST(Tablix, ANamedScopeReachesPastTheGroup) {
    const auto kit =
        BuildKit(Report(Grouped("=Sum(Fields!Amount.Value) / Sum(Fields!Amount.Value, \"Sales\") * 65")),
                 Sales(FourSales));
    EXPECT_THAT(Rows(kit.Table()), ElementsAre("North", "10", "30", "40", "South", "20", "5", "25"));
}

TEST(Tablix, RunningValuesBeginAgainInTheirScope) {
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

TEST(Tablix, PreviousOfAnOuterGroupIsTheSameInnerGroupOfTheInstanceBefore) {
    const auto group = [](const std::string& name, const std::string& key, const std::string& inner) {
        return "<TablixMember><Group Name=\"" + name + "\"><GroupExpressions><GroupExpression>" + key +
               "</GroupExpression></GroupExpressions></Group>" + inner + "</TablixMember>";
    };
    const auto kit = BuildKit(
        Report(Tablix(
            2,
            RowOf(Cell("A", "=Sum(Fields!Amount.Value)") +
                  Cell("B", "=Previous(Sum(Fields!Amount.Value, \"ByProduct\"), \"ByRegion\")")),
            group("ByRegion", "=Fields!Region.Value",
                  "<TablixMembers>" + group("ByProduct", "=Fields!Product.Value", "") + "</TablixMembers>"))),
        Sales({{"North", "Pen", 1}, {"North", "Ink", 2}, {"South", "Ink", 3}, {"South", "Pad", 4}}));
    EXPECT_THAT(Rows(kit.Table()), ElementsAre("1|", "2|", "3|2", "4|"));
}

TEST(Matrix, ARunningTotalOfTheRowsGroupGoesAlongTheColumns) {
    const auto kit =
        BuildKit(Report(MatrixOf("=RunningValue(Fields!Amount.Value, Sum, \"ByRegion\")")), Sales(FourSales));
    EXPECT_THAT(Rows(kit.Table()), ElementsAre("Sales|Pen|Ink|Total", "North|10|40|40", "South|5|25|25"));
}

TEST(Matrix, ARunningTotalOfTheColumnsGroupGoesDownTheRows) {
    const auto kit = BuildKit(Report(MatrixOf("=RunningValue(Fields!Amount.Value, Sum, \"ByProduct\")")),
                              Sales(FourSales));
    EXPECT_THAT(Rows(kit.Table()), ElementsAre("Sales|Pen|Ink|Total", "North|10|30|40", "South|15|50|25"));
}

TEST(Matrix, PreviousOfTheColumnsGroupIsTheColumnBefore) {
    const auto kit =
        BuildKit(Report(MatrixOf("=Previous(Sum(Fields!Amount.Value), \"ByProduct\")")), Sales(FourSales));
    EXPECT_THAT(Rows(kit.Table()), ElementsAre("Sales|Pen|Ink|Total", "North||10|40", "South||5|25"));
}

TEST(Matrix, PreviousOfTheRowsGroupIsTheRowBefore) {
    const auto kit =
        BuildKit(Report(MatrixOf("=Previous(Sum(Fields!Amount.Value), \"ByRegion\")")), Sales(FourSales));
    EXPECT_THAT(Rows(kit.Table()), ElementsAre("Sales|Pen|Ink|Total", "North|||40", "South|10|30|25"));
}

std::string Insert(std::string report, const std::string& before, const std::string& what) {
    return report.insert(report.find(before), what);
}

TEST(Matrix, GroupsBeforeRowHeadersStandBeforeThem) {
    const auto report = Insert(Report(MatrixOf("=Sum(Fields!Amount.Value)")), "</Tablix>",
                               "<GroupsBeforeRowHeaders>1</GroupsBeforeRowHeaders>");
    const auto kit = BuildKit(report, Sales(FourSales));
    EXPECT_THAT(Rows(kit.Table()), ElementsAre("Pen|Sales|Ink|Total", "10|North|30|40", "5|South|20|25"));
    EXPECT_THAT(kit.Table().columnWidths, ElementsAre(100, 50, 100, 100));
}

TEST(Matrix, GroupsBeforeRowHeadersAreNoMoreThanThereAre) {
    const auto report = Insert(Report(MatrixOf("=Sum(Fields!Amount.Value)")), "</Tablix>",
                               "<GroupsBeforeRowHeaders>9</GroupsBeforeRowHeaders>");
    EXPECT_EQ(Rows(BuildKit(report, Sales(FourSales)).Table()).front(), "Pen|Ink|Sales|Total");
}

// Where the words of the first row stand.
std::map<std::string, double> PlacesOfHeaders(const std::string& more) {
    const auto report = Insert(Report(MatrixOf("=Sum(Fields!Amount.Value)")), "</Tablix>", more);
    const auto sink = PagesOf(BuildKit(report, Sales(FourSales)));
    std::map<std::string, double> places;
    const Page& page = sink.pages.front();
    for (const Op& op : page.ops) {
        if (const auto* text = std::get_if<TextOp>(&op)) {
            places.emplace(page.text.substr(text->textBegin, text->textEnd - text->textBegin), text->x);
        }
    }
    return places;
}

TEST(Matrix, FromRightToLeftBeginsAtTheRight) {
    const auto places = PlacesOfHeaders("<LayoutDirection>RTL</LayoutDirection>");
    EXPECT_NEAR(places.at("Sales"), 300, 0.01);  // widths 50, 100, 100, 100
    EXPECT_NEAR(places.at("Pen"), 200, 0.01);
    EXPECT_NEAR(places.at("Ink"), 100, 0.01);
    EXPECT_NEAR(places.at("Total"), 0, 0.01);
}

TEST(Matrix, RowHeadersAreRepeatedToTheRightOnlyWhenTold) {
    for (const bool repeats : {false, true}) {
        // Ten products of 100 points each need three pages of 400.
        std::vector<SaleRow> sales;
        static const char* const Products[] = {"a", "b", "c", "d", "e", "f", "g", "h", "i", "j"};
        for (const char* product : Products) {
            sales.push_back({"North", product, 1});
        }
        const auto report = Insert(Report(MatrixOf("=Sum(Fields!Amount.Value)")), "</Tablix>",
                                   repeats ? "<RepeatRowHeaders>true</RepeatRowHeaders>" : "");
        const auto sink = PagesOf(BuildKit(report, Sales(sales)));
        ASSERT_EQ(sink.bodies.size(), repeats ? 4U : 3U);
        EXPECT_EQ(sink.bodies[1].front() == "Sales", repeats);
    }
}

struct SubreportKit {
    std::unique_ptr<Definition> outer, inner;
    std::unique_ptr<ReportInstance> report;
};

SubreportKit WithSubreport(const std::vector<SaleRow>& rows) {
    SubreportKit kit;
    kit.outer = std::make_unique<Definition>(ParseDefinition(
        Report("<Subreport Name=\"S\"><ReportName>inner</ReportName><NoRowsMessage>=\"no\" &amp; \"thing\""
               "</NoRowsMessage><Top>0pt</Top><Left>0pt</Left><Height>20pt</Height><Width>100pt</Width>"
               "</Subreport>"),
        "outer.rdl"));
    kit.inner = std::make_unique<Definition>(
        ParseDefinition(Report(Box("Title", "Title") + DetailTable("=Fields!Amount.Value")), "inner.rdl"));
    ReportInput input;
    input.definition = kit.outer.get();
    input.openSubreport = [&kit, rows](const Subreport&, const std::vector<Value>&) {
        ReportInput subInput;
        subInput.definition = kit.inner.get();
        subInput.tables.emplace("Data", Sales(rows));
        return std::shared_ptr<ReportInstance>(Build(std::move(subInput)));
    };
    kit.report = Build(std::move(input));
    return kit;
}

TEST(Subreport, WithoutRowsSaysSo) {
    TextSink sink;
    Paginate(*WithSubreport({}).report, sink);
    EXPECT_THAT(sink.bodies, ElementsAre(ElementsAre("nothing")));
}

TEST(Subreport, WithRowsShowsItsItems) {
    TextSink sink;
    Paginate(*WithSubreport({{"North", "Pen", 7}}).report, sink);
    EXPECT_THAT(sink.bodies.at(0), testing::UnorderedElementsAre("Title", "7"));
}

// A report whose rows each hold a subreport, which holds another one.
TEST(Subreport, StandsInCellsAndInOtherSubreports) {
    const auto place = [](const std::string& name, const std::string& parameter) {
        return "<Subreport Name=\"" + name + "\"><ReportName>" + name +
               "</ReportName><Parameters><Parameter Name=\"P\"><Value>" + parameter +
               "</Value></Parameter></Parameters><Height>20pt</Height><Width>100pt</Width></Subreport>";
    };
    const std::string parameter =
        "<ReportParameters><ReportParameter Name=\"P\"><DataType>String</DataType></ReportParameter>"
        "</ReportParameters>";
    const auto outer = ParseDefinition(
        Report(Tablix(1,
                      RowOf("<TablixCell><CellContents>" + place("middle", "=Fields!Product.Value") +
                            "</CellContents></TablixCell>"),
                      Details)),
        "outer.rdl");
    const auto withParameter = [&parameter](const std::string& items) {
        return ParseDefinition(Insert(Report(items), "<ReportSections>", parameter), "inner.rdl");
    };
    const auto middle = withParameter(place("inner", "=Parameters!P.Value &amp; \"!\""));
    const auto inner =
        withParameter(Box("T", "=Parameters!P.Value", "<Height>20pt</Height><Width>100pt</Width>"));
    std::function<std::shared_ptr<ReportInstance>(const Subreport&, const std::vector<Value>&)> open;
    open = [&](const Subreport& subreport, const std::vector<Value>& values) {
        ReportInput input;
        input.definition = subreport.reportName == "middle" ? &middle : &inner;
        input.parameters.push_back({values.at(0), values.at(0)});
        input.openSubreport = open;
        return std::shared_ptr<ReportInstance>(Build(std::move(input)));
    };
    ReportInput input;
    input.definition = &outer;
    input.tables.emplace("Data", Sales({{"", "Pen", 1}, {"", "Ink", 2}}));
    input.openSubreport = open;
    TextSink sink;
    Paginate(*Build(std::move(input)), sink);
    EXPECT_THAT(sink.bodies, ElementsAre(ElementsAre("Pen!", "Ink!")));
}

TEST(Tablix, FiltersOfADetailGroupLeaveRowsOut) {
    const auto rows = [](const std::string& op, const std::string& value) {
        return Rows(
            BuildKit(
                Report(Tablix(1, RowOf(Cell("V", "=Fields!Amount.Value")),
                              "<TablixMember><Group Name=\"Details\"><Filters><Filter><FilterExpression>"
                              "=Fields!Amount.Value</FilterExpression><Operator>" +
                                  op + "</Operator><FilterValues><FilterValue>=" + value +
                                  "</FilterValue></FilterValues></Filter></Filters></Group></TablixMember>")),
                Sales(FourSales))
                .Table());
    };
    EXPECT_THAT(rows("GreaterThan", "10"), ElementsAre("20", "30"));
    EXPECT_THAT(rows("TopN", "1"), ElementsAre("30"));
    EXPECT_THAT(rows("BottomN", "2"), ElementsAre("10", "5"));
}

TEST(Tablix, PreviousInAGroupBeginsWithEachOfIts) {
    const auto kit = BuildKit(
        Report(Tablix(1, RowOf(Cell("V", "=Previous(Fields!Amount.Value, &quot;ByRegion&quot;)")),
                      "<TablixMember><Group Name=\"ByRegion\"><GroupExpressions><GroupExpression>"
                      "=Fields!Region.Value</GroupExpression></GroupExpressions></Group><TablixMembers>" +
                          Details + "</TablixMembers></TablixMember>")),
        Sales(FourSales));
    EXPECT_THAT(Rows(kit.Table()), ElementsAre("", "10", "", "20"));
}

TEST(Tablix, EachSortHasItsOwnDirection) {
    const auto sorted = [](const std::string& first, const std::string& second) {
        const auto sort = [](const std::string& field, const std::string& direction) {
            return "<SortExpression><Value>=Fields!" + field + ".Value</Value><Direction>" + direction +
                   "</Direction></SortExpression>";
        };
        return Rows(BuildKit(Report(DetailTable("=Fields!Amount.Value",
                                                "<SortExpressions>" + sort("Region", first) +
                                                    sort("Amount", second) + "</SortExpressions>")),
                             Sales(FourSales))
                        .Table());
    };
    EXPECT_THAT(sorted("Ascending", "Ascending"), ElementsAre("10", "30", "5", "20"));
    EXPECT_THAT(sorted("Ascending", "Descending"), ElementsAre("30", "10", "20", "5"));
    EXPECT_THAT(sorted("Descending", "Ascending"), ElementsAre("5", "20", "10", "30"));
    EXPECT_THAT(sorted("Descending", "Descending"), ElementsAre("20", "5", "30", "10"));
}

TEST(Tablix, LevelsOfARecursiveGroupBeginWithZero) {
    const auto kit = BuildKit(
        Report(Tablix(1, RowOf(Cell("V", "=Fields!Region.Value &amp; Level(&quot;Tree&quot;)")),
                      "<TablixMember><Group Name=\"Tree\"><GroupExpressions><GroupExpression>"
                      "=Fields!Region.Value</GroupExpression></GroupExpressions><Parent>=Fields!Product.Value"
                      "</Parent></Group></TablixMember>")),
        Sales({{"C", "B", 1}, {"A", "", 1}, {"B", "A", 1}, {"D", "A", 1}}));
    EXPECT_THAT(Rows(kit.Table()), ElementsAre("A0", "B1", "C2", "D1"));
}

}  // namespace
}  // namespace rdl::layout
