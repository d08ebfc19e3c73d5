// SPDX-License-Identifier: GPL-3.0-or-later
// The dialogs for data sources and data sets, by mouse and keys.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSpinBox>
#include <QTabWidget>
#include <QTableWidget>
#include <QTimer>
#include <chrono>
#include <fstream>

#include "../report_text.h"
#include "designer/dialogs/data_source_dialog.h"
#include "designer/model/report_parameters.h"
#include "designer/report_dialogs/data_set_dialog.h"
#include "support/form_driver.h"
#include "support/temporary_folder.h"

namespace designer {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

const std::string Sales =
    test::ReportText(test::SourceText("Sales", "SQLITE", "Data Source=sales.db") +
                         test::SourceText("Team", "PostgreSQL", "Host=db;Database=sales;SSL Mode=require") +
                         test::SharedSourceText("Far", "Far"),
                     test::SetText("Orders", "Sales", test::CommandText("select id from orders"),
                                   test::FieldText("Number", "id")));

class DataDialogsTest : public testing::Test, protected fakes::FormDriver {
 protected:
    DataDialogsTest() : m_model(Document(Sales)) {
        m_model.SetFile(m_folder / "sales.rdl");
        sqlite3* database = nullptr;
        sqlite3_open((m_folder / "sales.db").c_str(), &database);
        sqlite3_exec(database,
                     "create table orders (id integer, day text, amount real);"
                     "insert into orders values (1, '2025-03-01', 2.5), (2, '2025-03-02', 4.25)",
                     nullptr, nullptr, nullptr);
        sqlite3_close(database);
    }
    template <typename Dialog>
    void Open() {
        m_dialog = std::make_unique<Dialog>(m_model);
        m_dialog->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(m_dialog.get()));
    }
    QWidget* Form() const override { return m_dialog.get(); }
    void Ok() {
        QTest::mouseClick(m_dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok),
                          Qt::LeftButton);
    }
    std::string Line(const char* name) const { return The<QLineEdit>(name).text().toStdString(); }
    std::string Note(const char* control) const {
        return The<QLabel>((std::string(control) + "Note").c_str()).text().toStdString();
    }
    void Page(int index) const { The<QTabWidget>("setTabs").setCurrentIndex(index); }
    void TypeCell(const char* table, int row, int column, const char* text) const {
        auto& cells = The<QTableWidget>(table);
        cells.setFocus();
        cells.setCurrentCell(row, column);
        QTest::keyClick(&cells, Qt::Key_F2);
        TypeInEditor(text);
    }
    static void TypeInEditor(const char* text) {
        QWidget* editor = QApplication::focusWidget();
        QTest::keyClick(editor, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(editor, Qt::Key_Delete);
        QTest::keyClicks(editor, text);
        QTest::keyClick(editor, Qt::Key_Return);
        QApplication::processEvents();
    }
    std::string Rows(const char* table) const {
        const auto& cells = The<QTableWidget>(table);
        QStringList rows;
        for (int row = 0; row < cells.rowCount(); ++row) {
            QStringList one;
            for (int column = 0; column < cells.columnCount(); ++column) {
                one += cells.item(row, column) ? cells.item(row, column)->text() : QString();
            }
            rows += one.join('|');
        }
        return rows.join(", ").toStdString();
    }
    void AddRow(const char* table, const std::vector<const char*>& cells) const {
        The<QTableWidget>(table).setFocus();
        QTest::keyClick(&The<QTableWidget>(table), Qt::Key_Insert);
        const int row = The<QTableWidget>(table).currentRow();
        TypeInEditor(cells[0]);
        for (int column = 1; column < static_cast<int>(cells.size()); ++column) {
            TypeCell(table, row, column, cells[static_cast<std::size_t>(column)]);
        }
    }
    void Pick(const char* list, const char* entry) const { The<QComboBox>(list).setCurrentText(entry); }
    const Document& Report() const { return m_model.Source(); }

    const TemporaryFolder m_folder;
    DesignModel m_model;
    std::unique_ptr<QDialog> m_dialog;
};

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
                ElementsAre(ReportField{.name = "Number", .column = "id"},
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
    EXPECT_THAT(set.fields, ElementsAre(ReportField{.name = "Number", .column = "id"}));
}

TEST_F(DataDialogsTest, AParameterOfTheQueryHasAValueForATest) {
    std::string text = Sales;
    const std::string command = "<CommandText>select id from orders</CommandText>";
    text.replace(text.find(command), command.size(),
                 "<QueryParameters><QueryParameter Name=\"@Day\"><Value>=Parameters!Day.Value</Value>"
                 "</QueryParameter></QueryParameters><CommandText>select id, day from orders where day = @Day"
                 "</CommandText>");
    m_model.SetDocument(Document(text));
    Open<DataSetDialog>();
    Click("run");
    EXPECT_EQ(Note("query"), "Rows: 0; parameters without a test value are Null");
    Page(1);
    TypeCell("queryParameters", 0, 2, "2025-03-02");
    Page(0);
    Click("run");
    EXPECT_EQ(Note("query"), "Rows: 1");
    Ok();
    EXPECT_THAT(QueryDetailsOf(Report(), "Orders").parameters,
                ElementsAre(QueryParameter{0, "@Day", "=Parameters!Day.Value"}));
    EXPECT_THAT(SetsOf(Report())[0].fields,
                ElementsAre(ReportField{.name = "Number", .column = "id"},
                            ReportField{.name = "day", .column = "day", .typeName = "System.DateTime"}));
    EXPECT_EQ(Report().Text().find("2025-03-02"), std::string::npos);
}

TEST_F(DataDialogsTest, AQueryThatIsRunGetsTheParametersThatItNames) {
    Open<DataSetDialog>();
    Type("query", "select id from orders where day = @Day and id > @Least or day = @day -- @no");
    Click("run");
    EXPECT_EQ(Note("query"), "Rows: 0; parameters without a test value are Null");
    Page(1);
    EXPECT_EQ(Rows("queryParameters"), "@Day|=Parameters!Day.Value|, @Least|=Parameters!Least.Value|");
    EXPECT_EQ(Note("queryParameters"),
              "New parameters of the report: Day, Least. They are texts; Report, Parameters gives them "
              "another type.");
    TypeCell("queryParameters", 0, 2, "2025-03-02");
    TypeCell("queryParameters", 1, 2, "1");
    Page(0);
    Click("run");
    EXPECT_EQ(Note("query"), "Rows: 1");
    Ok();
    EXPECT_THAT(QueryDetailsOf(Report(), "Orders").parameters,
                ElementsAre(QueryParameter{0, "@Day", "=Parameters!Day.Value"},
                            QueryParameter{1, "@Least", "=Parameters!Least.Value"}));
    const std::vector<ReportParameter> made = ReportParametersOf(Report());
    ASSERT_EQ(made.size(), 2U);
    EXPECT_EQ(made[1].name + " " + made[1].type + " " + made[1].prompt, "Least String Least");
    EXPECT_EQ(Report().UndoCount(), 1U);
    m_model.Undo();
    EXPECT_EQ(Report().Text(), Sales);
}

TEST_F(DataDialogsTest, AQueryGetsItsParametersOnOkToo) {
    Open<DataSetDialog>();
    Type("query", "select id from orders where id > ? or id = ?");
    Click("takesFields");
    Ok();
    EXPECT_THAT(QueryDetailsOf(Report(), "Orders").parameters,
                ElementsAre(QueryParameter{0, "Parameter1", "=Parameters!Parameter1.Value"},
                            QueryParameter{1, "Parameter2", "=Parameters!Parameter2.Value"}));
    Open<DataSetDialog>();
    Ok();
    EXPECT_EQ(Report().UndoCount(), 1U);
}

TEST_F(DataDialogsTest, AParameterOfTheReportIsUsedWithItsDefault) {
    std::string text = Sales;
    text.insert(text.find("</Report>"),
                "<ReportParameters><ReportParameter Name=\"least\"><DataType>Integer</DataType><DefaultValue>"
                "<Values><Value>2</Value></Values></DefaultValue></ReportParameter></ReportParameters>");
    m_model.SetDocument(Document(text));
    Open<DataSetDialog>();
    Type("query", "select id from orders where id >= @Least");
    Page(1);
    EXPECT_EQ(Rows("queryParameters"), "@Least|=Parameters!least.Value|2");
    EXPECT_EQ(Note("queryParameters"), "");
    Page(0);
    Click("run");
    EXPECT_EQ(Note("query"), "Rows: 1");
    Ok();
    EXPECT_EQ(ReportParametersOf(Report()).size(), 1U);
}

TEST_F(DataDialogsTest, AParameterThatTheUserRemovesDoesNotComeAgain) {
    Open<DataSetDialog>();
    Type("query", "select id from orders where id >= @Least and id < @Most");
    Page(1);
    The<QTableWidget>("queryParameters").setFocus();
    The<QTableWidget>("queryParameters").setCurrentCell(0, 0);
    QTest::keyClick(&The<QTableWidget>("queryParameters"), Qt::Key_Delete, Qt::ControlModifier);
    EXPECT_EQ(
        Note("queryParameters"),
        "New parameters of the report: Most. They are texts; Report, Parameters gives them another type.");
    Page(0);
    Page(1);
    EXPECT_EQ(Rows("queryParameters"), "@Most|=Parameters!Most.Value|");
    // What the query does not ask for any more goes, and is new when it comes again.
    Page(0);
    Type("query", "select id from orders");
    Page(1);
    EXPECT_EQ(Rows("queryParameters"), "");
    Page(0);
    Type("query", "select id from orders where id >= @Least");
    Page(1);
    EXPECT_EQ(Rows("queryParameters"), "@Least|=Parameters!Least.Value|");
    TypeCell("queryParameters", 0, 1, "=1");
    EXPECT_EQ(Note("queryParameters"), "");
    Ok();
    EXPECT_THAT(QueryDetailsOf(Report(), "Orders").parameters,
                ElementsAre(QueryParameter{0, "@Least", "=1"}));
    EXPECT_TRUE(ReportParametersOf(Report()).empty());
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

TEST_F(DataDialogsTest, ATestValueHasTheTypeOfTheParameter) {
    const Document report(R"(<Report xmlns="urn:a"><ReportParameters>
        <ReportParameter Name="Year"><DataType>Integer</DataType>
          <DefaultValue><Values><Value>2025</Value></Values></DefaultValue></ReportParameter>
        <ReportParameter Name="Day"><DataType>DateTime</DataType></ReportParameter>
        <ReportParameter Name="Zip"/></ReportParameters></Report>)");
    EXPECT_EQ(TestValue(report, "=Parameters!Year.Value", "7"), "=7");
    EXPECT_EQ(TestValue(report, "=Parameters!Year.Value", "seven"), "seven");
    EXPECT_EQ(TestValue(report, "=Parameters!Day.Value", "2025-03-01"), "=CDate(\"2025-03-01\")");
    EXPECT_EQ(TestValue(report, "=parameters!zip.value", "01234"), "01234");
    EXPECT_EQ(TestValue(report, "=1+1", "2"), "=2");
    EXPECT_EQ(TestValue(report, "=1+1", "=3"), "=3");
    EXPECT_EQ(TestValue(report, "=1+1", " "), "");
    EXPECT_EQ(FirstTestValue(report, "=Parameters!Year.Value"), "2025");
    EXPECT_EQ(FirstTestValue(report, "=Parameters!Day.Value"), "");
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
    EXPECT_EQ(Note("computed"), "\"2x\" is no name: a letter or _, then letters, digits and _");
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
