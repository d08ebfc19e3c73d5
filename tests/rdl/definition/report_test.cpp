// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>

#include <filesystem>

#include "rdl/definition/rdl_text.h"
#include "support/source_dir.h"

namespace rdl::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

const std::string Body = "<Body><Height>1in</Height></Body>";

TEST(ReportPage, OlderSettingsStandInTheReport) {
    const Definition report =
        Parse(Report("<PageWidth>21cm</PageWidth><PageHeight>29.7cm</PageHeight><LeftMargin>1in</LeftMargin>"
                     "<PageHeader><Height>1in</Height><PrintOnFirstPage>true</PrintOnFirstPage></PageHeader>"
                     "<Body><Height>1in</Height><Columns>2</Columns></Body>"));
    const Page& page = report.sections.at(0).page;
    EXPECT_NEAR(page.width, 595.28, 0.01);
    EXPECT_DOUBLE_EQ(page.marginLeft, 72);
    EXPECT_EQ(page.columns, 2);
    EXPECT_DOUBLE_EQ(page.columnSpacing, 36);
    ASSERT_TRUE(page.header);
    EXPECT_TRUE(page.header->printOnFirstPage);
    EXPECT_FALSE(page.header->printOnLastPage);
    EXPECT_FALSE(page.footer);
}

TEST(ReportPage, NewerSettingsStandInThePage) {
    const std::string page =
        "<Page><PageWidth>10in</PageWidth><TopMargin>1in</TopMargin><Columns>3</Columns><ColumnSpacing>1in</"
        "ColumnSpacing>"
        "<PageFooter><Height>20pt</Height></PageFooter></Page>";
    const Definition one = Parse(Report("<Width>5in</Width>" + Body + page, Ns2008));
    EXPECT_DOUBLE_EQ(one.sections.at(0).width, 360);
    EXPECT_DOUBLE_EQ(one.sections.at(0).page.width, 720);
    EXPECT_DOUBLE_EQ(one.sections.at(0).page.height, 792);
    EXPECT_EQ(one.sections.at(0).page.columns, 3);
    EXPECT_DOUBLE_EQ(one.sections.at(0).page.footer->height, 20);
    const std::string section = "<ReportSection><Width>5in</Width>" + Body + page + "</ReportSection>";
    const Definition two =
        Parse(Report("<ReportSections>" + section + section + "</ReportSections>", Ns2016));
    ASSERT_EQ(two.sections.size(), 2u);
    EXPECT_DOUBLE_EQ(two.sections[1].page.marginTop, 72);
}

TEST(ReportPage, MarginsThatLeaveNothingAreAnError) {
    EXPECT_THAT(ErrorOf(Report("<LeftMargin>5in</LeftMargin><RightMargin>5in</RightMargin>" + Body)),
                HasSubstr("leave nothing"));
}

TEST(ReportProperties, TitleFormulaAndDescription) {
    const Definition report = Parse(Report(
        Body +
        "<Description>All sales</Description><Language>de-DE</Language><CustomProperties><CustomProperty>"
        "<Name>Title</Name><Value>Sales</Value></CustomProperty><CustomProperty><Name>RecordSelectionFormula"
        "</Name><Value>{a.b} &gt; 1</Value></CustomProperty></CustomProperties><Code>Function F() "
        "End</Code>"));
    EXPECT_EQ(report.title, "Sales");
    EXPECT_EQ(report.recordSelectionFormula, "{a.b} > 1");
    EXPECT_EQ(report.description, "All sales");
    EXPECT_EQ(report.language, "de-DE");
    EXPECT_EQ(report.code, "Function F() End");
}

TEST(ReportProperties, EmbeddedImagesAreDecoded) {
    const auto image = [](const std::string& data) {
        return Report(Body +
                      "<EmbeddedImages><EmbeddedImage Name=\"i\"><MIMEType>image/png</MIMEType><ImageData>" +
                      data + "</ImageData></EmbeddedImage></EmbeddedImages>");
    };
    const Definition report = Parse(image("aGVs\n bG8="));
    EXPECT_EQ(report.images.at(0).bytes, "hello");
    EXPECT_EQ(report.images.at(0).mimeType, "image/png");
    EXPECT_THAT(ErrorOf(image("***")), HasSubstr("base64"));
}

TEST(ReportParameters, TypesDefaultsAndValidValues) {
    const Definition report = Parse(Report(
        Body +
        "<ReportParameters><ReportParameter Name=\"Year\"><DataType>Integer</DataType><Prompt>Which?</Prompt>"
        "<DefaultValue><Values><Value>2025</Value><Value "
        "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
        "xsi:nil=\"true\"/></Values></DefaultValue><MultiValue>true</"
        "MultiValue><ValidValues><ParameterValues>"
        "<ParameterValue><Value>2025</Value><Label>this</Label></ParameterValue></ParameterValues></"
        "ValidValues>"
        "</ReportParameter><ReportParameter "
        "Name=\"From\"><DataType>DateTime</DataType><Nullable>true</Nullable>"
        "<DefaultValue><DataSetReference><DataSetName>d</DataSetName><ValueField>f</ValueField></"
        "DataSetReference>"
        "</DefaultValue></ReportParameter></ReportParameters>"));
    ASSERT_EQ(report.parameters.size(), 2u);
    const ReportParameter& year = report.parameters[0];
    EXPECT_EQ(year.type, ParameterType::Integer);
    EXPECT_TRUE(year.multiValue);
    EXPECT_EQ(year.prompt.source, "Which?");
    ASSERT_EQ(year.defaultValues.size(), 2u);
    EXPECT_FALSE(year.defaultIsNull[0]);
    EXPECT_TRUE(year.defaultIsNull[1]);
    EXPECT_EQ(year.validValues.at(0).label.source, "this");
    EXPECT_TRUE(report.parameters[1].nullable);
    EXPECT_EQ(report.parameters[1].defaultQuery->valueField, "f");
}

TEST(ReportParameters, UnknownTypeAndDoubleNameAreErrors) {
    EXPECT_THAT(
        ErrorOf(Report(Body + "<ReportParameters><ReportParameter Name=\"p\"><DataType>Colour</DataType>"
                              "</ReportParameter></ReportParameters>")),
        HasSubstr("ReportParameter p, DataType"));
    EXPECT_THAT(
        ErrorOf(Report(Body + "<ReportParameters><ReportParameter Name=\"p\"/><ReportParameter Name=\"p\"/>"
                              "</ReportParameters>")),
        HasSubstr("two of this name"));
}

TEST(ReportData, SourcesSetsFieldsAndRows) {
    const Definition report = Parse(Report(
        Body +
        "<DataSources><DataSource "
        "Name=\"s\"><ConnectionProperties><DataProvider>SQLITE</DataProvider><ConnectString>"
        "Data Source=a.db</ConnectString></ConnectionProperties></DataSource><DataSource Name=\"r\">"
        "<DataSourceReference>shared</DataSourceReference></DataSource></DataSources><DataSets><DataSet "
        "Name=\"d\">"
        "<Query><DataSourceName>s</DataSourceName><CommandText>select "
        "1</CommandText><QueryParameters><QueryParameter "
        "Name=\"@p\"><Value>=Parameters!p.Value</Value></QueryParameter></QueryParameters><Timeout>30</"
        "Timeout></Query>"
        "<Fields><Field Name=\"A\"><DataField>a</DataField><rd:TypeName "
        "xmlns:rd=\"urn:rd\">System.Int32</rd:TypeName>"
        "</Field><Field "
        "Name=\"B\"><Value>=1</Value></Field></Fields><Filters><Filter><FilterExpression>=Fields!A.Value"
        "</FilterExpression><Operator>Between</Operator><FilterValues><FilterValue>1</"
        "FilterValue><FilterValue>2"
        "</FilterValue></FilterValues></Filter></Filters></DataSet><DataSet "
        "Name=\"i\"><Query/><Rows><Row><x>1</x>"
        "<y>two</y></Row></Rows></DataSet></DataSets>"));
    EXPECT_EQ(report.dataSources.at(0).provider, "SQLITE");
    EXPECT_EQ(report.dataSources.at(0).connectString.source, "Data Source=a.db");
    EXPECT_EQ(report.dataSources.at(1).reference, "shared");
    const DataSet& set = report.dataSets.at(0);
    EXPECT_EQ(set.commandText.source, "select 1");
    EXPECT_EQ(set.parameters.at(0).name, "@p");
    EXPECT_EQ(set.timeoutSeconds, 30);
    EXPECT_EQ(set.fields.at(0).dataField, "a");
    EXPECT_EQ(set.fields.at(0).typeName, "System.Int32");
    EXPECT_TRUE(set.fields.at(1).value.IsExpression());
    EXPECT_EQ(set.filters.at(0).op, "Between");
    EXPECT_EQ(set.inlineRows, nullptr);
    const DataSet& inlined = report.dataSets.at(1);
    EXPECT_THAT(RowsOf(inlined), ElementsAre("x=1 y=two"));
}

TEST(ReportData, RowsMayBelongToTheNamespaceOfATool) {
    const auto set = [](const std::string& inQuery, const std::string& inSet) {
        const Definition report =
            Parse(Report(Body +
                         "<DataSets xmlns:t=\"urn:tool\"><DataSet Name=\"d\"><Query><CommandText>select 1"
                         "</CommandText><t:Note>x</t:Note>" +
                         inQuery + "</Query>" + inSet + "</DataSet></DataSets>"));
        return report.dataSets.at(0);
    };
    const std::string rows =
        "<t:Rows><t:Row><t:City>Rome</t:City><n:Size xmlns:n=\"urn:n\"> 3 </n:Size></t:Row></t:Rows>";
    for (const DataSet& one : {set(rows, ""), set("", rows)}) {
        EXPECT_THAT(RowsOf(one), ElementsAre("City=Rome Size= 3 "));
    }
    EXPECT_EQ(set("", "<t:Rows File=\"people.xml\"/>").rowsFile, "people.xml");
    // Rows of the report itself come first.
    const DataSet both = set(rows, "<Rows><Row><City>Oslo</City></Row></Rows>");
    EXPECT_THAT(RowsOf(both), ElementsAre("City=Oslo"));
    EXPECT_EQ(set("<t:Rows/>", "").inlineRows, nullptr);
}

// A table without rows is no query that is left out.
TEST(ReportData, RowsWithoutAQueryMayBeNone) {
    const auto set = [](const std::string& query, const std::string& rows) {
        return Parse(Report(Body + "<DataSets><DataSet Name=\"d\"><Query><DataSourceName>s</DataSourceName>" +
                            query + "</Query>" + rows + "</DataSet></DataSets>"))
            .dataSets.at(0);
    };
    for (const char* command : {"", "<CommandText/>", "<CommandText> </CommandText>"}) {
        EXPECT_TRUE(set(command, "<Rows/>").inlineRows != nullptr) << command;
        EXPECT_TRUE(set(std::string(command) + "<Rows/>", "").inlineRows != nullptr) << command;
        EXPECT_FALSE(set(command, "").inlineRows != nullptr) << command;
        EXPECT_FALSE(set(command, "<Rows File=\"r.xml\"/>").inlineRows != nullptr) << command;
    }
}

TEST(ReportData, SourcesMayBeExpressionsAndSharedAndAskForTheSystemsUser) {
    const Definition report = Parse(Report(
        Body +
        "<DataSources><DataSource Name=\"s\"><Transaction>true</Transaction><ConnectionProperties>"
        "<DataProvider>SQL</DataProvider><ConnectString>=\"Server=\" &amp; Parameters!s.Value</ConnectString>"
        "<IntegratedSecurity>true</IntegratedSecurity><Prompt>Who?</Prompt></ConnectionProperties></"
        "DataSource>"
        "</DataSources>"));
    EXPECT_TRUE(report.dataSources.at(0).connectString.IsExpression());
    EXPECT_TRUE(report.dataSources.at(0).integratedSecurity);
    EXPECT_THAT(ErrorOf(Report(Body + "<DataSources><DataSource Name=\"s\"/></DataSources>")),
                HasSubstr("DataSource s: it has neither a connection nor a reference"));
}

TEST(ReportProperties, CustomAssembliesAndTheirClassesAreKnownByName) {
    const Definition report =
        Parse(Report(Body +
                     "<CodeModules><CodeModule>Contoso.Reports, Version=1.0.0.0, Culture=neutral</CodeModule>"
                     "</CodeModules><Classes><Class><ClassName>Contoso.Money</ClassName><InstanceName>m"
                     "</InstanceName></Class></Classes>"));
    EXPECT_EQ(report.assemblies, "Contoso.Reports, Contoso.Money");
    EXPECT_EQ(Parse(Report(Body)).assemblies, "");
}

TEST(ReportProperties, FontsAreKnownByName) {
    const Definition report = Parse(Report(
        "<Body><Height>1in</Height><ReportItems><Textbox Name=\"a\"><Value>x</Value><Style><FontFamily>Tahoma"
        "</FontFamily></Style></Textbox><Textbox Name=\"b\"><Value>x</Value><Style><FontFamily> Calibri "
        "</FontFamily></Style></Textbox><Textbox Name=\"c\"><Value>x</Value><Style><FontFamily>=\"Times\""
        "</FontFamily></Style></Textbox><Textbox Name=\"d\"><Value>x</Value><Style><FontFamily>Tahoma"
        "</FontFamily></Style></Textbox></ReportItems></Body><x:DefaultFontFamily xmlns:x=\"urn:x\">Segoe UI"
        "</x:DefaultFontFamily>"));
    EXPECT_EQ(report.fonts, (std::vector<std::string>{"Calibri", "Segoe UI", "Tahoma"}));
}

TEST(ReportData, ConnectStringsMayHoldParametersInBraces) {
    const auto connectString = [](const std::string& text) {
        return Parse(Report(Body +
                            "<DataSources><DataSource Name=\"s\"><ConnectionProperties><DataProvider>ODBC"
                            "</DataProvider><ConnectString>" +
                            text + "</ConnectString></ConnectionProperties></DataSource></DataSources>"))
            .dataSources.at(0)
            .connectString;
    };
    EXPECT_EQ(connectString("Data Source={?Db}.db").source, "=\"Data Source=\" & {?Db} & \".db\"");
    EXPECT_TRUE(connectString("{?Db}").IsExpression());
    EXPECT_FALSE(connectString("Driver={SQLite3};Database=a.db").IsExpression());
}

TEST(ReportData, SetsKnowTheirCommandTypeAndWhatComparesTexts) {
    const auto set = [](const std::string& type, const std::string& rest) {
        return Report(
            Body + "<DataSets><DataSet Name=\"d\"><Query><CommandType>" + type +
                "</CommandType><CommandText>p</CommandText></Query>" + rest +
                "<Collation>Latin1_General</Collation><AccentSensitivity>Auto</AccentSensitivity>"
                "<KanatypeSensitivity>False</KanatypeSensitivity>"
                "<InterpretSubtotalsAsDetails>True</InterpretSubtotalsAsDetails></DataSet></DataSets>",
            Ns2008);
    };
    const Definition procedure = Parse(set("StoredProcedure", "<CaseSensitivity>True</CaseSensitivity>"));
    EXPECT_EQ(procedure.dataSets.at(0).commandType, QueryKind::StoredProcedure);
    EXPECT_TRUE(procedure.dataSets.at(0).caseSensitive);
    const Definition table = Parse(set("TableDirect", "<CaseSensitivity>Auto</CaseSensitivity>"));
    EXPECT_EQ(table.dataSets.at(0).commandType, QueryKind::Table);
    EXPECT_FALSE(table.dataSets.at(0).caseSensitive);
    EXPECT_THAT(ErrorOf(set("Cube", "")), HasSubstr("CommandType: \"Cube\" is not known"));
}

TEST(ReportFiles, OtherPeoplesReportsAreRead) {
    const std::filesystem::path folder = SourceDir() + "/../shared/rdl";
    if (!std::filesystem::exists(folder)) {
        GTEST_SKIP() << "no folder of report files";
    }
    int read = 0, charts = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() != ".rdl") {
            continue;
        }
        try {
            EXPECT_FALSE(ParseDefinitionFile(entry.path()).sections.empty());
            ++read;
        } catch (const Error& error) {
            EXPECT_THAT(error.what(), HasSubstr(": Chart ")) << entry.path();
            ++charts;
        }
    }
    EXPECT_GT(read, charts);
}

}  // namespace
}  // namespace rdl::test
