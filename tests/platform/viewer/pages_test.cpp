// SPDX-License-Identifier: GPL-3.0-or-later
#include <QTreeWidget>

#include "platform/viewer/viewer_fixture.h"

namespace viewer::test {
namespace {

class ViewerPages : public ViewerTest {};

TEST_F(ViewerPages, WithoutAReportViewReportFails) {
    try {
        m_viewer.ViewReport();
        FAIL() << "no error";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), err::ObjectNotSet);
    }
    EXPECT_FALSE(Find("cmdPrint").isEnabled());
}

TEST_F(ViewerPages, TheFirstPageIsThereAtOnceAndTheRestInIdleTime) {
    Source(Pages(50));
    m_viewer.ViewReport();
    EXPECT_EQ(PageBox(), "1 of 1+");
    Settle();
    EXPECT_EQ(PageBox(), "1 of 50");
    EXPECT_EQ(Calls("open pages"), 1);
}

TEST_F(ViewerPages, OnlyPagesThatAreSeenAreDrawnAndOnce) {
    Show(50);
    EXPECT_EQ(Calls("draw 1"), 1);
    EXPECT_EQ(Calls("draw 3"), 0);
    Canvas().viewport()->repaint();
    EXPECT_EQ(Calls("draw 1"), 1);
}

TEST_F(ViewerPages, ButtonsLeadThroughThePages) {
    Show(5);
    EXPECT_FALSE(Find("cmdPrevious").isEnabled());
    Click("cmdNext");
    EXPECT_EQ(PageBox(), "2 of 5");
    Click("cmdLast");
    EXPECT_EQ(PageBox(), "5 of 5");
    EXPECT_FALSE(Find("cmdNext").isEnabled());
    Click("cmdPrevious");
    EXPECT_EQ(PageBox(), "4 of 5");
    Click("cmdFirst");
    EXPECT_EQ(PageBox(), "1 of 5");
}

TEST_F(ViewerPages, ANumberTypedInThePageBoxLeadsThere) {
    Show(40);
    Key(Qt::Key_G, Qt::ControlModifier);
    auto& box = Find<QLineEdit>("txtPage");
    EXPECT_TRUE(box.hasFocus());
    QTest::keyClicks(&box, "33");
    QTest::keyClick(&box, Qt::Key_Return);
    Settle();
    EXPECT_EQ(PageBox(), "33 of 40");
    EXPECT_TRUE(Canvas().hasFocus());
    box.setFocus();
    box.selectAll();
    QTest::keyClicks(&box, "99");
    QTest::keyClick(&box, Qt::Key_Return);
    Settle();
    EXPECT_EQ(PageBox(), "40 of 40");
}

TEST_F(ViewerPages, EscapeGivesATypedNumberUp) {
    Show(40);
    auto& box = Find<QLineEdit>("txtPage");
    box.setFocus();
    box.selectAll();
    QTest::keyClicks(&box, "33");
    QTest::keyClick(&box, Qt::Key_Escape);
    EXPECT_EQ(PageBox(), "1 of 40");
}

TEST_F(ViewerPages, APageThatIsNotMadeYetIsWaitedFor) {
    Source(Pages(3000));
    m_viewer.ViewReport();
    auto& box = Find<QLineEdit>("txtPage");
    box.setFocus();
    box.selectAll();
    QTest::keyClicks(&box, "2500");
    QTest::keyClick(&box, Qt::Key_Return);
    Settle();
    EXPECT_EQ(PageBox(), "2500 of 3000");
}

TEST_F(ViewerPages, KeysScroll) {
    Show(5);
    auto& bar = *Canvas().verticalScrollBar();
    Key(Qt::Key_PageDown);
    const int down = bar.value();
    EXPECT_GT(down, 300);
    Key(Qt::Key_PageUp);
    EXPECT_EQ(bar.value(), 0);
    Key(Qt::Key_Space);
    EXPECT_EQ(bar.value(), down);
    Key(Qt::Key_Space, Qt::ShiftModifier);
    EXPECT_EQ(bar.value(), 0);
    Key(Qt::Key_Down);
    EXPECT_GT(bar.value(), 0);
    Key(Qt::Key_End);
    EXPECT_EQ(bar.value(), bar.maximum());
    EXPECT_EQ(PageBox(), "5 of 5");
    Key(Qt::Key_Home);
    EXPECT_EQ(bar.value(), 0);
}

TEST_F(ViewerPages, TheEndIsFollowedWhilePagesAreMade) {
    Source(Pages(3000));
    m_viewer.ViewReport();
    Canvas().setFocus();
    QTest::keyClick(&Canvas(), Qt::Key_End);
    Settle();
    EXPECT_EQ(PageBox(), "3000 of 3000");
}

TEST_F(ViewerPages, ZoomIs81AtFirstAndKeepsItsBounds) {
    Show(2);
    EXPECT_EQ(ZoomBox(), "81%");
    m_viewer.Zoom(0);
    EXPECT_EQ(ZoomBox(), "1%");
    m_viewer.Zoom(5000);
    EXPECT_EQ(ZoomBox(), "400%");
    m_viewer.Zoom(81);
    EXPECT_EQ(ZoomBox(), "81%");
}

TEST_F(ViewerPages, ZoomIsTypedSteppedAndChosen) {
    Show(2);
    auto& box = Find<QComboBox>("cmbZoom");
    box.lineEdit()->setFocus();
    box.lineEdit()->selectAll();
    QTest::keyClicks(box.lineEdit(), "130");
    QTest::keyClick(box.lineEdit(), Qt::Key_Return);
    EXPECT_EQ(ZoomBox(), "130%");
    Click("cmdZoomIn");
    EXPECT_EQ(ZoomBox(), "150%");
    Click("cmdZoomOut");
    EXPECT_EQ(ZoomBox(), "125%");
    Key(Qt::Key_Plus);
    EXPECT_EQ(ZoomBox(), "150%");
    Key(Qt::Key_Minus);
    EXPECT_EQ(ZoomBox(), "125%");
    Key(Qt::Key_0, Qt::ControlModifier);
    EXPECT_EQ(ZoomBox(), "100%");
    box.setFocus();
    box.setCurrentIndex(box.findText("200%"));
    emit box.activated(box.currentIndex());
    EXPECT_EQ(Canvas().Zoom(), 200);
    box.lineEdit()->selectAll();
    QTest::keyClicks(box.lineEdit(), "wide");
    QTest::keyClick(box.lineEdit(), Qt::Key_Return);
    EXPECT_EQ(ZoomBox(), "200%") << "what is no number changes nothing";
    for (const char* size : {"nan", "inf", "-inf"}) {
        box.lineEdit()->selectAll();
        QTest::keyClicks(box.lineEdit(), size);
        QTest::keyClick(box.lineEdit(), Qt::Key_Return);
        EXPECT_EQ(Canvas().Zoom(), 200) << size;
    }
}

TEST_F(ViewerPages, FitWidthAndFitPageFollowTheWindow) {
    Show(2);
    Click("cmdFitPage");
    const double whole = Canvas().Zoom();
    EXPECT_EQ(Canvas().horizontalScrollBar()->maximum(), 0);
    Click("cmdFitWidth");
    const double wide = Canvas().Zoom();
    EXPECT_GT(wide, whole);
    EXPECT_EQ(Canvas().horizontalScrollBar()->maximum(), 0);
    m_viewer.resize(700, 600);
    Settle();
    EXPECT_LT(Canvas().Zoom(), wide);
    EXPECT_EQ(Canvas().horizontalScrollBar()->maximum(), 0);
}

TEST_F(ViewerPages, TheWheelZoomsWithControlAtThePointer) {
    Show(5);
    const QPointF at(450, 200);
    const auto wheel = [&](int delta) {
        QWheelEvent event(at, Canvas().viewport()->mapToGlobal(at), {}, {0, delta}, Qt::NoButton,
                          Qt::ControlModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(Canvas().viewport(), &event);
    };
    wheel(120);
    EXPECT_NEAR(Canvas().Zoom(), 81 * 1.1, 0.01);
    wheel(-120);
    EXPECT_NEAR(Canvas().Zoom(), 81, 0.01);
}

TEST_F(ViewerPages, AFinePageAtFourTimesItsSizeIsDrawnInPieces) {
    Show(1);
    m_engine.calls.clear();
    m_viewer.Zoom(400);
    Settle();
    EXPECT_GE(Calls("draw 1"), 1);
    const long seen = Calls("draw 1");
    Canvas().verticalScrollBar()->setValue(Canvas().verticalScrollBar()->maximum());
    Settle();
    EXPECT_GT(Calls("draw 1"), seen);
}

TEST_F(ViewerPages, PagesThatSayHowManyThereAreAreDrawnAgainInTheEnd) {
    fakes::FakePages pages = Pages(3000);
    pages.waitsForTotal = true;
    Source(std::move(pages));
    m_viewer.ViewReport();
    Canvas().viewport()->repaint();
    EXPECT_EQ(Calls("draw 1"), 1);
    Settle();
    EXPECT_EQ(PageBox(), "1 of 3000");
    EXPECT_EQ(Calls("draw 1"), 2);
}

TEST_F(ViewerPages, LandscapeAndOtherSizesShowWhole) {
    fakes::FakePages pages = Pages(3);
    pages.pages[1].width = 1200;
    pages.pages[1].height = 400;
    Show(std::move(pages));
    Click("cmdFitPage");
    Click("cmdNext");
    EXPECT_EQ(PageBox(), "2 of 3");
    EXPECT_EQ(Canvas().horizontalScrollBar()->maximum(), 0);
}

TEST_F(ViewerPages, WithSeveralPagesInSightButtonsStillGoOneByOne) {
    Show(6);
    m_viewer.Zoom(10);
    Settle();
    for (const char* page : {"2 of 6", "3 of 6", "4 of 6", "5 of 6", "6 of 6"}) {
        Click("cmdNext");
        EXPECT_EQ(PageBox(), page);
    }
    Click("cmdPrevious");
    EXPECT_EQ(PageBox(), "5 of 6");
}

TEST_F(ViewerPages, AnErrorOfTheEngineLeavesTheViewerEmpty) {
    Show(3);
    fakes::FakePages pages;
    pages.openError = RuntimeError(-2147206458, "no such table: Orders");
    Source(std::move(pages));
    EXPECT_THROW(m_viewer.ViewReport(), RuntimeError);
    Settle();
    EXPECT_EQ(m_viewer.CurrentPage(), 0);
    EXPECT_EQ(PageBox(), "");
    EXPECT_FALSE(Find("cmdSave").isEnabled());
}

TEST_F(ViewerPages, AnErrorInTheFirstPagePassesOut) {
    fakes::FakePages pages;
    pages.pages.clear();
    pages.makeError = RuntimeError(5, "bad");
    Source(std::move(pages));
    EXPECT_THROW(m_viewer.ViewReport(), RuntimeError);
}

TEST_F(ViewerPages, AnErrorInALaterPageIsALineAndThePagesBeforeItStay) {
    fakes::FakePages pages = Pages(3);
    pages.makeError = RuntimeError(-2147206457, "Textbox total: overflow");
    Show(std::move(pages));
    EXPECT_EQ(Message(), "Page 4 cannot be made: Textbox total: overflow [-2147206457]");
    EXPECT_EQ(PageBox(), "1 of 3");
    Show(2);
    EXPECT_EQ(Message(), "") << "the next report begins without it";
}

TEST_F(ViewerPages, APageThatCannotBeDrawnSaysSo) {
    fakes::FakePages pages = Pages(2);
    pages.pages[0].drawError = RuntimeError(5, "Image \"Logo\" is damaged and cannot be read");
    Show(std::move(pages));
    EXPECT_EQ(Message(), "Page 1 cannot be shown: Image \"Logo\" is damaged and cannot be read [5]");
}

fakes::FakePages Mapped() {
    fakes::FakePages pages;
    pages.pages.assign(10, {});
    pages.map = {{"North", 0, 1, 0}, {"Oslo", 1, 3, 300}, {"South", 0, 7, 0}};
    return pages;
}

TEST_F(ViewerPages, TheDocumentMapIsOpenWhenTheOptionIsSet) {
    m_viewer.DisplayOption(true);
    Show(Mapped());
    auto& map = Find<QTreeWidget>("tvwMap");
    EXPECT_TRUE(map.isVisible());
    ASSERT_EQ(map.topLevelItemCount(), 2);
    EXPECT_EQ(map.topLevelItem(0)->child(0)->text(0), "Oslo");
    map.setCurrentItem(map.topLevelItem(1));
    Settle();
    EXPECT_EQ(PageBox(), "7 of 10");
    Click("cmdMap");
    EXPECT_FALSE(map.isVisible());
}

TEST_F(ViewerPages, TipsOfTheMapShowTagsAsTheyStand) {
    fakes::FakePages pages = Mapped();
    pages.map[0].label = "<b>Oslo</b> & \"Bergen\"";
    Show(std::move(pages));
    EXPECT_EQ(Find<QTreeWidget>("tvwMap").topLevelItem(0)->toolTip(0),
              "<qt>&lt;b&gt;Oslo&lt;/b&gt; &amp; &quot;Bergen&quot;</qt>");
}

TEST_F(ViewerPages, WithoutTheOptionTheMapOpensByItsButton) {
    Show(Mapped());
    auto& map = Find<QTreeWidget>("tvwMap");
    EXPECT_FALSE(map.isVisible());
    Click("cmdMap");
    EXPECT_TRUE(map.isVisible());
}

TEST_F(ViewerPages, AReportWithoutAMapHasNoPanel) {
    m_viewer.DisplayOption(true);
    Show(2);
    EXPECT_FALSE(Find<QTreeWidget>("tvwMap").isVisible());
    EXPECT_FALSE(Find("cmdMap").isEnabled());
}

TEST_F(ViewerPages, TheReportIsKeptWhileItIsShown) {
    Show(2);
    m_engine.calls.clear();
    m_viewer.ReportSource(nullptr);
    m_viewer.SaveAs("/tmp/a.pdf");
    EXPECT_EQ(Calls("export False"), 1);
}

}  // namespace
}  // namespace viewer::test
