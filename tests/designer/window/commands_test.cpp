// SPDX-License-Identifier: GPL-3.0-or-later
#include <QClipboard>
#include <QMimeData>
#include <QRegularExpression>
#include <QTreeWidget>
#include <cstdlib>

#include "designer/model/item_clipboard.h"
#include "window_fixture.h"

namespace designer::test {
namespace {

using Commands = WindowTest;

TEST_F(Commands, CopiesAreSelectedAndMovedALittle) {
    Select({"Title"});
    Run("editDuplicate");
    EXPECT_EQ(Selected(), "Title1");
    EXPECT_EQ(Corner("Title1"), "1.35278cm 1.35278cm");
    EXPECT_EQ(UndoName(), "Duplicate Title");
}

TEST_F(Commands, CutAndPasteKeepTheItem) {
    Select({"Title"});
    Run("editCut");
    EXPECT_EQ(Id("Title"), NoElement);
    EXPECT_TRUE(QApplication::clipboard()->mimeData()->hasFormat(ItemsMimeType));
    Run("editPaste");
    EXPECT_EQ(Selected(), "Title");
    EXPECT_EQ(Value("Title"), "Sales");
    Run("editPaste");
    EXPECT_EQ(Selected(), "Title1");
}

TEST_F(Commands, PasteOfAnythingElseSaysSo) {
    QApplication::clipboard()->setText("Sales");
    const std::string before = Model().Source().Text();
    Run("editPaste");
    EXPECT_EQ(Model().Source().Text(), before);
}

TEST_F(Commands, AlignTakesTheLastSelectedOne) {
    Select({"Title", "Note"});
    Run("alignLeft");
    EXPECT_EQ(Text("Title", "Left"), "7cm");
    EXPECT_EQ(Text("Note", "Left"), "7cm");
    EXPECT_EQ(UndoName(), "Align 2 items");
}

TEST_F(Commands, DistributeNeedsThree) {
    Select({"Title", "Amount"});
    EXPECT_FALSE(Find<QAction>("distributeDown").isEnabled());
    Model().Edit("Move", [&](Document& document) { SetSize(document, Id("Amount"), "Top", 40); });
    Select({"Title", "Amount", "Note"});
    Run("distributeDown");
    EXPECT_EQ(Text("Amount", "Top"), "3cm");
}

TEST_F(Commands, SelectAllTakesTheItemsOfTheBands) {
    Run("editSelectAll");
    EXPECT_EQ(Selected(), "Title Amount Note Page");
}

TEST_F(Commands, OrderIsWritten) {
    Select({"Title"});
    Run("toFront");
    EXPECT_EQ(Text("Title", "ZIndex"), "1");
    EXPECT_EQ(UndoName(), "Bring to front Title");
    Run("toBack");
    EXPECT_EQ(Text("Title", "ZIndex"), "0");
}

TEST_F(Commands, InsertPutsAnItemIntoTheMiddle) {
    Run("insertTextBox");
    EXPECT_EQ(Selected(), "Textbox1");
    EXPECT_TRUE(Canvas().viewport()->rect().contains(At("Textbox1")));
    EXPECT_EQ(Model().Item(Id("Textbox1"))->container, BodyOf(Model().Source()));
}

TEST_F(Commands, PastedItemsStayOnTheReport) {
    Model().Edit("Right", [&](Document& document) { SetSize(document, Id("Note"), "Left", 12 * 72 / 2.54); });
    Select({"Note"});
    Run("editCopy");
    Run("editPaste");
    EXPECT_EQ(Text(Selected(), "Left"), "12cm");
    EXPECT_EQ(Model().Source().TextAt(Model().Source().Root(), "ReportSections/ReportSection/Width"), "16cm");
    Select({"Note"});
    Run("editDuplicate");
    EXPECT_EQ(Text(Selected(), "Left"), "12cm");
    EXPECT_EQ(Model().Source().TextAt(Model().Source().Root(), "ReportSections/ReportSection/Width"), "16cm");
}

TEST_F(Commands, PageHeaderAndFooterComeAndGo) {
    EXPECT_FALSE(Find<QAction>("pageHeader").isChecked());
    EXPECT_TRUE(Find<QAction>("pageFooter").isChecked());
    const std::string before = Model().Source().Text();
    Run("pageHeader");
    EXPECT_EQ(Selected(), "PageHeader");
    EXPECT_TRUE(Find<QAction>("pageHeader").isChecked());
    EXPECT_EQ(Model().Source().TextAt(Model().Leader(), "Height"), "1.5cm");
    EXPECT_EQ(Canvas().Failure(), "");
    Run("pageHeader");
    EXPECT_EQ(Model().Source().Text(), before);
    Run("pageFooter");
    EXPECT_EQ(Id("Page"), NoElement);
    EXPECT_EQ(UndoName(), "Remove Page Footer");
    Run("editUndo");
    EXPECT_NE(Id("Page"), NoElement);
}

TEST_F(Commands, SavingTakesTheTextThatIsBeingTyped) {
    Select({"Title"});
    Key(Qt::Key_F2);
    QTest::keyClicks(&Find("txtInPlace"), "Net");
    Run("fileSave");
    EXPECT_NE(Written().find("<Value>Net</Value>"), std::string::npos);
}

// As on a dark desktop with large fonts. OXC_PICTURES names a folder for a picture of it.
TEST_F(Commands, LargeLettersAreNotCut) {
    const QFont font = QApplication::font();
    const QPalette palette = QApplication::palette();
    QPalette dark(QColor(45, 45, 48));
    dark.setColor(QPalette::Base, QColor(30, 30, 30));
    QApplication::setPalette(dark);
    QFont large = font;
    large.setPointSize(font.pointSize() * 2);
    QApplication::setFont(large);
    Select({"Title"});
    QTest::qWait(200);
    for (const QAbstractButton* button :
         m_window->findChildren<QAbstractButton*>(QRegularExpression("^tool"))) {
        EXPECT_GE(button->width(), button->sizeHint().width()) << button->text().toStdString();
        EXPECT_GE(button->height(), button->sizeHint().height()) << button->text().toStdString();
    }
    const auto& properties = Find<QTreeWidget>("properties");
    for (const QTreeWidgetItem* row : properties.findItems("Left", Qt::MatchExactly | Qt::MatchRecursive)) {
        EXPECT_FALSE(row->data(1, Qt::ForegroundRole).isValid());  // the text of the dark palette
    }
    if (const char* folder = std::getenv("OXC_PICTURES")) {
        m_window->grab().save(QString(folder) + "/design_dark.png");
    }
    QApplication::setFont(font);
    QApplication::setPalette(palette);
}

TEST_F(Commands, WithoutASelectionTheyAreGrey) {
    Select({});
    for (const char* name :
         {"editCut", "editCopy", "editDelete", "editDuplicate", "toFront", "alignLeft", "editUndo"}) {
        EXPECT_FALSE(Find<QAction>(name).isEnabled()) << name;
    }
}

TEST_F(Commands, EveryOneHasAKeyOfItsOwn) {
    QMap<QString, QString> keys;
    for (const QAction* action : m_window->findChildren<QAction*>()) {
        const bool isCommand = action->parent() == m_window && !action->objectName().isEmpty();
        EXPECT_FALSE(isCommand && action->shortcut().isEmpty()) << action->objectName().toStdString();
        for (const QKeySequence& key : action->shortcuts()) {
            if (action->parent() == m_window) {
                EXPECT_FALSE(keys.contains(key.toString()))
                    << key.toString().toStdString() << ": " << keys[key.toString()].toStdString() << " and "
                    << action->objectName().toStdString();
                keys[key.toString()] = action->objectName();
            }
        }
    }
    EXPECT_GT(keys.size(), 35);
}

}  // namespace
}  // namespace designer::test
