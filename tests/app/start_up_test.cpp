// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QCoreApplication>
#include <QEvent>
#include <QMdiArea>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "app/Main.h"
#include "app/frmMain.h"
#include "desktop/frmDesk.h"
#include "dialogs/frmAddReport.h"
#include "platform/base/paths.h"
#include "platform/contracts/adodb.h"
#include "platform/contracts/prompts.h"
#include "platform/contracts/shared_store.h"
#include "platform/controls/text_box.h"
#include "platform/posix/handed_report.h"
#include "shared/Global.h"
#include "shared/ShellMod.h"
#include "store/StartUp.h"
#include "support/database.h"
#include "support/fakes.h"
#include "support/raises.h"
#include "support/temporary_folder.h"

namespace {

using Texts = std::vector<std::string>;

// Records the windows and statements of the start in their order.
class Order : public QObject {
 public:
    Order() {
        QCoreApplication::instance()->installEventFilter(this);
        ADODB::SetStatementTrace([this](const std::string& statement) { Add(statement); });
    }
    ~Order() override { ADODB::SetStatementTrace({}); }
    Texts events;

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        const std::string name = watched->objectName().toStdString();
        if (event->spontaneous() || (name != "frmSplash" && name != "frmMain" && name != "frmDesk")) {
            return false;
        }
        if (event->type() == QEvent::Show) {
            Add(name + " shows" + (frmMain::Instance().Timer1->isActive() ? " with the timer on" : "") +
                ", " + frmMain::Instance().StatusPanel(2));
        } else if (event->type() == QEvent::Hide) {
            Add(name + " goes");
        } else if (event->type() == QEvent::WindowStateChange && frmMain::Instance().isMaximized()) {
            Add(name + " is maximised");
        }
        return false;
    }

 private:
    void Add(const std::string& event) {
        if (events.empty() || events.back() != event) {
            events.push_back(event);
        }
    }
};

class StartUp : public testing::Test {
 protected:
    void SetUp() override {
        SetCommand("-sched");
        Global::DeskCount = 0;
        Global::DeskWindows.clear();
        Global::Frame = &frmMain::Instance();
        frmMain::Instance().Timer1->stop();
        std::filesystem::copy_file(database.Folder() / "PressroomLive.dat",
                                   database.Folder() / "Pressroom.dat");
    }
    void TearDown() override {
        SetCommand({});
        frmMain::Instance().Timer1->stop();
        frmMain::Instance().Children().closeAllSubWindows();
        frmMain::Instance().hide();
    }
    void Setting(const char* name, const std::string& value) {
        registry.keys[ShellMod::SettingsKey][name] = {REG_SZ, value};
    }
    void NoFirstRun() { Setting("FirstRun", "False"); }
    bool TimerOn() const { return frmMain::Instance().Timer1->isActive(); }

    fakes::FakeClock clock{fakes::At(2026, 11, 21, 14, 0, 0)};
    fakes::TestDatabase database;
    fakes::FakeEngine engine;
    fakes::FakeMailSystem mail;
    fakes::FakePrompts prompts;
    fakes::FakeProcess process;
    fakes::FakeRegistry registry;
};

}  // namespace

TEST_F(StartUp, FirstRunWritesItsSettingsInThisOrder) {
    const std::string app = AppPath();
    Global::Main();
    const std::string key = std::string(ShellMod::SettingsKey) + "\\";
    EXPECT_EQ(registry.writes,
              (Texts{"Software\\Microsoft\\Windows\\CurrentVersion\\Run\\OXC=\"" + app + "\\oxc.exe\" -sched",
                     key + "Poll=15", key + "Path=" + app, key + "Output=" + app + "\\Output\\",
                     key + "AlertWho=", key + "DefPath=" + app, key + "FirstRun=False"}));
}

TEST_F(StartUp, FirstRunCopiesTheBlankDatabaseBeforeAnythingOpensIt) {
    for (const char* end : {"", "-wal", "-shm"}) {
        std::filesystem::remove(database.Folder() / (std::string("PressroomLive.dat") + end));
    }
    Global::Main();
    EXPECT_TRUE(prompts.boxes.empty());
    EXPECT_TRUE(std::filesystem::exists(database.Folder() / "PressroomLive.dat"));
}

TEST_F(StartUp, FirstRunInAFolderWithBothFilesLeavesTheLiveFileAsItIs) {
    database.Run("insert into Folders(FolderName, Parent) values('Mine', 0)");
    Global::Main();
    EXPECT_EQ(database.Rows("select FolderName from Folders"), Texts{"Mine"});
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(StartUp, LaterRunsWriteNothing) {
    NoFirstRun();
    Global::Main();
    EXPECT_TRUE(registry.writes.empty());
}

TEST_F(StartUp, SettingsHaveTheirDefaults) {
    NoFirstRun();
    Global::Main();
    EXPECT_EQ(Global::PollSeconds, 15);
    EXPECT_EQ(Global::PollCountdown, 15);
    EXPECT_EQ(Global::OutputPath, AppPath() + "\\Output\\");
    EXPECT_EQ(Global::DesignerPath, "");
    EXPECT_EQ(Global::AlertWho, "");
    EXPECT_EQ(Global::DefPath, AppPath());
    EXPECT_EQ(Global::MailBatchFlag, "T");
    EXPECT_EQ(Global::ConnectionString, "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" + AppPath() +
                                            "\\PressroomLive.dat;Persist Security Info=False");
}

TEST_F(StartUp, SettingsOfAnotherTypeHaveTheirDefaults) {
    NoFirstRun();
    for (const char* name : {"Poll", "Output", "CRWPath", "AlertWho", "DefPath"}) {
        registry.keys[ShellMod::SettingsKey][name] = {4, std::string("\x1e\0\0\0", 4)};
    }
    Global::Main();
    EXPECT_EQ(Global::PollSeconds, 15);
    EXPECT_EQ(Global::OutputPath, AppPath() + "\\Output\\");
    EXPECT_EQ(Global::DesignerPath, "");
    EXPECT_EQ(Global::AlertWho, "");
    EXPECT_EQ(Global::DefPath, AppPath());
}

TEST_F(StartUp, IntervalSavedInTheEditorDoesNotReachARunningScheduler) {
    NoFirstRun();
    Setting("Poll", "2");
    Global::Main();
    Setting("Poll", "60");
    Texts tips;
    for (int tick = 0; tick < 4; ++tick) {
        frmMain::Instance().Timer1_Timer();
        tips.push_back(frmMain::Instance().TrayIcon1->Tip());
    }
    EXPECT_EQ(tips, (Texts{"Time to poll: 1", "Time to poll: 0", "Time to poll: 2", "Time to poll: 1"}));
    EXPECT_EQ(Global::PollSeconds, 2);
    Global::Main();  // the next start reads the setting
    EXPECT_EQ(Global::PollSeconds, 60);
}

TEST_F(StartUp, SettingsThatCannotBeReadAgainStayAsTheyAre) {
    NoFirstRun();
    Setting("Poll", "2");
    Setting("AlertWho", "boss@example.com");
    Global::Main();
    Global::PollCountdown = 1;
    Setting("Poll", "60");
    Setting("AlertWho", "chief@example.com");
    registry.openReads = 4;  // of the alert address
    EXPECT_EQ(NumberRaisedBy([] { Global::ReadSettings(); }), err::PathFileAccess);
    EXPECT_EQ(Global::PollSeconds, 2);
    EXPECT_EQ(Global::PollCountdown, 1);
    EXPECT_EQ(Global::AlertWho, "boss@example.com");
    registry.isUnreadable = false;
    Global::ReadSettings();
    EXPECT_EQ(Global::PollSeconds, 60);
    EXPECT_EQ(Global::PollCountdown, 60);
    EXPECT_EQ(Global::AlertWho, "chief@example.com");
}

TEST_F(StartUp, OutputWithoutBackslashGetsOneInTheVariableOnly) {
    NoFirstRun();
    Setting("Output", "Z:\\srv\\out");
    Global::Main();
    EXPECT_EQ(Global::OutputPath, "Z:\\srv\\out\\");
    EXPECT_EQ(registry.keys[ShellMod::SettingsKey]["Output"].bytes, "Z:\\srv\\out");
}

TEST_F(StartUp, SchedulerHidesTheFrameAndPollsSinglesFirst) {
    NoFirstRun();
    Global::Main();
    EXPECT_FALSE(frmMain::Instance().isVisible());
    EXPECT_TRUE(frmMain::Instance().isMinimized());
    EXPECT_TRUE(TimerOn());
    EXPECT_TRUE(frmMain::Instance().TrayIcon1->IsShown());
    EXPECT_EQ(Global::DeskCount, 0);
    EXPECT_TRUE(Global::DeskWindows.empty());
    const Texts statements = database.TakeStatements();
    ASSERT_EQ(statements.size(), 2U);
    EXPECT_EQ(statements[0].rfind("Select * from ReportScheduler", 0), 0U);
    EXPECT_EQ(statements[1].rfind("select * from reportbatch", 0), 0U);
}

TEST_F(StartUp, AnyWordOnTheCommandLineStartsTheScheduler) {
    NoFirstRun();
    SetCommand("anything");
    Global::Main();
    EXPECT_TRUE(TimerOn());
    EXPECT_FALSE(frmMain::Instance().isVisible());
}

TEST_F(StartUp, EditorShowsItsWindowsAndPurges) {
    NoFirstRun();
    SetCommand({});
    testing::internal::CaptureStderr();
    Global::Main();
    EXPECT_EQ(testing::internal::GetCapturedStderr().find("poll"), std::string::npos);
    EXPECT_FALSE(TimerOn());
    EXPECT_TRUE(frmMain::Instance().isVisible());
    EXPECT_TRUE(frmMain::Instance().isMaximized());
    EXPECT_EQ(frmMain::Instance().StatusPanel(2), "Oxbow Courier - On Demand...On Time...");
    EXPECT_EQ(Global::DeskCount, 1);
    ASSERT_EQ(Global::DeskWindows.size(), 2U);
    EXPECT_NE(Global::DeskWindows[1], nullptr);
    EXPECT_EQ(database.TakeStatements(),
              (Texts{"select foldername, folderid from folders where parent = 0",  // the list
                     "select foldername, folderid from folders where parent = 0",  // the tree
                     "select * from reportbatch",
                     "delete from reporthistory where datediff('d',lastrun, Now()) > 30",
                     "delete from reportbatchhstry where datediff('d',left(lastrun,10),Now()) > 30"}));
}

TEST_F(StartUp, EditorTakesItsStepsInOrder) {
    NoFirstRun();
    SetCommand({});
    frmMain::Instance().setWindowState(Qt::WindowNoState);
    QCoreApplication::processEvents();
    frmMain::Instance().SetStatusPanel(2, "none yet");
    frmMain::Instance().EnableTimer1(true);
    Order order;
    Global::Main();
    const std::string line = "Oxbow Courier - On Demand...On Time...";
    EXPECT_EQ(order.events,
              (Texts{"frmSplash shows with the timer on, none yet", "frmSplash goes",
                     "frmMain shows, " + line, "select foldername, folderid from folders where parent = 0",
                     "select * from reportbatch", "frmDesk shows, " + line, "frmMain is maximised",
                     "delete from reporthistory where datediff('d',lastrun, Now()) > 30",
                     "delete from reportbatchhstry where datediff('d',left(lastrun,10),Now()) > 30"}));
}

TEST_F(StartUp, EditorShowsTheWizardWithAReportThatWasHandedToIt) {
    NoFirstRun();
    SetCommand({});
    const std::string report = (database.Folder() / "sales.rdl").string();
    setenv(HandedReportVariable, report.c_str(), 1);
    Global::Main();
    frmAddReport& wizard = frmAddReport::Instance();
    EXPECT_TRUE(wizard.isVisible());
    EXPECT_EQ(wizard.findChild<TextBox*>("txtBrowse")->Text(), paths::FromMachine(report));
    EXPECT_EQ(std::getenv(HandedReportVariable), nullptr);
    wizard.close();
}

TEST_F(StartUp, EditorTakesNoReportWithoutAWholePath) {
    NoFirstRun();
    SetCommand({});
    setenv(HandedReportVariable, "sales.rdl", 1);
    Global::Main();
    for (const QWidget* window : QApplication::topLevelWidgets()) {
        EXPECT_FALSE(window->objectName() == "frmAddReport" && window->isVisible());
    }
    EXPECT_EQ(std::getenv(HandedReportVariable), nullptr);
}

TEST_F(StartUp, EditorShowsNoTrayIcon) {
    NoFirstRun();
    frmMain::Instance().TrayIcon1->SetEnabled(false);
    frmMain::Instance().TrayIcon1->SetVisible(false);
    SetCommand({});
    Global::Main();
    EXPECT_FALSE(frmMain::Instance().TrayIcon1->IsShown());
}

TEST_F(StartUp, HistoryMomentThatIsNoDateIsShownByTheEditorWhichStays) {
    NoFirstRun();
    database.Run("insert into ReportHistory values(1,'soon','Success','None')");
    SetCommand({});
    Global::Main();
    EXPECT_EQ(
        prompts.boxes,
        (std::vector<fakes::Box>{{"Oxbow Courier encountred an error. Data type mismatch in the statement; "
                                  "the value \"soon\" is not a date [-2147217913]",
                                  48, "Oxbow Courier"}}));
    EXPECT_TRUE(process.ends.empty());
    EXPECT_EQ(Global::DeskCount, 1);
}

TEST_F(StartUp, SchedulerPurgesNothing) {
    NoFirstRun();
    database.Run(
        "insert into ReportHistory values(1,'2000-01-01 00:00:00','Success','None');"
        "insert into ReportBatchHstry values('1','2000-01-01,00:00:00','T',null)");
    Global::Main();
    EXPECT_EQ(database.Rows("select ReportID from ReportHistory"), Texts{"1"});
    EXPECT_EQ(database.Rows("select ReportID from ReportBatchHstry"), Texts{"1"});
}

TEST_F(StartUp, EditorMakesADeletedLiveFileAgainAfterOneBoxAndShowsAnEmptyDesktop) {
    NoFirstRun();
    SetCommand({});
    const std::filesystem::path live = database.Folder() / "PressroomLive.dat";
    std::filesystem::remove(live);
    Global::Main();
    EXPECT_EQ(prompts.boxes, (std::vector<fakes::Box>{{"The selected data source is invalid or corrupt.\n"
                                                       "Oxbow Courier will now create a fresh data source.",
                                                       16, "Oxbow Courier"}}));
    EXPECT_TRUE(std::filesystem::exists(live));
    EXPECT_TRUE(frmMain::Instance().isVisible());
    ASSERT_EQ(Global::DeskWindows.size(), 2U);
    auto* window = dynamic_cast<frmDesk*>(Global::DeskWindows[1]);
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(window->lsvDesk->ListItems().Count(), 0);
    EXPECT_EQ(window->tvwFolder->Nodes().Count(), 1);
}

TEST_F(StartUp, EditorAsksOnceAboutAStoreThatIsAwayAndShowsAnEmptyDesktop) {
    NoFirstRun();
    SetCommand({});
    const std::filesystem::path live = database.Folder() / "PressroomLive.dat";
    const std::string link =
        "Oxbow Courier store link 1\nProvider=PostgreSQL\nHost=127.0.0.1\nPort=1\nDatabase=courier\n";
    std::filesystem::remove(live);
    std::ofstream(live) << link;
    prompts.answers = {vbYes, vbNo};
    Global::Main();
    ASSERT_EQ(prompts.boxes.size(), 2U);  // and none from the purge of the history
    EXPECT_EQ(prompts.boxes[0], prompts.boxes[1]);
    EXPECT_TRUE(prompts.boxes[0].text.starts_with("The store cannot be reached: \"courier\" on 127.0.0.1; "));
    EXPECT_TRUE(prompts.boxes[0].text.ends_with("\n\nTry again?"));
    EXPECT_EQ(prompts.boxes[0].flags, vbYesNo | vbExclamation);
    EXPECT_EQ(ReadBytes(live), link);
    auto* window = dynamic_cast<frmDesk*>(Global::DeskWindows.at(1));
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(window->lsvDesk->ListItems().Count(), 0);
    ASSERT_EQ(window->tvwFolder->Nodes().Count(), 1);
    EXPECT_EQ(window->tvwFolder->Nodes()(1).Text(), "Desktop");
    EXPECT_TRUE(process.ends.empty());
    AskWhenStoreIsAway(nullptr);
}

TEST_F(StartUp, EditorAsksAboutADamagedLiveFileAgainAndAgain) {
    NoFirstRun();
    SetCommand({});
    const std::filesystem::path live = database.Folder() / "PressroomLive.dat";
    std::ofstream(live, std::ios::trunc) << "no database at all";
    // Only the file's removal ends the questions: another program removes it after the fourth.
    prompts.onBox = [&] {
        if (prompts.boxes.size() == 4) {
            std::filesystem::remove(live);
        }
    };
    Global::Main();
    ASSERT_EQ(prompts.boxes.size(), 4U);
    for (const fakes::Box& box : prompts.boxes) {
        EXPECT_EQ(box, prompts.boxes.front());
    }
    EXPECT_EQ(Global::DeskCount, 1);
}

TEST_F(StartUp, WordInPollEndsStartUpWithItsBox) {
    NoFirstRun();
    Setting("Poll", "often");
    testing::internal::CaptureStderr();
    Global::Main();
    EXPECT_THAT(
        testing::internal::GetCapturedStderr(),
        testing::EndsWith(
            "2026-11-21 14:00:00 The start of the scheduler failed: nothing is polled until it is started "
            "again\n"));
    EXPECT_EQ(prompts.boxes,
              (std::vector<fakes::Box>{
                  {"Oxbow Courier encountred an error. Type mismatch [13]", 48, "Oxbow Courier"}}));
    EXPECT_FALSE(TimerOn());
    EXPECT_TRUE(database.TakeStatements().empty());
}

TEST_F(StartUp, SettingsThatCannotBeReadEndStartUpAndAreNotOverwritten) {
    const auto box = std::vector<fakes::Box>{
        {"Oxbow Courier encountred an error. The settings are there and cannot be read [75]", 48,
         "Oxbow Courier"}};
    NoFirstRun();
    registry.isUnreadable = true;
    Global::Main();
    EXPECT_EQ(prompts.boxes, box);
    EXPECT_FALSE(TimerOn());
    EXPECT_THAT(registry.writes, testing::IsEmpty());
    for (int read = 1; read <= 6; ++read) {
        prompts.boxes.clear();
        registry.isUnreadable = false;
        registry.openReads = read;
        Global::Main();
        EXPECT_EQ(prompts.boxes, box) << read;
        EXPECT_THAT(registry.writes, testing::IsEmpty()) << read;
    }
    EXPECT_FALSE(TimerOn());
    EXPECT_TRUE(database.TakeStatements().empty());
}

TEST_F(StartUp, PollAboveSixteenBitsEndsStartUp) {
    NoFirstRun();
    Setting("Poll", "40000");
    Global::Main();
    EXPECT_EQ(
        prompts.boxes,
        (std::vector<fakes::Box>{{"Oxbow Courier encountred an error. Overflow [6]", 48, "Oxbow Courier"}}));
}

TEST_F(StartUp, SchedulerWithoutADatabaseShowsTheError) {
    NoFirstRun();
    std::filesystem::remove(database.Folder() / "PressroomLive.dat");
    Global::Main();
    ASSERT_EQ(prompts.boxes.size(), 1U);
    EXPECT_NE(prompts.boxes[0].text.find("[-2147467259]"), std::string::npos) << prompts.boxes[0].text;
}

TEST_F(StartUp, FailedPackagePollAtStartLeavesTheTimerOff) {
    NoFirstRun();
    database.Run(
        "insert into "
        "ReportBatch(BatchName,Recipients,Frequency,RunTime,StartDate,EndDate,NextRunDate,MailBatch) "
        "values('p','a;','Daily','00:00','2000-01-01','3000-12-31','soon','F')");
    testing::internal::CaptureStderr();
    Global::Main();
    EXPECT_FALSE(TimerOn());
    EXPECT_EQ(database.Rows("select ReportID, Success, ErrMsg from ReportBatchHstry"),
              Texts{"|T|Type mismatch"});
    EXPECT_THAT(
        testing::internal::GetCapturedStderr(),
        testing::EndsWith(
            "2026-11-21 14:00:00 Polling has stopped, as the first poll of the packages failed: nothing is "
            "polled "
            "until the scheduler is started again\n"));
    ASSERT_EQ(mail.sent.size(), 1U);
    EXPECT_EQ(mail.sent[0].text, "An error occured in BatchReport. Type mismatch [13]");
}
