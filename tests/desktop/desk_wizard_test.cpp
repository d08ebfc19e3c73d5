// SPDX-License-Identifier: GPL-3.0-or-later
// The single report wizard, opened from a Desktop window, and what the window shows of the new schedule.
#include <QComboBox>
#include <QPushButton>

#include "desk_fixture.h"
#include "dialogs/frmAddReport.h"
#include "platform/base/paths.h"
#include "platform/controls/folders/common_dialog.h"
#include "platform/controls/text_box.h"
#include "support/shown_forms.h"
#include "support/temporary_folder.h"

using testing::ElementsAre;

namespace {

class DeskWizard : public DeskTest {
 protected:
    void TearDown() override {
        SetFileChooser({});
        if (Shown() != nullptr) {
            Shown()->close();
        }
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        Global::CurrentFolder.clear();
        DeskTest::TearDown();
    }
    static frmAddReport* Shown() { return fakes::ShownForm<frmAddReport>(); }
    static void Click(const char* name) {
        QTest::mouseClick(Shown()->findChild<QPushButton*>(name), Qt::LeftButton);
    }
    // Goes from the welcome page to Finish, for the file and the second folder of the list.
    static void Finish(const std::string& file) {
        SetFileChooser([&file](const CommonDialog&) { return file; });
        Click("cmdNext");
        Click("cmdBrowse");
        auto& folders = *Shown()->findChild<QComboBox*>("cmbFolder");
        folders.showPopup();
        folders.hidePopup();
        QTest::keyClick(&folders, Qt::Key_Down);
        QTest::keyClick(&folders, Qt::Key_Down);
        Click("cmdNext");
        Click("cmdNext");
        QTest::keyClicks(Shown()->findChild<TextBox*>("txtRecipient"), "ann;");
        Click("cmdNext");
        Click("cmdNext");
        Click("cmdNext");
    }
};

}  // namespace

TEST_F(DeskWizard, NewReportOfTheToolbarShowsItBesideTheWindow) {
    frmDesk& window = OpenRoot();
    ClickButton(window, "New Report");
    ASSERT_NE(Shown(), nullptr);
    EXPECT_FALSE(Shown()->isModal());
    EXPECT_FALSE(Hourglass(window));
}

TEST_F(DeskWizard, MenuEntryShowsTheSameOne) {
    frmDesk& window = OpenRoot();
    ClickButton(window, "New Report");
    const frmAddReport* form = Shown();
    ClickEntry("mnuAdd");
    EXPECT_EQ(Shown(), form);
}

TEST_F(DeskWizard, NewScheduleShowsInTheActiveWindowAtOnce) {
    AddFolder("Sales");
    AddFolder("Stock");
    AddFolder("Cellar", 2);
    AddSchedule("Old figures", "Stock");
    std::filesystem::create_directories(database.Folder() / "Cache");
    const std::filesystem::path file = database.Folder() / "sales.rpt";
    WriteBytes(file, "a report");
    const std::string path = paths::FromMachine(file.string());
    engine.reports[path].title = "New figures";
    frmDesk& window = OpenRoot();
    ClickEntry("mnuAdd");
    Finish(path);
    EXPECT_EQ(Shown(), nullptr);
    EXPECT_EQ(window.windowTitle().toStdString(), "Stock");
    EXPECT_THAT(Listed(window), ElementsAre("New figures", "Old figures", "Cellar"));
    EXPECT_TRUE(prompts.boxes.empty());
}
