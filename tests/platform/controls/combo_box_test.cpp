// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/combo_box.h"

#include <gmock/gmock.h>

#include <QAbstractItemView>
#include <QLineEdit>

#include "shown_form.h"
#include "support/raises.h"

using testing::ElementsAre;
using testing::IsEmpty;

class Combo : public testing::Test {
 protected:
    void SetUp() override {
        QApplication::setDoubleClickInterval(0);
        box.setEditable(true);
        form.Show(&box, &other);
        QObject::connect(&box, &ComboBox::DropDown, [this] { told.push_back("DropDown"); });
        QObject::connect(&box, &ComboBox::Click, [this] { told.push_back("Click " + box.Text()); });
        QObject::connect(&box, &ComboBox::LostFocus, [this] { told.push_back("LostFocus"); });
        for (const char* word : {"Daily", "Weekly", "Monthly"}) {
            box.AddItem(word);
        }
        box.setFocus();
    }
    void PressArrow() {
        QTest::mouseClick(&box, Qt::LeftButton, {}, QPoint(box.width() - 8, box.height() / 2));
    }
    // A list just opened by the mouse ignores clicks for the time of a double click.
    void ChooseInList(int index) {
        QTest::qWait(1);
        const QAbstractItemView* view = box.view();
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {},
                          view->visualRect(view->model()->index(index, 0)).center());
    }

    ShownForm form;
    ComboBox box;
    QLineEdit other;
    std::vector<std::string> told;
};

TEST_F(Combo, EntriesThatAreAddedLeaveTheTextAlone) {
    EXPECT_EQ(box.Text(), "");
    EXPECT_EQ(box.ListIndex(), -1);
    box.Clear();
    box.Text("typed");
    box.AddItem("Daily");
    EXPECT_EQ(box.Text(), "typed");
    EXPECT_EQ(box.ListCount(), 1);
    EXPECT_EQ(box.List(0), "Daily");
    EXPECT_EQ(box.List(1), "");
    EXPECT_EQ(box.List(-1), "");
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(Combo, EntriesInAListOnlyAreNotChosenByThemselvesEither) {
    box.setEditable(false);
    box.Clear();
    box.AddItem("Daily");
    EXPECT_EQ(box.Text(), "");
    EXPECT_EQ(box.ListIndex(), -1);
}

TEST_F(Combo, TypedTextStaysAsItWasTyped) {
    Type("dai");
    EXPECT_EQ(box.Text(), "dai");
    Type("ly");
    Press(Qt::Key_Return);
    Press(Qt::Key_Tab);
    EXPECT_EQ(box.Text(), "daily");
    EXPECT_EQ(box.ListIndex(), -1);
    EXPECT_EQ(box.ListCount(), 3);
    EXPECT_THAT(told, ElementsAre("LostFocus"));
}

TEST_F(Combo, TypingAnEntryIsNoClick) {
    Type("Weekly");
    Press(Qt::Key_Tab);
    EXPECT_EQ(box.Text(), "Weekly");
    EXPECT_THAT(told, ElementsAre("LostFocus"));
}

TEST_F(Combo, EntryChosenByTheMouseIsAClickAndTheListBorrowsTheFocus) {
    PressArrow();
    ChooseInList(1);
    EXPECT_THAT(told, ElementsAre("DropDown", "Click Weekly"));
    EXPECT_EQ(box.ListIndex(), 1);
}

TEST_F(Combo, SameEntryChosenAgainIsAClickAgain) {
    box.ListIndex(1);
    Press(Qt::Key_Backspace);
    EXPECT_EQ(box.ListIndex(), -1);
    told.clear();
    PressArrow();
    ChooseInList(1);
    EXPECT_THAT(told, ElementsAre("DropDown", "Click Weekly"));
    EXPECT_EQ(box.Text(), "Weekly");
}

TEST_F(Combo, KeysOpenTheListAndChoose) {
    Press(Qt::Key_F4);
    ASSERT_TRUE(box.view()->isVisible());
    QTest::keyClick(box.view(), Qt::Key_Down);
    QTest::keyClick(box.view(), Qt::Key_Return);
    ASSERT_EQ(told.size(), 2U);
    EXPECT_EQ(told[0], "DropDown");
    EXPECT_EQ(told[1], "Click " + box.Text());
    told.clear();
    Press(Qt::Key_Down, Qt::AltModifier);
    EXPECT_THAT(told, ElementsAre("DropDown"));
    QTest::keyClick(box.view(), Qt::Key_Escape);
    EXPECT_THAT(told, ElementsAre("DropDown"));
}

TEST_F(Combo, ArrowKeysChooseWithoutOpening) {
    Press(Qt::Key_Down);
    Press(Qt::Key_Down);
    EXPECT_THAT(told, ElementsAre("Click Daily", "Click Weekly"));
}

TEST_F(Combo, EscapeInTheListChoosesNothing) {
    box.Text("mine");
    PressArrow();
    QTest::keyClick(box.view(), Qt::Key_Down);
    QTest::keyClick(box.view(), Qt::Key_Escape);
    EXPECT_EQ(box.Text(), "mine");
    EXPECT_THAT(told, ElementsAre("DropDown"));
}

TEST_F(Combo, EmptyListIsFilledWhenItOpens) {
    box.Clear();
    QObject::connect(&box, &ComboBox::DropDown, [this] { box.AddItem("Sales"); });
    PressArrow();
    ASSERT_TRUE(box.view()->isVisible());
    EXPECT_EQ(box.Text(), "");
    ChooseInList(0);
    EXPECT_THAT(told, ElementsAre("DropDown", "Click Sales"));
}

TEST_F(Combo, IndexSetByCodeIsAClickWhenItIsAnother) {
    box.ListIndex(2);
    box.ListIndex(2);
    box.ListIndex(-1);
    EXPECT_THAT(told, ElementsAre("Click Monthly", "Click "));
    EXPECT_EQ(NumberRaisedBy([this] { box.ListIndex(3); }), 380);
    EXPECT_EQ(NumberRaisedBy([this] { box.ListIndex(-2); }), 380);
}

TEST_F(Combo, TextSetByCodeIsNoClick) {
    box.Text("Quartely");
    EXPECT_EQ(box.Text(), "Quartely");
    box.Text("Monthly");
    EXPECT_EQ(box.Text(), "Monthly");
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(Combo, ListOnlyTakesItsOwnTextsOnly) {
    box.setEditable(false);
    box.Text("Weekly");
    EXPECT_EQ(box.ListIndex(), 1);
    EXPECT_EQ(NumberRaisedBy([this] { box.Text("weekly"); }), 383);
    EXPECT_EQ(box.Text(), "Weekly");
    box.Text("");
    EXPECT_EQ(box.ListIndex(), -1);
}

TEST_F(Combo, WheelTurnsItOnlyWhileItHasTheFocus) {
    other.setFocus();
    told.clear();
    const QPointF place = box.rect().center();
    QWheelEvent turn(place, box.mapToGlobal(place), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                     Qt::NoScrollPhase, false);
    QApplication::sendEvent(&box, &turn);
    EXPECT_THAT(told, IsEmpty());
    box.setFocus();
    QApplication::sendEvent(&box, &turn);
    EXPECT_THAT(told, ElementsAre("Click Daily"));
}

TEST_F(Combo, ClearTakesTheTextAsWell) {
    box.ListIndex(0);
    box.Clear();
    EXPECT_EQ(box.Text(), "");
    EXPECT_EQ(box.ListCount(), 0);
}
