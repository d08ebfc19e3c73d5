// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QAction>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QTest>

#include "app/frmMain.h"
#include "app/frmSplash.h"
#include "desktop/frmDesk.h"
#include "platform/base/convert.h"
#include "platform/qt/application.h"
#include "platform/qt/qt_loop.h"
#include "shared/Global.h"
#include "support/database.h"
#include "support/fakes.h"

namespace {

using Texts = std::vector<std::string>;

class MainWindow : public testing::Test {
 protected:
    void SetUp() override {
        Global::DeskCount = 0;
        Global::DeskWindows.clear();
        Global::Frame = &form;
    }
    void TearDown() override {
        form.Timer1->stop();
        form.Children().closeAllSubWindows();
    }
    fakes::FakeClock clock{fakes::At(2026, 11, 21, 14, 0, 0)};
    fakes::TestDatabase database;
    fakes::FakeEngine engine;
    fakes::FakeMailSystem mail;
    fakes::FakePrompts prompts;
    fakes::FakeProcess process;
    fakes::FakeRegistry registry;
    frmMain& form = frmMain::Instance();
};

}  // namespace

TEST_F(MainWindow, CaptionAndDateAreSetAtLoad) {
    form.MDIForm_Load();
    EXPECT_EQ(form.windowTitle().toStdString(), "Oxbow Courier");
    EXPECT_EQ(form.StatusPanel(1), "2026-11-21");
}

TEST_F(MainWindow, TimerTicksOnceASecond) {
    EXPECT_EQ(form.Timer1->interval(), 1000);
}

TEST_F(MainWindow, TipCountsDownThenShowsThePollingTextThenStartsAgain) {
    fakes::Insert(database, {.nextRun = "2026-11-21"});
    engine.reports["Z:\\reports\\sales.rpt"] = {};
    Texts tips;
    engine.onExport = [&](const std::string&) { tips.push_back(form.TrayIcon1->Tip()); };
    Global::PollSeconds = 15;
    Global::PollCountdown = 15;
    Texts expected;
    for (int left = 14; left >= 0; --left) {
        expected.push_back("Time to poll: " + std::to_string(left));
    }
    expected.emplace_back("Report Scheduler polling...");
    expected.emplace_back("Time to poll: 15");
    for (int tick = 0; tick < 16; ++tick) {
        form.Timer1_Timer();
        tips.push_back(form.TrayIcon1->Tip());
    }
    EXPECT_EQ(tips, expected);
}

TEST_F(MainWindow, EventsRunOnceInATickBeforeThePolls) {
    fakes::FakeLoop loop{clock};
    Texts tips;
    loop.onYield = [&] { tips.push_back(form.TrayIcon1->Tip()); };
    Global::PollSeconds = 15;
    Global::PollCountdown = 1;
    form.Timer1_Timer();
    EXPECT_EQ(tips, Texts{"Time to poll: 0"});
    EXPECT_TRUE(database.TakeStatements().empty());
    form.Timer1_Timer();
    EXPECT_EQ(tips, (Texts{"Time to poll: 0", "Report Scheduler polling..."}));
}

TEST_F(MainWindow, FailedPackageInATickIsMendedByThePollOfSingles) {
    database.Run(
        "insert into "
        "ReportBatch(BatchName,Recipients,Frequency,RunTime,StartDate,EndDate,NextRunDate,MailBatch) "
        "values('p','a;','Daily','00:00','2000-01-01','3000-12-31','soon','F')");
    Global::PollSeconds = 15;
    Global::PollCountdown = 0;
    form.EnableTimer1(true);
    form.Timer1_Timer();
    EXPECT_EQ(database.Rows("select ErrMsg from ReportBatchHstry"), Texts{"Type mismatch"});
    EXPECT_TRUE(form.Timer1->isActive());
    EXPECT_EQ(form.TrayIcon1->Tip(), "Time to poll: 15");
}

TEST_F(MainWindow, TipSaysSoWhileAPollRuns) {
    fakes::Insert(database, {.nextRun = "2026-11-21"});
    engine.reports["Z:\\reports\\sales.rpt"] = {};
    std::string tip;
    bool timer = true;
    engine.onExport = [&](const std::string&) {
        tip = form.TrayIcon1->Tip();
        timer = form.Timer1->isActive();
    };
    Global::PollSeconds = 15;
    Global::PollCountdown = 0;
    form.EnableTimer1(true);
    form.Timer1_Timer();
    EXPECT_EQ(tip, "Report Scheduler polling...");
    EXPECT_FALSE(timer);
    EXPECT_TRUE(form.Timer1->isActive());
    EXPECT_EQ(Global::CurrentReport, nullptr);
}

TEST_F(MainWindow, PackagesGoFirstInATick) {
    Global::PollCountdown = 0;
    Global::PollSeconds = 15;
    form.Timer1_Timer();
    EXPECT_EQ(
        database.TakeStatements(),
        (Texts{"select * from reportbatch where startdate <= '2026-11-21' and enddate >= '2026-11-21'",
               "Select * from ReportScheduler Where StartDate <= '2026-11-21' and EndDate >= '2026-11-21'"}));
}

TEST_F(MainWindow, PollIntervalOfZeroPollsAtEveryTick) {
    Global::PollCountdown = 0;
    Global::PollSeconds = 0;
    form.Timer1_Timer();
    form.Timer1_Timer();
    EXPECT_EQ(database.TakeStatements().size(), 4U);
}

TEST_F(MainWindow, NoTickIsQueuedWhileAPollTakesItsTime) {
    QtLoop loop;
    SetLoop(&loop);
    fakes::Insert(database, {.nextRun = "2026-11-21"});
    engine.reports["Z:\\reports\\sales.rpt"] = {};
    engine.onExport = [](const std::string&) { QTest::qWait(2500); };
    Global::PollSeconds = 15;
    Global::PollCountdown = 0;
    form.EnableTimer1(true);
    form.Timer1_Timer();
    QTest::qWait(100);
    EXPECT_EQ(Global::PollCountdown, 15);
    SetLoop(nullptr);
}

TEST_F(MainWindow, ErrorThatLeavesATickEndsTheProcessWithItsBox) {
    database.Run("drop table ReportScheduler");
    Global::PollCountdown = 0;
    Global::PollSeconds = 15;
    QMetaObject::invokeMethod(form.Timer1, "timeout", Qt::QueuedConnection);
    QTest::qWait(50);
    ASSERT_EQ(process.ends, std::vector<int>{1});
    ASSERT_EQ(prompts.boxes.size(), 1U);
    EXPECT_NE(prompts.boxes[0].text.find("-2147217900"), std::string::npos) << prompts.boxes[0].text;
    EXPECT_EQ(prompts.boxes[0].flags, 16);
}

TEST_F(MainWindow, TrayMenuOpensByAMouseAction) {
    emit form.TrayIcon1->MouseUp();
    EXPECT_TRUE(form.Menu("mnutb")->isVisible());
    form.Menu("mnutb")->close();
    emit form.TrayIcon1->DoubleClick();
    EXPECT_TRUE(form.Menu("mnutb")->isVisible());
    form.Menu("mnutb")->close();
}

TEST_F(MainWindow, CancelMenuOnlyClosesTheMenu) {
    form.Entry("mnuNothing")->trigger();
    EXPECT_TRUE(process.ends.empty());
}

TEST_F(MainWindow, ExitReleasesTheDesktopWindowsAndEndsTheProcess) {
    form.Entry("mnuDesktop")->trigger();
    form.Entry("mnuDesktop")->trigger();
    EXPECT_EQ(Global::DeskCount, 2);
    form.Entry("mnuEnd")->trigger();
    EXPECT_EQ(Global::DeskWindows, (std::vector<DeskWindow*>{nullptr, nullptr, nullptr}));
    EXPECT_EQ(process.ends, std::vector<int>{0});
}

TEST_F(MainWindow, CloseBoxEndsTheProcessAtOnceWithAllDesktopWindows) {
    form.Entry("mnuDesktop")->trigger();
    form.Entry("mnuDesktop")->trigger();
    form.close();
    EXPECT_EQ(process.ends, std::vector<int>{0});
    EXPECT_EQ(Global::DeskWindows, (std::vector<DeskWindow*>{nullptr, nullptr, nullptr}));
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(MainWindow, TrayExitEndsTheProcessWithoutClearing) {
    form.Entry("mnuDesktop")->trigger();
    DeskWindow* const window = Global::DeskWindows[1];
    form.Entry("mnutbExit")->trigger();
    EXPECT_EQ(process.ends, std::vector<int>{0});
    EXPECT_EQ(Global::DeskWindows[1], window);
}

TEST_F(MainWindow, ShowDesktopOpensOneMoreWindowInTheNextSlot) {
    Global::CurrentFolderID = "5";
    form.Entry("mnuDesktop")->trigger();
    form.Entry("mnuDesktop")->trigger();
    EXPECT_EQ(Global::CurrentFolderID, "0");
    EXPECT_EQ(Global::DeskCount, 2);
    ASSERT_EQ(Global::DeskWindows.size(), 3U);
    EXPECT_EQ(dynamic_cast<frmDesk*>(Global::DeskWindows[2])->Tag, "2");
}

TEST_F(MainWindow, NewWindowTakesTheSlotOfOneThatIsStillOpen) {
    for (int i = 0; i < 3; ++i) {
        form.Entry("mnuDesktop")->trigger();
    }
    DeskWindow* const third = Global::DeskWindows[3];
    form.Children().subWindowList().at(0)->close();
    QTest::qWait(10);
    EXPECT_EQ(Global::DeskCount, 2);
    form.Entry("mnuDesktop")->trigger();
    EXPECT_NE(Global::DeskWindows[3], third);
    EXPECT_EQ(form.Children().subWindowList().size(), 3);
}

TEST_F(MainWindow, SlotsNeverShrink) {
    for (int i = 0; i < 3; ++i) {
        form.Entry("mnuDesktop")->trigger();
    }
    DeskWindow* const third = Global::DeskWindows[3];
    form.Children().subWindowList().at(0)->close();
    form.Children().subWindowList().at(0)->close();
    QTest::qWait(10);
    ASSERT_EQ(Global::DeskCount, 1);
    form.Entry("mnuDesktop")->trigger();
    ASSERT_EQ(Global::DeskWindows.size(), 4U);
    EXPECT_EQ(Global::DeskWindows[3], third);
}

TEST_F(MainWindow, WindowsMenuListsTheChildWindowsAndLeadsToThem) {
    form.Entry("mnuDesktop")->trigger();
    form.Entry("mnuDesktop")->trigger();
    const QList<QMdiSubWindow*> windows = form.Children().subWindowList();
    windows[0]->setWindowTitle("Sales & more");
    QMenu* menu = form.Menu("mnuWin");
    emit menu->aboutToShow();
    emit menu->aboutToShow();  // nothing is listed twice
    QStringList captions;
    for (QAction* entry : menu->actions().mid(3)) {
        captions += entry->isSeparator() ? "-" : entry->text();
    }
    EXPECT_EQ(captions, (QStringList{"-", "&1 Sales && more", "&2 Desktop"}));
    EXPECT_TRUE(menu->actions().last()->isChecked());
    menu->actions().at(4)->trigger();
    EXPECT_EQ(form.Children().currentSubWindow(), windows[0]);
}

TEST_F(MainWindow, LongTitlesAreCutShortInTheWindowsMenu) {
    form.Entry("mnuDesktop")->trigger();
    form.Children().subWindowList()[0]->setWindowTitle("Two\nlines and " + QString(10'000, 'W'));
    QMenu& menu = *form.Menu("mnuWin");
    emit menu.aboutToShow();
    const QString text = menu.actions().last()->text();
    EXPECT_TRUE(text.startsWith("&1 Two lines and WWW"));
    EXPECT_TRUE(text.endsWith(QChar(0x2026)));
    EXPECT_LT(menu.sizeHint().width(), 1000);
}

TEST_F(MainWindow, MinimisedWindowIsRestoredByTheWindowsMenu) {
    form.Entry("mnuDesktop")->trigger();
    QMdiSubWindow* window = form.Children().subWindowList()[0];
    window->showMinimized();
    emit form.Menu("mnuWin")->aboutToShow();
    form.Menu("mnuWin")->actions().last()->trigger();
    EXPECT_FALSE(window->isMinimized());
}

TEST_F(MainWindow, FormBecomesAChildWindowThatShowsItselfAndGoesWhenItIsClosed) {
    form.show();
    const QPointer<QWidget> added = new QWidget;
    static_cast<MainFrame&>(form).AddChild(*added);
    ASSERT_EQ(form.Children().subWindowList().size(), 1);
    QMdiSubWindow* child = form.Children().subWindowList().front();
    EXPECT_EQ(child->widget(), added);
    EXPECT_FALSE(child->isVisible());
    added->show();
    EXPECT_TRUE(child->isVisible());
    child->close();
    form.hide();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(added.isNull());
}

TEST_F(MainWindow, RunReportReachesTheCurrentDesktopWindow) {
    fakes::FakeDesk desk;
    Global::DeskWindows = {nullptr, &desk};
    Global::DeskIndex = 1;
    form.Entry("mnuDeskView")->trigger();
    EXPECT_EQ(desk.commands, std::vector<int>{6});
    desk.selected = {"1>sales.rpt", "5:Z:\\sales.rpt"};
    EXPECT_THROW(form.Entry("mnubtcRun")->trigger(), RuntimeError);  // there is no such report
    EXPECT_EQ(engine.calls, Texts{"open "});
    Global::DeskWindows.clear();
    Global::DeskIndex = 0;
}

TEST_F(MainWindow, RunsOnDemandAreReachedByTheirEntries) {
    fakes::FakeDesk desk;
    Global::DeskWindows = {nullptr, &desk};
    Global::DeskIndex = 1;
    desk.selected = {"gone", "Pckg:9"};
    database.TakeStatements();
    form.Entry("mnuDeskExec")->trigger();
    EXPECT_EQ(database.TakeStatements().front(),
              "select reportid from reportscheduler where reporttitle = 'gone' and parent = 'Desktop'");
    EXPECT_EQ(prompts.boxes.size(), 1U);
    form.Entry("mnubtcExec")->trigger();
    EXPECT_EQ(database.TakeStatements(), Texts{"select * from reportbatch where reportid = 9"});
    EXPECT_EQ(prompts.boxes.back().text, "Package executed successfully!");
    Global::DeskWindows.clear();
    Global::DeskIndex = 0;
}

TEST_F(MainWindow, HourglassIsSetAndTakenBackOnce) {
    form.ScreenMousePointer(11);
    form.ScreenMousePointer(11);
    EXPECT_NE(QApplication::overrideCursor(), nullptr);
    form.ScreenMousePointer(0);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST(Splash, VersionRunsMinorAndRevisionTogether) {
    EXPECT_EQ(VersionText().toStdString(), "Version 2.02");
    frmSplash splash;
    EXPECT_EQ(splash.findChild<QLabel*>("Label1")->text().toStdString(), "Version 2.02");
}

TEST(Splash, AnyKeyOrClickUnloadsIt) {
    for (const char* target : {"", "imgLogo", "Label3"}) {
        frmSplash splash;
        splash.show();
        const QWidget* child = *target != '\0' ? splash.findChild<QWidget*>(target) : nullptr;
        QTest::mouseClick(&splash, Qt::LeftButton, {},
                          child != nullptr ? child->geometry().center() : QPoint(3, 3));
        EXPECT_FALSE(splash.isVisible()) << target;
    }
    frmSplash splash;
    splash.show();
    QTest::keyClick(&splash, Qt::Key_Escape);
    EXPECT_FALSE(splash.isVisible());
}
