// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/tab_strip.h"

#include <gmock/gmock.h>

#include <QLineEdit>

#include "platform/controls/multi_line_text_box.h"
#include "shown_form.h"
#include "support/raises.h"

using testing::ElementsAre;
using testing::IsEmpty;

class Tabs : public testing::Test {
 protected:
    void SetUp() override {
        QObject::connect(&tabs, &TabStrip::Click, [this] { told.push_back(tabs.SelectedItem()); });
        for (const char* caption : {"General", "Schedule", "Email"}) {
            tabs.Add(caption);
        }
        form.Show(&tabs, &box, &lines);
    }

    ShownForm form;
    TabStrip tabs;
    QLineEdit box;
    MultiLineTextBox lines;
    std::vector<int> told;
};

TEST_F(Tabs, CountFromOneAndTheFirstIsSelectedWithoutAClick) {
    EXPECT_EQ(tabs.Count(), 3);
    EXPECT_EQ(tabs.SelectedItem(), 1);
    EXPECT_EQ(TabStrip().SelectedItem(), 0);
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(Tabs, AreSelectedByTheMouseAndByCode) {
    QTest::mouseClick(&tabs, Qt::LeftButton, {}, tabs.tabRect(2).center());
    QTest::mouseClick(&tabs, Qt::LeftButton, {}, tabs.tabRect(2).center());
    tabs.SelectedItem(2);
    EXPECT_THAT(told, ElementsAre(3, 2));
    EXPECT_EQ(NumberRaisedBy([this] { tabs.SelectedItem(0); }), 35600);
    EXPECT_EQ(NumberRaisedBy([this] { tabs.SelectedItem(4); }), 35600);
}

TEST_F(Tabs, ArrowKeysSelectWhileTheyHaveTheFocus) {
    tabs.setFocus();
    Press(Qt::Key_Right);
    Press(Qt::Key_Right);
    Press(Qt::Key_Left);
    EXPECT_THAT(told, ElementsAre(2, 3, 2));
}

TEST_F(Tabs, ControlTabTurnsThemFromAnywhereInTheWindow) {
    for (QWidget* place : {static_cast<QWidget*>(&box), static_cast<QWidget*>(&lines)}) {
        told.clear();
        tabs.SelectedItem(2);
        tabs.SelectedItem(1);
        told.clear();
        place->setFocus();
        Press(Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
        Press(Qt::Key_Tab, Qt::ControlModifier);
        Press(Qt::Key_Tab, Qt::ControlModifier);
        EXPECT_THAT(told, ElementsAre(3, 1, 2));
        EXPECT_TRUE(place->hasFocus());
    }
}
