// SPDX-License-Identifier: GPL-3.0-or-later
// Parts of a text with a look of their own: what is marked while a text is typed, and the runs in the
// outline.
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QTextEdit>
#include <QTreeWidget>

#include "designer/panes/property_pane.h"
#include "dialog_test.h"
#include "letter_report.h"

namespace designer::test {
namespace {

class TextParts : public DialogTest {
 protected:
    TextParts() : DialogTest(Letter()) {}

    QTextEdit& Typed() { return Find<QTextEdit>("txtInPlace"); }
    static std::string Marked(QTextEdit& editor) { return editor.textCursor().selectedText().toStdString(); }
    // The runs, each with what it has in its style.
    std::string Runs() {
        const Document& document = Model().Source();
        std::string text;
        for (const ElementId run :
             document.Children(document.Find(Id("T"), "Paragraphs/Paragraph/TextRuns"))) {
            text += document.TextAt(run, "Value").value_or("") + "{";
            const ElementId style = document.Find(run, "Style");
            for (const ElementId one :
                 style == NoElement ? std::vector<ElementId>{} : document.Children(style)) {
                text += document.Name(one) + ":" + document.TextAt(one, "").value_or("") + ";";
            }
            text += "}";
        }
        return text;
    }
};

constexpr const char* Rest = "=First(Fields!City.Value, \"Sales\"){}, ";

TEST_F(TextParts, TheStyleDialogChangesWhatIsMarkedAndTheTextStaysOpen) {
    Mark(OpenText("T"), 8, 10);
    InDialog("formatStyle", [&](QDialog& dialog) {
        Type(dialog, "Font", "Courier New");
        Type(dialog, "Font size", "14");
        Type(dialog, "Text colour", "navy");
        EXPECT_FALSE(List(dialog, "Background colour").isEnabled());
        Press(dialog, QDialogButtonBox::Ok);
    });
    EXPECT_EQ(Runs(),
              "Dear {}" + std::string(Rest) + "{}he{FontFamily:Courier New;FontSize:14pt;Color:navy;}llo{}");
    EXPECT_EQ(UndoName(), "Format part of T");
    EXPECT_EQ(Model().Source().UndoCount(), 1u);
    EXPECT_EQ(Marked(Typed()), "he");
    EXPECT_EQ(Typed().textCursor().charFormat().foreground().color(), QColor("navy"));
    QTest::keyClick(&Typed(), Qt::Key_Escape);
    Run("editUndo");
    EXPECT_EQ(Model().Source().Text(), Letter());
}

TEST_F(TextParts, ADialogThatIsCancelledLeavesTheFile) {
    Mark(OpenText("T"), 8, 10);
    InDialog("formatStyle", [&](QDialog& dialog) { Press(dialog, QDialogButtonBox::Cancel); });
    QTest::keyClick(&Typed(), Qt::Key_Return);
    Settle();
    EXPECT_EQ(Model().Source().Text(), Letter());
    EXPECT_EQ(Model().Source().UndoCount() + Model().Source().RedoCount(), 0u);
}

TEST_F(TextParts, KeysOfTheMenuChangeWhatIsMarked) {
    QTextEdit& editor = OpenText("T");
    Mark(editor, 8, 13);
    QTest::keyClick(&editor, Qt::Key_Greater, Qt::ControlModifier | Qt::ShiftModifier);
    Settle();
    EXPECT_EQ(Runs(), "Dear {}" + std::string(Rest) + "{}hello{FontSize:11pt;}");
    QTest::keyClick(&Typed(), Qt::Key_R, Qt::ControlModifier);
    Settle();
    EXPECT_EQ(Text("T", "Paragraphs/Paragraph/Style/TextAlign"), "Right");
    EXPECT_EQ(Marked(Typed()), "hello");
    EXPECT_EQ(UndoName(), "Text Right part of T");
    QTest::keyClick(&Typed(), Qt::Key_Z, Qt::ControlModifier);
    Settle();
    EXPECT_EQ(m_window->findChild<QTextEdit*>("txtInPlace"), nullptr);
    EXPECT_EQ(Text("T", "Paragraphs/Paragraph/Style/TextAlign"), "-");
}

TEST_F(TextParts, TheMenuIsUsedByMouseAndByKeys) {
    Mark(OpenText("T"), 8, 10);
    auto& menu = Find<QMenu>("menuFormat");
    QMenuBar& bar = *m_window->menuBar();
    QTest::mouseClick(&bar, Qt::LeftButton, {}, bar.actionGeometry(menu.menuAction()).center());
    Settle();
    ASSERT_TRUE(menu.isVisible());
    QTest::mouseClick(&menu, Qt::LeftButton, {},
                      menu.actionGeometry(&Find<QAction>("formatLarger")).center());
    Settle();
    EXPECT_EQ(Runs(), "Dear {}" + std::string(Rest) + "{}he{FontSize:11pt;}llo{}");
    EXPECT_EQ(Marked(Typed()), "he");
    QTest::keyClick(&Typed(), Qt::Key_O, Qt::AltModifier);
    Settle();
    ASSERT_TRUE(menu.isVisible());
    QTest::keyClick(&menu, Qt::Key_G);  // Larger Text
    Settle();
    EXPECT_EQ(Runs(), "Dear {}" + std::string(Rest) + "{}he{FontSize:12pt;}llo{}");
}

TEST_F(TextParts, TypingGoesOnWhereItWas) {
    QTextEdit& editor = OpenText("T");
    Mark(editor, 13, 13);
    QTest::keyClicks(&editor, " a");
    QTest::keyClick(&editor, Qt::Key_R, Qt::ControlModifier);
    Settle();
    EXPECT_EQ(Text("T", "Paragraphs/Paragraph/Style/TextAlign"), "Right");
    QTest::keyClicks(&Typed(), "b");
    QTest::keyClick(&Typed(), Qt::Key_Return);
    Settle();
    EXPECT_EQ(Runs(), "Dear {}" + std::string(Rest) + "hello ab{}");
}

TEST_F(TextParts, WhatWasTypedBeforeIsTakenFirst) {
    QTextEdit& editor = OpenText("T");
    Mark(editor, 13, 13);
    QTest::keyClicks(&editor, " all");
    Mark(editor, 14, 17);
    QTest::keyClick(&editor, Qt::Key_Less, Qt::ControlModifier | Qt::ShiftModifier);
    Settle();
    EXPECT_EQ(Runs(), "Dear {}" + std::string(Rest) + "hello {}all{FontSize:9pt;}");
    EXPECT_EQ(Model().Source().UndoCount(), 2u);
}

TEST_F(TextParts, AnOnlyRunIsCutToo) {
    QTextEdit& editor = OpenText("T");
    editor.selectAll();
    QTest::keyClicks(&editor, "one two");
    QTest::keyClick(&editor, Qt::Key_Return);
    Settle();
    Mark(OpenText("T"), 4, 7);
    InDialog("formatStyle", [&](QDialog& dialog) {
        Type(dialog, "Format", "N2");
        Press(dialog, QDialogButtonBox::Ok);
    });
    EXPECT_EQ(Runs(), "one {}two{Format:N2;}");
}

TEST_F(TextParts, AClickOnThePropertiesShowsThoseOfWhatIsMarked) {
    QTextEdit& editor = OpenText("T");
    Mark(editor, 0, 4);
    auto& properties = Find<QTreeWidget>("properties");
    QTest::mouseClick(properties.viewport(), Qt::LeftButton, {}, QPoint(5, 5));
    properties.setFocus(Qt::MouseFocusReason);
    Settle();
    EXPECT_EQ(Selected(), "TextRun");
    Row("properties", "Text colour")->setText(1, "Red");
    Settle();
    EXPECT_EQ(Runs(), "Dear{Color:Red;} {}" + std::string(Rest).substr(0, std::string(Rest).size() - 2) +
                          ", hello{}");
    EXPECT_EQ(UndoName(), "Change Text colour of part of T");
    EXPECT_EQ(Model().Source().UndoCount(), 1u);
    Canvas().setFocus();
    Key(Qt::Key_F2);
    EXPECT_EQ(Marked(Typed()), "Dear");
}

TEST_F(TextParts, WithoutAChangeTheRunIsWholeAgain) {
    Mark(OpenText("T"), 0, 4);
    Find<QTreeWidget>("properties").setFocus(Qt::MouseFocusReason);
    Settle();
    EXPECT_NE(Model().Source().Text(), Letter());
    Canvas().setFocus();
    Key(Qt::Key_Escape);
    EXPECT_EQ(Selected(), "T");
    EXPECT_EQ(Model().Source().Text(), Letter());
    EXPECT_EQ(Model().Source().UndoCount() + Model().Source().RedoCount(), 0u);
}

TEST_F(TextParts, ARunHasALinkOfItsOwn) {
    Mark(OpenText("T"), 8, 13);
    InDialog("itemLinks", [&](QDialog& dialog) {
        EXPECT_FALSE(dialog.findChild<QLineEdit*>("label")->isVisible());
        dialog.findChild<QComboBox*>("kind")->setCurrentIndex(1);
        QTest::keyClicks(dialog.findChild<QLineEdit*>("target"), "https://example.com");
        Press(dialog, QDialogButtonBox::Ok);
    });
    const Document& document = Model().Source();
    const auto runs = document.Children(document.Find(Id("T"), "Paragraphs/Paragraph/TextRuns"));
    EXPECT_EQ(document.TextAt(runs.back(), "ActionInfo/Actions/Action/Hyperlink"), "https://example.com");
    EXPECT_EQ(document.TextAt(runs.back(), "Value"), "hello");
    EXPECT_EQ(Text("T", "ActionInfo"), "-");
    EXPECT_EQ(UndoName(), "Change Link of part of T");
}

TEST_F(TextParts, RunsAreInTheOutlineAndHaveAStyle) {
    auto& outline = Find<QTreeWidget>("outline");
    QTreeWidgetItem& row = *Row("outline", "Text [First(City)]");
    EXPECT_EQ(row.parent()->text(0), "T");
    outline.setCurrentItem(&row);
    Settle();
    EXPECT_EQ(Selected(), "TextRun");
    Run("formatBold");
    EXPECT_EQ(Runs(), "Dear {}=First(Fields!City.Value, \"Sales\"){FontWeight:Bold;}, hello{}");
    EXPECT_FALSE(Find<QAction>("formatVisibility").isEnabled());
    EXPECT_FALSE(Find<QAction>("formatFill").isEnabled());
    Canvas().setFocus();
    Key(Qt::Key_F2);
    EXPECT_EQ(Typed().textCursor().selectionStart(), 5);
    EXPECT_EQ(Typed().textCursor().selectionEnd(), 6);
}

class PlaceholderTest : public TextParts {
 protected:
    // Answers the dialog that `work` opens.
    void Answer(const std::function<void()>& work, const QString& expected, const QString& value) {
        bool isOpen = false;
        QTimer::singleShot(0, m_window, [&] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            isOpen = dialog != nullptr;
            ASSERT_TRUE(isOpen);
            auto& text = *dialog->findChild<QPlainTextEdit*>("expression");
            EXPECT_EQ(text.toPlainText(), expected);
            text.selectAll();
            QTest::keyClicks(&text, value);
            Press(*dialog, QDialogButtonBox::Ok);
            dialog->reject();
        });
        work();
        Settle();
        EXPECT_TRUE(isOpen);
    }
};

TEST_F(PlaceholderTest, ADoubleClickOpensItsExpression) {
    QTextEdit& editor = OpenText("T");
    QTextCursor cursor(editor.document());
    cursor.setPosition(5);
    const QRect begin = editor.cursorRect(cursor);
    Answer([&] { QTest::mouseDClick(editor.viewport(), Qt::LeftButton, {}, begin.center() + QPoint(8, 0)); },
           "=First(Fields!City.Value, \"Sales\")", "=Max(Fields!City.Value, \"Sales\")");
    ASSERT_EQ(&Typed(), &editor);
    EXPECT_EQ(m_window->focusWidget(), &editor);
    QTest::keyClick(&editor, Qt::Key_Return);
    Settle();
    EXPECT_EQ(Runs(), "Dear {}=Max(Fields!City.Value, \"Sales\"){}, hello{}");
    EXPECT_EQ(Model().Source().UndoCount(), 1u);
}

TEST_F(PlaceholderTest, CtrlEOpensTheOneAtTheCursorOrMakesOne) {
    QTextEdit& editor = OpenText("T");
    const auto press = [&] { QTest::keyClick(&editor, Qt::Key_E, Qt::ControlModifier); };
    Mark(editor, 6, 6);
    Answer(press, "=First(Fields!City.Value, \"Sales\")", "=1+1");
    Mark(editor, 13, 13);
    Answer(press, "=", "=Globals!PageNumber");
    QTest::keyClick(&editor, Qt::Key_Return);
    Settle();
    EXPECT_EQ(Runs(), "Dear {}=1+1{}, hello{}=Globals!PageNumber{}");
}

TEST_F(PlaceholderTest, ATypedExpressionIsOpenedAsAWhole) {
    QTextEdit& editor = OpenText("T");
    editor.selectAll();
    QTest::keyClicks(&editor, "=1+1");
    Answer([&] { QTest::keyClick(&editor, Qt::Key_E, Qt::ControlModifier); }, "=1+1", "=2+2");
    QTest::keyClick(&editor, Qt::Key_Return);
    Settle();
    EXPECT_EQ(Runs(), "=2+2{}");
}

}  // namespace
}  // namespace designer::test
