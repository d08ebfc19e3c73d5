// SPDX-License-Identifier: GPL-3.0-or-later
#include <QTextEdit>

#include "window_fixture.h"

namespace designer::test {
namespace {

using CanvasKeys = WindowTest;

TEST_F(CanvasKeys, TabGoesThroughTheItems) {
    Canvas().setFocus();
    std::string names;
    for (int i = 0; i < 4; ++i) {
        Key(Qt::Key_Tab);
        names += Selected() + " ";
    }
    EXPECT_EQ(names, "Title Amount Note Page ");
    Key(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(Selected(), "Note");
    EXPECT_TRUE(Canvas().hasFocus());
    Key(Qt::Key_Tab);
    Key(Qt::Key_Tab);
    EXPECT_FALSE(Canvas().hasFocus());
}

TEST_F(CanvasKeys, EscapeClimbs) {
    Select({"Title"});
    Key(Qt::Key_Escape);
    EXPECT_EQ(Selected(), "Body");
    Key(Qt::Key_Escape);
    EXPECT_EQ(Selected(), "");
}

TEST_F(CanvasKeys, ArrowsMoveByTheGridAsOneStep) {
    Select({"Title"});
    Key(Qt::Key_Right);
    Key(Qt::Key_Right);
    Key(Qt::Key_Down);
    EXPECT_EQ(Corner("Title"), "1.5cm 1.25cm");
    EXPECT_EQ(Model().Source().UndoCount(), 1u);
    Key(Qt::Key_Left, Qt::ControlModifier);
    EXPECT_EQ(Corner("Title"), "1.45cm 1.25cm");
    Run("editUndo");
    EXPECT_EQ(Corner("Title"), "1cm 1cm");
}

TEST_F(CanvasKeys, ShiftAndArrowsResize) {
    Select({"Title", "Note"});
    Key(Qt::Key_Right, Qt::ShiftModifier);
    Key(Qt::Key_Up, Qt::ShiftModifier | Qt::ControlModifier);
    EXPECT_EQ(Size("Title"), "4.25cm 0.95cm");
    EXPECT_EQ(Size("Note"), "4.25cm 0.95cm");
    EXPECT_EQ(UndoName(), "Resize 2 items");
}

TEST_F(CanvasKeys, ItemsStopAtTheEdgeTogether) {
    Select({"Title", "Note"});
    for (int i = 0; i < 6; ++i) {
        Key(Qt::Key_Left);
    }
    EXPECT_EQ(Text("Title", "Left") + " " + Text("Note", "Left"), "0cm 6cm");
}

TEST_F(CanvasKeys, DeleteUndoRedo) {
    const std::string before = Model().Source().Text();
    Select({"Title", "Note"});
    Key(Qt::Key_Delete);
    EXPECT_EQ(Id("Title"), NoElement);
    EXPECT_EQ(UndoName(), "Delete 2 items");
    EXPECT_EQ(Find<QAction>("editUndo").text().toStdString(), "&Undo Delete 2 items");
    Run("editUndo");
    EXPECT_EQ(Model().Source().Text(), before);
    EXPECT_EQ(Find<QAction>("editRedo").text().toStdString(), "&Redo Delete 2 items");
    Run("editRedo");
    EXPECT_EQ(Id("Title"), NoElement);
}

TEST_F(CanvasKeys, EnterTypesTheText) {
    Select({"Amount"});
    Key(Qt::Key_Return);
    auto& editor = Find<QTextEdit>("txtInPlace");
    EXPECT_EQ(editor.toPlainText().toStdString(), "=1+1");
    QTest::keyClicks(&editor, "one");
    QTest::keyClick(&editor, Qt::Key_Return, Qt::ShiftModifier);
    QTest::keyClicks(&editor, "two");
    QTest::keyClick(&editor, Qt::Key_Return);
    Settle();
    EXPECT_EQ(Value("Amount"), "one\ntwo");
}

TEST_F(CanvasKeys, EscapeLeavesTheTextAsItWas) {
    Select({"Amount"});
    Key(Qt::Key_F2);
    QTest::keyClicks(&Find("txtInPlace"), "lost");
    QTest::keyClick(&Find("txtInPlace"), Qt::Key_Escape);
    Settle();
    EXPECT_EQ(Value("Amount"), "=1+1");
    EXPECT_EQ(Selected(), "Amount");
}

TEST_F(CanvasKeys, WhatIsTypedIsNoCommand) {
    Select({"Amount"});
    Key(Qt::Key_F2);
    QTest::keyClick(&Find("txtInPlace"), Qt::Key_Delete);
    QTest::keyClick(&Find("txtInPlace"), Qt::Key_D, Qt::ControlModifier);
    EXPECT_NE(Id("Amount"), NoElement);
    EXPECT_EQ(Model().Items().items.size(), 4u);
}

}  // namespace
}  // namespace designer::test
