// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/masked_edit.h"

#include <QClipboard>
#include <QLineEdit>

#include "shown_form.h"
#include "support/raises.h"

class TimeBox : public testing::Test {
 protected:
    void SetUp() override {
        box.Mask("##:##");
        box.Format("hh:mm");
        form.Show(&before, &box, &after);
        QObject::connect(&box, &MaskEdBox::LostFocus, [this] { ++lost; });
        box.setFocus();
    }
    void Paste(const char* text) {
        QApplication::clipboard()->setText(text);
        Press(Qt::Key_V, Qt::ControlModifier);
    }

    ShownForm form;
    QLineEdit before, after;
    MaskEdBox box;
    int lost = 0;
};

TEST_F(TimeBox, IsPromptsAndTheSeparatorWhenEmpty) {
    EXPECT_EQ(box.Text(), "__:__");
    Type("0");
    EXPECT_EQ(box.Text(), "0_:__");
}

TEST_F(TimeBox, SkipsTheSeparatorAndTakesDigitsOnly) {
    Type("0a8x3-0");
    EXPECT_EQ(box.Text(), "08:30");
    Type("9");
    EXPECT_EQ(box.Text(), "08:30");
}

TEST_F(TimeBox, TakesTheSeparatorTypedAfterOneDigit) {
    Type("8:05");
    EXPECT_EQ(box.Text(), "08:05");
    box.selectAll();
    Type("17:45");
    EXPECT_EQ(box.Text(), "17:45");
}

TEST_F(TimeBox, BackspaceAndDeleteLeavePrompts) {
    box.Text("08:30");
    box.setCursorPosition(5);
    Press(Qt::Key_Backspace);
    EXPECT_EQ(box.Text(), "08:3_");
    Press(Qt::Key_Home);
    Press(Qt::Key_Delete);
    EXPECT_EQ(box.Text(), "_8:3_");
    box.selectAll();
    Press(Qt::Key_Delete);
    EXPECT_EQ(box.Text(), "__:__");
}

TEST_F(TimeBox, TypingGoesOverWhatStandsThere) {
    box.Text("08:30");
    box.setCursorPosition(3);
    Type("4");
    EXPECT_EQ(box.Text(), "08:40");
    Press(Qt::Key_Left);
    Press(Qt::Key_Left);  // over the separator
    Type("9");
    EXPECT_EQ(box.Text(), "09:40");
}

TEST_F(TimeBox, IsAllSelectedWhenTheFocusComes) {
    box.Text("08:30");
    before.setFocus();
    Press(Qt::Key_Tab);
    ASSERT_TRUE(box.hasFocus());
    EXPECT_EQ(box.selectedText(), "08:30");
    Type("1745");
    EXPECT_EQ(box.Text(), "17:45");
    before.setFocus();
    QTest::mouseClick(&box, Qt::LeftButton, {}, QPoint(box.width() - 10, box.height() / 2));
    EXPECT_EQ(box.selectedText(), "17:45");
    QTest::mouseClick(&box, Qt::LeftButton, {}, QPoint(box.width() - 10, box.height() / 2));
    EXPECT_FALSE(box.hasSelectedText());
}

TEST_F(TimeBox, PasteTakesATimeInAnyOfItsForms) {
    Paste(" 7:15\n");
    EXPECT_EQ(box.Text(), "07:15");
    Paste("23:59:58");
    EXPECT_EQ(box.Text(), "23:59");
    box.selectAll();
    Paste("0630");
    EXPECT_EQ(box.Text(), "06:30");
    box.selectAll();
    Paste("noon");
    EXPECT_EQ(box.Text(), "__:__");
}

TEST_F(TimeBox, TextSetByCodeIsShapedOrRefused) {
    box.Text("8:30");
    EXPECT_EQ(box.Text(), "08:30");
    box.Text("__:5_");
    EXPECT_EQ(box.Text(), "__:5_");
    box.Text("12:34:56");
    EXPECT_EQ(box.Text(), "12:34");
    for (const char* text : {"noon", "8", "8.30", ":30"}) {
        EXPECT_EQ(NumberRaisedBy([&] { box.Text(text); }), 380) << text;
    }
    EXPECT_EQ(box.Text(), "12:34");
    box.Text("");
    EXPECT_EQ(box.Text(), "__:__");
}

TEST_F(TimeBox, TakesATimeThatIsNone) {
    Type("9999");
    EXPECT_EQ(box.Text(), "99:99");
}

TEST_F(TimeBox, ArrowsUpAndDownCountThePartOfTheCursor) {
    box.Text("23:59");
    box.setCursorPosition(1);
    Press(Qt::Key_Up);
    EXPECT_EQ(box.Text(), "00:59");
    EXPECT_EQ(box.selectedText(), "00");
    Press(Qt::Key_Down);
    EXPECT_EQ(box.Text(), "23:59");
    box.setCursorPosition(5);
    Press(Qt::Key_Up);
    EXPECT_EQ(box.Text(), "23:00");
    box.Text("");
    Press(Qt::Key_Up);
    EXPECT_EQ(box.Text(), "00:__");
}

TEST_F(TimeBox, ArrowDownInAnEmptyPartBeginsWithItsLastValue) {
    box.Text("");
    Press(Qt::Key_Down);
    EXPECT_EQ(box.Text(), "23:__");
    box.setCursorPosition(3);
    Press(Qt::Key_Down);
    EXPECT_EQ(box.Text(), "23:59");
}

TEST_F(TimeBox, ArrowsCountNothingWithoutAFormat) {
    box.Format("");
    box.Text("08:30");
    Press(Qt::Key_Up);
    EXPECT_EQ(box.Text(), "08:30");
}

TEST_F(TimeBox, LosesTheFocusOnce) {
    Press(Qt::Key_Tab);
    EXPECT_TRUE(after.hasFocus());
    EXPECT_EQ(lost, 1);
}

TEST_F(TimeBox, LeavesWhileItIsUnfinished) {
    Type("08");
    Press(Qt::Key_Tab);
    EXPECT_TRUE(after.hasFocus());
    EXPECT_EQ(box.Text(), "08:__");
}

TEST_F(TimeBox, PromptMayBeAnother) {
    box.PromptChar(" ");
    EXPECT_EQ(box.Text(), "  :  ");
}

TEST_F(TimeBox, ReadOnlyIsNotCounted) {
    box.Text("08:30");
    box.setReadOnly(true);
    Press(Qt::Key_Up);
    Type("1");
    EXPECT_EQ(box.Text(), "08:30");
}
