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
#include <QTableWidget>
#include <fstream>

#include "designer/dialogs/data_set_dialog.h"
#include "designer/dialogs/data_source_dialog.h"
#include "support/form_driver.h"
#include "support/temporary_folder.h"

namespace designer {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

const std::string Sales =
    R"(<Report xmlns="http://schemas.microsoft.com/sqlserver/reporting/2016/01/reportdefinition">
  <DataSources>
    <DataSource Name="Sales">
      <ConnectionProperties>
        <DataProvider>SQLITE</DataProvider>
        <ConnectString>Data Source=sales.db</ConnectString>
      </ConnectionProperties>
    </DataSource>
    <DataSource Name="Team">
      <ConnectionProperties>
        <DataProvider>PostgreSQL</DataProvider>
        <ConnectString>Host=db;Database=sales;SSL Mode=require</ConnectString>
      </ConnectionProperties>
    </DataSource>
    <DataSource Name="Far">
      <DataSourceReference>Far</DataSourceReference>
    </DataSource>
  </DataSources>
  <DataSets>
    <DataSet Name="Orders">
      <Query>
        <DataSourceName>Sales</DataSourceName>
        <CommandText>select id from orders</CommandText>
      </Query>
      <Fields>
        <Field Name="Number">
          <DataField>id</DataField>
        </Field>
      </Fields>
    </DataSet>
  </DataSets>
  <ReportSections/>
</Report>
)";

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
        m_dialog = std::make_unique<Dialog>(m_model, m_logons);
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
    void Pick(const char* list, const char* entry) const { The<QComboBox>(list).setCurrentText(entry); }
    const Document& Report() const { return m_model.Source(); }

    const TemporaryFolder m_folder;
    DesignModel m_model;
    Logons m_logons;
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
    EXPECT_EQ(m_logons["Team"].user + " " + m_logons["Team"].password, "ann secret");
    EXPECT_EQ(Report().Text().find("secret"), std::string::npos);
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
    Type("query", "select id from orders where day = @Day");
    Ok();
    EXPECT_THAT(Note("query"), HasSubstr("Day"));
    EXPECT_TRUE(m_dialog->isVisible());
    Click("takesFields");
    Ok();
    EXPECT_FALSE(m_dialog->isVisible());
    const ReportSet set = SetsOf(Report())[0];
    EXPECT_EQ(set.query, "select id from orders where day = @Day");
    EXPECT_THAT(set.fields, ElementsAre(ReportField{.name = "Number", .column = "id"}));
}

TEST_F(DataDialogsTest, ParametersOfTheQueryAreNullHere) {
    std::string text = Sales;
    const std::string command = "<CommandText>select id from orders</CommandText>";
    text.replace(text.find(command), command.size(),
                 "<QueryParameters><QueryParameter Name=\"@Day\"><Value>=Parameters!Day.Value</Value>"
                 "</QueryParameter></QueryParameters><CommandText>select id, day from orders where day = @Day"
                 "</CommandText>");
    m_model.SetDocument(Document(text));
    Open<DataSetDialog>();
    Click("run");
    EXPECT_EQ(Note("query"), "Rows: 0; parameters are Null");
    Ok();
    const ReportSet set = SetsOf(Report())[0];
    EXPECT_THAT(set.parameters, ElementsAre("@Day"));
    EXPECT_THAT(set.fields, ElementsAre(ReportField{.name = "Number", .column = "id"},
                                        ReportField{.name = "day", .column = "day"}));
    EXPECT_THAT(Report().Text(), HasSubstr("<Value>=Parameters!Day.Value</Value>"));
}

TEST_F(DataDialogsTest, ASourceInAnotherFileIsNotRead) {
    Open<DataSetDialog>();
    Pick("source", "Far");
    EXPECT_EQ(Note("source"), "This source is in another file: the designer does not read its rows.");
    EXPECT_FALSE(The<QCheckBox>("takesFields").isEnabled());
    EXPECT_FALSE(The<QWidget>("run").isVisible());
    EXPECT_EQ(The<QPlainTextEdit>("query").toPlainText(), "select id from orders");
    Ok();
    EXPECT_EQ(SetsOf(Report())[0].source, "Far");
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
