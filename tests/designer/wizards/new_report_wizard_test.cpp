// SPDX-License-Identifier: GPL-3.0-or-later
// The wizard by mouse and keys.
#include "designer/wizards/new_report_wizard.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTableWidget>
#include <QTest>
#include <QWizardPage>
#include <algorithm>
#include <fstream>

#include "designer/wizards/column_list.h"
#include "platform/reports/rdl_engine.h"
#include "platform/reports/rdl_report.h"
#include "support/form_driver.h"
#include "support/temporary_folder.h"

namespace designer {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class NewReportWizardTest : public testing::Test, protected fakes::FormDriver {
 protected:
    NewReportWizardTest() {
        std::ofstream(m_folder.Path() / "orders.csv")
            << "Region,Customer,Day,Amount\nNorth,Berg,2025-03-01,120.50\nNorth,Dahl,2025-03-04,80.25\n"
               "South,Costa,2025-03-02,99.00\n";
        MakeDatabase();
    }

    void Show() {
        m_wizard.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&m_wizard));
    }
    QWidget* Form() const override { return const_cast<NewReportWizard*>(&m_wizard); }
    std::string Page() const { return m_wizard.currentPage()->objectName().toStdString(); }
    void Key(int key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key), modifiers);
    }
    void Keys(const char* text) { QTest::keyClicks(QApplication::focusWidget(), text); }
    // A button pressed by its mnemonic acts a moment later.
    void Alt(char letter) {
        Key(letter, Qt::AltModifier);
        const auto isDown = [](const QAbstractButton* button) { return button->isDown(); };
        ASSERT_TRUE(QTest::qWaitFor([&] {
            const auto buttons = m_wizard.findChildren<QAbstractButton*>();
            return std::none_of(buttons.begin(), buttons.end(), isDown);
        }));
    }
    void Next() { QTest::mouseClick(m_wizard.button(QWizard::NextButton), Qt::LeftButton); }
    std::string Note(const char* control) const {
        const auto& note = The<QLabel>((std::string(control) + "Note").c_str());
        EXPECT_EQ(note.isVisible(), !note.text().isEmpty());
        EXPECT_EQ(The<QWidget>(control).accessibleDescription(), note.text());
        return note.text().toStdString();
    }
    void PickCsv() {
        The<QComboBox>("provider").setCurrentText("CSV or text file");
        The<QLineEdit>("file").setText(QString::fromStdString(File("orders.csv")));
    }
    void PickDatabase() { The<QLineEdit>("file").setText(QString::fromStdString(File("sales.db"))); }
    std::string File(const char* name) const { return (m_folder.Path() / name).string(); }
    // Looks whether two controls that are shown have the same mnemonic.
    void ExpectOwnMnemonics() {
        QMap<QString, QString> known;
        const auto take = [&](const QWidget& widget, const QString& text) {
            const QString key = QKeySequence::mnemonic(text).toString();
            if (!key.isEmpty() && widget.isVisible()) {
                EXPECT_FALSE(known.contains(key))
                    << known[key].toStdString() << " and " << text.toStdString();
                known[key] = text;
            }
        };
        for (const QAbstractButton* button : m_wizard.findChildren<QAbstractButton*>()) {
            take(*button, button->text());
        }
        for (const QLabel* label : m_wizard.findChildren<QLabel*>()) {
            take(*label, label->buddy() ? label->text() : QString());
        }
        EXPECT_FALSE(known.isEmpty());
    }
    // Goes to the page of the columns.
    void GoToColumns(const char* layout = "layouttable") {
        PickCsv();
        Next();
        Next();
        Click(layout);
        Next();
        ASSERT_EQ(Page(), "fieldsPage");
    }

 private:
    void MakeDatabase() const {
        sqlite3* database = nullptr;
        ASSERT_EQ(sqlite3_open(File("sales.db").c_str(), &database), SQLITE_OK);
        ASSERT_EQ(sqlite3_exec(database,
                               "create table \"my orders\" (id integer, amount real);"
                               "insert into \"my orders\" values (1, 2.5), (2, 4.25);"
                               "create view zero as select 0 as naught",
                               nullptr, nullptr, nullptr),
                  SQLITE_OK);
        sqlite3_close(database);
    }

 protected:
    const TemporaryFolder m_folder;
    NewReportWizard m_wizard;
};

TEST_F(NewReportWizardTest, MakesAGroupedReportByKeysAlone) {
    Show();
    EXPECT_EQ(Page(), "sourcePage");
    EXPECT_EQ(m_wizard.windowTitle(), "New Report From Data: Data source");
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "provider");
    Keys("CSV");
    Alt('I');
    Keys(File("orders.csv").c_str());
    Alt('N');
    EXPECT_EQ(Page(), "queryPage");
    Alt('N');
    EXPECT_EQ(Page(), "layoutPage");
    Alt('N');
    ASSERT_EQ(Page(), "fieldsPage");
    EXPECT_THAT(The<ColumnList>("columns").Columns(), ElementsAre("Region", "Customer", "Day", "Amount"));
    Key(Qt::Key_R);
    Alt('G');
    Alt('Q');
    Key(Qt::Key_A);
    Alt('T');
    EXPECT_THAT(The<ColumnList>("allColumns").SelectedColumns(), ElementsAre("Amount"));
    EXPECT_THAT(The<ColumnList>("groups").Columns(), ElementsAre("Region"));
    EXPECT_THAT(The<ColumnList>("columns").Columns(), ElementsAre("Customer", "Day", "Amount"));
    EXPECT_THAT(The<ColumnList>("totals").Columns(), ElementsAre("Amount"));
    Alt('N');
    ASSERT_EQ(Page(), "lookPage");
    EXPECT_EQ(The<QLineEdit>("title").text(), "Orders");
    Keys("Orders of March");
    Alt('C');
    Keys("Col");
    Alt('M');
    Keys("Oc");
    Alt('F');
    EXPECT_EQ(m_wizard.result(), QDialog::Accepted);
    const NewReport& report = m_wizard.Draft().report;
    EXPECT_EQ(report.title, "Orders of March");
    EXPECT_EQ(report.provider, "CSV");
    EXPECT_EQ(report.connectString, "Data Source=" + File("orders.csv"));
    EXPECT_EQ(report.chart, ReportChart::Column);
    EXPECT_EQ(report.theme, "ocean");
    EXPECT_THAT(m_wizard.Text(), HasSubstr("<Value>Orders of March</Value>"));
}

TEST_F(NewReportWizardTest, AMissingFileIsToldBelowItsLine) {
    Show();
    Next();
    EXPECT_EQ(Note("file"), "Pick the file with the data");
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "file");
    Type("file", File("none.db").c_str());
    EXPECT_EQ(Note("file"), "");
    Next();
    EXPECT_EQ(Note("file"), "There is no file \"" + File("none.db") + "\"");
    Type("file", m_folder.Path().c_str());
    Next();
    EXPECT_EQ(Note("file"), "\"" + m_folder.Path().string() + "\" is no file");
    EXPECT_EQ(Page(), "sourcePage");
}

TEST_F(NewReportWizardTest, TheTestSaysWhatItFinds) {
    Show();
    PickDatabase();
    Click("test");
    EXPECT_EQ(Note("test"), "The connection works; the number of tables is 2.");
    PickCsv();
    Click("test");
    EXPECT_EQ(Note("test"), "The file can be read; it has 4 columns.");
    The<QComboBox>("provider").setCurrentText("SQLite file");
    Next();
    EXPECT_THAT(Note("test"), HasSubstr("file is not a database"));
    EXPECT_EQ(Page(), "sourcePage");
}

TEST_F(NewReportWizardTest, ATableMakesTheQueryAndATypedQueryStays) {
    Show();
    PickDatabase();
    Next();
    ASSERT_EQ(Page(), "queryPage");
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "tables");
    Next();
    EXPECT_EQ(Note("query"), "Pick a table, or type a query");
    The<QWidget>("tables").setFocus();
    Key(Qt::Key_M);
    EXPECT_EQ(The<QPlainTextEdit>("query").toPlainText(), "select * from \"my orders\"");
    Key(Qt::Key_Return);
    EXPECT_EQ(Page(), "queryPage");
    EXPECT_EQ(Note("query"), "Rows: 2");
    const auto& rows = The<QTableWidget>("rows");
    EXPECT_EQ(rows.horizontalHeaderItem(0)->text(), "id\nWhole number");
    EXPECT_EQ(rows.horizontalHeaderItem(1)->text(), "amount\nNumber");
    EXPECT_EQ(rows.item(1, 1)->text(), "4.25");
    Type("query", "select naught from zero");
    The<QWidget>("tables").setFocus();
    Key(Qt::Key_Down);
    EXPECT_EQ(The<QPlainTextEdit>("query").toPlainText(), "select naught from zero");
    Next();
    EXPECT_EQ(Page(), "layoutPage");
    EXPECT_EQ(m_wizard.Draft().report.query, "select naught from zero");
}

TEST_F(NewReportWizardTest, AnErrorOfTheEngineIsToldBelowTheQuery) {
    Show();
    PickDatabase();
    Next();
    Type("query", "select none from zero");
    Next();
    EXPECT_THAT(Note("query"), HasSubstr("no such column: none"));
    Type("query", "drop view zero");
    Next();
    EXPECT_EQ(Note("query"), "the query does more than read, which a report may not (not authorized)");
    Type("query", "select 1 as a, 2 as A");
    Next();
    EXPECT_EQ(Note("query"), "The query gives two columns \"A\": each needs a name of its own");
    EXPECT_EQ(Page(), "queryPage");
}

TEST_F(NewReportWizardTest, ATextCannotBeSummed) {
    Show();
    GoToColumns();
    Key(Qt::Key_C);
    Click("add_totals");
    EXPECT_EQ(Note("allColumns"), "The column \"Customer\" cannot be summed: its values are no numbers");
    EXPECT_THAT(The<ColumnList>("totals").Columns(), ElementsAre());
}

TEST_F(NewReportWizardTest, ListsAreArrangedByKeys) {
    Show();
    GoToColumns();
    auto& columns = The<ColumnList>("columns");
    columns.setFocus();
    columns.setCurrentRow(1);
    Key(Qt::Key_Down, Qt::ControlModifier);
    EXPECT_THAT(columns.Columns(), ElementsAre("Region", "Day", "Customer", "Amount"));
    EXPECT_THAT(columns.SelectedColumns(), ElementsAre("Customer"));
    Key(Qt::Key_Up, Qt::ControlModifier);
    Key(Qt::Key_Up, Qt::ControlModifier);
    Key(Qt::Key_Up, Qt::ControlModifier);
    EXPECT_THAT(columns.Columns(), ElementsAre("Customer", "Region", "Day", "Amount"));
    Key(Qt::Key_Delete);
    EXPECT_THAT(columns.Columns(), ElementsAre("Region", "Day", "Amount"));
}

TEST_F(NewReportWizardTest, ADragMovesBetweenTheListsOfTheReport) {
    Show();
    GoToColumns();
    auto& columns = The<ColumnList>("columns");
    auto& groups = The<ColumnList>("groups");
    emit groups.Dropped(&columns, {"Day"}, -1);
    EXPECT_THAT(groups.Columns(), ElementsAre("Day"));
    EXPECT_THAT(columns.Columns(), ElementsAre("Region", "Customer", "Amount"));
    emit columns.Dropped(&groups, {"Day"}, 1);
    EXPECT_THAT(groups.Columns(), ElementsAre());
    EXPECT_THAT(columns.Columns(), ElementsAre("Region", "Day", "Customer", "Amount"));
    emit The<ColumnList>("totals").Dropped(&columns, {"Region"}, -1);
    EXPECT_THAT(columns.Columns(), ElementsAre("Region", "Day", "Customer", "Amount"));
}

TEST_F(NewReportWizardTest, AMatrixHasPartsOfItsOwn) {
    Show();
    GoToColumns("layoutmatrix");
    Next();
    EXPECT_THAT(Note("allColumns"),
                HasSubstr("A matrix needs columns for its rows, its columns and its values"));
    Key(Qt::Key_R);
    Alt('R');
    Alt('Q');
    Key(Qt::Key_D);
    Alt('C');
    Alt('Q');
    Key(Qt::Key_A);
    Alt('V');
    Next();
    EXPECT_EQ(Page(), "lookPage");
    const NewReport& report = m_wizard.Draft().report;
    EXPECT_THAT(report.rows, ElementsAre("Region"));
    EXPECT_THAT(report.across, ElementsAre("Day"));
    EXPECT_THAT(report.values, ElementsAre("Amount"));
}

TEST_F(NewReportWizardTest, LabelsHaveNoChart) {
    Show();
    GoToColumns("layoutlabels");
    EXPECT_EQ(m_wizard.findChild<QWidget*>("add_totals"), nullptr);
    Next();
    ASSERT_EQ(Page(), "lookPage");
    EXPECT_FALSE(The<QWidget>("chart").isVisible());
    EXPECT_FALSE(The<QWidget>("landscape").isVisible());
    Type("title", " ");
    QTest::mouseClick(m_wizard.button(QWizard::FinishButton), Qt::LeftButton);
    EXPECT_EQ(Note("title"), "Give the report a title");
    EXPECT_TRUE(m_wizard.isVisible());
}

TEST_F(NewReportWizardTest, AFileOfManyColumnsIsTooWideForThePaper) {
    std::ofstream wide(m_folder.Path() / "wide.csv");
    for (const char* name : {"c", "1"}) {
        for (int column = 0; column < 2000; ++column) {
            wide << (column == 0 ? "" : ",") << name << column;
        }
        wide << "\n";
    }
    wide.close();
    Show();
    PickCsv();
    Type("file", File("wide.csv").c_str());
    Next();
    Next();
    Next();
    ASSERT_EQ(Page(), "fieldsPage");
    EXPECT_EQ(The<ColumnList>("columns").Columns().size(), 2000U);
    Next();
    EXPECT_EQ(Page(), "fieldsPage");
    EXPECT_EQ(Note("allColumns"),
              "The table has 2000 columns, and 28 fit across the page: choose fewer of them");
}

TEST_F(NewReportWizardTest, MnemonicsAreDifferentOnEveryPage) {
    Show();
    auto& provider = The<QComboBox>("provider");
    for (int kind = 0; kind < provider.count(); ++kind) {
        provider.setCurrentIndex(kind);
        ExpectOwnMnemonics();
    }
    PickDatabase();
    provider.setCurrentIndex(0);
    Next();
    ExpectOwnMnemonics();
    Type("query", "select 1 as a, 'x' as b, 2 as c");
    Next();
    ExpectOwnMnemonics();
    for (const char* layout : {"layoutlabels", "layouttable"}) {
        Click(layout);
        Next();
        ExpectOwnMnemonics();
        QTest::mouseClick(m_wizard.button(QWizard::BackButton), Qt::LeftButton);
    }
    Click("layoutmatrix");
    Next();
    ExpectOwnMnemonics();
    QTest::mouseClick(m_wizard.button(QWizard::BackButton), Qt::LeftButton);
    Click("layouttable");
    Next();
    Next();
    ASSERT_EQ(Page(), "lookPage");
    ExpectOwnMnemonics();
}

TEST_F(NewReportWizardTest, AQueryWithAParameterIsToldHowToGoOn) {
    Show();
    PickDatabase();
    Next();
    Type("query", "select id from \"my orders\" where id > @Year");
    const std::string expected =
        "The wizard's query cannot have parameters (@Year): put a value in its place now, and add the "
        "parameter later in Report, Data Set";
    Click("run");
    EXPECT_EQ(Note("query"), expected);
    Type("query", "select id from \"my orders\" where id = @Year");
    Next();
    EXPECT_EQ(Page(), "queryPage");
    EXPECT_EQ(Note("query"), expected);
    Type("query", "select id from \"my orders\" where id = 1");
    Next();
    EXPECT_EQ(Page(), "layoutPage");
}

TEST_F(NewReportWizardTest, TheWayBackKeepsWhatWasChosen) {
    Show();
    GoToColumns();
    Key(Qt::Key_R);
    Click("add_groups");
    for (int page = 0; page < 3; ++page) {
        QTest::mouseClick(m_wizard.button(QWizard::BackButton), Qt::LeftButton);
    }
    EXPECT_EQ(Page(), "sourcePage");
    EXPECT_EQ(The<QLineEdit>("file").text().toStdString(), File("orders.csv"));
    Next();
    Next();
    Next();
    ASSERT_EQ(Page(), "fieldsPage");
    EXPECT_THAT(The<ColumnList>("groups").Columns(), ElementsAre("Region"));
}

}  // namespace
}  // namespace designer
