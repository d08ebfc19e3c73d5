// SPDX-License-Identifier: GPL-3.0-or-later
// The commands of the toolbar except the deletions.
#include "desk_fixture.h"

#include <QToolButton>
#include <climits>

#include "execution/frmTest.h"
#include "platform/contracts/prompts.h"
#include "support/fake_shell.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class DeskCommands : public DeskTest {
 protected:
    fakes::FakeShell shell;
};

fakes::Box Taken(const std::string& name) {
    return {"The name '" + name + "' already exists in the system. Please specify a new name.", vbExclamation,
            "Error renaming file"};
}

}  // namespace

TEST_F(DeskCommands, NewFolderIsPutInThePlaceThatIsShown) {
    AddFolder("Sales");
    frmDesk& window = OpenRoot();
    ClickNode(window, "Sales");
    database.TakeStatements();
    prompts.inputs = {"North"};
    ClickButton(window, "New Folder");
    EXPECT_EQ(prompts.asked,
              (std::vector<Texts>{{"Please provide a name for the folder", "Oxbow Courier", ""}}));
    EXPECT_THAT(database.TakeStatements(),
                ElementsAre("select count(*) from folders where foldername = 'North'",
                            "insert into Folders(FolderName, Parent) values('North',1)"));
    // 18164 days and 14 hours
    EXPECT_THAT(ListedWithIcons(window), ElementsAre("1 1 North1569420000=North"));
    EXPECT_THAT(Tree(window), ElementsAre("Desktop", ".Sales"));
    EXPECT_FALSE(Hourglass(window));
    EXPECT_THAT(Tree(OpenRoot()), ElementsAre("Desktop", ".Sales", "..North"));
}

TEST_F(DeskCommands, CancelMakesAFolderWithAnEmptyNameAndASecondCancelIsRefused) {
    frmDesk& window = OpenRoot();
    ClickButton(window, "New Folder");
    EXPECT_THAT(database.Rows("select FolderName, Parent from Folders"), ElementsAre("|0"));
    EXPECT_THAT(Listed(window), ElementsAre(""));
    EXPECT_TRUE(prompts.boxes.empty());
    ClickButton(window, "New Folder");
    EXPECT_EQ(prompts.boxes, (std::vector<fakes::Box>{Taken("")}));
    EXPECT_THAT(database.Rows("select FolderName, Parent from Folders"), ElementsAre("|0"));
}

TEST_F(DeskCommands, DesktopInAnyCaseIsRefusedAsAFolderName) {
    frmDesk& window = OpenRoot();
    prompts.inputs = {"Desktop", "dEsKtOp"};
    ClickButton(window, "New Folder");
    ClickButton(window, "New Folder");
    EXPECT_EQ(prompts.boxes, (std::vector<fakes::Box>{Taken("Desktop"), Taken("dEsKtOp")}));
    EXPECT_THAT(database.Rows("select * from Folders"), IsEmpty());
}

TEST_F(DeskCommands, NameOfAnyFolderIsTakenInAnyCaseAndTheSelectedItemIsEdited) {
    AddFolder("Sales");
    AddFolder("North", 1);
    frmDesk& window = OpenRoot();
    ClickItem(window, "Sales");
    prompts.inputs = {"NORTH"};
    ClickButton(window, "New Folder");
    EXPECT_EQ(prompts.boxes, (std::vector<fakes::Box>{Taken("NORTH")}));
    ASSERT_NE(Editor(window), nullptr);
    EXPECT_EQ(Editor(window)->text(), "Sales");
    EXPECT_TRUE(Hourglass(window));
}

TEST_F(DeskCommands, TakenNameWithNothingSelectedLeavesNoHourglassAndNoEditor) {
    AddFolder("Sales");
    frmDesk& window = OpenRoot();
    prompts.inputs = {"Sales"};
    ClickButton(window, "New Folder");
    EXPECT_EQ(prompts.boxes, (std::vector<fakes::Box>{Taken("Sales")}));
    EXPECT_EQ(Editor(window), nullptr);
    EXPECT_FALSE(Hourglass(window));
}

TEST_F(DeskCommands, ApostrophesOfANewFolderAreStoredNowhere) {
    frmDesk& window = OpenRoot();
    prompts.inputs = {"Ann's 'own'"};
    ClickButton(window, "New Folder");
    EXPECT_THAT(Listed(window), ElementsAre("Anns own"));
    EXPECT_THAT(database.Rows("select FolderName from Folders"), ElementsAre("Anns own"));
}

TEST_F(DeskCommands, NewFolderAsksNothingWhileAnItemBearsThatNameAndLeavesTheHourglass) {
    AddFolder("New Folder");
    frmDesk& window = OpenRoot();
    ClickButton(window, "New Folder");
    EXPECT_THAT(prompts.asked, IsEmpty());
    EXPECT_TRUE(Hourglass(window));
    Global::DeskWindows[1]->ComAction(5);  // any command that ends normally
    EXPECT_FALSE(Hourglass(window));
}

TEST_F(DeskCommands, NewFolderThatCannotBeWrittenIsToldAndLeavesTheHourglass) {
    frmDesk& window = OpenRoot();
    database.Run("create trigger Full before insert on Folders begin select raise(abort, 'full'); end");
    prompts.inputs = {"Sales"};
    ClickButton(window, "New Folder");
    ASSERT_EQ(prompts.boxes.size(), 1U);
    EXPECT_THAT(prompts.boxes[0].text, testing::StartsWith("Oxbow Courier encountred an error. "));
    EXPECT_THAT(Listed(window), IsEmpty());
    EXPECT_TRUE(Hourglass(window));
    EXPECT_TRUE(process.ends.empty());
}

TEST_F(DeskCommands, PreviewShowsTheSelectedSchedule) {
    AddSchedule("Other", "Desktop");
    AddSchedule("Week", "Desktop");
    engine.reports["Z:\\reports\\sales.rpt"] = {};
    frmDesk& window = OpenRoot();
    ClickNode(window, "Desktop");
    ClickItem(window, "Week");
    database.TakeStatements();
    ClickButton(window, "Preview");
    QApplication::processEvents();
    EXPECT_THAT(
        database.TakeStatements(),
        ElementsAre("select reportid from reportscheduler where reporttitle = 'Week' and parent = 'Desktop'",
                    "select * from reportscheduler r left outer join reportparameter x  on r.reportid = "
                    "x.reportid where r.reportid = 2"));
    EXPECT_NE(frame.findChild<frmTest*>(), nullptr);
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(DeskCommands, PreviewShowsTheSelectedReportOfAPackage) {
    AddPackage("Monthly", {"1>Sales"});
    engine.reports["Z:\\reports\\1>Sales.rpt"] = {};
    DoubleClickItem(OpenRoot(), "Monthly");
    frmDesk& window = Window(2);
    ClickItem(window, "1>Sales");
    ClickButton(window, "Preview");
    QApplication::processEvents();
    EXPECT_NE(frame.findChild<frmTest*>(), nullptr);
}

TEST_F(DeskCommands, PreviewOfAPackageReportThatCannotBeOpenedIsToldByTheCommand) {
    AddPackage("Monthly", {"1>Sales"});
    DoubleClickItem(OpenRoot(), "Monthly");
    frmDesk& window = Window(2);
    ClickItem(window, "1>Sales");
    ClickButton(window, "Preview");
    ASSERT_EQ(prompts.boxes.size(), 1U);
    EXPECT_THAT(prompts.boxes[0].text, testing::StartsWith("Oxbow Courier encountred an error. "));
    EXPECT_TRUE(process.ends.empty());
}

TEST_F(DeskCommands, PreviewOfFoldersAndPackagesDoesNothing) {
    AddFolder("Sales");
    AddPackage("Monthly");
    frmDesk& window = OpenRoot();
    for (const char* item : {"Sales", "Monthly"}) {
        ClickItem(window, item);
        window.ComAction(6);
        EXPECT_FALSE(Hourglass(window)) << item;
    }
    EXPECT_TRUE(prompts.boxes.empty());
    EXPECT_TRUE(engine.calls.empty());
}

TEST_F(DeskCommands, PreviewWithNothingSelectedIsSilent) {
    frmDesk& window = OpenRoot();
    window.ComAction(6);
    EXPECT_TRUE(prompts.boxes.empty());
    EXPECT_FALSE(Hourglass(window));
}

TEST_F(DeskCommands, PreviewOfAnItemWithoutATextLeavesTheHourglass) {
    AddFolder("");
    frmDesk& window = OpenRoot();
    ClickItem(window, "");
    window.ComAction(6);
    EXPECT_TRUE(Hourglass(window));
}

TEST_F(DeskCommands, DesignRemindsThenOpensTheDesigner) {
    AddSchedule("Week", "Desktop");
    frmDesk& window = OpenRoot();
    ClickNode(window, "Desktop");
    ClickItem(window, "Week");
    std::size_t openedBefore = 99;
    prompts.onBox = [&] {
        if (prompts.boxes.size() == 1) {
            openedBefore = shell.openings.size();
        }
    };
    ClickButton(window, "Design");
    ASSERT_FALSE(prompts.boxes.empty());
    EXPECT_EQ(prompts.boxes[0],
              (fakes::Box{"Remember to refresh the report for changes to be carried through", vbInformation,
                          "Oxbow Courier"}));
    EXPECT_EQ(openedBefore, 0U);
    EXPECT_FALSE(Hourglass(window));
}

TEST_F(DeskCommands, HelpOpensTheHelp) {
    frmDesk& window = OpenRoot();
    ClickButton(window, "Help");
    ASSERT_EQ(shell.openings.size(), 1U);
    EXPECT_THAT(shell.openings[0].file, testing::EndsWith("Oxbow Courier.chm"));
}

TEST_F(DeskCommands, NewReportAndNewPackageOpenTheirWizards) {
    frmDesk& window = OpenRoot();
    for (const auto& [button, wizard] :
         {std::pair{"New Report", "frmAddReport"}, {"New Package", "frmWiz"}}) {
        ClickButton(window, button);
        const auto* form = frame.findChild<QWidget*>(wizard);
        ASSERT_NE(form, nullptr) << wizard;
        EXPECT_TRUE(form->isVisible()) << wizard;
        EXPECT_FALSE(Hourglass(window)) << wizard;
    }
}

TEST_F(DeskCommands, OptionsOpensTheOptions) {
    frmDesk& window = OpenRoot();
    ClickButton(window, "Options");
    QApplication::processEvents();
    QWidget* form = nullptr;
    for (QWidget* widget : QApplication::allWidgets()) {
        form = widget->objectName() == "frmConfig" ? widget : form;
    }
    ASSERT_NE(form, nullptr);
    EXPECT_TRUE(form->isVisible());
    form->close();
}

TEST_F(DeskCommands, SeparatorsAndNumbersOutOfRangeDoNothing) {
    AddFolder("Sales");
    frmDesk& window = OpenRoot();
    ClickItem(window, "Sales");
    database.TakeStatements();
    for (const int command : {5, 8, 0, -1, 13, SHRT_MAX, SHRT_MIN}) {
        window.ComAction(command);
        EXPECT_FALSE(Hourglass(window)) << command;
    }
    EXPECT_THAT(database.TakeStatements(), IsEmpty());
    EXPECT_TRUE(prompts.boxes.empty());
    EXPECT_THAT(Listed(window), ElementsAre("Sales"));
}

TEST_F(DeskCommands, FirstCommandLoadsTheListAgainAfterOneClickOnTheTree) {
    AddFolder("Sales");
    AddPackage("Monthly");
    frmDesk& window = OpenRoot();
    ClickNode(window, "Desktop");
    ASSERT_EQ(Global::FolderClicks, 1);
    window.ComAction(1);
    EXPECT_EQ(Global::FolderClicks, 0);
    EXPECT_THAT(ListedWithIcons(window), ElementsAre("1 1 Sales^1=Sales", "9 9 Pckg:1=Monthly"));
    EXPECT_EQ(window.Caption(), "Desktop");
    EXPECT_FALSE(ButtonEnabled(window, "New Package"));
    // The tree is not emptied before it is built again.
    EXPECT_EQ(prompts.boxes, (std::vector<fakes::Box>{ErrorBox(35602, "Key is not unique in collection")}));
}

TEST_F(DeskCommands, FirstCommandDoesNothingAfterAnyOtherCountOfClicks) {
    AddFolder("Sales");
    frmDesk& window = OpenRoot();
    for (const std::int16_t clicks : {0, 2}) {
        Global::FolderClicks = clicks;
        database.TakeStatements();
        window.ComAction(1);
        EXPECT_THAT(database.TakeStatements(), IsEmpty());
        EXPECT_EQ(Global::FolderClicks, clicks);
        EXPECT_TRUE(ButtonEnabled(window, "New Package"));
    }
}

TEST_F(DeskCommands, ButtonsFollowTheSelection) {
    AddFolder("Sales");
    AddSchedule("Week", "Desktop");
    AddPackage("Monthly", {"1>Stock"});
    frmDesk& window = OpenRoot();
    ClickNode(window, "Desktop");
    EXPECT_FALSE(ButtonEnabled(window, "Preview"));
    EXPECT_FALSE(ButtonEnabled(window, "Design"));
    ClickItem(window, "Week");
    EXPECT_TRUE(ButtonEnabled(window, "Preview"));
    EXPECT_TRUE(ButtonEnabled(window, "Design"));
    ClickItem(window, "Monthly");  // leaves them as they are
    EXPECT_TRUE(ButtonEnabled(window, "Preview"));
    EXPECT_TRUE(ButtonEnabled(window, "Design"));
    ClickItem(window, "Sales");
    EXPECT_FALSE(ButtonEnabled(window, "Preview"));
    EXPECT_FALSE(ButtonEnabled(window, "Design"));
    DoubleClickItem(window, "Monthly");
    ClickItem(Window(2), "1>Stock");
    EXPECT_TRUE(ButtonEnabled(Window(2), "Preview"));
    EXPECT_FALSE(ButtonEnabled(Window(2), "Design"));
}

TEST_F(DeskCommands, ButtonsFollowASelectionByTheRightButton) {
    AddFolder("Sales");
    AddSchedule("Week", "Desktop");
    frmDesk& window = OpenRoot();
    ClickNode(window, "Desktop");
    ClickItem(window, "Week", Qt::RightButton);
    frame.Menu("mnuDeskRpt")->close();
    EXPECT_TRUE(ButtonEnabled(window, "Preview"));
    EXPECT_TRUE(ButtonEnabled(window, "Design"));
    ClickItem(window, "Sales", Qt::RightButton);
    frame.Menu("mnuDeskFld")->close();
    EXPECT_FALSE(ButtonEnabled(window, "Preview"));
    EXPECT_FALSE(ButtonEnabled(window, "Design"));
}

TEST_F(DeskCommands, CommandLeavesTheButtonsAsTheyAre) {
    AddSchedule("Week", "Desktop");
    frmDesk& window = OpenRoot();
    ClickNode(window, "Desktop");
    ClickItem(window, "Week");
    prompts.answers = {vbYes};
    ClickButton(window, "Delete");
    EXPECT_THAT(Listed(window), IsEmpty());
    EXPECT_TRUE(ButtonEnabled(window, "Preview"));
    EXPECT_TRUE(ButtonEnabled(window, "Design"));
}
