// SPDX-License-Identifier: GPL-3.0-or-later
// Mouse and keys in a list.
#include "platform/controls/items/list_view.h"

#include <gmock/gmock.h>

#include <QHelpEvent>
#include <QToolTip>

#include "shown_controls.h"

using testing::Contains;
using testing::ElementsAre;
using testing::Not;

using ListOnAWindow = ShownList;

TEST_F(ListOnAWindow, SelectsTheItemThatIsClickedAndTells) {
    for (const int view :
         {ListView::IconView, ListView::SmallIconView, ListView::ListMode, ListView::ReportView}) {
        list.View(view);
        QApplication::processEvents();
        told.clear();
        ClickItem(2);
        EXPECT_EQ(SelectedText(), "Beta") << view;
        EXPECT_THAT(told, ElementsAre("Click", "MouseUp 1")) << view;
        list.SelectedItem().Selected(false);
    }
}

TEST_F(ListOnAWindow, LosesItsSelectionByAClickBesideAllItemsWhichIsNoClick) {
    ClickItem(2);
    told.clear();
    QTest::mouseClick(Viewport(), Qt::LeftButton, Qt::NoModifier, BesideAll());
    EXPECT_EQ(SelectedText(), "(none)");
    EXPECT_THAT(told, ElementsAre("MouseUp 1"));
    ClickItem(1);
    QTest::mouseClick(Viewport(), Qt::RightButton, Qt::NoModifier, BesideAll());
    EXPECT_EQ(SelectedText(), "(none)");
}

TEST_F(ListOnAWindow, SelectsWithTheRightButtonBeforeItTells) {
    std::string seen;
    QObject::connect(&list, &ListView::MouseUp, [&] { seen = SelectedText(); });
    for (const int view : {ListView::IconView, ListView::ReportView}) {
        list.View(view);
        QApplication::processEvents();
        told.clear();
        ClickItem(3, Qt::RightButton);
        EXPECT_EQ(seen, "Gamma");
        EXPECT_THAT(told, ElementsAre("MouseUp 2"));
        EXPECT_EQ(released, Viewport()->mapTo(&list, PlaceOfItem(3)));
        list.SelectedItem().Selected(false);
    }
}

TEST_F(ListOnAWindow, KeepsItsSelectionWhenCtrlIsHeldAndWhenTheMouseIsDragged) {
    ClickItem(2);
    QTest::mouseClick(Viewport(), Qt::LeftButton, Qt::ControlModifier, PlaceOfItem(2));
    EXPECT_EQ(SelectedText(), "Beta");
    QTest::mousePress(Viewport(), Qt::LeftButton, Qt::NoModifier, PlaceOfItem(1));
    QTest::mouseMove(Viewport(), PlaceOfItem(3));
    QTest::mouseRelease(Viewport(), Qt::LeftButton, Qt::NoModifier, PlaceOfItem(3));
    EXPECT_EQ(SelectedText(), "Alpha");
}

TEST_F(ListOnAWindow, IsNotClickedWhereTheButtonIsReleasedElsewhere) {
    QTest::mousePress(Viewport(), Qt::LeftButton, Qt::NoModifier, PlaceOfItem(1));
    QTest::mouseRelease(Viewport(), Qt::LeftButton, Qt::NoModifier, PlaceOfItem(2));
    EXPECT_THAT(told, Not(Contains("Click")));
}

TEST_F(ListOnAWindow, TellsADoubleClickAfterTheFirstClick) {
    ClickItem(1);
    QTest::mouseDClick(Viewport(), Qt::LeftButton, Qt::NoModifier, PlaceOfItem(1));
    QTest::mouseRelease(Viewport(), Qt::LeftButton, Qt::NoModifier, PlaceOfItem(1));
    EXPECT_THAT(told, ElementsAre("Click", "MouseUp 1", "DblClick", "MouseUp 1"));
    told.clear();
    QTest::mouseDClick(Viewport(), Qt::LeftButton, Qt::NoModifier, BesideAll());
    EXPECT_THAT(told, Not(Contains("DblClick")));
}

TEST_F(ListOnAWindow, SurvivesAHandlerThatClearsIt) {
    QObject::connect(&list, &ListView::DblClick, [this] { list.ListItems().Clear(); });
    ClickItem(1);
    QTest::mouseDClick(Viewport(), Qt::LeftButton, Qt::NoModifier, PlaceOfItem(1));
    EXPECT_EQ(list.ListItems().Count(), 0);
    QObject::connect(&list, &ListView::Click, [this] { list.ListItems().Clear(); });
    list.ListItems().Add("a", "Alpha");
    QApplication::processEvents();
    ClickItem(1);
    EXPECT_EQ(list.ListItems().Count(), 0);
}

TEST_F(ListOnAWindow, EnterIsADoubleClickOnTheSelectedItem) {
    Key(Qt::Key_Return);
    EXPECT_THAT(told, ElementsAre("KeyDown 13"));
    list.ListItems()(1).Selected(true);
    told.clear();
    Key(Qt::Key_Enter);
    EXPECT_THAT(told, ElementsAre("KeyDown 13", "DblClick"));
}

TEST_F(ListOnAWindow, KeysForTheContextMenuAreTheRightButtonAtTheSelectedItem) {
    Key(Qt::Key_Menu);
    EXPECT_THAT(told, ElementsAre("KeyDown 93"));
    list.ListItems()(2).Selected(true);
    told.clear();
    Key(Qt::Key_Menu);
    Key(Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_THAT(told, ElementsAre("KeyDown 93", "MouseUp 2", "KeyDown 16", "KeyDown 121", "MouseUp 2"));
    EXPECT_EQ(released, Viewport()->mapTo(&list, PlaceOfItem(2)));
}

TEST_F(ListOnAWindow, TellsEveryKeyBeforeItActsOnIt) {
    std::string seen;
    list.ListItems()(1).Selected(true);
    QObject::connect(&list, &ListView::KeyDown, [&] { seen = SelectedText(); });
    Key(Qt::Key_Right);
    EXPECT_EQ(seen, "Alpha");
    EXPECT_EQ(SelectedText(), "Beta");
    told.clear();
    for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Delete, Qt::Key_F5, Qt::Key_X, Qt::Key_7}) {
        Key(key);
    }
    EXPECT_THAT(told, ElementsAre("KeyDown 27", "KeyDown 46", "KeyDown 116", "KeyDown 88", "KeyDown 55"));
}

TEST_F(ListOnAWindow, MovingWithTheKeyboardIsAClick) {
    list.ListItems()(1).Selected(true);
    EXPECT_THAT(told, ElementsAre());
    Key(Qt::Key_End);
    EXPECT_EQ(SelectedText(), "Gamma");
    EXPECT_THAT(told, ElementsAre("KeyDown 35", "Click"));
    Key(Qt::Key_End);
    EXPECT_THAT(told, ElementsAre("KeyDown 35", "Click", "KeyDown 35"));
}

TEST_F(ListOnAWindow, JumpsToTheItemThatIsTyped) {
    for (const int view : {ListView::IconView, ListView::ReportView}) {
        list.View(view);
        list.ListItems()(1).Selected(true);
        QTest::keyClicks(list.CurrentView(), "gam");
        EXPECT_EQ(SelectedText(), "Gamma") << view;
    }
}

TEST_F(ListOnAWindow, HasNothingSelectedWhenItGetsTheFocus) {
    list.CurrentView()->clearFocus();
    list.setFocus();
    EXPECT_TRUE(list.CurrentView()->hasFocus());
    EXPECT_EQ(SelectedText(), "(none)");
}

TEST_F(ListOnAWindow, KeepsSelectionAndFocusWhenItsViewChanges) {
    ClickItem(2);
    for (const int view :
         {ListView::ReportView, ListView::SmallIconView, ListView::ListMode, ListView::IconView}) {
        list.View(view);
        EXPECT_EQ(list.View(), view);
        EXPECT_EQ(SelectedText(), "Beta");
        EXPECT_TRUE(list.CurrentView()->hasFocus());
    }
}

TEST_F(ListOnAWindow, KeepsTheFocusNearAnItemThatIsRemoved) {
    ClickItem(2);
    list.ListItems().Remove("keyBeta");
    EXPECT_EQ(SelectedText(), "(none)");
    Key(Qt::Key_Space);
    EXPECT_EQ(SelectedText(), "Gamma");
}

// Commands act on the selected item: one that only has the focus must not look selected.
TEST_F(ListOnAWindow, ItemThatIsNotSelectedDoesNotLookSelected) {
    const auto picture = [this] {
        const auto* view = list.CurrentView();
        const QRect item = view->visualRect(view->indexAt(PlaceOfItem(2)));
        return Viewport()->grab(item).toImage();
    };
    const auto changed = [](const QImage& from, const QImage& to) {
        int pixels = 0;
        for (int y = 0; y < from.height(); ++y) {
            for (int x = 0; x < from.width(); ++x) {
                pixels += from.pixel(x, y) != to.pixel(x, y) ? 1 : 0;
            }
        }
        return pixels;
    };
    for (const int view : {ListView::IconView, ListView::SmallIconView, ListView::ReportView}) {
        list.View(view);
        QApplication::processEvents();
        ClickItem(1);
        const QImage plain = picture();
        ClickItem(2);
        const QImage selected = picture();
        list.SelectedItem().Selected(false);
        ASSERT_EQ(list.CurrentView()->currentIndex().row(), 1);
        const QImage focused = picture();
        EXPECT_GT(changed(plain, selected), 300) << view;
        EXPECT_LT(changed(plain, focused), changed(plain, selected) / 3) << view;
    }
}

TEST_F(ListOnAWindow, ShowsTheHourglassOnDemand) {
    list.MousePointer(11);
    EXPECT_EQ(Viewport()->cursor().shape(), Qt::WaitCursor);
    list.MousePointer(0);
    EXPECT_EQ(Viewport()->cursor().shape(), Qt::ArrowCursor);
}

TEST_F(ListOnAWindow, IsNamedForThoseWhoDoNotSeeIt) {
    list.hide();
    list.setAccessibleName("Items");
    list.show();
    list.View(ListView::ReportView);
    EXPECT_EQ(list.CurrentView()->accessibleName(), "Items");
    list.View(ListView::IconView);
    EXPECT_EQ(list.CurrentView()->accessibleName(), "Items");
}

TEST_F(ListOnAWindow, TakesManyItemsWhileItIsBeingFilled) {
    {
        const ListView::Filling filling(list);
        EXPECT_FALSE(list.updatesEnabled());
        for (int i = 0; i < 500; ++i) {
            list.ListItems().Add("n" + std::to_string(i), "Item " + std::to_string(i));
        }
    }
    EXPECT_TRUE(list.updatesEnabled());
    EXPECT_EQ(list.ListItems().Count(), 503);
    list.ListItems()(503).Selected(true);
    QApplication::processEvents();
    EXPECT_TRUE(Viewport()->rect().contains(PlaceOfItem(503)));
}

TEST_F(ListOnAWindow, ArrangesIconsAlongTheTopOrTheLeftEdge) {
    QApplication::processEvents();
    EXPECT_EQ(PlaceOfItem(1).y(), PlaceOfItem(2).y());
    EXPECT_LT(PlaceOfItem(1).x(), PlaceOfItem(2).x());
    list.Arrange(ListView::ArrangeLeft);
    QApplication::processEvents();
    EXPECT_EQ(PlaceOfItem(1).x(), PlaceOfItem(2).x());
    EXPECT_LT(PlaceOfItem(1).y(), PlaceOfItem(2).y());
}

TEST_F(ListOnAWindow, ShowsATextThatIsCutShortAsATip) {
    list.ListItems()(2).Text("Quarterly revenue by region and product line, held against the year before");
    for (const int view : {ListView::IconView, ListView::SmallIconView}) {
        list.View(view);
        QApplication::processEvents();
        const auto tipAt = [this](int item) {
            QHelpEvent asked(QEvent::ToolTip, PlaceOfItem(item), Viewport()->mapToGlobal(PlaceOfItem(item)));
            QApplication::sendEvent(Viewport(), &asked);
            return QToolTip::text();
        };
        EXPECT_EQ(tipAt(2),
                  "<qt>Quarterly revenue by region and product line, held against the year before</qt>");
        QToolTip::hideText();
        QTRY_VERIFY(QToolTip::text().isEmpty());
        EXPECT_EQ(tipAt(1), "");
    }
}

TEST_F(ListOnAWindow, ShowsMarksAndTagsOfATipAsTheyStandAndNoMoreThanHelps) {
    const auto tipOf = [this](const std::string& text) {
        list.ListItems()(1).Text(text);
        QApplication::processEvents();
        QHelpEvent asked(QEvent::ToolTip, PlaceOfItem(1), Viewport()->mapToGlobal(PlaceOfItem(1)));
        QApplication::sendEvent(Viewport(), &asked);
        return QToolTip::text();
    };
    list.View(ListView::SmallIconView);
    EXPECT_EQ(
        tipOf("Profit & loss of the \"North\", <b>all</b> of it, month by month"),
        "<qt>Profit &amp; loss of the &quot;North&quot;, &lt;b&gt;all&lt;/b&gt; of it, month by month</qt>");
    EXPECT_EQ(tipOf(std::string(10'000, 'x')), "<qt>" + QString(300, 'x') + QChar(0x2026) + "</qt>");
}
