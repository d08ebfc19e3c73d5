// SPDX-License-Identifier: GPL-3.0-or-later
// Deleting packages and taking reports out of them in the Desktop's windows.
#include "package_fixture.h"

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const fakes::Box PackageQuestion{"Delete the current batch? All scheduled reports will be deleted.", vbYesNo,
                                 "Oxbow Courier"};
const fakes::Box ReportQuestion{"Remove the current report from the batch?", vbYesNo, "Oxbow Courier"};

class PackageDeleting : public PackageTest {
 protected:
    // Two packages: Month end of three reports, and Week of one.
    void SetUp() override {
        PackageTest::SetUp();
        AddPackage("Month end", {"1>sales", "2>stock", "3>staff"});
        AddPackage("Week", {"1>week"});
        for (const int report : {1, 2, 3}) {
            Store(1, report, {"North"});
        }
        Store(2, 4, {"South"});
    }
};

}  // namespace

TEST_F(PackageDeleting, PackageGoesWithItsReportsAndTheirValuesInThatOrder) {
    frmDesk& window = OpenRoot();
    database.TakeStatements();
    prompts.answers = {vbYes};
    ChooseOf(window, "Month end", "mnubtcDelSel");
    EXPECT_EQ(prompts.boxes, Boxes{PackageQuestion});
    EXPECT_THAT(database.TakeStatements(), ElementsAre("delete from reportbatch where reportid = 1",
                                                       "delete from reportbatchdtls where reportid = 1",
                                                       "delete from reportbatchpar where reportid = 1"));
    EXPECT_THAT(Listed(window), ElementsAre("Week"));
    EXPECT_THAT(database.Rows("select ReportID from ReportBatch"), ElementsAre("2"));
    EXPECT_THAT(Reports(), ElementsAre("2|1>week"));
    EXPECT_THAT(Stored(), ElementsAre("2|4|South"));
    EXPECT_EQ(loop.waits, 0);
}

TEST_F(PackageDeleting, HistoryOfADeletedPackageStays) {
    database.Run("insert into ReportBatchHstry values('1','21/11/2026,09:00','Success','None')");
    frmDesk& window = OpenRoot();
    prompts.answers = {vbYes};
    ChooseOf(window, "Month end", "mnubtcDelSel");
    EXPECT_THAT(database.Rows("select ReportID from ReportBatchHstry"), ElementsAre("1"));
}

TEST_F(PackageDeleting, ToolbarAsksTheSameQuestionAndNoOther) {
    frmDesk& window = OpenRoot();
    ClickItem(window, "Month end");
    prompts.answers = {vbYes};
    ClickButton(window, "Delete");
    EXPECT_EQ(prompts.boxes, Boxes{PackageQuestion});
    EXPECT_THAT(Listed(window), ElementsAre("Week"));
    EXPECT_FALSE(Hourglass(window));
}

TEST_F(PackageDeleting, PackageGoesFromTheTableOfDetailsAsWell) {
    frmDesk& window = OpenRoot();
    ClickNode(window, "Desktop");
    ClickEntry("mnuDetails");
    QApplication::processEvents();
    prompts.answers = {vbYes};
    ChooseOf(window, "Month end", "mnubtcDelSel");
    EXPECT_THAT(Listed(window), ElementsAre("Week"));
    EXPECT_THAT(database.Rows("select BatchName from ReportBatch"), ElementsAre("Week"));
}

// In the table view the number of a package is the text after the last colon of its item's key.
TEST_F(PackageDeleting, ColonInANameOfTheTableViewDeletesThePackageThatItNames) {
    AddPackage("Other");
    AddPackage("a:1", {"1>x.rpt"});
    frmDesk& window = OpenRoot();
    ClickNode(window, "Desktop");
    ClickEntry("mnuDetails");
    QApplication::processEvents();
    DoubleClickItem(window, "a:1");
    EXPECT_EQ(Listed(Window(2)), Texts{"1>x.rpt"});
    Close(Window(2));
    database.TakeStatements();
    prompts.answers = {vbYes};
    ChooseOf(window, "a:1", "mnubtcDelSel");
    EXPECT_EQ(database.TakeStatements()[0], "delete from reportbatch where reportid = 4");
    EXPECT_THAT(database.Rows("select BatchName from ReportBatch"),
                ElementsAre("Month end", "Week", "Other"));
}

TEST_F(PackageDeleting, AnyAnswerButYesDeletesNothing) {
    frmDesk& root = OpenRoot();
    database.TakeStatements();
    for (const int answer : {vbNo, vbOK}) {
        prompts.answers = {answer};
        ChooseOf(root, "Month end", "mnubtcDelSel");
    }
    EXPECT_THAT(database.TakeStatements(), IsEmpty());
    EXPECT_THAT(Listed(root), ElementsAre("Month end", "Week"));
    DoubleClickItem(root, "Month end");
    frmDesk& window = Window(2);
    database.TakeStatements();
    prompts.answers = {vbNo};
    ChooseOf(window, "1>sales", "mnubtcDelSel");
    EXPECT_EQ(prompts.boxes, (Boxes{PackageQuestion, PackageQuestion, ReportQuestion}));
    EXPECT_THAT(database.TakeStatements(), IsEmpty());
    EXPECT_EQ(Listed(window).size(), 3U);
}

TEST_F(PackageDeleting, ReportGoesWithItsOwnValuesAndThePackageStays) {
    frmDesk& window = OpenPackage("Month end");
    prompts.answers = {vbYes};
    ChooseOf(window, "2>stock", "mnubtcDelSel");
    EXPECT_EQ(prompts.boxes, Boxes{ReportQuestion});
    EXPECT_THAT(database.TakeStatements(),
                ElementsAre("select reportid from reportbatchdtls where DetailID =2",
                            "delete from reportbatchdtls where ReportTitle = '2>stock' and  DetailId = 2",
                            "delete from reportbatchpar where DetailID = 2",
                            "select count(*) as RepCount from ReportBatchDtls Where ReportID = 1"));
    EXPECT_THAT(Listed(window), ElementsAre("1>sales", "3>staff"));
    EXPECT_THAT(Listed(Window(1)), ElementsAre("Month end", "Week"));
    EXPECT_THAT(Reports(), ElementsAre("1|1>sales", "1|3>staff", "2|1>week"));
    EXPECT_THAT(Stored(), ElementsAre("1|1|North", "1|3|North", "2|4|South"));
}

TEST_F(PackageDeleting, ThreeSecondsPassBetweenTheDeletionAndTheCount) {
    frmDesk& window = OpenPackage("Month end");
    prompts.answers = {vbYes};
    std::vector<std::size_t> statementsAtEachSecond;
    Texts all;
    loop.onWait = [&] {
        for (const std::string& statement : database.TakeStatements()) {
            all.push_back(statement);
        }
        statementsAtEachSecond.push_back(all.size());
    };
    ChooseOf(window, "2>stock", "mnubtcDelSel");
    EXPECT_THAT(statementsAtEachSecond, ElementsAre(3U, 3U, 3U));
    EXPECT_EQ(all.back(), "delete from reportbatchpar where DetailID = 2");
    EXPECT_THAT(database.TakeStatements(),
                ElementsAre("select count(*) as RepCount from ReportBatchDtls Where ReportID = 1"));
    EXPECT_EQ(loop.waits, 3);
}

TEST_F(PackageDeleting, LastReportTakesThePackageAlongAndItsItemFromTheWindowBefore) {
    frmDesk& window = OpenPackage("Week");
    prompts.answers = {vbYes};
    ChooseOf(window, "1>week", "mnubtcDelSel");
    EXPECT_EQ(prompts.boxes, Boxes{ReportQuestion});
    EXPECT_THAT(database.TakeStatements(),
                ElementsAre("select reportid from reportbatchdtls where DetailID =4",
                            "delete from reportbatchdtls where ReportTitle = '1>week' and  DetailId = 4",
                            "delete from reportbatchpar where DetailID = 4",
                            "select count(*) as RepCount from ReportBatchDtls Where ReportID = 2",
                            "delete from reportbatch where reportid = 2",
                            "delete from reportbatchdtls where reportid = 2",
                            "delete from reportbatchpar where reportid = 2"));
    EXPECT_THAT(Listed(window), IsEmpty());
    EXPECT_THAT(Listed(Window(1)), ElementsAre("Month end"));
    EXPECT_THAT(database.Rows("select BatchName from ReportBatch"), ElementsAre("Month end"));
    EXPECT_THAT(Stored(), Each(testing::StartsWith("1|")));
}

TEST_F(PackageDeleting, WindowBeforeIsTakenForTheOneThatThePackageCameFrom) {
    AddFolder("Sales");
    frmDesk& root = OpenRoot();
    frmDesk& other = OpenRoot();
    ClickItem(other, "Sales");
    root.setFocus();
    ClickItem(root, "Week");
    frame.Children().setActiveSubWindow(qobject_cast<QMdiSubWindow*>(root.parentWidget()));
    DoubleClickItem(root, "Week");
    prompts.answers = {vbYes};
    ChooseOf(Window(3), "1>week", "mnubtcDelSel");
    // The selected item there disappears, whatever it is; the package's own item stays.
    EXPECT_THAT(Listed(other), ElementsAre("Month end", "Week"));
    EXPECT_THAT(Listed(root), ElementsAre("Sales", "Month end", "Week"));
    EXPECT_THAT(database.Rows("select FolderName from Folders"), ElementsAre("Sales"));
}

TEST_F(PackageDeleting, WindowBeforeThatWasClosedIsPassedOver) {
    frmDesk& window = OpenPackage("Week");
    Close(Window(1));
    prompts.answers = {vbYes};
    ChooseOf(window, "1>week", "mnubtcDelSel");
    EXPECT_EQ(prompts.boxes, Boxes{ReportQuestion});
    EXPECT_THAT(Listed(window), IsEmpty());
    EXPECT_THAT(database.Rows("select BatchName from ReportBatch"), ElementsAre("Month end"));
}

TEST_F(PackageDeleting, FirstWindowHasNoneBeforeIt) {
    OpenPackage("Week");
    Close(Window(1));
    Close(Window(2));
    Global::CurrentFolderID = "999";
    frmDesk& window = OpenRoot();  // in the first slot
    window.lsvDesk->ListItems().Clear();
    window.OpenPackage("Pckg:2");
    ASSERT_EQ(Global::DeskIndex, 1);
    prompts.answers = {vbYes};
    ChooseOf(window, "1>week", "mnubtcDelSel");
    EXPECT_EQ(prompts.boxes, Boxes{ReportQuestion});
    EXPECT_THAT(Listed(window), IsEmpty());
    EXPECT_THAT(database.Rows("select BatchName from ReportBatch"), ElementsAre("Month end"));
}

TEST_F(PackageDeleting, NothingSelectedInTheWindowBeforeIsToldAndLeavesTheEmptyPackage) {
    frmDesk& window = OpenPackage("Week");
    ClickBesideAll(Window(1));
    frame.Children().setActiveSubWindow(qobject_cast<QMdiSubWindow*>(window.parentWidget()));
    prompts.answers = {vbYes};
    ChooseOf(window, "1>week", "mnubtcDelSel");
    EXPECT_EQ(prompts.boxes,
              (Boxes{ReportQuestion, ErrorBox(91, "Object variable or With block variable not set")}));
    EXPECT_THAT(database.Rows("select BatchName from ReportBatch"), ElementsAre("Month end", "Week"));
    EXPECT_THAT(Reports(), testing::Not(testing::Contains("2|1>week")));
    EXPECT_THAT(Listed(window), ElementsAre("1>week"));
}

TEST_F(PackageDeleting, WindowClosedInThePauseOutlivesTheButtonThatWasClicked) {
    QPointer<frmDesk> window = &OpenPackage("Month end");
    ClickItem(*window, "2>stock");
    Close(Window(1));
    prompts.answers = {vbYes};
    loop.onWait = [&] {
        if (loop.waits == 1) {
            Close(*window);
            ASSERT_NE(window, nullptr);
            EXPECT_FALSE(window->isVisible());
        }
    };
    ClickButton(*window, "Delete");
    EXPECT_EQ(loop.waits, 3);
    EXPECT_EQ(prompts.boxes, Boxes{ReportQuestion});
    EXPECT_THAT(Reports(), ElementsAre("1|1>sales", "1|3>staff", "2|1>week"));
    EXPECT_FALSE(frame.BusyShown());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(window, nullptr);
    EXPECT_TRUE(DeskTest::OnScreen().empty());
}

TEST_F(PackageDeleting, WindowsThatOutlivedThePauseGoWhenTheyAreClosed) {
    QPointer<frmDesk> window = &OpenPackage("Month end");
    prompts.answers = {vbYes};
    ChooseOf(*window, "2>stock", "mnubtcDelSel");
    ASSERT_NE(window, nullptr);
    Close(*window);
    EXPECT_EQ(window, nullptr);
}

TEST_F(PackageDeleting, WindowOfADeletionWithinThePauseOfAnotherIsLeftToTheOuterOne) {
    QPointer<frmDesk> window = &OpenPackage("Month end");
    prompts.answers = {vbYes, vbYes};
    loop.onWait = [&] {
        if (loop.waits == 1) {
            ClickItem(*window, "3>staff");
            ClickEntry("mnubtcDelSel");
            Close(*window);
            EXPECT_NE(window, nullptr);
        }
    };
    ClickItem(*window, "2>stock");
    ClickButton(*window, "Delete");
    EXPECT_THAT(Reports(), ElementsAre("1|1>sales", "2|1>week"));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(window, nullptr);
}

TEST_F(PackageDeleting, ReportDeletedTwiceInThePauseIsToldOfTheSecondTime) {
    frmDesk& window = OpenPackage("Month end");
    prompts.answers = {vbYes, vbYes};
    loop.onWait = [&] {
        if (loop.waits == 1) {
            ClickEntry("mnubtcDelSel");
        }
    };
    ChooseOf(window, "2>stock", "mnubtcDelSel");
    ASSERT_EQ(prompts.boxes.size(), 3U);
    EXPECT_EQ(prompts.boxes[1], ReportQuestion);
    EXPECT_THAT(prompts.boxes[2].text, testing::EndsWith(" [3021]"));
    EXPECT_THAT(Listed(window), ElementsAre("1>sales", "3>staff"));
    EXPECT_THAT(Reports(), ElementsAre("1|1>sales", "1|3>staff", "2|1>week"));
}

// After the pause the list loses the item that is selected then.
TEST_F(PackageDeleting, OtherReportDeletedInThePauseGoesAndTheFirstStaysInTheList) {
    frmDesk& window = OpenPackage("Month end");
    prompts.answers = {vbYes, vbYes};
    loop.onWait = [&] {
        if (loop.waits == 1) {
            ClickItem(window, "3>staff");
            ClickEntry("mnubtcDelSel");
        }
    };
    ChooseOf(window, "2>stock", "mnubtcDelSel");
    EXPECT_EQ(prompts.boxes, (Boxes{ReportQuestion, ReportQuestion,
                                    ErrorBox(91, "Object variable or With block variable not set")}));
    EXPECT_THAT(Reports(), ElementsAre("1|1>sales", "2|1>week"));
    EXPECT_THAT(Listed(window), ElementsAre("1>sales", "2>stock"));
}

TEST_F(PackageDeleting, HistoryWindowThatIsActiveAfterThePauseKeepsTheLists) {
    frmDesk& window = OpenPackage("Week");
    prompts.answers = {vbYes};
    loop.onWait = [&] {
        if (loop.waits == 1) {
            ClickEntry("mnuView");
        }
    };
    ChooseOf(window, "1>week", "mnubtcDelSel");
    EXPECT_EQ(prompts.boxes, Boxes{ReportQuestion});
    EXPECT_THAT(Listed(window), ElementsAre("1>week"));
    EXPECT_THAT(Listed(Window(1)), ElementsAre("Month end", "Week"));
    EXPECT_THAT(database.Rows("select BatchName from ReportBatch"), ElementsAre("Month end"));
}

TEST_F(PackageDeleting, ReportThatIsGoneAlreadyIsTold) {
    frmDesk& window = OpenPackage("Month end");
    database.Run("delete from ReportBatchDtls where DetailID=2");
    prompts.answers = {vbYes};
    ChooseOf(window, "2>stock", "mnubtcDelSel");
    ASSERT_EQ(prompts.boxes.size(), 2U);
    EXPECT_THAT(prompts.boxes[1].text, testing::EndsWith(" [3021]"));
    EXPECT_THAT(database.TakeStatements(),
                ElementsAre("select reportid from reportbatchdtls where DetailID =2"));
    EXPECT_EQ(Stored().size(), 4U);
}

TEST_F(PackageDeleting, PackageWhoseNumberIsTooLongForARunIsNotTouched) {
    frmDesk& window = OpenPackage("Month end");
    database.Run("update ReportBatchDtls set ReportID=40000 where DetailID=2");
    prompts.answers = {vbYes};
    ChooseOf(window, "2>stock", "mnubtcDelSel");
    EXPECT_EQ(prompts.boxes, (Boxes{ReportQuestion, ErrorBox(6, "Overflow")}));
    EXPECT_EQ(Reports().size(), 4U);
}

TEST_F(PackageDeleting, FailureBetweenTheStatementsLeavesTheRestInPlace) {
    frmDesk& window = OpenRoot();
    database.Run(
        "create trigger Kept before delete on ReportBatchDtls begin select raise(abort, 'kept'); end");
    prompts.answers = {vbYes};
    ChooseOf(window, "Month end", "mnubtcDelSel");
    ASSERT_EQ(prompts.boxes.size(), 2U);
    EXPECT_THAT(prompts.boxes[1].text, testing::StartsWith("Oxbow Courier encountred an error. "));
    EXPECT_EQ(prompts.boxes[1].flags, vbExclamation);
    EXPECT_THAT(database.Rows("select BatchName from ReportBatch"), ElementsAre("Week"));
    EXPECT_EQ(Reports().size(), 4U);
    EXPECT_EQ(Stored().size(), 4U);
    EXPECT_THAT(Listed(window), ElementsAre("Month end", "Week"));
}

TEST_F(PackageDeleting, OtherItemsAndNoneAreNoPackages) {
    AddFolder("Sales");
    frmDesk& window = OpenRoot();
    ClickEntry("mnubtcDelSel");
    EXPECT_EQ(prompts.boxes, Boxes{ErrorBox(91, "Object variable or With block variable not set")});
    ClickItem(window, "Sales");
    ClickEntry("mnubtcDelSel");
    EXPECT_EQ(prompts.boxes.size(), 1U);
    EXPECT_EQ(Listed(window).size(), 3U);
}
