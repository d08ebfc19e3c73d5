// SPDX-License-Identifier: GPL-3.0-or-later
// The dialog for data sets over one in a file of its own.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QTimer>

#include "../shown_dialog.h"
#include "designer/document/properties/properties.h"
#include "designer/model/design_model.h"
#include "designer/report_dialogs/data_set_dialog.h"
#include "support/temporary_folder.h"

namespace designer {
namespace {

using testing::HasSubstr;

std::string Report(const std::string& set, const std::string& year = "2016") {
    return "<Report xmlns=\"http://schemas.microsoft.com/sqlserver/reporting/" + year +
           "/01/reportdefinition\"><DataSets>" + set + "</DataSets><ReportSections/></Report>";
}

constexpr const char* Shared =
    "<DataSet Name=\"People\"><!-- kept --><SharedDataSet><SharedDataSetReference>People"
    "</SharedDataSetReference><QueryParameters><QueryParameter Name=\"@Least\"><Value>1</Value>"
    "</QueryParameter></QueryParameters></SharedDataSet><Fields><Field "
    "Name=\"Person\"><DataField>Who</DataField>"
    "</Field></Fields></DataSet>";

class SharedSetTest : public test::ShownDialogTest {
 protected:
    SharedSetTest() {
        WriteBytes(m_folder / "a.csv", "Name,Pieces\nAnn,1\nBo,2\nCy,3\n");
        WriteBytes(m_folder / "Files.rds",
                   "<RptDataSource><ConnectionProperties><Extension>csv</Extension><ConnectString>a.csv"
                   "</ConnectString></ConnectionProperties></RptDataSource>");
        WriteBytes(
            m_folder / "People.rsd",
            "<SharedDataSet><DataSet Name=\"\"><Query><DataSourceReference>Files</DataSourceReference>"
            "<DataSetParameters><DataSetParameter Name=\"@Least\"><DefaultValue>2</DefaultValue>"
            "</DataSetParameter></DataSetParameters><CommandText>all of it</CommandText></Query><Fields>"
            "<Field Name=\"Who\"><DataField>Name</DataField></Field>"
            "<Field Name=\"Pieces\"><DataField>Pieces</DataField></Field></Fields><Filters><Filter>"
            "<FilterExpression>=Fields!Pieces.Value</FilterExpression><Operator>GreaterThanOrEqual"
            "</Operator><FilterValues><FilterValue>=CInt(Parameters!Least.Value)</FilterValue>"
            "</FilterValues></Filter></Filters></DataSet></SharedDataSet>");
    }
    void Open(const std::string& report) {
        m_model = std::make_unique<DesignModel>(Document(report));
        m_model->SetFile(m_folder / "sales.rdl");
        Show(std::make_unique<DataSetDialog>(*m_model));
    }
    void Run() { QTest::mouseClick(&The<QPushButton>("run"), Qt::LeftButton); }
    QTableWidget& Rows() const { return The<QTableWidget>("rows"); }
    const std::string& Text() const { return m_model->Source().Text(); }

    const TemporaryFolder m_folder;
    std::unique_ptr<DesignModel> m_model;
};

TEST_F(SharedSetTest, IsShownWithItsQueryAndRows) {
    Open(Report(Shared));
    EXPECT_TRUE(The<QCheckBox>("isShared").isChecked());
    EXPECT_FALSE(The<QComboBox>("source").isVisible());
    EXPECT_EQ(The<QLineEdit>("sharedSet").text(), "People");
    EXPECT_EQ(The<QLabel>("sharedContents").text(), "Data source: Files. Parameters: @Least (2)");
    EXPECT_EQ(The<QPlainTextEdit>("query").toPlainText(), "all of it");
    EXPECT_TRUE(The<QPlainTextEdit>("query").isReadOnly());
    EXPECT_EQ(Rows().rowCount(), 0);
    Run();
    EXPECT_EQ(Rows().rowCount(), 3);  // without a test value the parameter is Null
    EXPECT_EQ(Rows().horizontalHeaderItem(0)->text().left(3), "Who");
}

TEST_F(SharedSetTest, OkTakesItsFieldsAndKeepsNames) {
    Open(Report(Shared));
    Ok();
    EXPECT_EQ(m_dialog->result(), QDialog::Accepted);
    std::string expected = Report(Shared);
    const std::string end = "</Fields>";
    const auto at = Text().find("<Field Name=\"Pieces\">");
    ASSERT_NE(at, std::string::npos) << Text();
    EXPECT_THAT(Text(), HasSubstr("<Field Name=\"Person\"><DataField>Who</DataField>"
                                  "<rd:TypeName>System.String</rd:TypeName></Field>"));
    EXPECT_THAT(Text(), HasSubstr(std::string(Shared).substr(0, std::string(Shared).find("<Fields>"))));
    EXPECT_THAT(Text(), testing::Not(HasSubstr("<Query>")));
    m_model->Undo();
    EXPECT_EQ(Text(), expected);
}

TEST_F(SharedSetTest, ANewOneIsPickedAsAFile) {
    Open(Report(""));
    QTest::mouseClick(&The<QCheckBox>("isShared"), Qt::LeftButton, {}, QPoint(8, 8));
    ASSERT_TRUE(The<QCheckBox>("isShared").isChecked());
    Ok();
    EXPECT_EQ(Note("sharedSet"), "Type the name of the file with the data set");
    QTimer::singleShot(0, [this] {
        auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        dialog->selectFile(QString::fromStdString((m_folder / "People.rsd").string()));
        dialog->findChild<QLineEdit*>("fileNameEdit")
            ->setText(QString::fromStdString((m_folder / "People.rsd").string()));
        QTest::keyClick(dialog->findChild<QLineEdit*>("fileNameEdit"), Qt::Key_Return);
    });
    QTest::mouseClick(&The<QPushButton>("browseSharedSet"), Qt::LeftButton);
    EXPECT_EQ(The<QLineEdit>("sharedSet").text(), "People");
    EXPECT_EQ(The<QPlainTextEdit>("query").toPlainText(), "all of it");
    Type("name", "Folk");
    Ok();
    EXPECT_EQ(m_dialog->result(), QDialog::Accepted);
    EXPECT_THAT(Text(), HasSubstr("<SharedDataSetReference>People</SharedDataSetReference>"));
    EXPECT_THAT(Text(), HasSubstr("<DataField>Pieces</DataField>"));
    EXPECT_EQ(m_model->Source().UndoName(), "Add Data Set Folk");
}

TEST_F(SharedSetTest, WhatIsWrongWithTheFileIsSaid) {
    Open(Report(Shared));
    Type("sharedSet", "Nobody");
    QTest::keyClick(&The<QLineEdit>("sharedSet"), Qt::Key_Tab);
    EXPECT_THAT(Note("sharedSet"), HasSubstr("Nobody"));
    EXPECT_FALSE(The<QCheckBox>("takesFields").isEnabled());
    Ok();  // the file may come later
    EXPECT_EQ(m_dialog->result(), QDialog::Accepted);
    EXPECT_THAT(Text(), HasSubstr("<SharedDataSetReference>Nobody</SharedDataSetReference>"));
}

TEST_F(SharedSetTest, TheQueryOfTheFileIsChanged) {
    Open(Report(Shared));
    std::string expected = ReadBytes(m_folder / "People.rsd");
    expected.replace(expected.find("all of it"), 9, "a.csv &lt; all");
    QTimer::singleShot(0, [] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        auto& query = *dialog->findChild<QPlainTextEdit*>("sharedQuery");
        EXPECT_EQ(query.toPlainText(), "all of it");
        QTest::keyClick(&query, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(&query, "a.csv < all");
        dialog->accept();
    });
    QTest::mouseClick(&The<QPushButton>("changeSharedSet"), Qt::LeftButton);
    EXPECT_EQ(ReadBytes(m_folder / "People.rsd"), expected);
    EXPECT_EQ(The<QPlainTextEdit>("query").toPlainText(), "a.csv < all");
    EXPECT_EQ(m_model->Source().UndoCount(), 0u);
}

TEST_F(SharedSetTest, AQueryBecomesSharedAndTheOtherWayRound) {
    const std::string query =
        "<DataSet Name=\"Own\"><Query><DataSourceName>A</DataSourceName><CommandText>a.csv</CommandText>"
        "<CommandType>TableDirect</CommandType><QueryParameters><QueryParameter "
        "Name=\"@Least\"><Value>3</Value>"
        "</QueryParameter></QueryParameters><Timeout>5</Timeout></Query></DataSet>";
    Open(Report(query));
    QTest::mouseClick(&The<QCheckBox>("isShared"), Qt::LeftButton, {}, QPoint(8, 8));
    Type("sharedSet", "People");
    QTest::keyClick(&The<QLineEdit>("sharedSet"), Qt::Key_Tab);
    Ok();
    ASSERT_EQ(m_dialog->result(), QDialog::Accepted);
    EXPECT_THAT(Text(), testing::Not(HasSubstr("<Query>")));
    EXPECT_THAT(Text(), HasSubstr("<QueryParameter Name=\"@Least\">"));
    EXPECT_THAT(Text(), HasSubstr("<DataField>Who</DataField>"));
    m_model->Undo();
    EXPECT_EQ(Text(), Report(query));
    Open(Report(query));
    QTest::mouseClick(&The<QCheckBox>("isShared"), Qt::LeftButton, {}, QPoint(8, 8));
    EXPECT_FALSE(The<QPlainTextEdit>("query").isEnabled());
    QTest::mouseClick(&The<QCheckBox>("isShared"), Qt::LeftButton, {}, QPoint(8, 8));
    EXPECT_EQ(The<QPlainTextEdit>("query").toPlainText(), "a.csv");
    QTest::mouseClick(&The<QCheckBox>("isShared"), Qt::LeftButton, {}, QPoint(8, 8));
    Type("sharedSet", "People");
    QTest::keyClick(&The<QLineEdit>("sharedSet"), Qt::Key_Tab);
    QTest::mouseClick(&The<QCheckBox>("isShared"), Qt::LeftButton, {}, QPoint(8, 8));
    EXPECT_EQ(The<QPlainTextEdit>("query").toPlainText(), "a.csv");
    EXPECT_FALSE(The<QPlainTextEdit>("query").isReadOnly());
}

TEST_F(SharedSetTest, OldSchemasHaveNone) {
    Open(Report("", "2008"));
    EXPECT_FALSE(The<QCheckBox>("isShared").isEnabled());
}

}  // namespace
}  // namespace designer
