// SPDX-License-Identifier: GPL-3.0-or-later
// Double clicks on every kind of item.
#include "desk_fixture.h"
#include "platform/contracts/prompts.h"

using testing::ElementsAre;
using testing::IsEmpty;

using DeskOpening = DeskTest;

TEST_F(DeskOpening, FolderOpensAWindowOfItsOwn) {
    AddFolder("Sales");
    AddFolder("North", 1);
    AddSchedule("West", "Sales");
    AddSchedule("east", "Sales");
    AddPackage("Monthly");
    frmDesk& first = OpenRoot();
    database.TakeStatements();
    DoubleClickItem(first, "Sales");
    const std::string folders = "select foldername, folderid from folders where parent = ";
    EXPECT_THAT(database.TakeStatements(),
                ElementsAre("select folderid  from folders where foldername = 'Sales'", folders + "1",
                            folders + "0", folders + "1", folders + "2",
                            "select * from reportscheduler where parent = 'Sales' order by reporttitle",
                            folders + "1"));
    frmDesk& second = Window(2);
    EXPECT_EQ(second.Caption(), "Sales");
    EXPECT_EQ(second.Tag, "2");
    EXPECT_THAT(ListedWithIcons(second), ElementsAre("2 2 pk2=east", "2 2 pk1=West", "1 1 North^2=North"));
    EXPECT_EQ(first.Caption(), "Desktop");
    EXPECT_EQ(Global::CurrentFolder, "Sales");
    EXPECT_EQ(Global::CurrentFolderID, "1");
    EXPECT_EQ(Global::DeskIndex, 2);
    EXPECT_FALSE(Hourglass(second));
    EXPECT_FALSE(Hourglass(first));
}

TEST_F(DeskOpening, FolderBelowTheTreeIsReachedThroughTheList) {
    AddFolder("A");
    AddFolder("A1", 1);
    AddFolder("A1a", 2);
    AddFolder("Deep", 3);
    AddSchedule("Week", "Deep");
    frmDesk& window = OpenRoot();
    window.tvwFolder->expandAll();
    ClickNode(window, "A1a");
    DoubleClickItem(window, "Deep");
    EXPECT_THAT(Listed(Window(2)), ElementsAre("Week"));
}

TEST_F(DeskOpening, EnterOpensAsADoubleClickDoes) {
    AddFolder("Sales");
    frmDesk& window = OpenRoot();
    ClickItem(window, "Sales");
    Key(*window.lsvDesk->CurrentView(), Qt::Key_Return);
    ASSERT_EQ(Global::DeskCount, 2);
    EXPECT_EQ(Window(2).Caption(), "Sales");
}

TEST_F(DeskOpening, PackageOpensAWindowOfItsReports) {
    AddPackage("Other", {"Elsewhere"});
    AddPackage("Monthly", {"1>Sales", "2>Stock"});
    frmDesk& first = OpenRoot();
    database.TakeStatements();
    DoubleClickItem(first, "Monthly");
    frmDesk& second = Window(2);
    EXPECT_EQ(second.Caption(), "Package - Monthly");
    EXPECT_THAT(ListedWithIcons(second), ElementsAre("10 10 2:1>Sales=1>Sales", "10 10 3:2>Stock=2>Stock"));
    EXPECT_EQ(Global::CurrentFolderID, "999");
    const std::string folders = "select foldername, folderid from folders where parent = ";
    EXPECT_THAT(database.TakeStatements(),
                ElementsAre("select folderid  from folders where foldername = 'Monthly'", folders + "999",
                            folders + "0", "select * from reportbatchdtls where  reportid = 2"));
    EXPECT_FALSE(Hourglass(second));
    EXPECT_FALSE(Hourglass(first));
}

TEST_F(DeskOpening, PackageOpensFromTheTableToo) {
    AddPackage("Monthly", {"1>Sales"});
    frmDesk& window = OpenRoot();
    ClickEntry("mnuDetails");
    DoubleClickItem(window, "Monthly");
    EXPECT_THAT(Listed(Window(2)), ElementsAre("1>Sales"));
}

TEST_F(DeskOpening, ReportOfAPackageOpensNothing) {
    AddPackage("Monthly", {"1>Sales"});
    DoubleClickItem(OpenRoot(), "Monthly");
    DoubleClickItem(Window(2), "1>Sales");
    EXPECT_EQ(Global::DeskCount, 2);
    EXPECT_TRUE(prompts.boxes.empty());
    EXPECT_FALSE(Hourglass(Window(2)));
}

TEST_F(DeskOpening, ReportOpensThePackageWizard) {
    AddSchedule("Week", "Desktop");
    frmDesk& window = OpenRoot();
    ClickNode(window, "Desktop");
    DoubleClickItem(window, "Week");
    EXPECT_EQ(Global::DeskCount, 1);
    const auto* wizard = frame.findChild<QWidget*>("frmWiz");
    ASSERT_NE(wizard, nullptr);
    EXPECT_TRUE(wizard->isVisible());
    EXPECT_FALSE(Hourglass(window));
}

TEST_F(DeskOpening, ItemWithoutAnyPictureOpensUnderTheNameOfTheFolderBefore) {
    AddFolder("Sales");
    AddSchedule("Week", "Sales");
    Global::CurrentFolder = "Stock";
    frmDesk& window = OpenRoot();
    window.lsvDesk->ListItems().Clear();
    window.lsvDesk->ListItems().Add("key", "Sales");
    DoubleClickItem(window, "Sales");
    EXPECT_EQ(Window(2).Caption(), "Stock");
    EXPECT_THAT(Listed(Window(2)), ElementsAre("Week"));
}

TEST_F(DeskOpening, FolderWithoutANameLeavesTheHourglass) {
    AddFolder("");
    frmDesk& window = OpenRoot();
    DoubleClickItem(window, "");
    EXPECT_EQ(Global::DeskCount, 1);
    EXPECT_TRUE(Hourglass(window));
}

TEST_F(DeskOpening, NothingHappensInAnEmptyList) {
    frmDesk& window = OpenRoot();
    database.TakeStatements();
    window.lsvDesk_DblClick();
    EXPECT_THAT(database.TakeStatements(), IsEmpty());
    EXPECT_FALSE(Hourglass(window));
}

TEST_F(DeskOpening, NothingSelectedIsToldInABoxWithoutHourglass) {
    AddFolder("Sales");
    frmDesk& window = OpenRoot();
    window.lsvDesk_DblClick();
    EXPECT_EQ(prompts.boxes,
              (std::vector<fakes::Box>{ErrorBox(91, "Object variable or With block variable not set")}));
    EXPECT_FALSE(Hourglass(window));
}

TEST_F(DeskOpening, OpenOfTheMenuIsTheDoubleClick) {
    AddFolder("Sales");
    frmDesk& window = OpenRoot();
    ClickItem(window, "Sales");
    ClickEntry("mnuDeskOpen");
    EXPECT_EQ(Window(2).Caption(), "Sales");
}

TEST_F(DeskOpening, ValueMissingInAStatementMakesTheNewestFolderThePlaceAndRepeatsIt) {
    AddFolder("Sales");
    AddFolder("Stock");
    frmDesk& window = OpenRoot();
    ClickItem(window, "Sales");
    database.Run("alter table ReportScheduler rename column Parent to Above");
    database.TakeStatements();
    window.lsvDesk_DblClick();
    const Texts statements = database.TakeStatements();
    const std::string schedules = "select * from reportscheduler where parent = 'Sales' order by reporttitle";
    ASSERT_GE(statements.size(), 3U);
    EXPECT_EQ(statements[statements.size() - 3], schedules);
    EXPECT_EQ(statements[statements.size() - 2], "select max(folderid) as MaxID from Folders");
    EXPECT_EQ(statements.back(), schedules);
    EXPECT_EQ(Global::CurrentFolderID, "2");
    ASSERT_EQ(prompts.boxes.size(), 1U);
    EXPECT_THAT(prompts.boxes[0].text, testing::EndsWith("[-2147217904]"));
    EXPECT_FALSE(Hourglass(Window(2)));
}
