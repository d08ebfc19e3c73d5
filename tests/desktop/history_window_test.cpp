// SPDX-License-Identifier: GPL-3.0-or-later
// The Schedule History window as a child window: opening, closing, tabs and keys.
#include <QLabel>
#include <QPointer>
#include <QScrollBar>
#include <functional>

#include "desktop/HistoryNodes.h"
#include "history_fixture.h"
#include "support/raises.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const char* const Groups = "select distinct frequency from reportscheduler";

class HistoryWindow : public HistoryTest {
 protected:
    // Returns how often the schedules were read since the last call.
    int Loads() {
        const Texts statements = database.TakeStatements();
        return static_cast<int>(std::count(statements.begin(), statements.end(), Groups));
    }
    int Windows() {
        int count = 0;
        for (QMdiSubWindow* window : frame.Children().subWindowList()) {
            count += qobject_cast<frmViewer*>(window->widget()) != nullptr ? 1 : 0;
        }
        return count;
    }
};

}  // namespace

TEST_F(HistoryWindow, OpensWithItsTabsItsLabelAndItsCaption) {
    frmViewer& viewer = Open();
    EXPECT_EQ(viewer.windowTitle().toStdString(), "Schedule History");
    EXPECT_EQ(viewer.vwTab->tabText(0).toStdString(), "Single Reports");
    EXPECT_EQ(viewer.vwTab->tabText(1).toStdString(), "Package Reports");
    EXPECT_EQ(viewer.vwTab->Count(), 2);
    EXPECT_EQ(viewer.findChild<QLabel*>("Label1")->text().toStdString(), "Single Schedules");
    for (const char* name : {"Frame1", "Frame2", "tvReports", "tvBatch", "vwTab"}) {
        EXPECT_NE(viewer.findChild<QWidget*>(name), nullptr) << name;
    }
    EXPECT_TRUE(viewer.tvReports->isVisible());
    EXPECT_FALSE(viewer.tvBatch->isVisible());
    EXPECT_TRUE(viewer.tvReports->hasFocus());
}

TEST_F(HistoryWindow, StandsOnTheScreenWhileItIsFilled) {
    Schedule("Sales");
    fakes::FakeLoop loop{clock};
    database.TakeStatements();
    int yields = 0;
    loop.onYield = [&] {
        ++yields;
        frmViewer* const viewer = OnScreen();
        ASSERT_NE(viewer, nullptr);
        EXPECT_EQ(viewer->windowTitle().toStdString(), "Schedule History....Loading");
        EXPECT_TRUE(frame.Entry("mnuRefHis")->isEnabled());
        EXPECT_FALSE(frame.BusyShown());
        EXPECT_THAT(database.TakeStatements(), IsEmpty());
    };
    Open();
    EXPECT_EQ(yields, 1);
    EXPECT_FALSE(frame.BusyShown());
}

TEST_F(HistoryWindow, HourglassStandsWhileItReadsAndUntilItsBoxIsAnswered) {
    database.Run("alter table ReportScheduler rename to Away");
    prompts.onBox = [&] { EXPECT_TRUE(frame.BusyShown()); };
    Open();
    EXPECT_EQ(prompts.boxes.size(), 1U);
    EXPECT_FALSE(frame.BusyShown());
}

TEST_F(HistoryWindow, MissingRowIsPassedOverWithoutAWordAndOtherErrorsEndTheLoad) {
    Schedule("Sales");
    frmViewer& viewer = Open();
    Schedule("Stock");
    fakes::FakeLoop loop{clock};
    loop.onYield = [] { throw RuntimeError(err::Overflow); };
    ClickEntry("mnuRefHis");
    EXPECT_EQ(prompts.boxes, (std::vector<fakes::Box>{{"Overflow [6]", vbExclamation, "Oxbow Courier"}}));
    EXPECT_THAT(Nodes(*viewer.tvReports), ElementsAre("Daily", ".1: Sales"));
    loop.onYield = [] { throw RuntimeError(err::NoCurrentRecord); };
    ClickEntry("mnuRefHis");
    EXPECT_THAT(Nodes(*viewer.tvReports), ElementsAre("Daily", ".1: Sales", ".2: Stock"));
    EXPECT_EQ(prompts.boxes.size(), 1U);
}

TEST_F(HistoryWindow, SecondOpeningBringsTheOneWindowToTheFrontAsItStands) {
    frmViewer& viewer = Open();
    OpenRoot();
    EXPECT_EQ(Global::DeskIndex, 1);
    viewer.parentWidget()->showMinimized();
    Schedule("Sales");
    database.TakeStatements();
    EXPECT_EQ(&Open(), &viewer);
    EXPECT_EQ(Windows(), 1);
    EXPECT_EQ(frame.Children().activeSubWindow(), viewer.parentWidget());
    EXPECT_FALSE(viewer.parentWidget()->isMinimized());
    EXPECT_EQ(Global::DeskIndex, 9999);
    EXPECT_THAT(database.TakeStatements(), IsEmpty());
    EXPECT_THAT(Nodes(*viewer.tvReports), IsEmpty());
}

TEST_F(HistoryWindow, ButtonOfTheDesktopOpensIt) {
    ClickButton(OpenRoot(), "History");
    ASSERT_NE(OnScreen(), nullptr);
    EXPECT_EQ(Global::DeskIndex, 9999);
    EXPECT_FALSE(frame.BusyShown());
}

TEST_F(HistoryWindow, RefreshOfTheMenuIsThereWhileTheWindowIs) {
    EXPECT_FALSE(frame.Entry("mnuRefHis")->isEnabled());
    frmViewer& viewer = Open();
    EXPECT_TRUE(frame.Entry("mnuRefHis")->isEnabled());
    CloseViewer(viewer);
    EXPECT_FALSE(frame.Entry("mnuRefHis")->isEnabled());
}

TEST_F(HistoryWindow, ClosedWindowIsOpenedAgainAndReadsAgain) {
    Schedule("Sales");
    const QPointer<frmViewer> first = &Open();
    CloseViewer(*first);
    EXPECT_TRUE(first.isNull());
    Schedule("Stock");
    frmViewer& second = Open();
    EXPECT_THAT(Nodes(*second.tvReports), ElementsAre("Daily", ".1: Sales", ".2: Stock"));
    EXPECT_EQ(Windows(), 1);
}

TEST_F(HistoryWindow, OneThatIsClosedWhileItWaitsForItsEndIsNotUsedAgain) {
    frmViewer& first = Open();
    first.parentWidget()->close();
    EXPECT_NE(&Open(), &first);
}

TEST_F(HistoryWindow, WindowClosedWhileItIsFilledAgainReadsNoMore) {
    const std::function<void()> closings[] = {
        [&] { CloseViewer(*OnScreen()); },
        [&] { OnScreen()->parentWidget()->close(); },  // the window waits until it can be destroyed
    };
    for (const std::function<void()>& close : closings) {
        Open();
        fakes::FakeLoop loop{clock};
        loop.onYield = close;
        database.TakeStatements();
        ClickEntry("mnuRefHis");
        EXPECT_EQ(OnScreen(), nullptr);
        EXPECT_EQ(Loads(), 0);
        EXPECT_FALSE(frame.Entry("mnuRefHis")->isEnabled());
    }
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(HistoryWindow, CommandsOfADesktopWindowMeetNoneWhileItIsInFront) {
    Schedule("Sales");
    frmDesk& desk = OpenRoot();
    frmViewer& viewer = Open();
    EXPECT_EQ(Global::DeskIndex, 9999);
    QMetaObject::invokeMethod(frame.Entry("mnuIcons"), "trigger", Qt::QueuedConnection);
    QApplication::processEvents();
    EXPECT_EQ(prompts.boxes, (std::vector<fakes::Box>{EndBox(9, "Subscript out of range")}));
    EXPECT_EQ(process.ends, std::vector<int>{1});
    ClickNode(desk, "Desktop");
    EXPECT_EQ(Global::DeskIndex, 1);
    Click(*viewer.tvReports, "1: Sales");
    EXPECT_EQ(Global::DeskIndex, 9999);
    CloseViewer(viewer);
    EXPECT_EQ(Global::DeskIndex, 1);
}

TEST_F(HistoryWindow, FirstLoadExpandsTheSchedules) {
    Run(Schedule("Sales"), "2026-11-20 06:30:05");
    frmViewer& viewer = Open();
    EXPECT_THAT(Collapsed(*viewer.tvReports), IsEmpty());
}

TEST_F(HistoryWindow, TabOfThePackagesReadsThemAtEveryClick) {
    AddPackage("Month end", {"1>sales"});
    frmViewer& viewer = Open();
    ClickTab(viewer, 2);
    EXPECT_TRUE(viewer.tvBatch->isVisible());
    EXPECT_FALSE(viewer.tvReports->isVisible());
    EXPECT_EQ(viewer.tvBatch->Nodes().Count(), 4);
    AddPackage("Board");
    ClickTab(viewer, 2);
    EXPECT_EQ(viewer.tvBatch->Nodes().Count(), 6);
    AddPackage("Third");
    ClickTab(viewer, 1);
    EXPECT_TRUE(viewer.tvReports->isVisible());
    EXPECT_EQ(viewer.tvBatch->Nodes().Count(), 6);
    ClickTab(viewer, 2);
    EXPECT_EQ(viewer.tvBatch->Nodes().Count(), 8);
}

TEST_F(HistoryWindow, TabOfTheSchedulesReadsNothing) {
    frmViewer& viewer = Open();
    ClickTab(viewer, 2);
    database.TakeStatements();
    ClickTab(viewer, 1);
    EXPECT_THAT(database.TakeStatements(), IsEmpty());
}

TEST_F(HistoryWindow, F5InTheSchedulesReadsThemOnceAndExpandsThem) {
    Run(Schedule("Sales"), "2026-11-20 06:30:05");
    frmViewer& viewer = Open();
    Run(1, "2026-11-21 06:30:05");
    Find(*viewer.tvReports, "Daily").Expanded(false);
    database.TakeStatements();
    Key(*viewer.tvReports, Qt::Key_F5);
    EXPECT_EQ(Loads(), 1);
    EXPECT_THAT(Nodes(*viewer.tvReports),
                ElementsAre("Daily", ".1: Sales", "..Reccurring 2002-03-07 06:30",
                            "..2026-11-21 06:30:05 [Success]", "..2026-11-20 06:30:05 [Success]"));
    EXPECT_THAT(Collapsed(*viewer.tvReports), IsEmpty());
}

TEST_F(HistoryWindow, LongHistoryThatIsReadAgainStaysWhereItWasScrolledTo) {
    for (int i = 0; i < 60; ++i) {
        Schedule("Report " + std::to_string(i));
    }
    frmViewer& viewer = Open();
    QScrollBar& bar = *viewer.tvReports->verticalScrollBar();
    EXPECT_EQ(bar.value(), 0);
    bar.setValue(20);
    Key(*viewer.tvReports, Qt::Key_F5);
    EXPECT_EQ(bar.value(), 20);
}

TEST_F(HistoryWindow, F5OnTheWindowAndOnTheTabsReadsOnceToo) {
    frmViewer& viewer = Open();
    viewer.vwTab->setFocus();
    for (QWidget* place : {static_cast<QWidget*>(viewer.vwTab), static_cast<QWidget*>(&viewer)}) {
        database.TakeStatements();
        Key(*place, Qt::Key_F5);
        EXPECT_EQ(Loads(), 1);
        Key(*place, Qt::Key_F4);
        EXPECT_EQ(Loads(), 0);
    }
}

TEST_F(HistoryWindow, F5InThePackagesLeavesThatTreeAsItStandsAndReadsTheSchedules) {
    AddPackage("Month end", {"1>sales"});
    frmViewer& viewer = Open();
    ClickTab(viewer, 2);
    const Texts before = Nodes(*viewer.tvBatch);
    viewer.tvBatch->setFocus();
    AddPackage("Board");
    Schedule("Sales");
    database.TakeStatements();
    Key(*viewer.tvBatch, Qt::Key_F5);
    EXPECT_EQ(Loads(), 1);
    EXPECT_EQ(Nodes(*viewer.tvBatch), before);
    EXPECT_THAT(Nodes(*viewer.tvReports), ElementsAre("Daily", ".1: Sales"));
}

TEST_F(HistoryWindow, RefreshOfTheMenuExpandsTheTreeThatIsShown) {
    AddPackage("Month end", {"1>sales"});
    frmViewer& viewer = Open();
    ClickTab(viewer, 2);
    EXPECT_THAT(Collapsed(*viewer.tvBatch), ElementsAre("Weekly", "1:Month end"));
    ClickEntry("mnuRefHis");
    EXPECT_THAT(Collapsed(*viewer.tvBatch), IsEmpty());
    EXPECT_EQ(viewer.vwTab->SelectedItem(), 2);
}

TEST_F(HistoryWindow, ExpandNodeOpensTheNodeAndAllBelowItOnly) {
    Run(Schedule("Sales"), "2026-11-20 06:30:05");
    Run(Schedule("Week", "Weekly"), "2026-11-20 06:30:05");
    frmViewer& viewer = Open();
    viewer.tvReports->collapseAll();
    frmViewer::ExpandNode(Find(*viewer.tvReports, "Daily"));
    EXPECT_THAT(Collapsed(*viewer.tvReports), ElementsAre("Weekly", "2: Week"));
}

TEST_F(HistoryWindow, DoubleClickShowsNothingButTheHourglassForAMoment) {
    Run(Schedule("Sales"), "2026-11-20 06:30:05");
    frmViewer& viewer = Open();
    const Texts before = Nodes(*viewer.tvReports);
    database.TakeStatements();
    for (const auto& [text, pointers] :
         std::vector<std::pair<std::string, std::vector<int>>>{{"2026-11-20 06:30:05 [Success]", {11, 0}},
                                                               {"Reccurring 2002-03-07 06:30", {11, 0}},
                                                               {"1: Sales", {}},
                                                               {"Daily", {}}}) {
        fakes::FakeFrame seen;
        DoubleClick(*viewer.tvReports, text);
        EXPECT_EQ(seen.pointers, pointers) << text;
        viewer.tvReports->expandAll();
    }
    EXPECT_THAT(database.TakeStatements(), IsEmpty());
    EXPECT_EQ(Nodes(*viewer.tvReports), before);
    EXPECT_TRUE(prompts.boxes.empty());
    EXPECT_EQ(frame.Children().subWindowList().size(), 1);
}

TEST_F(HistoryWindow, DoubleClickBesideAllNodesIsPassedOver) {
    frmViewer& viewer = Open();
    viewer.tvReports_DblClick();
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(HistoryWindow, DoubleClickThatFailsIsToldInAPlainBox) {
    class FailingFrame : public fakes::FakeFrame {
     public:
        void ScreenMousePointer(int) override { throw RuntimeError(err::Overflow); }
    };
    Run(Schedule("Sales"), "2026-11-20 06:30:05");
    frmViewer& viewer = Open();
    Click(*viewer.tvReports, "2026-11-20 06:30:05 [Success]");
    {
        FailingFrame failing;
        viewer.tvReports_DblClick();
    }
    Global::Frame = &frame;
    EXPECT_EQ(prompts.boxes, (std::vector<fakes::Box>{{"Overflow", 0, "Oxbow Courier"}}));
}

// A number with a colon after it that is not part of a time names a schedule.
TEST_F(HistoryWindow, ScheduleIsNamedByItsOwnTextOrByThatOfItsParent) {
    Run(Schedule("Sales"), "2026-11-20 06:30:05");
    Run(Schedule("At 06:30:00"), "2026-11-20 07:30:05");
    frmViewer& viewer = Open();
    const auto text = [&](const char* node) { return history::ScheduleText(Find(*viewer.tvReports, node)); };
    EXPECT_EQ(text("1: Sales"), "1: Sales");
    EXPECT_EQ(text("2026-11-20 06:30:05 [Success]"), "1: Sales");
    EXPECT_EQ(text("Reccurring 2002-03-07 06:30"), "Reccurring 2002-03-07 06:30");
    EXPECT_EQ(text("2026-11-20 07:30:05 [Success]"), "2: At 06:30:00");
    EXPECT_EQ(text("2: At 06:30:00"), "2: At 06:30:00");
    EXPECT_EQ(NumberRaisedBy([&] { text("Daily"); }), err::ObjectNotSet);
}
