// SPDX-License-Identifier: GPL-3.0-or-later
// The preview window, on a frame with real child windows.
#include <gtest/gtest.h>

#include <QDialog>
#include <QLineEdit>
#include <QPointer>
#include <QTest>
#include <QTreeWidget>

#include "execution/Preview.h"
#include "execution/frmTest.h"
#include "platform/contracts/prompts.h"
#include "platform/viewer/report_viewer.h"
#include "shared/Global.h"
#include "support/mdi_frame.h"
#include "support/shown_forms.h"

namespace {

using Boxes = std::vector<fakes::Box>;

class PreviewForm : public testing::Test {
 protected:
    void SetUp() override {
        Spec("sales").title = "Sales 2026";
        Spec("stock").title = "Stock";
        Global::OpenReport("sales");
        engine.calls.clear();
    }
    // The script of the report file `path`.
    fakes::FakeReportSpec& Spec(const std::string& path) { return engine.reports[path]; }

    // Shows CurrentReport and returns the window.
    frmTest& Show() {
        Global::ShowPreview();
        return *frame.Shown<frmTest>().at(0);
    }
    static QMdiSubWindow& WindowOf(const frmTest& form) {
        return *qobject_cast<QMdiSubWindow*>(form.parentWidget());
    }
    static ReportViewer& Crp(const QWidget& form) { return *form.findChild<ReportViewer*>("crp"); }
    static viewer::PageCanvas& Pages(const QWidget& form) {
        return *form.findChild<viewer::PageCanvas*>("pages");
    }
    static std::string Caption(const QWidget& form) { return form.windowTitle().toStdString(); }

    fakes::FakeClock clock{fakes::At(2026, 11, 21)};
    fakes::FakeLoop loop{clock};
    fakes::FakeEngine engine;
    fakes::FakePrompts prompts;
    fakes::MdiFrame frame;
};

}  // namespace

TEST_F(PreviewForm, CaptionIsTheTitleInCapitals) {
    Spec("sales").title = "Umsätze 2026";
    Global::OpenReport("sales");
    EXPECT_EQ(Caption(Show()), "REPORT VIEWER - UMSÄTZE 2026");
}

TEST_F(PreviewForm, CaptionOfAnEmptyTitleIsTheWordsAlone) {
    Spec("sales").title = "";
    Global::OpenReport("sales");
    EXPECT_EQ(Caption(Show()), "REPORT VIEWER - ");
}

TEST_F(PreviewForm, WindowIsAChildOfTheFrameAtItsTopEdge) {
    const frmTest& form = Show();
    EXPECT_EQ(frame.children.size(), 1U);
    EXPECT_FALSE(form.isModal());
    EXPECT_EQ(WindowOf(form).y(), 0);
    EXPECT_EQ(WindowOf(form).size(), QSize(960, 587));  // 14400 by 8800 twips
    EXPECT_EQ(frame.area.activeSubWindow(), &WindowOf(form));
}

TEST_F(PreviewForm, WindowIsSeenWholeBesideOthers) {
    auto* other = new QWidget;
    frame.AddChild(*other);
    other->parentWidget()->resize(700, 500);
    other->show();
    const frmTest& form = Show();
    const QRect place = WindowOf(form).geometry();
    EXPECT_EQ(place.top(), 0);
    EXPECT_GT(place.left(), other->parentWidget()->x()) << "the title of the other is seen";
    EXPECT_TRUE(frame.area.viewport()->rect().contains(place));
}

TEST_F(PreviewForm, WindowBeginsAtTheLeftEdgeOfAFrameThatIsNarrower) {
    frame.area.resize(600, 500);
    QApplication::processEvents();
    EXPECT_EQ(WindowOf(Show()).geometry(), QRect(0, 0, 960, 587));
}

TEST_F(PreviewForm, ForADialogItIsAWindowOfItsOwnAndGoesBackIntoTheFrameForTheNext) {
    QDialog dialog;
    dialog.setModal(true);
    dialog.show();
    Global::ShowPreview(&dialog);
    EXPECT_TRUE(frame.Shown<frmTest>().empty());
    frmTest* const own = fakes::ShownForm<frmTest>();
    ASSERT_NE(own, nullptr);
    EXPECT_EQ(Caption(*own), "REPORT VIEWER - SALES 2026");
    EXPECT_EQ(Crp(*own).CurrentPage(), 1);
    for (const QSize size : {own->size(), QSize(700, 500)}) {
        own->resize(size);
        QApplication::processEvents();
        EXPECT_EQ(Crp(*own).geometry(), QRect(8, 8, size.width() - 12, size.height() - 12)) << "it fills it";
    }
    const QPointer<QWidget> before(own);
    dialog.hide();
    Show();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(before.isNull());
}

TEST_F(PreviewForm, WindowOfItsOwnIsClosedByTheKeysThatCloseAChildWindow) {
    for (const Qt::Key key : {Qt::Key_W, Qt::Key_F4}) {
        QDialog dialog;
        dialog.show();
        Global::ShowPreview(&dialog);
        const QPointer<QWidget> own = fakes::ShownForm<frmTest>();
        ASSERT_FALSE(own.isNull());
        own->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(own));
        QTest::keyClick(&Pages(*own), key, Qt::ControlModifier);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_TRUE(own.isNull()) << key;
    }
}

TEST_F(PreviewForm, ReportLeavesItsMargins) {
    EXPECT_EQ(Crp(Show()).geometry(), QRect(8, 8, 960 - 20, 587 - 40));
}

TEST_F(PreviewForm, WindowStandsOnTheScreenWhileTheReportWorks) {
    bool shown = false, ran = true;
    loop.onYield = [&] {
        shown = !frame.Shown<frmTest>().empty();
        ran = !engine.calls.empty();
    };
    Show();
    EXPECT_EQ(loop.yields, 1);
    EXPECT_TRUE(shown);
    EXPECT_FALSE(ran);
}

TEST_F(PreviewForm, ReportRunsUnderTheHourglassAndItsFirstPageIsShown) {
    const frmTest& form = Show();
    EXPECT_EQ(engine.calls.at(0), "open pages");
    EXPECT_EQ(frame.pointers, (std::vector<int>{11, 0}));
    EXPECT_EQ(Crp(form).CurrentPage(), 1);
    EXPECT_EQ(Pages(form).Zoom(), 81);
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(PreviewForm, DocumentMapOfTheReportIsOpenFromTheStart) {
    Spec("sales").pages.map = {{"Europe", 0, 1, 0}};
    Global::OpenReport("sales");
    EXPECT_TRUE(Show().findChild<QTreeWidget*>()->isVisible());
}

TEST_F(PreviewForm, ErrorShowsTheBoxAndTheWindowStaysUpEmpty) {
    Spec("sales").pages.openError = RuntimeError(1000, "No such table");
    Global::OpenReport("sales");
    const frmTest& form = Show();
    EXPECT_EQ(prompts.boxes, (Boxes{{"No such table [1000]", vbExclamation, "Oxbow Courier"}}));
    EXPECT_EQ(frame.pointers, (std::vector<int>{11, 0}));
    EXPECT_EQ(Caption(form), "REPORT VIEWER - SALES 2026");
    EXPECT_EQ(Crp(form).CurrentPage(), 0);
}

TEST_F(PreviewForm, WithoutAReportThereIsTheBoxAndAnEmptyWindow) {
    Global::CurrentReport.reset();
    EXPECT_EQ(Crp(Show()).CurrentPage(), 0);
    EXPECT_EQ(
        prompts.boxes,
        (Boxes{{"Object variable or With block variable not set [91]", vbExclamation, "Oxbow Courier"}}));
    EXPECT_EQ(frame.pointers, (std::vector<int>{11, 0}));
}

TEST_F(PreviewForm, ReportGrowsWithTheWindow) {
    const frmTest& form = Show();
    WindowOf(form).resize(1100, 700);
    EXPECT_EQ(Crp(form).geometry(), QRect(8, 8, 1100 - 20, 700 - 40));
}

TEST_F(PreviewForm, HeightBelow600TwipsIsBadAndIgnored) {
    frmTest form;
    form.resize(500, 300);
    form.Form_Resize();
    EXPECT_EQ(Crp(form).size(), QSize(480, 260));
    form.resize(400, 39);
    form.Form_Resize();
    EXPECT_EQ(Crp(form).size(), QSize(380, 260));
    form.resize(10, 200);
    form.Form_Resize();
    EXPECT_EQ(Crp(form).size(), QSize(380, 160));
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(PreviewForm, KeepsItsReportWhenAnotherIsOpenedOrNone) {
    const std::weak_ptr<report::Report> shown = Global::CurrentReport;
    const frmTest& form = Show();
    Global::OpenReport("stock");
    EXPECT_FALSE(shown.expired());
    EXPECT_EQ(Caption(form), "REPORT VIEWER - SALES 2026");
    Global::CurrentReport.reset();
    EXPECT_FALSE(shown.expired());
    EXPECT_EQ(Crp(form).CurrentPage(), 1);
}

TEST_F(PreviewForm, NextPreviewTakesTheWindowOver) {
    frmTest& form = Show();
    Pages(form).SetZoom(200);
    Global::OpenReport("stock");
    const std::weak_ptr<report::Report> next = Global::CurrentReport;
    Global::ShowPreview();
    EXPECT_EQ(frame.Shown<frmTest>(), std::vector<frmTest*>{&form});
    EXPECT_EQ(Caption(form), "REPORT VIEWER - STOCK");
    EXPECT_EQ(Pages(form).Zoom(), 81);
    Global::CurrentReport.reset();
    EXPECT_FALSE(next.expired());
}

TEST_F(PreviewForm, NextPreviewBringsAMinimisedWindowBack) {
    const frmTest& form = Show();
    WindowOf(form).showMinimized();
    Global::ShowPreview();
    EXPECT_FALSE(WindowOf(form).isMinimized());
    EXPECT_EQ(WindowOf(form).size(), QSize(960, 587));
    EXPECT_TRUE(form.isVisible());
}

TEST_F(PreviewForm, KeysAreTheReportsAtOnceAlsoForTheNextOne) {
    auto* other = new QLineEdit;
    frame.AddChild(*other);
    frame.area.window()->show();
    frame.area.window()->activateWindow();
    other->show();
    other->setFocus();
    QApplication::processEvents();
    for (int time = 1; time <= 2; ++time) {
        const frmTest& form = Show();
        QApplication::processEvents();
        ASSERT_EQ(QApplication::focusWidget(), &Pages(form)) << time;
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Plus, Qt::ControlModifier);
        EXPECT_EQ(Pages(form).Zoom(), 100) << time;
        other->setFocus();
    }
}

TEST_F(PreviewForm, ClosedWindowIsFollowedByANewOne) {
    WindowOf(Show()).close();
    EXPECT_TRUE(frame.Shown<frmTest>().empty());
    Global::ShowPreview();
    EXPECT_EQ(frame.Shown<frmTest>().size(), 1U);
    EXPECT_EQ(frame.children.size(), 2U);
}

TEST_F(PreviewForm, WindowThatIsClosedWhileItComesUpRunsNothing) {
    loop.onYield = [&] {
        WindowOf(*frame.Shown<frmTest>().at(0)).close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    };
    Global::ShowPreview();
    EXPECT_TRUE(engine.calls.empty());
    EXPECT_TRUE(prompts.boxes.empty());
    EXPECT_EQ(frame.pointers, (std::vector<int>{11, 0}));
}

TEST_F(PreviewForm, WindowThatIsClosedAndStillWaitsForItsEndRunsNothing) {
    loop.onYield = [&] { WindowOf(*frame.Shown<frmTest>().at(0)).close(); };
    Global::ShowPreview();
    EXPECT_TRUE(engine.calls.empty());
    EXPECT_TRUE(frame.Shown<frmTest>().empty());
}

TEST_F(PreviewForm, NextPreviewComesBeforeTheOtherWindows) {
    const frmTest& form = Show();
    auto* other = new QWidget;
    frame.AddChild(*other);
    other->show();
    frame.area.setActiveSubWindow(qobject_cast<QMdiSubWindow*>(other->parentWidget()));
    Global::ShowPreview();
    EXPECT_EQ(frame.area.activeSubWindow(), &WindowOf(form));
}

TEST_F(PreviewForm, PreviewThatIsAskedForWhileOneComesUpIsTheOneThatStays) {
    loop.onYield = [&] {
        loop.onYield = {};
        Global::OpenReport("stock");
        Global::ShowPreview();
    };
    EXPECT_EQ(Caption(Show()), "REPORT VIEWER - STOCK");
    EXPECT_EQ(frame.Shown<frmTest>().size(), 1U);
    EXPECT_TRUE(prompts.boxes.empty());
}
