// SPDX-License-Identifier: GPL-3.0-or-later
// The context menus of the list.
#include "desk_fixture.h"

#include "platform/contracts/prompts.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class DeskMenus : public DeskTest {
 protected:
    // Returns the popup that is shown, or an empty text.
    std::string Popup() {
        for (const QMenu* menu : frame.findChildren<QMenu*>()) {
            if (menu->isVisible()) {
                return menu->objectName().toStdString();
            }
        }
        return {};
    }
    Texts Shown(const std::string& menu) {
        Texts captions;
        for (const QAction* entry : frame.Menu(menu)->actions()) {
            if (entry->isVisible()) {
                captions.push_back(entry->isSeparator() ? "-" : entry->text().toStdString());
            }
        }
        return captions;
    }
};

}  // namespace

TEST_F(DeskMenus, EntriesThatNeedAWindowOrASelectionAreGreyWithoutIt) {
    const auto grey = [this] {
        Texts entries;
        for (const char* menu : {"mnuTools", "mnuViewType"}) {
            emit frame.Menu(menu)->aboutToShow();
            for (const QAction* entry : frame.Menu(menu)->actions()) {
                if (!entry->isEnabled() && entry->objectName() != "mnuRefHis") {
                    entries.push_back(entry->objectName().toStdString());
                }
            }
        }
        return entries;
    };
    const auto needWindow = ElementsAre("mnuAdd", "mnuDesign", "mnuIcons", "mnuViewList", "mnuDetails");
    EXPECT_THAT(grey(), needWindow);
    AddSchedule("Week", "Desktop");
    frmDesk& window = OpenRoot();
    ClickNode(window, "Desktop");
    EXPECT_THAT(grey(), ElementsAre("mnuDesign"));
    ClickItem(window, "Week");
    EXPECT_THAT(grey(), IsEmpty());
    Global::DeskIndex = 9999;  // the Schedule History is in front
    EXPECT_THAT(grey(), needWindow);
    window.Form_Activate();
    EXPECT_THAT(grey(), IsEmpty());
    Close(window);
    EXPECT_THAT(grey(), needWindow);
    frmDesk& next = OpenRoot();
    ClickNode(next, "Desktop");
    ClickItem(next, "Week");
    EXPECT_THAT(grey(), IsEmpty());
}

TEST_F(DeskMenus, FolderHasItsMenu) {
    AddFolder("Sales");
    frmDesk& window = OpenRoot();
    ClickItem(window, "Sales", Qt::RightButton);
    EXPECT_EQ(Popup(), "mnuDeskFld");
    EXPECT_THAT(Shown("mnuDeskFld"), ElementsAre("New Folder", "Open...", "Rename...", "-", "Delete..."));
    EXPECT_EQ(window.lsvDesk->SelectedItem().Text(), "Sales");
}

TEST_F(DeskMenus, ScheduleHasItsMenu) {
    AddSchedule("Week", "Desktop");
    frmDesk& window = OpenRoot();
    ClickNode(window, "Desktop");
    ClickItem(window, "Week", Qt::RightButton);
    EXPECT_EQ(Popup(), "mnuDeskRpt");
    EXPECT_THAT(Shown("mnuDeskRpt"),
                ElementsAre("Run Report", "Execute Schedule", "Delete Report", "-", "Properties"));
    EXPECT_TRUE(window.lsvDesk->SelectedItem().Selected());
}

TEST_F(DeskMenus, PackageAndItsReportsShareAMenuWithOtherEntries) {
    AddPackage("Monthly", {"1>Sales"});
    frmDesk& window = OpenRoot();
    ClickItem(window, "Monthly", Qt::RightButton);
    EXPECT_EQ(Popup(), "mnubtchPop2");
    EXPECT_THAT(Shown("mnubtchPop2"), ElementsAre("Execute Package...", "Delete Package..."));
    frame.Menu("mnubtchPop2")->close();
    DoubleClickItem(window, "Monthly");
    ClickItem(Window(2), "1>Sales", Qt::RightButton);
    EXPECT_EQ(Popup(), "mnubtchPop2");
    EXPECT_THAT(Shown("mnubtchPop2"), ElementsAre("Run Report...", "View Output...", "-",
                                                  "Edit Parameters...", "Delete Report..."));
    frame.Menu("mnubtchPop2")->close();
    ClickItem(window, "Monthly", Qt::RightButton);
    EXPECT_THAT(Shown("mnubtchPop2"), ElementsAre("Execute Package...", "Delete Package..."));
}

TEST_F(DeskMenus, KeyboardOpensTheMenuAtTheSelectedItem) {
    AddFolder("Sales");
    frmDesk& window = OpenRoot();
    ClickItem(window, "Sales");
    QCursor::setPos(frame.mapToGlobal(QPoint(900, 700)));
    Key(*window.lsvDesk->CurrentView(), Qt::Key_Menu);
    EXPECT_EQ(Popup(), "mnuDeskFld");
    const QPoint corner = window.lsvDesk->mapFromGlobal(frame.Menu("mnuDeskFld")->pos());
    EXPECT_TRUE(QRect(0, 0, 120, 120).contains(corner));
}

TEST_F(DeskMenus, NoMenuForOtherButtonsBesideAllItemsOrInAnEmptyList) {
    frmDesk& window = OpenRoot();
    QWidget* viewport = window.lsvDesk->CurrentView()->viewport();
    QTest::mouseClick(viewport, Qt::RightButton, {}, QPoint(20, 20));
    EXPECT_EQ(Popup(), "");
    ClickEntry("mnuDeskNew");
    ClickItem(window, "New Folder");
    EXPECT_EQ(Popup(), "");
    ClickItem(window, "New Folder", Qt::MiddleButton);
    EXPECT_EQ(Popup(), "");
    QTest::mouseClick(viewport, Qt::RightButton, {}, viewport->rect().bottomRight() - QPoint(2, 2));
    EXPECT_EQ(Popup(), "");
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(DeskMenus, NoMenuForAnItemWithoutAText) {
    AddFolder("");
    frmDesk& window = OpenRoot();
    ClickItem(window, "", Qt::RightButton);
    EXPECT_EQ(Popup(), "");
}

TEST_F(DeskMenus, NewFolderOfTheMenuIsAnItemOnTheScreenOnly) {
    frmDesk& window = OpenRoot();
    database.TakeStatements();
    ClickEntry("mnuDeskNew");
    // 18164 days, up to the last midnight
    EXPECT_THAT(ListedWithIcons(window), ElementsAre("1 1 New Folder1569369600=New Folder"));
    EXPECT_THAT(database.TakeStatements(), IsEmpty());
    EXPECT_EQ(Editor(window), nullptr);
    ClickNode(window, "Desktop");
    EXPECT_THAT(Listed(window), IsEmpty());
}

TEST_F(DeskMenus, SecondNewFolderOfTheDayEndsTheProcessWithItsBox) {
    frmDesk& window = OpenRoot();
    ClickEntry("mnuDeskNew");
    clock.now = fakes::At(2026, 11, 21, 23, 59, 59);
    QMetaObject::invokeMethod(frame.Entry("mnuDeskNew"), "trigger", Qt::QueuedConnection);
    QApplication::processEvents();
    EXPECT_EQ(prompts.boxes, (std::vector<fakes::Box>{EndBox(35602, "Key is not unique in collection")}));
    EXPECT_EQ(process.ends, std::vector<int>{1});
    EXPECT_THAT(Listed(window), ElementsAre("New Folder"));
}

TEST_F(DeskMenus, NewFolderOfTheNextDayStandsBesideTheFirst) {
    frmDesk& window = OpenRoot();
    ClickEntry("mnuDeskNew");
    clock.now = fakes::At(2026, 11, 22, 0, 0, 0);
    ClickEntry("mnuDeskNew");
    EXPECT_THAT(Listed(window), ElementsAre("New Folder", "New Folder"));
    EXPECT_TRUE(process.ends.empty());
}

TEST_F(DeskMenus, OpenDoesNothingForAnItemWithoutAText) {
    AddFolder("");
    frmDesk& window = OpenRoot();
    ClickItem(window, "");
    ClickEntry("mnuDeskOpen");
    EXPECT_EQ(Global::DeskCount, 1);
    EXPECT_FALSE(Hourglass(window));
}

TEST_F(DeskMenus, OpenWithNothingSelectedEndsTheProcessWithItsBox) {
    OpenRoot();
    QMetaObject::invokeMethod(frame.Entry("mnuDeskOpen"), "trigger", Qt::QueuedConnection);
    QApplication::processEvents();
    EXPECT_EQ(prompts.boxes,
              (std::vector<fakes::Box>{EndBox(91, "Object variable or With block variable not set")}));
    EXPECT_EQ(process.ends, std::vector<int>{1});
}

TEST_F(DeskMenus, DeleteOfTheMenuDeletesTheFolder) {
    AddFolder("Sales");
    frmDesk& window = OpenRoot();
    ClickItem(window, "Sales");
    prompts.answers = {vbYes};
    ClickEntry("mnuDeskDelfld");
    EXPECT_EQ(prompts.boxes, (std::vector<fakes::Box>{{"Delete the 'Sales' folder and all its contents?",
                                                       vbYesNo, "Oxbow Courier"}}));
    EXPECT_THAT(Listed(window), IsEmpty());
}

TEST_F(DeskMenus, RenameOfTheMenuEditsTheSelectedItem) {
    AddFolder("Sales");
    frmDesk& window = OpenRoot();
    ClickEntry("mnuRename");
    EXPECT_EQ(Editor(window), nullptr);
    ClickItem(window, "Sales");
    ClickEntry("mnuRename");
    ASSERT_NE(Editor(window), nullptr);
    EXPECT_EQ(Editor(window)->text(), "Sales");
}
