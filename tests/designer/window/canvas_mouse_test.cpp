// SPDX-License-Identifier: GPL-3.0-or-later
#include "window_fixture.h"

namespace designer::test {
namespace {

using CanvasMouse = WindowTest;

TEST_F(CanvasMouse, ShowsWhatTheEngineDraws) {
    EXPECT_EQ(Canvas().Failure(), "");
    // Text is darker than the paper and the outlines.
    const QImage picture = Canvas().viewport()->grab(Canvas().AreaOf(Id("Title")).toRect()).toImage();
    int dark = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            dark += qGray(picture.pixel(x, y)) < 100;
        }
    }
    EXPECT_GT(dark, 20);
}

TEST_F(CanvasMouse, ClickSelectsAndControlClickAdds) {
    Click(At("Title"));
    EXPECT_EQ(Selected(), "Title");
    Click(At("Note"), Qt::ControlModifier);
    EXPECT_EQ(Selected(), "Title Note");
    Click(At("Title"), Qt::ControlModifier);
    EXPECT_EQ(Selected(), "Note");
    Click(At("Amount"));
    EXPECT_EQ(Selected(), "Amount");
    Click(InBody(12, 1));
    EXPECT_EQ(Selected(), "Body");
}

TEST_F(CanvasMouse, RubberBandSelectsWhatItSurrounds) {
    Drag(InBody(0.5, 0.5), InBody(6, 4.5));
    EXPECT_EQ(Selected(), "Title Amount");
    Drag(InBody(0.5, 0.5), InBody(3, 4.5));
    EXPECT_EQ(Selected(), "");
    Drag(InBody(6, 4.5), InBody(12, 7));
    EXPECT_EQ(Selected(), "Note");
}

TEST_F(CanvasMouse, DragMovesToTheGridAsOneStep) {
    const std::string before = Model().Source().Text();
    Drag(InBody(2, 1.5), InBody(4.1, 1.87));
    EXPECT_EQ(Corner("Title"), "3cm 1.25cm");
    EXPECT_EQ(Model().Source().UndoCount(), 1u);
    EXPECT_EQ(UndoName(), "Move Title");
    Run("editUndo");
    EXPECT_EQ(Model().Source().Text(), before);
}

TEST_F(CanvasMouse, DragMovesAllThatIsSelected) {
    Select({"Title", "Note"});
    Drag(InBody(2, 1.5), InBody(2, 2));
    EXPECT_EQ(Corner("Title"), "1cm 1.5cm");
    EXPECT_EQ(Corner("Note"), "7cm 5.5cm");
    EXPECT_EQ(UndoName(), "Move 2 items");
}

TEST_F(CanvasMouse, EdgesOfOthersAreFelt) {
    // The left edge of Note comes near to that of Title, which is on no grid line.
    Model().Edit("Off the grid", [&](Document& document) { SetSize(document, Id("Title"), "Left", 30.3); });
    Settle();
    Drag(InBody(8, 5.5), InBody(2.1, 5.5));
    EXPECT_EQ(Text("Note", "Left"), "1.06892cm");
}

TEST_F(CanvasMouse, WithoutSnappingItFollowsThePointer) {
    Run("snap");
    const QPoint from = InBody(8, 5.5);
    Drag(from, from + QPoint(17, 0));
    const double points = PointsOf(Text("Note", "Left")).value_or(0);
    EXPECT_NEAR(points, 7 * 72 / 2.54 + 17 * 72.0 / Canvas().logicalDpiX(), 0.01);
    EXPECT_EQ(Text("Note", "Top"), "5cm");
}

TEST_F(CanvasMouse, NothingLeavesThePage) {
    Drag(InBody(2, 1.5), InBody(-3, -3));
    EXPECT_EQ(Corner("Title"), "0cm 0cm");
}

TEST_F(CanvasMouse, AnItemMovesToAnotherBand) {
    const QRectF page = Canvas().AreaOf(Id("Page"));
    Drag(At("Note"), page.center().toPoint() + QPoint(InBody(7, 0).x() - InBody(0, 0).x(), 0));
    EXPECT_EQ(Model().Source().Name(Model().Source().Parent(Model().Source().Parent(Id("Note")))),
              "PageFooter");
    EXPECT_EQ(Corner("Note"), "7cm 0cm");
}

TEST_F(CanvasMouse, HandlesResize) {
    Click(At("Title"));
    Drag(InBody(5, 2), InBody(6, 2.5));
    EXPECT_EQ(Size("Title"), "5cm 1.5cm");
    EXPECT_EQ(Corner("Title"), "1cm 1cm");
    EXPECT_EQ(UndoName(), "Resize Title");
    Drag(InBody(1, 1), InBody(2, 1.25));
    EXPECT_EQ(Corner("Title") + " " + Size("Title"), "2cm 1.25cm 4cm 1.25cm");
}

TEST_F(CanvasMouse, EscapeLeavesADrag) {
    QTest::mousePress(Canvas().viewport(), Qt::LeftButton, {}, At("Title"));
    MoveTo(InBody(8, 8));
    Key(Qt::Key_Escape);
    QTest::mouseRelease(Canvas().viewport(), Qt::LeftButton, {}, InBody(8, 8));
    EXPECT_EQ(Model().Source().UndoCount(), 0u);
}

// The other hand is on the keyboard.
TEST_F(CanvasMouse, ADragEndsWhenItsItemIsDeletedOrUndone) {
    const auto press = [this](QPoint begin) {
        QTest::mousePress(Canvas().viewport(), Qt::LeftButton, {}, begin);
        MoveTo(InBody(6, 6));
    };
    const auto release = [this] {
        MoveTo(InBody(7, 7));
        QTest::mouseRelease(Canvas().viewport(), Qt::LeftButton, {}, InBody(7, 7));
    };
    press(At("Title"));
    Key(Qt::Key_Delete);
    release();
    EXPECT_EQ(UndoName(), "Delete Title");
    Key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Corner("Title"), "1cm 1cm");
    Click(At("Title"));
    press(InBody(5, 2));  // its handle
    Key(Qt::Key_X, Qt::ControlModifier);
    release();
    EXPECT_EQ(Model().Source().UndoCount(), 1u);
    Key(Qt::Key_V, Qt::ControlModifier);
    const std::string pasted = Selected();
    press(At(pasted));
    Key(Qt::Key_Z, Qt::ControlModifier);
    release();
    EXPECT_EQ(Model().Source().UndoCount(), 1u);
}

TEST_F(CanvasMouse, TheEdgeOfABandIsPulledButNotOverItsItems) {
    Drag(InBody(12, 8), InBody(12, 9));
    EXPECT_EQ(Model().Source().TextAt(BodyOf(Model().Source()), "Height"), "9cm");
    Drag(InBody(12, 9), InBody(12, 2));
    EXPECT_EQ(Model().Source().TextAt(BodyOf(Model().Source()), "Height"), "6cm");
    Drag(InBody(16, 3), InBody(14, 3));
    EXPECT_EQ(Model().Source().TextAt(Model().Source().Parent(BodyOf(Model().Source())), "Width"), "14cm");
}

TEST_F(CanvasMouse, AToolDrawsAnItem) {
    QTest::mouseClick(&Find("toolTextBox"), Qt::LeftButton);
    EXPECT_EQ(Canvas().Tool(), NewItem::TextBox);
    Drag(InBody(9, 1), InBody(12, 2));
    EXPECT_EQ(Selected(), "Textbox1");
    EXPECT_EQ(Corner("Textbox1") + " " + Size("Textbox1"), "9cm 1cm 3cm 1cm");
    EXPECT_EQ(UndoName(), "Insert Textbox");
    EXPECT_EQ(Canvas().Tool(), std::nullopt);
    EXPECT_FALSE(Find<QAbstractButton>("toolTextBox").isChecked());
}

TEST_F(CanvasMouse, AClickWithAToolDrawsTheUsualSize) {
    QTest::mouseClick(&Find("toolRectangle"), Qt::LeftButton);
    Click(InBody(9, 1));
    EXPECT_EQ(Corner("Rectangle1") + " " + Size("Rectangle1"), "9cm 1cm 3.81cm 2.54cm");
}

TEST_F(CanvasMouse, ALineMayGoUpwards) {
    QTest::mouseClick(&Find("toolLine"), Qt::LeftButton);
    Drag(InBody(9, 4), InBody(12, 1));
    EXPECT_EQ(Corner("Line1") + " " + Size("Line1"), "9cm 4cm 3cm -3cm");
    Click(InBody(10.5, 2.5));
    EXPECT_EQ(Selected(), "Line1");
    Drag(InBody(12, 1), InBody(13, 4));
    EXPECT_EQ(Corner("Line1") + " " + Size("Line1"), "9cm 4cm 4cm 0cm");
}

TEST_F(CanvasMouse, DoubleClickTypesTheText) {
    QTest::mouseDClick(Canvas().viewport(), Qt::LeftButton, {}, At("Title"));
    Settle();
    QTest::keyClicks(&Find("txtInPlace"), "Net <2026>");
    QTest::keyClick(&Find("txtInPlace"), Qt::Key_Return);
    Settle();
    EXPECT_EQ(Value("Title"), "Net <2026>");
    EXPECT_EQ(UndoName(), "Edit Title");
    EXPECT_TRUE(Canvas().hasFocus());
}

TEST_F(CanvasMouse, AClickElsewhereTakesTheText) {
    Click(At("Title"));
    Key(Qt::Key_F2);
    QTest::keyClicks(&Find("txtInPlace"), "Net");
    Click(At("Note"));
    EXPECT_EQ(Value("Title"), "Net");
    EXPECT_EQ(Selected(), "Note");
}

TEST_F(CanvasMouse, ZoomKeepsPlaces) {
    Canvas().SetZoom(200);
    Drag(InBody(2, 1.5), InBody(3, 1.5));
    EXPECT_EQ(Corner("Title"), "2cm 1cm");
    Canvas().SetZoom(1000);
    EXPECT_EQ(Canvas().Zoom(), 400);
    Canvas().SetZoom(1);
    EXPECT_EQ(Canvas().Zoom(), 25);
    Canvas().StepZoom(2);
    EXPECT_EQ(Canvas().Zoom(), 50);
}

}  // namespace
}  // namespace designer::test
