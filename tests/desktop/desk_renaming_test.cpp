// SPDX-License-Identifier: GPL-3.0-or-later
// Texts edited in place.
#include "desk_fixture.h"

#include "platform/contracts/prompts.h"

using testing::ElementsAre;
using testing::IsEmpty;

using DeskRenaming = DeskTest;

TEST_F(DeskRenaming, FolderIsRenamedInBothTables) {
    AddFolder("Sales");
    AddSchedule("Week", "Sales");
    frmDesk& window = OpenRoot();
    database.TakeStatements();
    Rename(window, "Sales", "Trade");
    EXPECT_THAT(database.TakeStatements(),
                ElementsAre("select count(*) from folders where foldername = 'Trade'",
                            "update folders set foldername = 'Trade' where FolderName = 'Sales'",
                            "update reportscheduler set parent = 'Trade' where parent = 'Sales'"));
    EXPECT_THAT(database.Rows("select FolderName from Folders"), ElementsAre("Trade"));
    EXPECT_THAT(database.Rows("select Parent from ReportScheduler"), ElementsAre("Trade"));
    EXPECT_THAT(ListedWithIcons(window), ElementsAre("1 1 Sales^1=Trade"));
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(DeskRenaming, ApostrophesAreShownUntilTheListIsFilledAgain) {
    AddFolder("Sales");
    frmDesk& window = OpenRoot();
    Rename(window, "Sales", "Ann's");
    EXPECT_THAT(database.Rows("select FolderName from Folders"), ElementsAre("Anns"));
    EXPECT_THAT(Listed(window), ElementsAre("Ann's"));
    ClickNode(window, "Desktop");
    EXPECT_THAT(Listed(window), ElementsAre("Anns"));
}

TEST_F(DeskRenaming, EmptyNameIsRefusedAndTheOldOneStays) {
    AddFolder("Sales");
    frmDesk& window = OpenRoot();
    database.TakeStatements();
    Rename(window, "Sales", "");
    EXPECT_EQ(prompts.boxes, (std::vector<fakes::Box>{{"You must provide a name for this object",
                                                       vbExclamation, "Oxbow Courier"}}));
    EXPECT_THAT(Listed(window), ElementsAre("Sales"));
    EXPECT_EQ(Editor(window), nullptr);
    EXPECT_THAT(database.TakeStatements(), IsEmpty());
}

TEST_F(DeskRenaming, SameNameWritesNothing) {
    AddFolder("Sales");
    frmDesk& window = OpenRoot();
    database.TakeStatements();
    Rename(window, "Sales", "Sales");
    EXPECT_THAT(database.TakeStatements(), IsEmpty());
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(DeskRenaming, TakenNameOpensTheEditorAgainWithTheOldOne) {
    AddFolder("Sales");
    AddFolder("Stock");
    frmDesk& window = OpenRoot();
    for (const char* name : {"stock", "desktop"}) {
        prompts.boxes.clear();
        Rename(window, "Sales", name);
        EXPECT_EQ(prompts.boxes,
                  (std::vector<fakes::Box>{{"The name '" + std::string(name) +
                                                "' already exists in the system. Please specify a "
                                                "new name.",
                                            vbExclamation, "Error renaming file"}}));
        EXPECT_THAT(Listed(window), ElementsAre("Sales", "Stock"));
        ASSERT_NE(Editor(window), nullptr);
        EXPECT_EQ(Editor(window)->text(), "Sales");
        Key(*Editor(window), Qt::Key_Escape);
    }
    EXPECT_THAT(database.Rows("select FolderName from Folders"), ElementsAre("Sales", "Stock"));
}

TEST_F(DeskRenaming, NameInAnotherCaseIsTaken) {
    AddFolder("Sales");
    frmDesk& window = OpenRoot();
    Rename(window, "Sales", "SALES");
    ASSERT_EQ(prompts.boxes.size(), 1U);
    EXPECT_EQ(prompts.boxes[0].title, "Error renaming file");
    EXPECT_THAT(Listed(window), ElementsAre("Sales"));
}

TEST_F(DeskRenaming, ScheduleGetsItsTitleByItsPlace) {
    AddSchedule("Week", "Elsewhere");
    AddSchedule("Week", "Desktop");
    frmDesk& window = OpenRoot();
    ClickNode(window, "Desktop");
    database.TakeStatements();
    Rename(window, "Week", "Ann's week");
    EXPECT_THAT(
        database.TakeStatements(),
        ElementsAre("select reportid from reportscheduler where reporttitle = 'Week' and parent = 'Desktop'",
                    "update ReportScheduler Set ReportTitle = 'Anns week' where ReportID = 2"));
    EXPECT_THAT(database.Rows("select ReportTitle from ReportScheduler"), ElementsAre("Week", "Anns week"));
    EXPECT_THAT(Listed(window), ElementsAre("Ann's week"));
}

TEST_F(DeskRenaming, PackageKeepsItsNameInTheDatabase) {
    AddPackage("Monthly");
    frmDesk& window = OpenRoot();
    database.TakeStatements();
    Rename(window, "Monthly", "Yearly");
    EXPECT_THAT(database.TakeStatements(),
                ElementsAre("select reportid from reportscheduler where reporttitle = 'Monthly' and parent = "
                            "'Desktop'",
                            "update ReportScheduler Set ReportTitle = 'Yearly' where ReportID = 0"));
    EXPECT_THAT(Listed(window), ElementsAre("Yearly"));
    EXPECT_THAT(database.Rows("select BatchName from ReportBatch"), ElementsAre("Monthly"));
    ClickNode(window, "Desktop");
    EXPECT_THAT(Listed(window), ElementsAre("Monthly"));
}

TEST_F(DeskRenaming, NewFolderOfTheMenuIsRenamedOnTheScreenOnly) {
    frmDesk& window = OpenRoot();
    ClickEntry("mnuDeskNew");
    Rename(window, "New Folder", "Sales");
    EXPECT_THAT(Listed(window), ElementsAre("Sales"));
    EXPECT_THAT(database.Rows("select * from Folders"), IsEmpty());
}

TEST_F(DeskRenaming, EditThatWasCancelledByAnotherHandlerRemovesTheItem) {
    AddFolder("Sales");
    frmDesk& window = OpenRoot();
    ClickItem(window, "Sales");
    int cancel = 1;
    std::string newString = "Trade";
    database.TakeStatements();
    window.lsvDesk_AfterLabelEdit(cancel, newString);
    EXPECT_THAT(Listed(window), IsEmpty());
    EXPECT_THAT(database.TakeStatements(), IsEmpty());
}

TEST_F(DeskRenaming, ErrorIsToldWithoutHourglass) {
    AddFolder("Sales");
    frmDesk& window = OpenRoot();
    database.Run("create trigger Kept before update on Folders begin select raise(abort, 'kept'); end");
    Global::DeskWindows[1]->ListMousePointer(11);
    frame.ScreenMousePointer(11);
    bool hourglass = true;
    prompts.onBox = [&] { hourglass = frame.BusyShown(); };
    Rename(window, "Sales", "Trade");
    ASSERT_EQ(prompts.boxes.size(), 1U);
    EXPECT_THAT(prompts.boxes[0].text, testing::StartsWith("Oxbow Courier encountred an error. "));
    EXPECT_FALSE(hourglass);
    EXPECT_FALSE(Hourglass(window));
}
