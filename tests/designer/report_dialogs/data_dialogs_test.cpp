// SPDX-License-Identifier: GPL-3.0-or-later
// The dialogs for data sources and data sets, by mouse and keys.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QPlainTextEdit>
#include <QSpinBox>
#include <QTableWidget>
#include <QTimer>
#include <chrono>
#include <fstream>

#include "data_dialogs.h"
#include "designer/dialogs/data_source_dialog.h"
#include "designer/report_dialogs/data_set_dialog.h"

namespace designer {
namespace {

using test::Sales;
using testing::ElementsAre;
using testing::HasSubstr;

class DataDialogsTest : public test::DataDialogsTest {};

TEST_F(DataDialogsTest, OkWithoutAChangeChangesNothing) {
    Open<DataSourceDialog>();
    EXPECT_EQ(The<QComboBox>("part").currentText(), "Sales");
    EXPECT_EQ(Line("name"), "Sales");
    EXPECT_EQ(Line("file"), "sales.db");
    Ok();
    EXPECT_EQ(m_dialog->result(), QDialog::Accepted);
    EXPECT_EQ(Report().Text(), Sales);
    EXPECT_EQ(Report().UndoCount(), 0U);
    Open<DataSetDialog>();
    EXPECT_EQ(The<QPlainTextEdit>("query").toPlainText(), "select id from orders");
    Ok();
    EXPECT_EQ(m_dialog->result(), QDialog::Accepted);
    EXPECT_EQ(Report().Text(), Sales);
    EXPECT_EQ(Report().UndoCount(), 0U);
}

TEST_F(DataDialogsTest, AConnectStringThatNobodyChangesStaysAsItIsWritten) {
    for (const char* written :
         {"Data Source=sales.db;", " data source = 'sales.db' ", "Data Source=./sales.db",
          "Data Source=sales.db;\n  Version=3;", "=&quot;Data Source=&quot; &amp; 1"}) {
        std::string text = Sales;
        const std::string old = "SQLITE</DataProvider>\n        <ConnectString>Data Source=sales.db<";
        text.replace(text.find(old), old.size(),
                     " sqlite </DataProvider>\n        <ConnectString>" + std::string(written) + "<");
        m_model.SetDocument(Document(text));
        Open<DataSourceDialog>();
        Ok();
        EXPECT_EQ(m_dialog->result(), QDialog::Accepted) << written;
        EXPECT_EQ(Report().Text(), text);
        EXPECT_EQ(Report().UndoCount(), 0U) << written;
        Open<DataSourceDialog>();
        Type("name", "Shop");
        Ok();
        EXPECT_THAT(Report().Text(), HasSubstr("<ConnectString>" + std::string(written) + "<"));
        EXPECT_THAT(Report().Text(), HasSubstr("<DataSource Name=\"Shop\">"));
        EXPECT_THAT(Report().Text(), HasSubstr("<DataProvider> sqlite <"));
    }
}

TEST_F(DataDialogsTest, ASourceIsChangedInOneStep) {
    Open<DataSourceDialog>();
    Type("name", "Shop");
    EXPECT_FALSE(The<QComboBox>("part").isEnabled());
    Type("file", "shop.db");
    Ok();
    EXPECT_EQ(Report().UndoName(), "Change Data Source Shop");
    EXPECT_EQ(Report().UndoCount(), 1U);
    EXPECT_THAT(Report().Text(), HasSubstr("<DataSource Name=\"Shop\">"));
    EXPECT_THAT(Report().Text(), HasSubstr("<ConnectString>Data Source=shop.db</ConnectString>"));
    EXPECT_THAT(Report().Text(), HasSubstr("<DataSourceName>Shop</DataSourceName>"));
    m_model.Undo();
    EXPECT_EQ(Report().Text(), Sales);
}

TEST_F(DataDialogsTest, AFileBesideTheReportHasItsBareName) {
    Open<DataSourceDialog>();
    Type("file", (m_folder / "sales.db").c_str());
    Click("test");
    EXPECT_EQ(Note("test"), "The connection works; the number of tables is 1.");
    Ok();
    EXPECT_EQ(Report().Text(), Sales);
}

TEST_F(DataDialogsTest, AConnectStringWithOtherPartsIsAText) {
    Open<DataSourceDialog>();
    Pick("part", "Team");
    EXPECT_EQ(Line("connectString"), "Host=db;Database=sales;SSL Mode=require");
    EXPECT_TRUE(The<QCheckBox>("asText").isChecked());
    Click("asText");
    EXPECT_EQ(Note("connectString"), "The lines cannot show all of this connect string");
    EXPECT_TRUE(The<QCheckBox>("asText").isChecked());
    Type("connectString", "Host=db;Database=stock");
    Click("asText");
    EXPECT_EQ(Line("server") + " " + Line("database"), "db stock");
    Type("user", "ann");
    Type("password", "secret");
    Ok();
    EXPECT_EQ(SourcesOf(Report())[1].connectString, "Host=db;Database=stock");
    EXPECT_EQ(m_model.SourceLogons()["Team"].user + " " + m_model.SourceLogons()["Team"].password,
              "ann secret");
    EXPECT_EQ(Report().Text().find("secret"), std::string::npos);
}

TEST_F(DataDialogsTest, ASharedSourceNamesItsFile) {
    Open<DataSourceDialog>();
    Pick("part", "Far");
    EXPECT_TRUE(The<QCheckBox>("isShared").isChecked());
    EXPECT_EQ(Line("reference"), "Far");
    EXPECT_FALSE(The<QWidget>("provider").isVisible());
    Click("testShared");
    EXPECT_THAT(Note("testShared"), HasSubstr("the shared file \"Far.rds\""));
    Ok();
    EXPECT_EQ(Report().Text(), Sales);
    WriteBytes(m_folder / "Shop.rds",
               "<RptDataSource Name=\"Shop\"><ConnectionProperties><Extension>SQLITE</Extension>"
               "<ConnectString>Data Source=sales.db</ConnectString></ConnectionProperties></RptDataSource>");
    Open<DataSourceDialog>();
    Pick("part", "Far");
    Type("reference", "");
    Ok();
    EXPECT_EQ(Note("reference"), "Type the name of the file with the data source");
    Type("reference", "Shop");
    Click("testShared");
    EXPECT_EQ(Note("testShared"), "The connection works; the number of tables is 1.");
    Ok();
    std::string expected = Sales;
    const std::string old = "<DataSourceReference>Far<";
    expected.replace(expected.find(old), old.size(), "<DataSourceReference>Shop<");
    EXPECT_EQ(Report().Text(), expected);
}

TEST_F(DataDialogsTest, ASourceMovesIntoAFileOfItsOwnAndBack) {
    Open<DataSourceDialog>();
    Click("isShared");
    EXPECT_FALSE(The<QComboBox>("part").isEnabled());
    Type("reference", "Shop");
    Ok();
    EXPECT_THAT(Report().Text(), HasSubstr("    <DataSource Name=\"Sales\">\n"
                                           "      <DataSourceReference>Shop</DataSourceReference>\n"
                                           "    </DataSource>\n"));
    Open<DataSourceDialog>();
    Click("isShared");
    Type("file", "sales.db");
    Ok();
    EXPECT_EQ(Report().Text(), Sales);
}

TEST_F(DataDialogsTest, TabGoesToTheFileAndThenToItsButton) {
    Open<DataSourceDialog>();
    Pick("provider", "CSV or text file");
    The<QWidget>("provider").setFocus();
    for (const char* next : {"file", "browse", "asText"}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(QApplication::focusWidget()->objectName().toStdString(), next);
    }
}

TEST_F(DataDialogsTest, ANewSourceIsAdded) {
    Open<DataSourceDialog>();
    Pick("part", "(a new data source)");
    EXPECT_EQ(Line("name"), "Source");
    Type("name", "sales");
    Pick("provider", "CSV or text file");
    Ok();
    EXPECT_EQ(Note("name"), "The report has a data source sales already");
    Type("name", "Rates");
    Ok();
    EXPECT_EQ(Note("file"), "Pick the file with the data");
    Type("file", "rates.csv");
    Ok();
    EXPECT_EQ(Report().UndoName(), "Add Data Source Rates");
    EXPECT_EQ(SourcesOf(Report()).back(),
              (ReportSource{.name = "Rates", .provider = "CSV", .connectString = "Data Source=rates.csv"}));
}

TEST_F(DataDialogsTest, TheQueryIsRunAndItsColumnsAreFields) {
    Open<DataSetDialog>();
    Type("query", "select id, amount from orders");
    Click("run");
    EXPECT_EQ(Note("query"), "Rows: 2");
    EXPECT_EQ(The<QTableWidget>("rows").horizontalHeaderItem(1)->text(), "amount\nNumber");
    Ok();
    const ReportSet set = SetsOf(Report())[0];
    EXPECT_EQ(set.query, "select id, amount from orders");
    EXPECT_THAT(set.fields,
                ElementsAre(ReportField{.name = "Number", .column = "id", .typeName = "System.Int64"},
                            ReportField{.name = "amount", .column = "amount", .typeName = "System.Decimal"}));
    EXPECT_EQ(Report().UndoName(), "Change Data Set Orders");
    EXPECT_EQ(Report().UndoCount(), 1U);
}

TEST_F(DataDialogsTest, AQueryThatFailsIsToldAndCanBeKeptAllTheSame) {
    Open<DataSetDialog>();
    Type("query", "select id from orders where dya = 1");
    Ok();
    EXPECT_THAT(Note("query"), HasSubstr("dya"));
    const QColor fault = The<QLabel>("queryNote").palette().color(QPalette::WindowText);
    EXPECT_TRUE(m_dialog->isVisible());
    Type("query", "select id from orders");
    Click("run");
    EXPECT_EQ(Note("query"), "Rows: 2");
    EXPECT_NE(The<QLabel>("queryNote").palette().color(QPalette::WindowText), fault);
    Type("query", "select id from orders where dya = 1");
    Click("takesFields");
    Ok();
    EXPECT_FALSE(m_dialog->isVisible());
    const ReportSet set = SetsOf(Report())[0];
    EXPECT_EQ(set.query, "select id from orders where dya = 1");
    EXPECT_THAT(set.fields,
                ElementsAre(ReportField{.name = "Number", .column = "id", .typeName = "System.Int64"}));
}

TEST_F(DataDialogsTest, OfManyRowsTheFirstHundredAreShown) {
    Open<DataSetDialog>();
    Type("query",
         "with recursive n(i) as (select 1 union all select i + 1 from n where i < 101) select i from n");
    Click("run");
    EXPECT_EQ(Note("query"), "The first 100 rows");
    EXPECT_EQ(The<QTableWidget>("rows").rowCount(), 100);
    Type("query",
         "with recursive n(i) as (select 1 union all select i + 1 from n where i < 100) select i from n");
    Click("run");
    EXPECT_EQ(Note("query"), "Rows: 100");
}

TEST_F(DataDialogsTest, ParametersComputedFieldsAndFiltersAreAddedInOneStep) {
    Open<DataSetDialog>();
    Page(1);
    AddRow("queryParameters", {"@Least", "=1"});
    Page(2);
    AddRow("computed", {"Twice", "=2 * Fields!Number.Value"});
    Page(3);
    AddRow("filters", {"Number"});
    TypeCell("filters", 0, 2, "1");
    Page(0);
    Pick("queryType", "Stored procedure");
    Pick("queryType", "Text");
    The<QSpinBox>("seconds").setFocus();
    QTest::keyClick(&The<QSpinBox>("seconds"), Qt::Key_Up);
    Type("query", "select id from orders where id >= @Least");
    Ok();
    EXPECT_EQ(m_dialog->result(), QDialog::Accepted) << Note("set") << Note("query");
    EXPECT_EQ(Report().UndoCount(), 1U);
    EXPECT_THAT(Report().Text(), HasSubstr(R"(
      <Query>
        <DataSourceName>Sales</DataSourceName>
        <QueryParameters>
          <QueryParameter Name="@Least">
            <Value>=1</Value>
          </QueryParameter>
        </QueryParameters>
        <CommandText>select id from orders where id &gt;= @Least</CommandText>
        <Timeout>1</Timeout>
      </Query>
      <Fields>
        <Field Name="Number">
          <DataField>id</DataField>
          <rd:TypeName>System.Int64</rd:TypeName>
        </Field>
        <Field Name="Twice">
          <Value>=2 * Fields!Number.Value</Value>
        </Field>
      </Fields>
      <Filters>
        <Filter>
          <FilterExpression>=Fields!Number.Value</FilterExpression>
          <Operator>Equal</Operator>
          <FilterValues>
            <FilterValue>1</FilterValue>
          </FilterValues>
        </Filter>
      </Filters>
    </DataSet>)"));
    m_model.Undo();
    EXPECT_EQ(Report().Text(), Sales);
}

TEST_F(DataDialogsTest, WhatCannotBeIsRefusedAtItsPlace) {
    Open<DataSetDialog>();
    Page(2);
    AddRow("computed", {"Number", "=1"});
    Page(0);
    Ok();
    EXPECT_EQ(The<QTabWidget>("setTabs").currentIndex(), 2);
    EXPECT_EQ(Note("computed"), "Another field has the name Number");
    TypeCell("computed", 0, 0, "2x");
    Ok();
    EXPECT_EQ(
        Note("computed"),
        "\"2x\" is not a valid name: names begin with a letter or _ and continue with letters, digits and _");
    TypeCell("computed", 0, 0, "Twice");
    TypeCell("computed", 0, 1, "");
    Ok();
    EXPECT_EQ(Note("computed"), "Type what Twice is");
    QTest::keyClick(&The<QTableWidget>("computed"), Qt::Key_Delete, Qt::ControlModifier);
    Page(1);
    AddRow("queryParameters", {"@A", "=1"});
    AddRow("queryParameters", {"@a", "=1"});
    Ok();
    EXPECT_EQ(Note("queryParameters"), "The name @A stands twice");
    QTest::keyClick(&The<QTableWidget>("queryParameters"), Qt::Key_Delete, Qt::ControlModifier);
    Page(3);
    AddRow("filters", {"Number"});
    Page(0);
    Ok();
    EXPECT_EQ(The<QTabWidget>("setTabs").currentIndex(), 3);
    EXPECT_EQ(Note("filters"), "Filter 1: the value is missing");
    EXPECT_EQ(Report().Text(), Sales);
}

TEST_F(DataDialogsTest, AQueryIsStopped) {
    Open<DataSetDialog>();
    Type("query", "with recursive n(i) as (select 1 union all select i + 1 from n) select count(*) from n");
    int looks = 0;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &look, [&] {
        QWidget* box = QApplication::activeModalWidget();
        if (box && box->objectName() == "queryRun" && ++looks == 3) {
            EXPECT_EQ(box->findChild<QLabel*>()->text(), "The query is running...");
            QTest::mouseClick(box->findChild<QPushButton*>("stop"), Qt::LeftButton);
        }
    });
    look.start(50);
    const auto begin = std::chrono::steady_clock::now();
    Click("run");
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(20));
    EXPECT_GE(looks, 3);
    EXPECT_EQ(Note("query"), "The query was stopped");
    EXPECT_TRUE(m_dialog->isVisible());
    Type("query", "select id from orders");
    Click("run");
    EXPECT_EQ(Note("query"), "Rows: 2");
}

TEST_F(DataDialogsTest, ATableIsReadByItsName) {
    Open<DataSetDialog>();
    Pick("queryType", "Table");
    Type("query", "orders");
    Ok();
    EXPECT_THAT(Report().Text(), HasSubstr("<CommandType>TableDirect</CommandType>"));
    EXPECT_EQ(SetsOf(Report())[0].fields.size(), 3U);
}

TEST_F(DataDialogsTest, ASourceInAnotherFileIsRead) {
    Open<DataSetDialog>();
    Pick("source", "Far");
    EXPECT_THAT(Note("source"), HasSubstr("the shared file \"Far.rds\""));
    EXPECT_FALSE(The<QCheckBox>("takesFields").isEnabled());
    EXPECT_FALSE(The<QWidget>("run").isVisible());
    EXPECT_EQ(The<QPlainTextEdit>("query").toPlainText(), "select id from orders");
    WriteBytes(m_folder / "Far.rds",
               "<RptDataSource Name=\"Far\"><ConnectionProperties><Extension>SQLITE</Extension>"
               "<ConnectString>Data Source=sales.db</ConnectString></ConnectionProperties></RptDataSource>");
    Pick("source", "Sales");
    Pick("source", "Far");
    EXPECT_EQ(Note("source"), "");
    EXPECT_TRUE(The<QWidget>("run").isVisible());
    Ok();
    EXPECT_EQ(SetsOf(Report())[0].source, "Far");
}

TEST_F(DataDialogsTest, AHostileFileDoesNoHarm) {
    std::string many;
    for (int number = 0; number < 2000; ++number) {
        many += "<QueryParameter/>";
    }
    const std::string report =
        "<Report xmlns=\"urn:a\"><DataSources><DataSource/><DataSource "
        "Name=\"Sales\"/></DataSources><DataSets>"
        "<DataSet "
        "Name=\"Orders\"><Query><DataSourceName>Sales</DataSourceName><CommandType>Magic</CommandType>"
        "<Timeout>soon</Timeout><QueryParameters>" +
        many +
        "</QueryParameters></Query><Fields><Field/><Field Name=\"A\"/><Field Name=\"A\"/></Fields><Filters>"
        "<Filter/><Filter><Operator>Nearly</Operator></Filter></Filters></DataSet></DataSets></Report>";
    m_model.SetDocument(Document(report));
    Open<DataSetDialog>();
    EXPECT_EQ(The<QTableWidget>("queryParameters").rowCount(), 2000);
    EXPECT_EQ(The<QTableWidget>("computed").rowCount(), 3);
    if (The<QCheckBox>("takesFields").isChecked()) {
        Click("takesFields");
    }
    Ok();
    EXPECT_EQ(m_dialog->result(), QDialog::Accepted) << Note("computed") << Note("filters");
    EXPECT_TRUE(Report().Text() == report);
    Open<DataSourceDialog>();
    Ok();
    EXPECT_TRUE(Report().Text() == report);
}

TEST_F(DataDialogsTest, AReportWithoutASourceSaysSo) {
    m_model.SetDocument(Document("<Report xmlns=\"urn:a\"><ReportSections/></Report>"));
    Open<DataSetDialog>();
    EXPECT_EQ(Line("name"), "Rows");
    Ok();
    EXPECT_EQ(Note("source"), "The report has no data source: the menu Report makes one");
}

}  // namespace
}  // namespace designer
