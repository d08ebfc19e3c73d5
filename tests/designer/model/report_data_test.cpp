// SPDX-License-Identifier: GPL-3.0-or-later
// Data sources and data sets of a report that are read and written.
#include "designer/model/report_data.h"
#include "designer/model/asked_parameters.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "../report_text.h"

namespace designer {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

const std::string Sales = test::ReportText(
    test::SourceText("Sales", "SQLITE", "Data Source=sales.db") + test::SharedSourceText("Far", "Far"),
    test::SetText("Orders", "Sales", test::CommandText("select id, day from orders"),
                  test::FieldText("Number", "id", "          <!-- kept -->\n") +
                      test::FieldText("day", "day") +
                      test::ComputedText("Twice", "=2 * Fields!Number.Value")));

TEST(ReportData, IsRead) {
    const Document document(Sales);
    EXPECT_EQ(SourcesOf(document),
              (std::vector<ReportSource>{
                  {.name = "Sales", .provider = "SQLITE", .connectString = "Data Source=sales.db"},
                  {.name = "Far", .isShared = true, .reference = "Far"}}));
    const std::vector<ReportSet> sets = SetsOf(document);
    ASSERT_EQ(sets.size(), 1U);
    EXPECT_EQ(sets[0].source + ": " + sets[0].query, "Sales: select id, day from orders");
    EXPECT_THAT(sets[0].fields,
                ElementsAre(ReportField{.name = "Number", .column = "id"},
                            ReportField{.name = "day", .column = "day"},
                            ReportField{.name = "Twice", .value = "=2 * Fields!Number.Value"}));
}

TEST(ReportData, ASourceThatIsRenamedKeepsItsDataSets) {
    Document document(Sales);
    PutSource(document, "Sales", {.name = "Shop", .provider = "CSV", .connectString = "Data Source=a&b.csv"});
    EXPECT_EQ(SourcesOf(document)[0].name, "Shop");
    EXPECT_EQ(SetsOf(document)[0].source, "Shop");
    EXPECT_THAT(document.Text(), HasSubstr("<ConnectString>Data Source=a&amp;b.csv</ConnectString>"));
}

TEST(ReportData, WhatIsPutAsItIsChangesNothing) {
    Document document(Sales);
    PutSource(document, "Sales", SourcesOf(document)[0]);
    PutSet(document, "Orders", SetsOf(document)[0]);
    EXPECT_EQ(document.Text(), Sales);
    EXPECT_EQ(document.UndoCount(), 0U);
}

TEST(ReportData, AProviderKeepsItsCapitals) {
    std::string report = Sales;
    report.replace(report.find("SQLITE"), 6, "SQLite");
    Document document(report);
    ReportSource source = SourcesOf(document)[0];
    source.provider = "SQLITE";
    PutSource(document, "Sales", source);
    EXPECT_EQ(document.Text(), report);
}

TEST(ReportData, PartsAreAddedToAReportWithoutAny) {
    Document document(
        "<Report xmlns=\"http://schemas.microsoft.com/sqlserver/reporting/2016/01/reportdefinition\">\n"
        "  <ReportSections/>\n</Report>\n");
    EXPECT_EQ(NewNameOf(document, DataPart::Source), "Source");
    PutSource(document, "", {.name = "Source", .provider = "SQLITE", .connectString = "Data Source=a.db"});
    EXPECT_EQ(NewNameOf(document, DataPart::Source), "Source2");
    PutSet(document, "",
           {.name = "Rows",
            .source = "Source",
            .query = "select 1 < 2 as a",
            .fields = {{.name = "a", .column = "a", .typeName = "System.Int64"}}});
    EXPECT_EQ(
        document.Text(),
        R"(<Report xmlns="http://schemas.microsoft.com/sqlserver/reporting/2016/01/reportdefinition" xmlns:rd="http://schemas.microsoft.com/SQLServer/reporting/reportdesigner">
  <DataSources>
    <DataSource Name="Source">
      <ConnectionProperties>
        <DataProvider>SQLITE</DataProvider>
        <ConnectString>Data Source=a.db</ConnectString>
      </ConnectionProperties>
    </DataSource>
  </DataSources>
  <DataSets>
    <DataSet Name="Rows">
      <Query>
        <DataSourceName>Source</DataSourceName>
        <CommandText>select 1 &lt; 2 as a</CommandText>
      </Query>
      <Fields>
        <Field Name="a">
          <DataField>a</DataField>
          <rd:TypeName>System.Int64</rd:TypeName>
        </Field>
      </Fields>
    </DataSet>
  </DataSets>
  <ReportSections/>
</Report>
)");
}

TEST(ReportData, FieldsFollowTheColumns) {
    Document document(Sales);
    ReportSet set = SetsOf(document)[0];
    std::vector<ReportColumn> columns(3);
    columns[0].name = "ID";
    columns[1].name = "twice";
    columns[2].name = "net price";
    for (ReportColumn& column : columns) {
        column.typeName = "System.Int64";
    }
    set.fields = FieldsFor(columns, set.fields);
    EXPECT_THAT(
        set.fields,
        ElementsAre(ReportField{.name = "Number", .column = "id", .typeName = "System.Int64"},
                    ReportField{.name = "twice_2", .column = "twice", .typeName = "System.Int64"},
                    ReportField{.name = "net_price", .column = "net price", .typeName = "System.Int64"},
                    ReportField{.name = "Twice", .value = "=2 * Fields!Number.Value"}));
    PutSet(document, "Orders", set);
    EXPECT_THAT(document.Text(), HasSubstr("<!-- kept -->"));
    EXPECT_EQ(document.Text().find("<DataField>day"), std::string::npos);
    std::vector<std::string> names;
    const ReportSet written = SetsOf(document)[0];
    for (const ReportField& field : written.fields) {
        names.push_back(field.name);
    }
    EXPECT_THAT(names, ElementsAre("Number", "Twice", "twice_2", "net_price"));
}

TEST(ReportData, ASetWithoutFieldsHasNoListOfThem) {
    Document document(Sales);
    ReportSet set = SetsOf(document)[0];
    set.fields = {};
    PutSet(document, "Orders", set);
    EXPECT_EQ(document.Text().find("<Fields"), std::string::npos);
}

TEST(ReportData, NamesAreChecked) {
    const Document document(Sales);
    EXPECT_EQ(FaultOfName(document, DataPart::Source, "", ""), "Type a name for the data source");
    EXPECT_EQ(FaultOfName(document, DataPart::Source, "", "my sales"),
              "A name is a letter or _, then letters, digits and _");
    EXPECT_EQ(FaultOfName(document, DataPart::Source, "Far", "SALES"),
              "The report has a data source SALES already");
    EXPECT_EQ(FaultOfName(document, DataPart::Source, "Sales", "SALES"), "");
    EXPECT_EQ(FaultOfName(document, DataPart::Set, "", "Sales"), "");
}

TEST(AskedParameters, FlagsAndTypesAreReadAsTheEngineReadsThem) {
    const Document report(R"(<Report xmlns="urn:a"><ReportParameters>
        <ReportParameter Name="Secret"><Prompt>Secret</Prompt><Hidden>1</Hidden></ReportParameter>
        <ReportParameter Name="Quiet"><Prompt>Quiet</Prompt><Hidden> True </Hidden></ReportParameter>
        <ReportParameter Name="Year"><Prompt>Year</Prompt><DataType> Integer </DataType>
          <Nullable> 1 </Nullable><MultiValue>0</MultiValue></ReportParameter>
        </ReportParameters></Report>)");
    const std::vector<AskedParameter> asked = AskedParametersOf(report);
    ASSERT_EQ(asked.size(), 1U);
    EXPECT_EQ(asked[0].name, "Year");
    EXPECT_EQ(asked[0].kind, AskedParameter::Kind::Integer);
    EXPECT_TRUE(asked[0].mayBeNull);
    EXPECT_FALSE(asked[0].takesSeveral);
}

}  // namespace
}  // namespace designer
