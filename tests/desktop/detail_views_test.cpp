// SPDX-License-Identifier: GPL-3.0-or-later
// The three views of the list.
#include "desk_fixture.h"

#include <QAbstractItemView>
#include <QHeaderView>
#include <QTreeView>

#include "desktop/DetailViews.h"
#include "platform/contracts/prompts.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const char* const Settings = "Software\\Norvale\\Oxbow Courier";

class DetailViews : public DeskTest {
 protected:
    std::string KeptView() { return registry.keys[Settings]["View"].bytes; }
    static void ClickHeading(frmDesk& window, int column) {
        const auto* table = qobject_cast<QTreeView*>(window.lsvDesk->CurrentView());
        ASSERT_NE(table, nullptr);
        QTest::mouseClick(
            table->header()->viewport(), Qt::LeftButton, {},
            {table->header()->sectionViewportPosition(column) + 8, table->header()->height() / 2});
    }
    void SetUp() override {
        DeskTest::SetUp();
        registry.keys[Settings];
    }
};

}  // namespace

TEST_F(DetailViews, FolderInTheTableShowsItsFoldersAfterTheSchedulesWithEmptyCells) {
    AddFolder("Sales");
    AddFolder("North", 1);
    AddSchedule("Week", "Sales");
    AddSchedule("Day", "Sales");
    frmDesk& window = OpenRoot();
    ClickNode(window, "Sales");
    database.TakeStatements();
    ClickEntry("mnuDetails");
    EXPECT_THAT(Headings(window),
                ElementsAre("Report Name", "Frequency", "Output Format", "Next Run", "Recipients"));
    EXPECT_THAT(Cells(window, 5),
                ElementsAre("Day|Daily|Acrobat Format (PDF)|2002-03-07|ann@example.com;",
                            "Week|Daily|Acrobat Format (PDF)|2002-03-07|ann@example.com;", "North||||"));
    EXPECT_THAT(ListedWithIcons(window), ElementsAre("2 2 pk2=Day", "2 2 pk1=Week", "1 1 North^2=North"));
    EXPECT_THAT(database.TakeStatements(),
                ElementsAre("select * from reportscheduler where parent = 'Sales' order by reporttitle",
                            "select folderid  from folders where foldername = 'Sales'",
                            "select foldername, folderid from folders where parent = 1"));
    EXPECT_EQ(window.lsvDesk->View(), 3);
    EXPECT_FALSE(window.lsvDesk->HideColumnHeaders());
    EXPECT_EQ(KeptView(), "3");
}

TEST_F(DetailViews, TableOfTheRootListsThePackagesAfterTheFolders) {
    AddFolder("Sales");
    AddPackage("Monthly");
    AddSchedule("Week", "Desktop");
    frmDesk& window = OpenRoot();
    database.TakeStatements();
    ClickEntry("mnuDetails");
    EXPECT_THAT(ListedWithIcons(window),
                ElementsAre("2 2 pk1=Week", "1 1 Sales^1=Sales", "9 9 Monthly:1=Monthly"));
    EXPECT_EQ(database.TakeStatements().back(), "select batchname, reportid from reportbatch");
}

TEST_F(DetailViews, TableOfAFolderThatIsNotExactlyNamedDesktopListsNoPackages) {
    AddFolder("desktop");
    AddPackage("Monthly");
    frmDesk& window = OpenRoot();
    window.setWindowTitle("desktop");
    ClickEntry("mnuDetails");
    EXPECT_THAT(Listed(window), IsEmpty());
}

TEST_F(DetailViews, ListKeepsTwoAndShowsSmallIcons) {
    AddFolder("Sales");
    frmDesk& window = OpenRoot();
    database.TakeStatements();
    ClickEntry("mnuViewList");
    EXPECT_EQ(KeptView(), "2");
    EXPECT_EQ(window.lsvDesk->View(), 1);
    EXPECT_EQ(window.lsvDesk->Arrange(), 1);
    EXPECT_TRUE(window.lsvDesk->HideColumnHeaders());
    EXPECT_THAT(Listed(window), ElementsAre("Sales"));
    EXPECT_THAT(database.TakeStatements(), IsEmpty());
}

TEST_F(DetailViews, IconsKeepNoughtAndShowLargeIcons) {
    AddFolder("Sales");
    frmDesk& window = OpenRoot();
    ClickEntry("mnuViewList");
    database.TakeStatements();
    ClickEntry("mnuIcons");
    EXPECT_EQ(KeptView(), "0");
    EXPECT_EQ(window.lsvDesk->View(), 0);
    EXPECT_EQ(window.lsvDesk->Arrange(), 2);
    EXPECT_TRUE(window.lsvDesk->HideColumnHeaders());
    EXPECT_THAT(database.TakeStatements(), IsEmpty());
}

TEST_F(DetailViews, ItemsKeepTheirCellsWhenTheTableIsLeft) {
    AddSchedule("Week", "Desktop");
    frmDesk& window = OpenRoot();
    ClickEntry("mnuDetails");
    ClickEntry("mnuIcons");
    EXPECT_THAT(Cells(window, 2), ElementsAre("Week|Daily"));
    EXPECT_EQ(Headings(window).size(), 5U);
}

TEST_F(DetailViews, TableOfAPackageHasOtherColumnsAndThePathsOfItsReports) {
    AddPackage("Other", {"Elsewhere"});
    AddPackage("Monthly", {"1>Sales", "2>Stock"});
    DoubleClickItem(OpenRoot(), "Monthly");
    frmDesk& window = Window(2);
    database.TakeStatements();
    ClickEntry("mnuDetails");
    EXPECT_THAT(Headings(window),
                ElementsAre("Report Name", "Path", "Output Format", "Frequency", "Next Run"));
    EXPECT_THAT(Cells(window, 5),
                ElementsAre("1>Sales|Z:\\reports\\1>Sales.rpt|Acrobat Format (PDF)|Weekly|2026-11-30",
                            "2>Stock|Z:\\reports\\2>Stock.rpt|Acrobat Format (PDF)|Weekly|2026-11-30"));
    EXPECT_EQ(window.lsvDesk->CurrentView()->model()->index(0, 1).data().toString(), "/reports/1>Sales.rpt");
    EXPECT_THAT(ListedWithIcons(window), ElementsAre("10 10 2:bk=1>Sales", "10 10 3:bk=2>Stock"));
    EXPECT_THAT(
        database.TakeStatements(),
        ElementsAre("select ReportID, frequency, nextrundate from reportbatch where batchname = 'Monthly'",
                    "select * from reportbatchdtls where reportid = 2"));
    EXPECT_EQ(KeptView(), "3");
}

TEST_F(DetailViews, PackageThatIsGoneEndsTheProcessAndKeepsNothing) {
    AddPackage("Monthly", {"1>Sales"});
    DoubleClickItem(OpenRoot(), "Monthly");
    database.Run("delete from ReportBatch");
    QMetaObject::invokeMethod(frame.Entry("mnuDetails"), "trigger", Qt::QueuedConnection);
    QApplication::processEvents();
    ASSERT_EQ(prompts.boxes.size(), 1U);
    EXPECT_THAT(prompts.boxes[0].text, testing::StartsWith("Run-time error \"3021\""));
    EXPECT_EQ(process.ends, std::vector<int>{1});
    EXPECT_EQ(KeptView(), "");
}

TEST_F(DetailViews, ScheduleFilledByATreeClickHasNoCellsUntilTheTableIsAskedForAgain) {
    AddSchedule("Week", "Desktop");
    frmDesk& window = OpenRoot();
    ClickEntry("mnuDetails");
    ClickEntry("mnuIcons");
    ClickNode(window, "Desktop");
    EXPECT_THAT(Cells(window, 2), ElementsAre("Week|"));
    ClickEntry("mnuDetails");
    EXPECT_THAT(Cells(window, 2), ElementsAre("Week|Daily"));
}

TEST_F(DetailViews, TreeClickInTheTableFillsTheTable) {
    AddFolder("Sales");
    AddSchedule("Week", "Sales");
    frmDesk& window = OpenRoot();
    ClickEntry("mnuDetails");
    ClickNode(window, "Sales");
    EXPECT_THAT(Cells(window, 2), ElementsAre("Week|Daily"));
    EXPECT_EQ(Global::CurrentFolderID, "1");
    EXPECT_EQ(Global::FolderClicks, 0);
    EXPECT_EQ(KeptView(), "3");
}

TEST_F(DetailViews, WindowOpenedFromATableBeginsInIcons) {
    AddFolder("Sales");
    frmDesk& window = OpenRoot();
    ClickEntry("mnuDetails");
    DoubleClickItem(window, "Sales");
    EXPECT_EQ(Window(2).lsvDesk->View(), ListView::IconView);
}

TEST_F(DetailViews, ColumnSortsAndASecondClickDoesNotTurnTheOrderOver) {
    AddSchedule("b", "Desktop");
    AddSchedule("a", "Desktop");
    AddSchedule("C", "Desktop");
    database.Run(
        "update ReportScheduler set Frequency=case ReportTitle when 'a' then 'Weekly' when 'b' then "
        "'Daily' else 'Monthly' end");
    AddFolder("Z");
    frmDesk& window = OpenRoot();
    ClickEntry("mnuDetails");
    QApplication::processEvents();
    ClickHeading(window, 1);
    EXPECT_EQ(window.lsvDesk->SortKey(), 1);
    EXPECT_THAT(Listed(window), ElementsAre("Z", "b", "C", "a"));
    ClickHeading(window, 1);
    EXPECT_THAT(Listed(window), ElementsAre("Z", "b", "C", "a"));
    ClickHeading(window, 0);
    EXPECT_THAT(Listed(window), ElementsAre("a", "b", "C", "Z"));
}

TEST_F(DetailViews, SortingStaysWhenTheTableIsFilledAgain) {
    AddFolder("A");
    AddSchedule("B", "Desktop");
    frmDesk& window = OpenRoot();
    ClickEntry("mnuDetails");
    QApplication::processEvents();
    EXPECT_THAT(Listed(window), ElementsAre("B", "A"));
    ClickHeading(window, 0);
    ClickNode(window, "Desktop");
    window.lsvDesk->Refresh();
    EXPECT_THAT(Listed(window), ElementsAre("A", "B"));
}
