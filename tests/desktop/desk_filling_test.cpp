// SPDX-License-Identifier: GPL-3.0-or-later
// What a Desktop window shows: its tree, its list, its toolbar.
#include <QToolButton>

#include "desk_fixture.h"
#include "desktop/DeskWindows.h"
#include "platform/contracts/prompts.h"
#include "platform/controls/kit/twips.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class DeskFilling : public DeskTest {
 protected:
    // 1 A, 2 A1, 3 A1a, 4 A1a-deep, 5 B
    void AddFourLevels() {
        AddFolder("A");
        AddFolder("A1", 1);
        AddFolder("A1a", 2);
        AddFolder("A1a-deep", 3);
        AddFolder("B");
    }
};

const char* const FoldersOf = "select foldername, folderid from folders where parent = ";

}  // namespace

TEST_F(DeskFilling, LoadReadsFoldersThenTreeThenPackages) {
    AddFourLevels();
    OpenRoot();
    const std::string folders = FoldersOf;
    EXPECT_THAT(database.TakeStatements(),
                ElementsAre(folders + "0", folders + "0", folders + "1", folders + "2", folders + "5",
                            "select * from reportbatch"));
}

TEST_F(DeskFilling, FolderOfLevelFourIsMissingFromTheTreeAndListedUnderItsParent) {
    AddFourLevels();
    frmDesk& window = OpenRoot();
    EXPECT_THAT(Tree(window), ElementsAre("Desktop", ".A", "..A1", "...A1a", ".B"));
    window.tvwFolder->expandAll();
    ClickNode(window, "A1a");
    EXPECT_THAT(Listed(window), ElementsAre("A1a-deep"));
}

TEST_F(DeskFilling, NodesHaveNumberAndNameAsKeyAndTheirPictures) {
    AddFourLevels();
    Nodes& nodes = OpenRoot().tvwFolder->Nodes();
    EXPECT_EQ(nodes("Desktop").Image(), 3);
    for (const char* key : {"1^A", "2^A1", "3^A1a", "5^B"}) {
        EXPECT_EQ(nodes(key).Image(), 4) << key;
    }
    EXPECT_TRUE(nodes(1).Expanded());
}

TEST_F(DeskFilling, ScheduleAtTheRootStaysHiddenUntilDesktopIsClickedInTheTree) {
    AddSchedule("Sales", "Desktop");
    frmDesk& window = OpenRoot();
    EXPECT_THAT(Listed(window), IsEmpty());
    ClickNode(window, "Desktop");
    EXPECT_THAT(Listed(window), ElementsAre("Sales"));
}

TEST_F(DeskFilling, TreeRootListsSchedulesThenTopFoldersThenPackages) {
    AddFolder("Zebra");
    AddFolder("Ant");
    AddFolder("Below", 1);
    AddSchedule("West", "Desktop");
    AddSchedule("east", "Desktop");
    AddPackage("Monthly");
    frmDesk& window = OpenRoot();
    database.TakeStatements();
    ClickNode(window, "Desktop");
    EXPECT_THAT(ListedWithIcons(window), ElementsAre("2 0 pk2=east", "2 0 pk1=West", "1 0 Zebra^1=Zebra",
                                                     "1 0 Ant^2=Ant", "9 9 Pckg:1=Monthly"));
    EXPECT_THAT(database.TakeStatements(),
                ElementsAre("select folderid  from folders where foldername = 'Desktop'",
                            "select * from reportscheduler where parent = 'Desktop' order by reporttitle",
                            FoldersOf + std::string("0"), "select * from reportbatch"));
    EXPECT_EQ(Global::CurrentFolderID, "0");
}

TEST_F(DeskFilling, TreeClickOnAFolderShowsItWithoutPackages) {
    AddFolder("Sales");
    AddFolder("North", 1);
    AddSchedule("Week", "Sales");
    AddPackage("Monthly");
    frmDesk& window = OpenRoot();
    ClickNode(window, "Sales");
    EXPECT_EQ(window.Caption(), "Sales");
    EXPECT_THAT(Listed(window), ElementsAre("Week", "North"));
    EXPECT_EQ(Global::CurrentFolderID, "1");
    EXPECT_EQ(Global::FolderClicks, 1);
}

TEST_F(DeskFilling, TreeIsWalkedWithTheKeyboard) {
    AddFolder("Sales");
    AddSchedule("Week", "Sales");
    frmDesk& window = OpenRoot();
    ClickNode(window, "Desktop");
    Key(*window.tvwFolder, Qt::Key_Down);
    EXPECT_EQ(window.Caption(), "Sales");
    EXPECT_THAT(Listed(window), ElementsAre("Week"));
}

TEST_F(DeskFilling, AfterATreeClickSmallIconsHaveNoPictures) {
    AddFolder("Sales");
    AddSchedule("Week", "Desktop");
    frmDesk& window = OpenRoot();
    EXPECT_EQ(window.lsvDesk->ListItems()(1).SmallIcon, 1);
    ClickNode(window, "Desktop");
    ClickEntry("mnuViewList");
    const QAbstractItemModel* model = window.lsvDesk->CurrentView()->model();
    for (int row = 0; row < 2; ++row) {
        EXPECT_EQ(window.lsvDesk->ListItems()(row + 1).SmallIcon, 0);
        EXPECT_TRUE(model->index(row, 0).data(Qt::DecorationRole).value<QIcon>().isNull());
    }
}

TEST_F(DeskFilling, TreeClickWhoseStatementFailsEndsTheProcessWithItsBox) {
    AddFolder("Sales");
    frmDesk& window = OpenRoot();
    database.Run("drop table ReportScheduler");
    ClickNode(window, "Sales");
    ASSERT_EQ(prompts.boxes.size(), 1U);
    EXPECT_THAT(prompts.boxes[0].text, testing::StartsWith("Run-time error \"-21472"));
    EXPECT_EQ(process.ends, std::vector<int>{1});
}

TEST_F(DeskFilling, PackageThatIsListedAlreadyIsPassedOverInSilence) {
    AddPackage("Monthly");
    frmDesk& window = OpenRoot();
    AddPackage("Yearly");
    window.AddBatches();
    EXPECT_THAT(ListedWithIcons(window), ElementsAre("9 9 Pckg:1=Monthly", "9 9 Pckg:2=Yearly"));
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(DeskFilling, PackagesThatCannotBeReadAreToldInABox) {
    frmDesk& window = OpenRoot();
    database.Run("drop table ReportBatch");
    window.AddBatches();
    ASSERT_EQ(prompts.boxes.size(), 1U);
    EXPECT_THAT(prompts.boxes[0].text, testing::StartsWith("Oxbow Courier encountred an error. "));
    EXPECT_EQ(prompts.boxes[0].flags, vbExclamation);
}

TEST_F(DeskFilling, DeletedDatabaseIsMadeAgainAfterOneBox) {
    AddFolder("Sales");
    std::filesystem::copy(database.Folder() / "PressroomLive.dat", database.Folder() / "Pressroom.dat");
    std::filesystem::remove(database.Folder() / "PressroomLive.dat");
    frmDesk& window = OpenRoot();
    EXPECT_EQ(
        prompts.boxes,
        (std::vector<fakes::Box>{{"The selected data source is invalid or corrupt.\nOxbow Courier will now "
                                  "create a fresh data source.",
                                  vbCritical, "Oxbow Courier"}}));
    EXPECT_EQ(Tree(window).front(), "Desktop");
    EXPECT_FALSE(Hourglass(window));
}

TEST_F(DeskFilling, OtherErrorOfTheLoadIsShownAndTheLoadGoesOn) {
    AddFolder("Sales");
    registry.keys["Software\\Norvale\\Oxbow Courier"]["View"].bytes = "tiles";
    frmDesk& window = OpenRoot();
    EXPECT_EQ(prompts.boxes, (std::vector<fakes::Box>{ErrorBox(13, "Type mismatch")}));
    EXPECT_THAT(Listed(window), ElementsAre("Sales"));
    EXPECT_FALSE(Hourglass(window));
}

TEST_F(DeskFilling, EveryWindowOpensInIconsWhateverViewWasKept) {
    registry.keys["Software\\Norvale\\Oxbow Courier"]["View"].bytes = "3";
    EXPECT_EQ(OpenRoot().lsvDesk->View(), ListView::IconView);
}

TEST_F(DeskFilling, EmptyPlaceIsReadAsTheRoot) {
    AddPackage("Monthly");
    OpenDeskWindow(frame.Children());
    EXPECT_EQ(Global::CurrentFolderID, "0");
    EXPECT_THAT(Listed(Window(1)), ElementsAre("Monthly"));
}

TEST_F(DeskFilling, FirstWindowHasItsSizeAndStandsInTheCorner) {
    const QWidget* first = OpenRoot().parentWidget();
    EXPECT_EQ(first->size(), QSize(Pixels(10260), Pixels(7970)));
    EXPECT_EQ(first->pos(), QPoint(0, 0));
    const QWidget* second = OpenRoot().parentWidget();
    EXPECT_EQ(second->size(), first->size());
    EXPECT_NE(second->pos(), first->pos());
}

TEST_F(DeskFilling, ListTakesTheRoomThatTreeAndToolbarLeave) {
    frmDesk& window = OpenRoot();
    window.parentWidget()->resize(900, 600);
    QApplication::processEvents();
    EXPECT_EQ(window.lsvDesk->width(), window.width() - Pixels(2880));
    EXPECT_EQ(window.lsvDesk->height(), window.height() - Pixels(1110));
    EXPECT_EQ(window.tvwFolder->height(), window.height() - Pixels(1110));
}

TEST_F(DeskFilling, WindowThatIsTooSmallKeepsItsList) {
    frmDesk& window = OpenRoot();
    const QSize before = window.lsvDesk->size();
    window.parentWidget()->setMinimumSize(1, 1);
    window.parentWidget()->resize(80, 60);
    QApplication::processEvents();
    EXPECT_EQ(window.lsvDesk->size(), before);
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(DeskFilling, ToolbarHasItsElevenButtonsWithTheirTips) {
    ToolBarButtons& buttons = OpenRoot().Toolbar1->Buttons();
    Texts shown;
    for (int index = 1; index <= buttons.Count(); ++index) {
        shown.push_back(buttons(index).Key() + "|" + buttons(index).ToolTipText());
    }
    EXPECT_THAT(shown, ElementsAre("New Folder|Create a new folder", "New Report|Schedule a new report",
                                   "New Package|", "|", "Preview|Preview the selected report",
                                   "Delete|Delete the selected item", "|",
                                   "History|View the schedule history", "Design|Edit the report design",
                                   "Options|Configuration options", "Help|View online help"));
}

TEST_F(DeskFilling, EveryPlaceHasItsPictures) {
    AddFolder("Sales");
    AddPackage("Monthly");
    frmDesk& window = OpenRoot();
    const QAbstractItemModel* model = window.lsvDesk->CurrentView()->model();
    for (int row = 0; row < 2; ++row) {
        EXPECT_FALSE(model->index(row, 0).data(Qt::DecorationRole).value<QIcon>().isNull()) << row;
    }
    EXPECT_FALSE(window.tvwFolder->Nodes()(1).icon(0).isNull());
    for (const QToolButton* button : window.Toolbar1->findChildren<QToolButton*>()) {
        EXPECT_TRUE(button->objectName().isEmpty() || button->objectName() == "qt_toolbar_ext_button" ||
                    !button->icon().isNull())
            << button->objectName().toStdString();
    }
}

TEST_F(DeskFilling, NewScheduleAtTheRootRefreshesTheWindowWithoutItsPackages) {
    AddPackage("Monthly");
    AddFolder("Sales");
    frmDesk& window = OpenRoot();
    frmDesk& hidden = frmDesk::DefaultInstance();
    hidden.lsvDesk->ListItems().Clear();
    AddSchedule("Week", "Desktop");
    database.TakeStatements();
    window.RefreshList("Desktop", "0");
    EXPECT_EQ(window.Caption(), "Desktop");
    EXPECT_THAT(ListedWithIcons(window), ElementsAre("2 2 pk1=Week", "1 1 Sales^1=Sales"));
    EXPECT_THAT(database.TakeStatements(),
                ElementsAre("select * from reportscheduler where parent = 'Desktop' order by reporttitle",
                            FoldersOf + std::string("0"), "select * from reportbatch"));
    EXPECT_THAT(Listed(hidden), ElementsAre("Monthly"));
    EXPECT_FALSE(hidden.isVisible());
    EXPECT_EQ(Global::DeskWindows.size(), 2U);
}

TEST_F(DeskFilling, RefreshOfAFolderLeavesTheHiddenWindowAlone) {
    AddFolder("Sales");
    AddFolder("North", 1);
    AddPackage("Monthly");
    frmDesk& hidden = frmDesk::DefaultInstance();
    hidden.lsvDesk->ListItems().Clear();
    frmDesk& window = OpenRoot();
    AddSchedule("Week", "Sales");
    window.RefreshList("Sales", "1");
    EXPECT_EQ(window.Caption(), "Sales");
    EXPECT_THAT(Listed(window), ElementsAre("Week", "North"));
    EXPECT_THAT(Listed(hidden), IsEmpty());
}

TEST_F(DeskFilling, NobodyIsToldOfChangesByOthers) {
    frmDesk& window = OpenRoot();
    AddFolder("Sales");
    QTest::qWait(20);
    EXPECT_THAT(Listed(window), IsEmpty());
}
