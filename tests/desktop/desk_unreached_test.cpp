// SPDX-License-Identifier: GPL-3.0-or-later
// Commands that have no window or no item to act on are greyed: all that they could do is to end in an error.
#include "desk_fixture.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class UnreachedDesk : public DeskTest {
 protected:
    // Opens the item's menu: what is grey in it.
    Texts Grey(frmDesk& window, const std::string& item) {
        ClickItem(window, item, Qt::RightButton);
        QApplication::processEvents();
        EXPECT_THAT(process.ends, IsEmpty());
        EXPECT_TRUE(prompts.boxes.empty());
        Texts entries;
        for (QMenu* menu : frame.findChildren<QMenu*>()) {
            if (!menu->isVisible()) {
                continue;
            }
            for (const QAction* entry : menu->actions()) {
                if (entry->isVisible() && !entry->isSeparator() && !entry->isEnabled()) {
                    entries.push_back(entry->objectName().toStdString());
                }
            }
            menu->close();
            return entries;
        }
        ADD_FAILURE() << "no menu for " << item;
        return entries;
    }
    void AddOneOfEach() {
        AddFolder("Sales");
        AddSchedule("Week", "Desktop");
        AddPackage("Monthly", {"1>Stock"});
    }
};

}  // namespace

TEST_F(UnreachedDesk, EveryEntryOfTheMenusIsGreyWhileTheWindowHasNoSlot) {
    AddOneOfEach();
    frmDesk& window = OpenWithoutSlot();
    ASSERT_EQ(Global::DeskIndex, 2);
    ASSERT_EQ(Global::DeskWindows[2], nullptr);
    ClickNode(window, "Desktop");
    EXPECT_THAT(Grey(window, "Sales"),
                ElementsAre("mnuDeskNew", "mnuDeskOpen", "mnuRename", "mnuDeskDelfld"));
    EXPECT_THAT(Grey(window, "Week"), ElementsAre("mnuDeskView", "mnuDeskExec", "mnuDeskDel", "mnuDeskProp"));
    EXPECT_THAT(Grey(window, "Monthly"), ElementsAre("mnubtcExec", "mnubtcDelSel"));
}

TEST_F(UnreachedDesk, EveryEntryForAReportOfAPackageIsGreyWhileTheWindowHasNoSlot) {
    AddOneOfEach();
    frmDesk& first = OpenRoot();
    DoubleClickItem(OpenRoot(), "Monthly");
    frmDesk& package = Window(3);
    Close(first);
    Close(OpenRoot());
    frame.Children().setActiveSubWindow(qobject_cast<QMdiSubWindow*>(package.parentWidget()));
    EXPECT_THAT(Grey(package, "1>Stock"),
                ElementsAre("mnubtcRun", "mnubtcOutput", "mnubtcPar", "mnubtcDelSel"));
    EXPECT_FALSE(ButtonEnabled(package, "Preview"));
    EXPECT_FALSE(ButtonEnabled(package, "Delete"));
}

TEST_F(UnreachedDesk, EntriesForAnItemAreGreyWhileTheWindowOfTheSlotHasNoneSelected) {
    AddOneOfEach();
    frmDesk& first = OpenRoot();
    frmDesk& window = OpenRoot();
    Close(first);
    frmDesk& newest = OpenRoot();
    ASSERT_EQ(newest.Tag, window.Tag);
    ClickNode(window, "Desktop");
    EXPECT_THAT(Grey(window, "Sales"), ElementsAre("mnuDeskOpen", "mnuRename", "mnuDeskDelfld"));
    EXPECT_THAT(Grey(window, "Week"), ElementsAre("mnuDeskView", "mnuDeskExec", "mnuDeskProp"));
    EXPECT_FALSE(ButtonEnabled(window, "Design"));
    ClickItem(newest, "Sales");
    ClickItem(window, "Week");
    EXPECT_TRUE(ButtonEnabled(window, "Design"));
    EXPECT_THAT(Grey(window, "Sales"), IsEmpty());
    EXPECT_THAT(Grey(window, "Week"), IsEmpty());
}

TEST_F(UnreachedDesk, NothingIsGreyInTheMenusOfAWindowThatCommandsReach) {
    AddOneOfEach();
    frmDesk& lost = OpenWithoutSlot();
    Grey(lost, "Sales");
    frmDesk& window = OpenRoot();
    ClickNode(window, "Desktop");
    for (const char* item : {"Sales", "Week", "Monthly"}) {
        EXPECT_THAT(Grey(window, item), IsEmpty()) << item;
    }
}

TEST_F(UnreachedDesk, ButtonsThatActOnTheWindowOfTheSlotAreGreyWhileItIsEmpty) {
    AddOneOfEach();
    frmDesk& window = OpenWithoutSlot();
    ClickNode(window, "Desktop");
    ClickItem(window, "Week");
    EXPECT_TRUE(ButtonEnabled(window, "Preview"));
    EXPECT_FALSE(ButtonEnabled(window, "Delete"));
    EXPECT_FALSE(ButtonEnabled(window, "Design"));
    ClickItem(window, "Monthly");
    EXPECT_FALSE(ButtonEnabled(window, "Delete"));
    ClickItem(window, "Sales");
    EXPECT_TRUE(ButtonEnabled(window, "Delete"));
    for (const char* button : {"New Folder", "New Report", "New Package", "History", "Options", "Help"}) {
        EXPECT_TRUE(ButtonEnabled(window, button)) << button;
    }
}

TEST_F(UnreachedDesk, ButtonsAreGreyAsSoonAsTheWindowComesToTheFrontWithoutASlot) {
    AddSchedule("Week", "Desktop");
    frmDesk& first = OpenRoot();
    frmDesk& window = OpenRoot();
    ClickNode(window, "Desktop");
    ClickItem(window, "Week");
    EXPECT_TRUE(ButtonEnabled(window, "Design"));
    Close(first);
    Close(OpenRoot());
    EXPECT_FALSE(ButtonEnabled(window, "Design"));
    EXPECT_FALSE(ButtonEnabled(window, "Delete"));
}

TEST_F(UnreachedDesk, ButtonsForAnItemAreGreyWhenNothingIsSelectedAnyMore) {
    AddOneOfEach();
    frmDesk& window = OpenRoot();
    ClickNode(window, "Desktop");
    const auto select = [&] {
        ClickItem(window, "Week");
        EXPECT_TRUE(ButtonEnabled(window, "Preview"));
        EXPECT_TRUE(ButtonEnabled(window, "Design"));
    };
    const auto expectGrey = [&](const char* after) {
        EXPECT_FALSE(window.lsvDesk->HasSelection()) << after;
        EXPECT_FALSE(ButtonEnabled(window, "Preview")) << after;
        EXPECT_FALSE(ButtonEnabled(window, "Design")) << after;
        EXPECT_TRUE(ButtonEnabled(window, "Delete")) << after;
    };
    select();
    ClickBesideAll(window);
    expectGrey("a click beside all items");
    select();
    ClickNode(window, "Desktop");
    expectGrey("a click in the tree");
    select();
    ClickEntry("mnuDetails");
    expectGrey("another view");
    select();
    ClickBesideAll(window);
    expectGrey("a click below the table");
}
