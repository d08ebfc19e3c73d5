// SPDX-License-Identifier: GPL-3.0-or-later
// The value of one expression of a report, before the report runs.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "rdl/api/failure.h"
#include "rdl/api/report.h"
#include "rdl/values/stop.h"
#include "support/temporary_folder.h"

namespace rdl {
namespace {

using testing::HasSubstr;

std::string DataSetNamed(const std::string& name, const std::string& file, const std::string& more = {}) {
    return "<DataSet Name=\"" + name + "\"><Query><DataSourceName>" + file +
           "</DataSourceName><CommandText/></Query><Fields>"
           "<Field Name=\"City\"><DataField>City</DataField></Field>"
           "<Field Name=\"Amount\"><DataField>Amount</DataField></Field>"
           "<Field Name=\"Twice\"><Value>=2 * Fields!Amount.Value</Value></Field></Fields>" +
           more + "</DataSet>";
}

std::string SourceNamed(const std::string& name) {
    return "<DataSource Name=\"" + name +
           "\"><ConnectionProperties><DataProvider>CSV</DataProvider><ConnectString>Data Source=" + name +
           ".csv</ConnectString></ConnectionProperties></DataSource>";
}

// Two data sets, the second of which has no file; a table with a group and a total.
std::string ReportText(const std::string& parameters = {}) {
    return R"(<Report xmlns="http://schemas.microsoft.com/sqlserver/reporting/2010/01/reportdefinition">)"
           "<DataSources>" +
           SourceNamed("orders") + SourceNamed("gone") + "</DataSources><DataSets>" +
           DataSetNamed("Orders", "orders",
                        "<Filters><Filter><FilterExpression>=Fields!Amount.Value</FilterExpression>"
                        "<Operator>GreaterThan</Operator><FilterValues><FilterValue>=1</FilterValue>"
                        "</FilterValues></Filter></Filters>") +
           DataSetNamed("Gone", "gone") + "</DataSets>" + parameters +
           R"(<Code>Public Function Half(value)
  Return value / 2
End Function
Public Function Forever()
  Do
  Loop
End Function</Code><Variables><Variable Name="Rate"><Value>=First(Fields!Amount.Value, "Orders")</Value></Variable></Variables>
<ReportSections><ReportSection><Body><ReportItems><Tablix Name="Table"><DataSetName>Orders</DataSetName>
<TablixBody><TablixColumns><TablixColumn><Width>2cm</Width></TablixColumn></TablixColumns><TablixRows><TablixRow>
<Height>1cm</Height><TablixCells><TablixCell><CellContents><Textbox Name="Cell"><Paragraphs><Paragraph><TextRuns><TextRun>
<Value>=Fields!City.Value</Value></TextRun></TextRuns></Paragraph></Paragraphs></Textbox></CellContents></TablixCell></TablixCells>
</TablixRow></TablixRows></TablixBody><TablixColumnHierarchy><TablixMembers><TablixMember/></TablixMembers></TablixColumnHierarchy>
<TablixRowHierarchy><TablixMembers><TablixMember><Group Name="ByCity"><GroupExpressions>
<GroupExpression>=Fields!City.Value</GroupExpression></GroupExpressions><Variables><Variable Name="Own"><Value>=1</Value></Variable></Variables></Group></TablixMember></TablixMembers></TablixRowHierarchy>
</Tablix></ReportItems><Height>4cm</Height></Body><Width>10cm</Width><Page/></ReportSection></ReportSections></Report>)";
}

class ExpressionValueOf : public testing::Test {
 protected:
    ExpressionValueOf() { WriteOrders("City,Amount\nUlm,1\nBonn,2\nKiel,3\nBonn,5\n"); }
    void WriteOrders(const std::string& text) { WriteBytes(m_folder / "orders.csv", text); }
    void Open(const std::string& text) { m_report = OpenReportText(text, m_folder / "sales.rdl"); }
    ExpressionValue Of(const std::string& expression, const std::string& set = "Orders") {
        if (!m_report) {
            Open(ReportText());
        }
        return m_report->ValueOf(expression, set);
    }
    std::string Refusal(const std::string& expression, Stage stage, const std::string& set = "Orders") {
        try {
            Of(expression, set);
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.stage(), stage);
            return failure.what();
        }
        return {};
    }

    TemporaryFolder m_folder;
    std::shared_ptr<Report> m_report;
};

TEST_F(ExpressionValueOf, AFieldIsThatOfTheFirstRowThatTheFiltersLeave) {
    const ExpressionValue city = Of("=Fields!City.Value");
    EXPECT_EQ(city.value.AsText(), "Bonn");
    EXPECT_TRUE(city.isOfRows);
    EXPECT_EQ(city.rows, 3U);
    EXPECT_EQ(Of("=Fields!Twice.Value").value.AsInteger(), 4);
    EXPECT_EQ(Of("=Fields!City.Value", "orders").value.AsText(), "Bonn");
}

TEST_F(ExpressionValueOf, AnAggregateIsOverAllRowsAlsoThatOfAGroup) {
    EXPECT_EQ(Of("=Sum(Fields!Amount.Value)").value.AsInteger(), 10);
    EXPECT_EQ(Of("=Sum(Fields!Amount.Value, \"ByCity\")").value.AsInteger(), 10);
    EXPECT_EQ(Of("=CountRows(\"Table\")").value.AsInteger(), 3);
    EXPECT_EQ(Of("=Sum(Fields!Amount.Value, \"Orders\")", "").value.AsInteger(), 10);
    EXPECT_FALSE(Of("=Sum(Fields!Amount.Value, \"Orders\")", "").isOfRows);
}

TEST_F(ExpressionValueOf, WhatRunsStandsAtTheFirstRow) {
    EXPECT_EQ(Of("=RowNumber(Nothing)").value.AsInteger(), 1);
    EXPECT_EQ(Of("=RowNumber(\"ByCity\")").value.AsInteger(), 1);
    EXPECT_EQ(Of("=RunningValue(Fields!Amount.Value, Sum, \"Table\")").value.AsInteger(), 2);
    EXPECT_TRUE(Of("=Previous(Fields!Amount.Value)").value.IsNull());
    EXPECT_TRUE(Of("=InScope(\"ByCity\")").value.AsBoolean());
}

TEST_F(ExpressionValueOf, VariablesCodeAndGlobalsAreKnown) {
    EXPECT_EQ(Of("=Variables!Rate.Value").value.AsInteger(), 2);
    EXPECT_EQ(Of("=Variables!Rate.Value + 1", "").value.AsInteger(), 3);
    EXPECT_EQ(Of("=Variables!Own.Value").value.AsText(), "The variable Own is known in its group only");
    EXPECT_EQ(Of("=Code.Half(Fields!Amount.Value)").value.AsDouble(), 1.0);
    EXPECT_EQ(Of("=Globals!ReportName").value.AsText(), "sales");
    EXPECT_EQ(Of("=Lookup(\"Kiel\", Fields!City.Value, Fields!Amount.Value, \"Orders\")").value.AsInteger(),
              3);
}

TEST_F(ExpressionValueOf, WhatOnlyARunKnowsIsSaid) {
    EXPECT_TRUE(Of("=\"Page \" & Globals!PageNumber").needsRun);
    EXPECT_TRUE(Of("=ReportItems!Cell.Value").needsRun);
    EXPECT_TRUE(Of("=Max(Sum(Fields!Amount.Value, \"ByCity\"))").needsRun);
    EXPECT_FALSE(Of("=1").needsRun);
}

TEST_F(ExpressionValueOf, OnlyDataThatTheExpressionNeedsIsRead) {
    EXPECT_EQ(Of("=1 + 2", "Gone").value.AsInteger(), 3);
    EXPECT_EQ(Of("=UCase(Globals!ReportName)", "Gone").value.AsText(), "SALES");
    EXPECT_THAT(Refusal("=Fields!City.Value", Stage::Data, "Gone"), HasSubstr("Data set \"Gone\""));
    EXPECT_THAT(Refusal("=Fields!City.Value & First(Fields!City.Value, \"Gone\")", Stage::Data),
                HasSubstr("Data set \"Gone\""));
}

TEST_F(ExpressionValueOf, RowsAreKeptForTheNextExpression) {
    EXPECT_EQ(Of("=Sum(Fields!Amount.Value)").value.AsInteger(), 10);
    WriteOrders("City,Amount\nUlm,100\n");
    EXPECT_EQ(Of("=Max(Fields!Amount.Value)").value.AsInteger(), 5);
    m_report.reset();
    EXPECT_EQ(Of("=Max(Fields!Amount.Value)").value.AsInteger(), 100);
}

TEST_F(ExpressionValueOf, WhatCannotBeReadIsNotTriedWithEachExpression) {
    const std::string refusal = Refusal("=Fields!City.Value", Stage::Data, "Gone");
    WriteBytes(m_folder / "gone.csv", "City,Amount\nRome,7\n");
    EXPECT_EQ(Refusal("=Fields!Amount.Value", Stage::Data, "Gone"), refusal);
    EXPECT_EQ(Of("=Fields!City.Value").value.AsText(), "Bonn");
    m_report.reset();
    EXPECT_EQ(Of("=Fields!Amount.Value", "Gone").value.AsInteger(), 7);
}

TEST_F(ExpressionValueOf, WithoutRowsAFieldIsNull) {
    WriteOrders("City,Amount\n");
    const ExpressionValue city = Of("=Fields!City.Value");
    EXPECT_TRUE(city.value.IsNull());
    EXPECT_TRUE(city.isOfRows);
    EXPECT_EQ(city.rows, 0U);
}

TEST_F(ExpressionValueOf, AFaultHasItsPlaceAndAFailureIsAValue) {
    EXPECT_EQ(Refusal("=Fields!Citty.Value", Stage::Open),
              "The expression: there is no field \"Citty\" in data set \"Orders\", at character 9");
    EXPECT_TRUE(Of("=CDate(\"no day\")").value.IsError());
}

TEST_F(ExpressionValueOf, AParameterWithoutAValueIsNamedIfItIsNeeded) {
    const std::string parameters = ReportText(
        "<ReportParameters><ReportParameter Name=\"Year\"><DataType>Integer</DataType>"
        "</ReportParameter></ReportParameters>");
    Open(parameters);
    EXPECT_EQ(Refusal("=Parameters!Year.Value", Stage::Parameter),
              "Parameter \"Year\" has no value and no default");
    EXPECT_EQ(Of("=2 * 3").value.AsInteger(), 6);
    EXPECT_EQ(Of("=Len(Globals!ReportName)").value.AsInteger(), 5);
    Open(parameters);
    m_report->ParameterAt(0).Add(Value::Integer(2025));
    EXPECT_EQ(Of("=Parameters!Year.Value + 1").value.AsInteger(), 2026);
}

TEST_F(ExpressionValueOf, CodeWithoutAnEndIsBrokenOff) {
    EXPECT_TRUE(Of("=Code.Forever()").value.IsError());
}

TEST_F(ExpressionValueOf, AStopEndsTheReadingOfRows) {
    const auto signal = std::make_shared<StopSignal>();
    const StopsAt stop(signal);
    signal->Give();
    EXPECT_THAT(Refusal("=Sum(Fields!Amount.Value)", Stage::Data), HasSubstr("stopped"));
}

}  // namespace
}  // namespace rdl
