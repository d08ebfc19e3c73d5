// SPDX-License-Identifier: GPL-3.0-or-later
// What is wrong with a report is said when it is opened, with file, line and item.
#include <gtest/gtest.h>

#include "rdl/layout/report_kit.h"
#include "rdl/raises.h"

namespace rdl::layout {
namespace {

std::string ErrorOf(const std::string& source) {
    const std::string error = ErrorRaisedBy([&] {
        const Definition definition = ParseDefinition(source, "sales.rpt");
        CheckExpressions(definition);
    });
    return error.empty() ? "none" : error;
}

TEST(OpenError, AnExpressionThatDoesNotCompileIsToldWithItsLine) {
    EXPECT_EQ(
        ErrorOf(Report("\n\n" + Box("Total", "=1 +"))),
        "sales.rpt, line 3: Textbox Total, Value: a value was expected instead of the end, at character 5");
}

TEST(OpenError, APropertyIsNamed) {
    EXPECT_EQ(ErrorOf(Report(Box("Total", "x", "\n<Style><Color>=Red(</Color></Style>"))).substr(0, 42),
              "sales.rpt, line 2: Textbox Total, Color: t");
}

TEST(OpenError, AFieldThatTheDataSetDoesNotHaveIsTold) {
    EXPECT_EQ(ErrorOf(Report(Tablix(1, RowOf(Cell("V", "\n=Fields!Nothing.Value")),
                                    "<TablixMember><Group Name=\"D\"/></TablixMember>")))
                  .substr(0, 36),
              "sales.rpt, line 1: Textbox V, Value:");
}

TEST(OpenError, ADataSetThatTheReportDoesNotHaveIsTold) {
    std::string report = Report("\n" + Tablix(1, RowOf(Cell("V", "x")), "<TablixMember/>"));
    const std::string name = "<DataSetName>Data<";
    report.replace(report.find(name), name.size(), "<DataSetName>Moon<");
    EXPECT_EQ(ErrorOf(report), "sales.rpt, line 2: Tablix Sales: the report has no data set \"Moon\"");
}

TEST(OpenError, AnOlderRegionIsCalledAsTheFileCallsIt) {
    EXPECT_EQ(ErrorOf("<Report><Width>5in</Width><Body><Height>1in</Height><ReportItems>\n<List Name=\"L\">"
                      "<DataSetName>Moon</DataSetName></List></ReportItems></Body></Report>"),
              "sales.rpt, line 2: List L: the report has no data set \"Moon\"");
}

TEST(OpenError, ARegionWithoutADataSetNameAmongSeveralIsTold) {
    std::string report = Report("\n" + Tablix(1, RowOf(Cell("V", "x")), "<TablixMember/>"));
    const std::string name = "<DataSetName>Data</DataSetName>";
    report.erase(report.find(name), name.size());
    report.insert(
        report.find("</DataSets>"),
        "<DataSet Name=\"Other\"><Query><DataSourceName>S</DataSourceName><CommandText>x</CommandText>"
        "</Query><Fields/></DataSet>");
    EXPECT_EQ(ErrorOf(report),
              "sales.rpt, line 2: Tablix Sales: it names no data set, and the report has several");
}

}  // namespace
}  // namespace rdl::layout
