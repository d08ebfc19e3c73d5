// The Desktop windows, their slots and what Esc does in them.
#include "desk_test.h"

using testing::ElementsAre;
using testing::IsEmpty;

using DeskWindows = DeskTest;

TEST_F(DeskWindows, ClosingTheMiddleOfThreeGivesTheNextWindowTheTagOfTheThird) {
    for (int i = 0; i < 3; ++i) {
        OpenRoot();
    }
    frmDesk& third = Window(3);
    Close(Window(2));
    EXPECT_EQ(Global::DeskCount, 2);
    EXPECT_EQ(Global::DeskWindows[2], nullptr);
    frmDesk& newest = OpenRoot();
    EXPECT_EQ(newest.Tag, "3");
    EXPECT_EQ(third.Tag, "3");
    EXPECT_EQ(&Window(3), &newest);
    EXPECT_EQ(Global::DeskWindows.size(), 4U);
    EXPECT_EQ(OnScreen().size(), 3U);
}

TEST_F(DeskWindows, WindowOutsideTheSlotsLeadsCommandsToTheOneThatTookItsSlot) {
    for (int i = 0; i < 3; ++i) {
        OpenRoot();
    }
    frmDesk& third = Window(3);
    Close(Window(2));
    frmDesk& newest = OpenRoot();
    frame.Children().setActiveSubWindow(qobject_cast<QMdiSubWindow*>(third.parentWidget()));
    EXPECT_EQ(Global::DeskIndex, 3);
    ClickEntry("mnuDeskNew");
    EXPECT_THAT(Listed(third), IsEmpty());
    EXPECT_THAT(Listed(newest), ElementsAre("New Folder"));
}

TEST_F(DeskWindows, ClosingAWindowOutsideTheSlotsEmptiesTheSlotOfTheOther) {
    for (int i = 0; i < 3; ++i) {
        OpenRoot();
    }
    frmDesk& third = Window(3);
    Close(Window(2));
    OpenRoot();
    Close(third);
    EXPECT_EQ(Global::DeskWindows[3], nullptr);
    EXPECT_EQ(Global::DeskCount, 2);
}

TEST_F(DeskWindows, ActiveWindowIsTheOneThatCommandsActOn) {
    frmDesk& first = OpenRoot();
    OpenRoot();
    EXPECT_EQ(Global::DeskIndex, 2);
    ClickNode(first, "Desktop");
    EXPECT_EQ(Global::DeskIndex, 1);
    Close(first);
    EXPECT_EQ(Global::DeskIndex, 2);
}

TEST_F(DeskWindows, CommandWithoutAnyWindowEndsTheProcessWithItsBox) {
    Close(OpenRoot());
    QMetaObject::invokeMethod(frame.Entry("mnuIcons"), "trigger", Qt::QueuedConnection);
    QApplication::processEvents();
    EXPECT_EQ(prompts.boxes,
              (std::vector<fakes::Box>{EndBox(91, "Object variable or With block variable not set")}));
    EXPECT_EQ(process.ends, std::vector<int>{1});
}

TEST_F(DeskWindows, EscRemovesItemsNamedNewFolderARealOneTooWhoseRowStays) {
    AddFolder("New Folder");
    AddFolder("Sales");
    frmDesk& window = OpenRoot();
    ClickEntry("mnuDeskNew");
    ASSERT_THAT(Listed(window), ElementsAre("New Folder", "Sales", "New Folder"));
    Key(*window.lsvDesk->CurrentView(), Qt::Key_Escape);
    EXPECT_THAT(Listed(window), ElementsAre("Sales"));
    EXPECT_THAT(database.Rows("select FolderName from Folders"), ElementsAre("New Folder", "Sales"));
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(DeskWindows, EscMeansTheSameInTheTreeAndOnTheWindow) {
    frmDesk& window = OpenRoot();
    for (QWidget* place : {static_cast<QWidget*>(window.tvwFolder), static_cast<QWidget*>(&window)}) {
        ClickEntry("mnuDeskNew");
        Key(*place, Qt::Key_Return);
        EXPECT_THAT(Listed(window), ElementsAre("New Folder"));
        Key(*place, Qt::Key_Escape);
        EXPECT_THAT(Listed(window), IsEmpty());
    }
}

TEST_F(DeskWindows, EscLeavesOtherSpellingsAlone) {
    AddFolder("new folder");
    AddFolder("New Folder 2");
    frmDesk& window = OpenRoot();
    Key(*window.lsvDesk->CurrentView(), Qt::Key_Escape);
    EXPECT_THAT(Listed(window), ElementsAre("new folder", "New Folder 2"));
}

TEST_F(DeskWindows, EscWhileATextIsEditedGivesTheEditUpAndRemovesNothing) {
    frmDesk& window = OpenRoot();
    ClickEntry("mnuDeskNew");
    ClickItem(window, "New Folder");
    ClickEntry("mnuRename");
    QLineEdit* editor = Editor(window);
    ASSERT_NE(editor, nullptr);
    Key(*editor, Qt::Key_Escape);
    EXPECT_EQ(Editor(window), nullptr);
    EXPECT_THAT(Listed(window), ElementsAre("New Folder"));
}

TEST_F(DeskWindows, EveryWindowIsSeenWholeWithTheTitlesOfThoseBefore) {
    AddFolder("Sales");
    frmDesk& root = OpenRoot();
    DoubleClickItem(root, "Sales");
    OpenRoot();
    OpenRoot();
    QPoint before(-1, -1);
    for (frmDesk* window : OnScreen()) {
        const QRect place = window->parentWidget()->geometry();
        EXPECT_TRUE(frame.Children().viewport()->rect().contains(place)) << window->Tag;
        EXPECT_NE(place.topLeft(), before) << window->Tag;
        before = place.topLeft();
    }
}

TEST_F(DeskWindows, KeysWalkThroughTheListOfAWindowThatWasOpened) {
    AddFolder("Sales");
    AddFolder("North", 1);
    frmDesk& root = OpenRoot();
    EXPECT_EQ(QApplication::focusWidget(), root.lsvDesk->CurrentView());
    DoubleClickItem(root, "Sales");
    EXPECT_EQ(QApplication::focusWidget(), Window(2).lsvDesk->CurrentView());
    Key(*QApplication::focusWidget(), Qt::Key_N);
    EXPECT_EQ(Window(2).SelectedText(), "North");
}
