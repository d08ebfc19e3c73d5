// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/toolbar.h"

#include <gmock/gmock.h>

#include <QAction>
#include <QApplication>
#include <QHelpEvent>
#include <QTest>
#include <QToolButton>
#include <QToolTip>

#include "support/raises.h"

using testing::ElementsAre;

class ToolBarOnAWindow : public testing::Test {
 protected:
    void SetUp() override {
        buttons.Add("New Folder", "Create a new folder", 1);
        buttons.AddSeparator();
        buttons.Add("New Package", "", 3);
        QObject::connect(&bar, &ToolBar::ButtonClick, [this](int index, const std::string& key) {
            told.push_back(std::to_string(index) + " " + key);
        });
        bar.show();
        QApplication::processEvents();
    }
    QToolButton* Button(const char* key) { return bar.findChild<QToolButton*>(key); }
    QString TipAt(const char* key) {
        QHelpEvent asked(QEvent::ToolTip, {2, 2}, Button(key)->mapToGlobal(QPoint(2, 2)));
        QApplication::sendEvent(Button(key), &asked);
        return QToolTip::text();
    }

    ToolBar bar;
    ToolBarButtons& buttons = bar.Buttons();
    std::vector<std::string> told;
};

TEST_F(ToolBarOnAWindow, TellsTheButtonByItsPlaceSeparatorsIncluded) {
    EXPECT_EQ(buttons.Count(), 3);
    QTest::mouseClick(Button("New Package"), Qt::LeftButton);
    QTest::mouseClick(Button("New Folder"), Qt::LeftButton);
    EXPECT_THAT(told, ElementsAre("3 New Package", "1 New Folder"));
}

TEST_F(ToolBarOnAWindow, ADisabledButtonDoesNothing) {
    buttons(3).Enabled(false);
    EXPECT_FALSE(buttons(3).Enabled());
    QTest::mouseClick(Button("New Package"), Qt::LeftButton);
    EXPECT_THAT(told, ElementsAre());
    buttons("New Package").Enabled(true);
    QTest::mouseClick(Button("New Package"), Qt::LeftButton);
    EXPECT_THAT(told, ElementsAre("3 New Package"));
}

TEST_F(ToolBarOnAWindow, ButtonsThatAreNotThereAreErrors) {
    EXPECT_EQ(DescriptionRaisedBy([&] { buttons(4); }), "Index out of bounds");
    EXPECT_EQ(NumberRaisedBy([&] { buttons(0); }), 35600);
    EXPECT_EQ(DescriptionRaisedBy([&] { buttons("Print"); }), "Element not found");
    EXPECT_EQ(buttons(2).Key(), "");
}

TEST_F(ToolBarOnAWindow, ShowsItsTipAndNoneWhereNoneWasGiven) {
    EXPECT_EQ(TipAt("New Folder"), "Create a new folder");
    QToolTip::hideText();
    QTest::qWait(400);
    EXPECT_EQ(TipAt("New Package"), "");
    EXPECT_EQ(buttons(1).ToolTipText(), "Create a new folder");
}

TEST_F(ToolBarOnAWindow, CaptionsStandBelowThePicturesAndTheKeyboardReachesTheButtons) {
    EXPECT_EQ(Button("New Folder")->toolButtonStyle(), Qt::ToolButtonTextUnderIcon);
    EXPECT_EQ(Button("New Folder")->text(), "New Folder");
    bar.activateWindow();
    Button("New Folder")->setFocus(Qt::TabFocusReason);
    QTest::keyClick(Button("New Folder"), Qt::Key_Space);
    EXPECT_THAT(told, ElementsAre("1 New Folder"));
    EXPECT_EQ(Button("New Folder")->focusPolicy(), Qt::TabFocus);
}
