// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>

#include <QClipboard>
#include <QDialog>
#include <QLineEdit>
#include <QMenu>
#include <QTimer>

#include "platform/base/paths.h"
#include "platform/controls/multi_line_text_box.h"
#include "platform/controls/text_box.h"
#include "shown_form.h"
#include "support/temporary_folder.h"

template <typename Box>
class TextBoxes : public testing::Test {
 protected:
    void SetUp() override {
        form.Show(&box, &other);
        QObject::connect(&box, &Box::LostFocus, [this] { ++lost; });
        box.setFocus();
    }

    ShownForm form;
    Box box;
    QLineEdit other;
    int lost = 0;
};
using Kinds = testing::Types<TextBox, MultiLineTextBox>;
TYPED_TEST_SUITE(TextBoxes, Kinds);

TYPED_TEST(TextBoxes, TabMovesOnAndTheFocusIsLost) {
    Type("sales");
    Press(Qt::Key_Tab);
    EXPECT_TRUE(this->other.hasFocus());
    EXPECT_EQ(this->lost, 1);
    EXPECT_EQ(this->box.Text(), "sales");
}

TYPED_TEST(TextBoxes, FocusIsLostToAClickElsewhereAndByCode) {
    QTest::mouseClick(&this->other, Qt::LeftButton);
    EXPECT_EQ(this->lost, 1);
    this->box.setFocus();
    this->other.setFocus();
    EXPECT_EQ(this->lost, 2);
}

TYPED_TEST(TextBoxes, FocusIsLentToAMenuAndToAnotherWindow) {
    QMenu menu;
    menu.addAction("Paste");
    menu.popup(this->form.mapToGlobal(QPoint(5, 5)));
    QApplication::processEvents();
    menu.close();
    QDialog dialog;
    QTimer::singleShot(0, &dialog, &QDialog::reject);
    dialog.exec();
    this->form.activateWindow();
    QApplication::processEvents();
    EXPECT_TRUE(this->box.hasFocus());
    EXPECT_EQ(this->lost, 0);
}

TYPED_TEST(TextBoxes, LockedKeepTheirTextAndStandOnTheColourOfAButton) {
    this->box.Text("scott");
    const QColor open = this->box.palette().color(QPalette::Base);
    this->box.Locked(true);
    Type("x");
    Press(Qt::Key_Delete);
    EXPECT_EQ(this->box.Text(), "scott");
    EXPECT_EQ(this->box.palette().color(QPalette::Base), this->form.palette().color(QPalette::Button));
    this->box.Locked(false);
    EXPECT_FALSE(this->box.Locked());
    EXPECT_EQ(this->box.palette().color(QPalette::Base), open);
    Press(Qt::Key_Delete);
    EXPECT_EQ(this->box.Text(), "cott");
}

TYPED_TEST(TextBoxes, TextIsUtf8) {
    this->box.Text("Zürich \xC2\xA0 東京");
    EXPECT_EQ(this->box.Text(), "Zürich \xC2\xA0 東京");
    this->box.Text("");
    EXPECT_EQ(this->box.Text(), "");
}

TEST(TextBoxOfAPath, ShowsItAsPeopleWriteItAndGivesItAsTheSystemDoes) {
    TextBox box;
    box.ShowsPaths(true);
    box.Text("Z:\\home\\ann\\sales.rpt");
    EXPECT_EQ(box.text(), "/home/ann/sales.rpt");
    EXPECT_EQ(box.Text(), "Z:\\home\\ann\\sales.rpt");
    box.clear();
    QTest::keyClicks(&box, "/srv/out/");
    EXPECT_EQ(box.Text(), "Z:\\srv\\out\\");
    box.Text("C:\\Reports");
    EXPECT_EQ(box.text(), "C:\\Reports");
    EXPECT_EQ(box.Text(), "C:\\Reports");
}

TEST(TextBoxOfAPath, ShowsNamesAsTheDiskHasThemAndGivesTheTextThatItWasGiven) {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder / "output");
    const std::string place = paths::FromMachine(folder.Path()), shown = folder.Path().string();
    TextBox box;
    box.ShowsPaths(true);
    for (const auto& [given, expected] : {std::pair("\\Output\\", "/output/"),
                                          {"\\Output", "/output"},
                                          {"\\OUTPUT\\New\\", "/output/New/"},
                                          {"\\Other\\", "/Other/"}}) {
        box.Text(place + given);
        EXPECT_EQ(box.text().toStdString(), shown + expected);
        EXPECT_EQ(box.Text(), place + given);
    }
    box.Text(place + "\\Output\\");
    box.end(false);
    QTest::keyClicks(&box, "x");
    EXPECT_EQ(box.Text(), place + "\\output\\x");
    box.Text("");
    EXPECT_EQ(box.Text(), "");
}

TEST(TextBoxOfSeveralLines, EndsLinesInOneWay) {
    MultiLineTextBox box;
    box.Text("Dear all,\r\nthe figures.\n");
    EXPECT_EQ(box.Text(), "Dear all,\nthe figures.\n");
}

TEST(TextBoxOfSeveralLines, TakesEnterAsALine) {
    ShownForm form;
    MultiLineTextBox box;
    form.Show(&box);
    box.setFocus();
    Type("one");
    Press(Qt::Key_Return);
    Type("two");
    EXPECT_EQ(box.Text(), "one\ntwo");
}

TEST(TextBoxOfSeveralLines, GivenItsOwnTextKeepsCursorAndUndo) {
    ShownForm form;
    MultiLineTextBox box;
    form.Show(&box);
    box.setFocus();
    Type("one");
    box.Text("one");
    EXPECT_EQ(box.textCursor().position(), 3);
    QTest::keySequence(&box, QKeySequence::Undo);
    EXPECT_EQ(box.Text(), "");
}
