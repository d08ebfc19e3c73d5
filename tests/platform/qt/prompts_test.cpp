// SPDX-License-Identifier: GPL-3.0-or-later
// Message boxes on the screen.
#include "platform/qt/qt_prompts.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QFontMetrics>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

namespace {

struct Seen {
    int width = 0;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    QString title, text;
};

// Returns the look of the box, which is answered with its first button.
Seen Shown(const std::string& text, int flags, const std::string& title, int& answer) {
    Seen seen;
    QTimer::singleShot(0, [&seen] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        ASSERT_TRUE(QTest::qWaitForWindowExposed(box));
        seen = {box->width(), box->icon(), box->windowTitle(), box->text()};
        QTest::keyClick(box, Qt::Key_Return);
    });
    answer = QtPrompts().Box(text, flags, title);
    return seen;
}

}  // namespace

TEST(MessageBox, IsWideEnoughForItsTitle) {
    int answer = 0;
    for (const char* title : {"Oxbow Courier", "A title that is a good deal longer than the text"}) {
        const Seen seen = Shown("No.", vbExclamation, title, answer);
        EXPECT_EQ(seen.title, title);
        EXPECT_GE(seen.width, QFontMetrics(QApplication::font()).horizontalAdvance(seen.title) + 60) << title;
        EXPECT_EQ(answer, vbOK);
    }
}

TEST(MessageBox, QuestionHasItsIconThoughNoFlagAsksForOne) {
    int answer = 0;
    EXPECT_EQ(Shown("Delete it?", vbYesNo, "", answer).icon, QMessageBox::Question);
    EXPECT_EQ(answer, vbYes);
    EXPECT_EQ(Shown("Delete it?", vbYesNo + vbExclamation, "", answer).icon, QMessageBox::Warning);
    EXPECT_EQ(Shown("Done", vbInformation, "", answer).icon, QMessageBox::Information);
    EXPECT_EQ(Shown("Done", vbOKOnly, "", answer).icon, QMessageBox::NoIcon);
}
