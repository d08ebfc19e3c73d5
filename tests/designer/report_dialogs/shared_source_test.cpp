// SPDX-License-Identifier: GPL-3.0-or-later
// The dialog for the file of a shared data source.
#include "designer/dialogs/shared_source_dialog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

#include "../shown_dialog.h"
#include "designer/dialogs/data_source_dialog.h"
#include "support/temporary_folder.h"

namespace designer {
namespace {

using testing::HasSubstr;

std::string Shared(const std::string& file) {
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<!-- ours -->\r\n<RptDataSource Name=\"Far\">\r\n"
           "  <ConnectionProperties>\r\n    <Extension>csv</Extension>\r\n    <ConnectString>Data Source=" +
           file +
           "</ConnectString>\r\n    <IntegratedSecurity>true</IntegratedSecurity>\r\n"
           "  </ConnectionProperties>\r\n  <DataSourceID>1-2</DataSourceID>\r\n</RptDataSource>";
}

class SharedSourceTest : public test::ShownDialogTest {
 protected:
    SharedSourceTest() {
        WriteBytes(File(), Shared("a.csv"));
        WriteBytes(m_folder / "a.csv", "Name\nAnn\n");
        WriteBytes(m_folder / "b.csv", "Name,Pieces\nBo,1\n");
    }
    std::filesystem::path File() const { return m_folder / "Far.rds"; }
    void Open() { Show(std::make_unique<SharedSourceDialog>(File(), m_folder.Path())); }

    const TemporaryFolder m_folder;
};

TEST_F(SharedSourceTest, OnlyWhatIsChangedIsWritten) {
    Open();
    EXPECT_EQ(The<QLineEdit>("file").text(), "a.csv");
    Ok();
    EXPECT_EQ(m_dialog->result(), QDialog::Accepted);
    EXPECT_EQ(ReadBytes(File()), Shared("a.csv"));
    Open();
    Type("file", "b.csv");
    Ok();
    EXPECT_EQ(m_dialog->result(), QDialog::Accepted);
    EXPECT_EQ(ReadBytes(File()), Shared("b.csv"));
}

TEST_F(SharedSourceTest, AFileThatAnotherProgramHasChangedStays) {
    Open();
    WriteBytes(File(), Shared("other.csv"));
    Type("file", "b.csv");
    Ok();
    EXPECT_EQ(m_dialog->result(), QDialog::Rejected);
    EXPECT_EQ(ReadBytes(File()), Shared("other.csv"));
    EXPECT_THAT(The<QLabel>("note").text().toStdString(), HasSubstr("Another program"));
}

TEST_F(SharedSourceTest, IsOpenedByTheDialogOfTheSource) {
    DesignModel model(Document(
        "<Report xmlns=\"http://schemas.microsoft.com/sqlserver/reporting/2016/01/reportdefinition\">"
        "<DataSources><DataSource Name=\"Far\"><DataSourceReference>Far</DataSourceReference></DataSource>"
        "</DataSources><ReportSections/></Report>"));
    model.SetFile(m_folder / "sales.rdl");
    Show(std::make_unique<DataSourceDialog>(model));
    bool isOpen = false;
    QTimer::singleShot(0, [&] {
        auto* dialog = qobject_cast<SharedSourceDialog*>(QApplication::activeModalWidget());
        isOpen = dialog != nullptr;
        ASSERT_TRUE(isOpen);
        auto& line = *dialog->findChild<QLineEdit*>("file");
        QTest::keyClick(&line, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(&line, "b.csv");
        dialog->accept();
    });
    QTest::mouseClick(&The<QPushButton>("changeShared"), Qt::LeftButton);
    EXPECT_TRUE(isOpen);
    EXPECT_THAT(ReadBytes(File()), HasSubstr("b.csv</ConnectString>"));
    QTest::mouseClick(&The<QPushButton>("testShared"), Qt::LeftButton);
    EXPECT_EQ(The<QLabel>("testSharedNote").text(), "The file can be read; it has 2 columns.");
    EXPECT_EQ(model.Source().UndoCount(), 0u);
    Type("reference", "Nobody");
    QTest::mouseClick(&The<QPushButton>("changeShared"), Qt::LeftButton);
    EXPECT_THAT(The<QLabel>("testSharedNote").text().toStdString(), HasSubstr("Nobody"));
}

}  // namespace
}  // namespace designer
