// SPDX-License-Identifier: GPL-3.0-or-later
// Texts with runs and placeholders, typed on the page.
#include <QMenu>
#include <QMimeData>
#include <QTextEdit>
#include <QTreeWidget>

#include "designer/model/field_drag.h"
#include "designer/model/rich_text.h"
#include "letter_report.h"
#include "window_fixture.h"

namespace designer::test {
namespace {

class CanvasText : public WindowTest {
 protected:
    CanvasText() : WindowTest(Letter()) {}

    // The runs, with * before bold, / before italic and _ before underlined ones.
    std::string Runs() {
        std::string text;
        const RichText now = RichTextOf(Model().Source(), Id("T")).value_or(RichText{});
        for (const RichParagraph& paragraph : now) {
            for (const RichRun& run : paragraph.runs) {
                text += std::string(run.isBold ? "*" : "") + (run.isItalic ? "/" : "") +
                        (run.isUnderlined ? "_" : "") + run.text + "|";
            }
            text += "\n";
        }
        return text;
    }
    void Take(QTextEdit& editor) {
        QTest::keyClick(&editor, Qt::Key_Return);
        Settle();
    }
};

TEST_F(CanvasText, ATextWithRunsKeepsThem) {
    QTextEdit& editor = OpenText("T");
    EXPECT_EQ(editor.toPlainText(), QString("Dear %1, hello").arg(QChar(QChar::ObjectReplacementCharacter)));
    Mark(editor, 13, 13);
    QTest::keyClicks(&editor, "!");
    Take(editor);
    EXPECT_EQ(Runs(), "Dear |=First(Fields!City.Value, \"Sales\")|, hello!|\n");
    EXPECT_EQ(UndoName(), "Edit T");
    Run("editUndo");
    EXPECT_EQ(Model().Source().Text(), Letter());
}

TEST_F(CanvasText, OpenedAndTakenWithoutAChangeIsNone) {
    Take(OpenText("T"));
    EXPECT_EQ(Model().Source().UndoCount(), 0u);
}

TEST_F(CanvasText, APartBecomesBoldItalicOrUnderlined) {
    QTextEdit& editor = OpenText("T");
    Mark(editor, 8, 10);
    QTest::keyClick(&editor, Qt::Key_B, Qt::ControlModifier);
    QTest::keyClick(&editor, Qt::Key_I, Qt::ControlModifier);
    Mark(editor, 5, 6);
    QTest::keyClick(&editor, Qt::Key_U, Qt::ControlModifier);
    Take(editor);
    EXPECT_EQ(Runs(), "Dear |_=First(Fields!City.Value, \"Sales\")|, |*/he|llo|\n");
    QTextEdit& again = OpenText("T");
    Mark(again, 8, 10);
    QTest::keyClick(&again, Qt::Key_B, Qt::ControlModifier);
    Take(again);
    EXPECT_EQ(Runs(), "Dear |_=First(Fields!City.Value, \"Sales\")|, |/he|llo|\n");
}

TEST_F(CanvasText, BackspaceTakesAPlaceholderAsAWhole) {
    QTextEdit& editor = OpenText("T");
    Mark(editor, 6, 6);
    QTest::keyClick(&editor, Qt::Key_Backspace);
    Take(editor);
    EXPECT_EQ(Runs(), "Dear |, hello|\n");
}

TEST_F(CanvasText, ADoubleClickOnAFieldPutsItAtTheCursor) {
    QTextEdit& editor = OpenText("T");
    Mark(editor, 13, 13);
    auto& data = Find<QTreeWidget>("reportData");
    const QPoint at = data.visualItemRect(Row("reportData", "Region")).center();
    QTest::mouseClick(data.viewport(), Qt::LeftButton, {}, at);
    data.setFocus(Qt::MouseFocusReason);
    Settle();
    QTest::mouseDClick(data.viewport(), Qt::LeftButton, {}, at);
    Settle();
    emit data.itemActivated(Row("reportData", "PageNumber"), 0);
    EXPECT_TRUE(editor.hasFocus());
    Take(editor);
    EXPECT_EQ(Runs(),
              "Dear |=First(Fields!City.Value, \"Sales\")|, hello|=First(Fields!Region.Value, \"Sales\")|"
              "=Globals!PageNumber|\n");
    EXPECT_EQ(Canvas().Failure(), "");
}

TEST_F(CanvasText, AFieldIsDraggedIntoAnOpenText) {
    QTextEdit& editor = OpenText("T");
    Mark(editor, 0, 0);
    const std::unique_ptr<QMimeData> data(MimeDataOf({"Sales", "Region"}));
    const QPoint at = editor.cursorRect().center();
    EXPECT_TRUE(DropOn(*editor.viewport(), *data, at));
    Take(editor);
    EXPECT_EQ(Runs(),
              "=First(Fields!Region.Value, \"Sales\")|Dear |=First(Fields!City.Value, \"Sales\")|, hello|\n");
}

TEST_F(CanvasText, ATextThatBeginsLikeAnExpressionIsATextAmongRuns) {
    QTextEdit& editor = OpenText("T");
    Mark(editor, 0, 5);
    QTest::keyClicks(&editor, "=a\"b");
    Take(editor);
    EXPECT_EQ(Runs(), "=\"=a\"\"b\"|=First(Fields!City.Value, \"Sales\")|, hello|\n");
}

TEST_F(CanvasText, AnExpressionAloneIsTypedAndTakesFields) {
    QTextEdit& editor = OpenText("T");
    editor.selectAll();
    QTest::keyClicks(&editor, "=\"In \" & ");
    emit Find<QTreeWidget>("reportData").itemActivated(Row("reportData", "Region"), 0);
    Take(editor);
    EXPECT_EQ(Runs(), "=\"In \" & First(Fields!Region.Value, \"Sales\")|\n");
}

TEST_F(CanvasText, AltAndACharacterOpensAMenu) {
    QTextEdit& editor = OpenText("T");
    QTest::keyClicks(&editor, "Typed");
    QTest::keyClick(&editor, Qt::Key_X, Qt::AltModifier);
    EXPECT_EQ(editor.toPlainText(), "Typed");
    QTest::keyClick(&editor, Qt::Key_F, Qt::AltModifier);
    Settle();
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(menu->title(), "&File");
    menu->close();
    Settle();
    Take(editor);
    EXPECT_EQ(Runs(), "Typed|\n");
}

}  // namespace
}  // namespace designer::test
