// SPDX-License-Identifier: GPL-3.0-or-later
// Deleting folders and reports, and what stays.
#include "desk_fixture.h"
#include "platform/contracts/prompts.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

fakes::Box Question(const std::string& text) {
    return {text, vbYesNo, "Oxbow Courier"};
}

}  // namespace

using DeskDeleting = DeskTest;

TEST_F(DeskDeleting, FolderGoesBeforeItsSchedulesAreLookedFor) {
    AddFolder("Sales");
    frmDesk& window = OpenRoot();
    ClickItem(window, "Sales");
    database.TakeStatements();
    prompts.answers = {vbYes};
    ClickButton(window, "Delete");
    EXPECT_EQ(prompts.boxes,
              (std::vector<fakes::Box>{Question("Delete the 'Sales' folder and all its contents?")}));
    EXPECT_THAT(database.TakeStatements(),
                ElementsAre("select folderid  from folders where foldername = 'Sales'",
                            "delete from folders where folderid =1",
                            "delete from reportscheduler where parent =(select foldername from folders where "
                            "folderid =1)",
                            "delete from folders where parent = 1"));
    EXPECT_THAT(Listed(window), IsEmpty());
    EXPECT_FALSE(Hourglass(window));
}

TEST_F(DeskDeleting, SchedulesOfADeletedFolderStayUntilAFolderOfItsNameShowsThemAgain) {
    AddFolder("Sales");
    AddSchedule("Week", "Sales");
    database.Run("insert into ReportParameter values(1,'Year','2026')");
    database.Run("insert into ReportHistory values(1,'2026-11-20','Success','')");
    frmDesk& window = OpenRoot();
    ClickItem(window, "Sales");
    prompts.answers = {vbYes};
    ClickButton(window, "Delete");
    EXPECT_THAT(database.Rows("select ReportTitle, Parent, NextRun from ReportScheduler"),
                ElementsAre("Week|Sales|2002-03-07"));
    EXPECT_EQ(database.Rows("select * from ReportParameter").size(), 1U);
    EXPECT_EQ(database.Rows("select * from ReportHistory").size(), 1U);
    prompts.inputs = {"Sales"};
    ClickButton(window, "New Folder");
    DoubleClickItem(window, "Sales");
    EXPECT_THAT(Listed(Window(2)), ElementsAre("Week"));
}

TEST_F(DeskDeleting, StaleNodeListsWhatWasLeftThenTheRootsFoldersAndPackages) {
    AddFolder("Sales");
    AddFolder("Stock");
    AddSchedule("Week", "Sales");
    AddPackage("Monthly");
    frmDesk& window = OpenRoot();
    ClickItem(window, "Sales");
    prompts.answers = {vbYes};
    ClickButton(window, "Delete");
    EXPECT_THAT(Tree(window), ElementsAre("Desktop", ".Sales", ".Stock"));
    ClickNode(window, "Sales");
    EXPECT_THAT(Listed(window), ElementsAre("Week", "Stock", "Monthly"));
    EXPECT_EQ(Global::CurrentFolderID, "0");
}

TEST_F(DeskDeleting, SubfoldersGoButNotTheirSubfolders) {
    AddFolder("A");
    AddFolder("A1", 1);
    AddFolder("A1a", 2);
    AddSchedule("Week", "A1");
    frmDesk& window = OpenRoot();
    ClickItem(window, "A");
    prompts.answers = {vbYes};
    ClickButton(window, "Delete");
    EXPECT_THAT(database.Rows("select FolderName, Parent from Folders"), ElementsAre("A1a|2"));
    EXPECT_THAT(database.Rows("select ReportTitle, Parent from ReportScheduler"), ElementsAre("Week|A1"));
}

// Its key is 0, which no folder has.
TEST_F(DeskDeleting, FolderThatIsNoLongerStoredLeavesTheListAndNothingElse) {
    AddFolder("Sales");
    AddFolder("Stock");
    AddSchedule("Week", "Stock");
    frmDesk& window = OpenRoot();
    database.Run("delete from Folders where FolderName = 'Sales'");  // another editor
    ClickItem(window, "Sales");
    database.TakeStatements();
    prompts.answers = {vbYes};
    ClickButton(window, "Delete");
    EXPECT_THAT(database.TakeStatements(),
                ElementsAre("select folderid  from folders where foldername = 'Sales'"));
    EXPECT_THAT(Listed(window), ElementsAre("Stock"));
    EXPECT_THAT(database.Rows("select FolderName from Folders"), ElementsAre("Stock"));
    EXPECT_THAT(database.Rows("select ReportTitle from ReportScheduler"), ElementsAre("Week"));
    EXPECT_FALSE(Hourglass(window));
}

TEST_F(DeskDeleting, ItemOfTheMenusNewFolderLeavesTheListAndNothingElse) {
    AddFolder("Sales");
    frmDesk& window = OpenRoot();
    ClickEntry("mnuDeskNew");
    ClickItem(window, "New Folder");
    prompts.answers = {vbYes};
    ClickButton(window, "Delete");
    EXPECT_THAT(Listed(window), ElementsAre("Sales"));
    EXPECT_THAT(database.Rows("select FolderName from Folders"), ElementsAre("Sales"));
}

TEST_F(DeskDeleting, AnythingButYesKeepsTheFolder) {
    AddFolder("Sales");
    frmDesk& window = OpenRoot();
    ClickItem(window, "Sales");
    for (const int answer : {vbNo, vbOK, 2}) {
        prompts.answers = {answer};
        ClickButton(window, "Delete");
        EXPECT_THAT(Listed(window), ElementsAre("Sales"));
        EXPECT_FALSE(Hourglass(window));
    }
    EXPECT_EQ(database.Rows("select * from Folders").size(), 1U);
}

TEST_F(DeskDeleting, ToolbarsDeleteDeletesAReport) {
    AddSchedule("Other", "Desktop");
    AddSchedule("Week", "Desktop");
    frmDesk& window = OpenRoot();
    ClickNode(window, "Desktop");
    ClickItem(window, "Week");
    database.TakeStatements();
    prompts.answers = {vbYes};
    ClickButton(window, "Delete");
    EXPECT_EQ(prompts.boxes, (std::vector<fakes::Box>{Question("Delete the 'Week' report?")}));
    EXPECT_THAT(
        database.TakeStatements(),
        ElementsAre("select reportid from reportscheduler where reporttitle = 'Week' and parent = 'Desktop'",
                    "delete from reportscheduler where ReportID = 2",
                    "delete from reportparameter where reportID = 2",
                    "delete from reporthistory where ReportID = 2"));
    EXPECT_THAT(Listed(window), ElementsAre("Other"));
    EXPECT_FALSE(Hourglass(window));
}

TEST_F(DeskDeleting, AnythingButYesKeepsTheReport) {
    AddSchedule("Week", "Desktop");
    frmDesk& window = OpenRoot();
    ClickNode(window, "Desktop");
    ClickItem(window, "Week");
    prompts.answers = {vbNo};
    ClickButton(window, "Delete");
    EXPECT_THAT(Listed(window), ElementsAre("Week"));
    EXPECT_EQ(database.Rows("select * from ReportScheduler").size(), 1U);
}

TEST_F(DeskDeleting, DeleteReportOfTheMenuDoesNothing) {
    AddSchedule("Week", "Desktop");
    frmDesk& window = OpenRoot();
    ClickNode(window, "Desktop");
    ClickItem(window, "Week");
    prompts.answers = {vbYes};
    ClickEntry("mnuDeskDel");
    EXPECT_TRUE(prompts.boxes.empty());
    EXPECT_THAT(Listed(window), ElementsAre("Week"));
    EXPECT_EQ(database.Rows("select * from ReportScheduler").size(), 1U);
}

TEST_F(DeskDeleting, NothingSelectedShowsNothingAndLeavesNoHourglass) {
    AddFolder("Sales");
    frmDesk& window = OpenRoot();
    ClickButton(window, "Delete");
    EXPECT_TRUE(prompts.boxes.empty());
    EXPECT_FALSE(Hourglass(window));
}

TEST_F(DeskDeleting, ItemWithoutATextLeavesTheHourglass) {
    AddFolder("");
    frmDesk& window = OpenRoot();
    ClickItem(window, "");
    ClickButton(window, "Delete");
    EXPECT_TRUE(prompts.boxes.empty());
    EXPECT_TRUE(Hourglass(window));
    EXPECT_EQ(database.Rows("select * from Folders").size(), 1U);
}

TEST_F(DeskDeleting, ErrorIsToldAndLeavesTheHourglassAndTheItem) {
    AddFolder("Sales");
    frmDesk& window = OpenRoot();
    ClickItem(window, "Sales");
    database.Run("create trigger Kept before delete on Folders begin select raise(abort, 'kept'); end");
    prompts.answers = {vbYes};
    ClickButton(window, "Delete");
    ASSERT_EQ(prompts.boxes.size(), 2U);
    EXPECT_THAT(prompts.boxes[1].text, testing::StartsWith("Oxbow Courier encountred an error. "));
    EXPECT_THAT(Listed(window), ElementsAre("Sales"));
    EXPECT_TRUE(Hourglass(window));
}

TEST_F(DeskDeleting, OtherWindowsOnTheSameFolderAreNotTold) {
    AddFolder("Sales");
    frmDesk& first = OpenRoot();
    frmDesk& second = OpenRoot();
    ClickItem(second, "Sales");
    prompts.answers = {vbYes};
    ClickButton(second, "Delete");
    EXPECT_THAT(Listed(second), IsEmpty());
    EXPECT_THAT(Listed(first), ElementsAre("Sales"));
}
