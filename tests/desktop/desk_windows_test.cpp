// SPDX-License-Identifier: GPL-3.0-or-later
// The Desktop windows, their slots and what Esc does in them.
#include <algorithm>
#include <cstdlib>

#include "desk_fixture.h"
#include "execution/Preview.h"

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

namespace {

std::vector<QRect> Places(const std::vector<frmDesk*>& windows) {
    std::vector<QRect> places;
    for (frmDesk* window : windows) {
        places.push_back(window->parentWidget()->geometry());
    }
    return places;
}

// No title bar covers another: the corners are at least a title bar apart.
void ExpectEveryTitleSeen(const std::vector<QRect>& places) {
    for (std::size_t i = 0; i < places.size(); ++i) {
        for (std::size_t k = 0; k < i; ++k) {
            const QPoint apart = places[i].topLeft() - places[k].topLeft();
            EXPECT_GE(std::max(std::abs(apart.x()), std::abs(apart.y())), 15) << i << " on " << k;
        }
    }
}

}  // namespace

TEST_F(DeskWindows, EveryWindowIsSeenWholeWithTheTitlesOfThoseBefore) {
    AddFolder("Sales");
    frmDesk& root = OpenRoot();
    DoubleClickItem(root, "Sales");
    OpenRoot();
    OpenRoot();
    const std::vector<QRect> places = Places(OnScreen());
    ExpectEveryTitleSeen(places);
    EXPECT_EQ(places[0].topLeft(), QPoint(0, 0));
    for (const QRect& place : places) {
        EXPECT_TRUE(frame.Children().viewport()->rect().contains(place));
        EXPECT_EQ(place.size(), places[0].size());
    }
}

TEST_F(DeskWindows, NewWindowLiesOnNoOtherWhicheverWereClosed) {
    for (int i = 0; i < 4; ++i) {
        OpenRoot();
    }
    Close(Window(2));
    OpenRoot();
    OpenRoot();
    ExpectEveryTitleSeen(Places(OnScreen()));
}

TEST_F(DeskWindows, NewWindowLiesOnNoOtherInAFrameThatIsTooSmallAndWhenThereAreMany) {
    for (const QSize size : {QSize(500, 300), QSize(760, 700)}) {
        frame.resize(size);
        QApplication::processEvents();
        for (int i = 0; i < 30; ++i) {
            OpenRoot();
        }
        ExpectEveryTitleSeen(Places(OnScreen()));
        frame.Children().closeAllSubWindows();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

TEST_F(DeskWindows, CascadeKeepsTheSizesAndShowsEveryTitleTheTopmostWhole) {
    for (int i = 0; i < 3; ++i) {
        OpenRoot();
    }
    const QSize size = Window(1).parentWidget()->size();
    EXPECT_GT(size.width(), 600);
    for (frmDesk* window : OnScreen()) {
        window->parentWidget()->move(40, 40);
    }
    Window(3).parentWidget()->showMaximized();
    Window(1).Form_Activate();
    frame.Children().setActiveSubWindow(qobject_cast<QMdiSubWindow*>(Window(1).parentWidget()));
    ClickEntry("mnuCasc");
    QApplication::processEvents();
    const std::vector<QRect> places = Places(OnScreen());
    ExpectEveryTitleSeen(places);
    for (const QRect& place : places) {
        EXPECT_EQ(place.size(), size);
        EXPECT_TRUE(frame.Children().viewport()->rect().contains(place));
    }
    // Window 1 is still in front of the others, and below them on the screen.
    EXPECT_EQ(Global::DeskIndex, 1);
    EXPECT_GT(places[0].top(), places[1].top());
    EXPECT_GT(places[0].top(), places[2].top());
}

TEST_F(DeskWindows, CascadeGivesEveryWindowItsOwnSizeAgain) {
    OpenRoot();
    OpenRoot();
    ClickEntry("mnuView");
    const auto sizes = [this] {
        std::vector<QSize> found;
        for (const QMdiSubWindow* window : frame.Children().subWindowList()) {
            found.push_back(window->size());
        }
        return found;
    };
    const std::vector<QSize> own = sizes();
    ASSERT_NE(own[0], own[2]);
    ClickEntry("mnuTile");
    QApplication::processEvents();
    ASSERT_NE(sizes()[0], own[0]);
    ClickEntry("mnuCasc");
    QApplication::processEvents();
    EXPECT_EQ(sizes(), own);
    Window(1).parentWidget()->resize(3000, 2000);
    ClickEntry("mnuCasc");
    EXPECT_EQ(sizes(), own);
}

TEST_F(DeskWindows, CascadeFitsAWindowThatIsLargerThanTheFrameIntoIt) {
    OpenRoot();
    frame.resize(500, 400);
    QApplication::processEvents();
    ClickEntry("mnuCasc");
    EXPECT_EQ(Window(1).parentWidget()->geometry(), frame.Children().viewport()->rect());
}

TEST_F(DeskWindows, KeysThatCloseAWindowCloseEveryKind) {
    const auto close = [this](Qt::Key key) {
        QApplication::processEvents();
        const auto count = frame.Children().subWindowList().size();
        QTest::keyClick(QApplication::focusWidget(), key, Qt::ControlModifier);
        QApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return frame.Children().subWindowList().size() == count - 1;
    };
    for (const Qt::Key key : {Qt::Key_W, Qt::Key_F4}) {
        OpenRoot();
        EXPECT_TRUE(close(key)) << "Desktop";
        ClickEntry("mnuView");
        EXPECT_TRUE(close(key)) << "history";
        engine.reports["sales"] = {};
        Global::OpenReport("sales");
        Global::ShowPreview();
        EXPECT_TRUE(close(key)) << "preview";
    }
}

TEST_F(DeskWindows, KeysThatCloseAWindowCloseThePreviewWhereverItsFocusIs) {
    engine.reports["sales"].pages.map = {{"Europe", 0, 1, 0}};
    OpenRoot();
    Global::OpenReport("sales");
    for (const Qt::Key key : {Qt::Key_W, Qt::Key_F4}) {
        std::size_t places = 0;
        for (std::size_t place = 0; place == 0 || place < places; ++place) {
            Global::ShowPreview();
            QApplication::processEvents();
            const QMdiSubWindow& preview = *frame.Children().activeSubWindow();
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_F,
                            Qt::ControlModifier);  // the words to find
            std::vector<QWidget*> focusable;
            for (QWidget* widget : preview.findChildren<QWidget*>()) {
                if (widget->isVisible() && widget->isEnabled() &&
                    (widget->focusPolicy() & Qt::TabFocus) != 0) {
                    focusable.push_back(widget);
                }
            }
            places = focusable.size();
            ASSERT_GT(places, 5U);
            QWidget& focused = *focusable[place];
            const std::string name = focused.metaObject()->className() + focused.objectName().toStdString();
            focused.setFocus();
            QTest::keyClick(QApplication::focusWidget(), key, Qt::ControlModifier);
            QApplication::processEvents();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            EXPECT_EQ(frame.Children().subWindowList().size(), 1) << name;
        }
    }
}

TEST_F(DeskWindows, TiledWindowsShareTheFrameAndCascadeLeavesIcons) {
    OpenRoot();
    OpenRoot();
    ClickEntry("mnuTile");
    QApplication::processEvents();
    for (const QRect& place : Places(OnScreen())) {
        EXPECT_GT(place.width() * place.height(), frame.Children().viewport()->width() * 200);
    }
    Window(2).parentWidget()->showMinimized();
    ClickEntry("mnuCasc");
    EXPECT_TRUE(Window(2).parentWidget()->isMinimized());
}

TEST_F(DeskWindows, ClosingAWindowBringsTheOneThatWasUsedBeforeItToTheFront) {
    for (int i = 0; i < 3; ++i) {
        OpenRoot();
    }
    ClickNode(Window(2), "Desktop");
    auto* other = new QWidget;
    frame.AddChild(*other);
    other->show();
    frame.Children().setActiveSubWindow(qobject_cast<QMdiSubWindow*>(other->parentWidget()));
    other->parentWidget()->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QApplication::processEvents();
    EXPECT_EQ(Global::DeskIndex, 2);
    EXPECT_EQ(frame.Children().activeSubWindow(), Window(2).parentWidget());
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
