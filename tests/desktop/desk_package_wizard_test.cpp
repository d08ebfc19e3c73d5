// SPDX-License-Identifier: GPL-3.0-or-later
// The package wizard, opened from a Desktop window, and what the window shows of the new package.
#include <QPushButton>

#include "desk_fixture.h"
#include "dialogs/frmWiz.h"
#include "platform/base/paths.h"
#include "platform/controls/combo_box.h"
#include "platform/controls/folders/file_list_box.h"
#include "platform/controls/text_box.h"
#include "support/shown_forms.h"
#include "support/temporary_folder.h"

using testing::Contains;

namespace {

class DeskPackageWizard : public DeskTest {
 protected:
    fakes::FakeLoop loop{clock};

    void TearDown() override {
        if (Shown() != nullptr) {
            Shown()->close();
        }
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        Global::DefPath.clear();
        Global::OutputPath.clear();
        DeskTest::TearDown();
    }
    static frmWiz* Shown() { return fakes::ShownForm<frmWiz>(); }
    static void Click(const char* name) {
        QTest::mouseClick(Shown()->findChild<QPushButton*>(name), Qt::LeftButton);
    }
};

}  // namespace

TEST_F(DeskPackageWizard, DoubleClickOnAScheduleShowsItBesideTheWindow) {
    AddFolder("Stock");
    AddSchedule("Figures", "Stock");
    frmDesk& window = OpenRoot();
    DoubleClickItem(window, "Stock");
    DoubleClickItem(Window(2), "Figures");
    ASSERT_NE(Shown(), nullptr);
    EXPECT_FALSE(Shown()->isModal());
}

TEST_F(DeskPackageWizard, MenuEntryShowsTheSameOne) {
    frmDesk& window = OpenRoot();
    ClickButton(window, "New Package");
    const frmWiz* form = Shown();
    ASSERT_NE(form, nullptr);
    ClickEntry("mnuQuick");
    EXPECT_EQ(Shown(), form);
}

TEST_F(DeskPackageWizard, NewPackageShowsInTheRootWindowAtOnce) {
    WriteBytes(database.Folder() / "sales.rpt", "a report");
    Global::DefPath = paths::FromMachine(database.Folder());
    Global::OutputPath = Global::DefPath + "\\";
    engine.reports[Global::DefPath + "\\sales.rpt"].title = "Sales";
    frmDesk& window = OpenRoot();
    ClickEntry("mnuQuick");
    Shown()->findChild<TextBox*>("txtTitle")->Text("Month end");
    Click("cmdSave");
    Shown()->findChild<ComboBox*>("cmbFreq1")->Text("Daily");
    Shown()->findChild<ComboBox*>("cmbFormat1")->Text("HTML");
    Click("cmdSave");
    Shown()->findChild<FileListBox*>("filList")->ListIndex(0);
    Click("cmbBrowse1");
    Click("cmdSave");
    Shown()->findChild<TextBox*>("txtRecipient")->Text("ann;");
    Click("cmdSave");
    EXPECT_EQ(Shown(), nullptr);
    EXPECT_THAT(Listed(window), Contains("Month end"));
    EXPECT_EQ(prompts.boxes.back(),
              (fakes::Box{"Report package created successfully", vbInformation, "Oxbow Courier"}));
    EXPECT_FALSE(Hourglass(window));
}
