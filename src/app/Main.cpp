// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Main.h"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QThread>
#include <filesystem>
#include <functional>
#include <vector>

#include "app/frmMain.h"
#include "app/frmSplash.h"
#include "app/version.h"
#include "desktop/DeskWindows.h"
#include "dialogs/frmAddReport.h"
#include "platform/base/journal.h"
#include "platform/base/paths.h"
#include "platform/contracts/loop.h"
#include "platform/contracts/process.h"
#include "platform/contracts/prompts.h"
#include "platform/contracts/shared_store.h"
#include "platform/posix/handed_report.h"
#include "platform/posix/running_mark.h"
#include "scheduler/BatchReport.h"
#include "scheduler/PollSpread.h"
#include "scheduler/PollTrace.h"
#include "scheduler/RunLog.h"
#include "scheduler/Schedchk.h"
#include "shared/Global.h"
#include "store/StartUp.h"
#include "store/Upkeep.h"

namespace Global {

namespace {

using Steps = std::vector<std::function<void()>>;

constexpr unsigned long SplashMilliseconds = 2000;

void ShowSplash() {
    frmSplash splash;
    splash.ShowPainted();
    DoEvents();
    QThread::msleep(SplashMilliseconds);
}

void OpenFirstDeskWindow() {
    DeskCount = 0;
    OpenDeskWindow(frmMain::Instance().Children());
}

Steps CommonSteps() {
    return {
        TakeFirstSteps,
        SetConnectionString,
        [] { MailBatchFlag = "T"; },
        ReadSettings,
    };
}

bool AskAboutStore(const RuntimeError& error) {
    return MsgBox(error.Description() + "\n\nTry again?", vbYesNo | vbExclamation) == vbYes;
}

void ScheduleHandedReport() {
    const std::filesystem::path file = TakeHandedReport();
    if (!file.empty()) {
        ScheduleReport(paths::FromMachine(file));
    }
}

Steps EditorSteps() {
    return {
        [] { AskWhenStoreIsAway(&AskAboutStore); },
        ShowSplash,
        [] { frmMain::Instance().EnableTimer1(false); },
        [] { frmMain::Instance().SetStatusPanel(2, "Oxbow Courier - On Demand...On Time..."); },
        [] { frmMain::Instance().show(); },
        OpenFirstDeskWindow,
        [] { frmMain::Instance().showMaximized(); },
        PurgeOldHistory,
        ScheduleHandedReport,
    };
}

void LogStart() {
    journal::Write({journal::Level::Notice,
                    "start",
                    {journal::Text("version", std::to_string(OXC_VERSION_MAJOR) + "." +
                                                  std::to_string(OXC_VERSION_MINOR) + "." +
                                                  std::to_string(OXC_VERSION_REVISION)),
                     journal::Text("folder", paths::ForUser(AppPath())), journal::Number("poll", PollSeconds),
                     journal::Text("alert", AlertWho)}});
    RunLog::LogCutOffRun();
}

Steps SchedulerSteps() {
    return {
        LogStart,
        [] { MarkRunning(paths::ToMachine(AppPath())); },
        [] {
            frmMain::Instance().HideWindow();
            frmMain::Instance().setWindowState(Qt::WindowMinimized);
        },
        [] { frmMain::Instance().EnableTimer1(true); },
        [] {
            frmMain::Instance().TrayIcon1->SetEnabled(true);
            frmMain::Instance().TrayIcon1->SetVisible(true);
        },
        [] { RunLog::Instance().PollBegins(); },
        Schedchk,
        BatchReport,
        WritePollTrace,
        SpreadPolls,
    };
}

// Returns false if an error ended start-up. In the editor a database that cannot be opened does not end it:
// the next statement runs, and the Desktop handles the file itself.
bool Run(const Steps& steps) {
    for (const auto& step : steps) {
        try {
            step();
        } catch (...) {
            const RuntimeError error = CurrentError();
            if (error.Number() != err::DataUnavailable || !Command().empty()) {
                ShowError(error);
                return false;
            }
            SetConnectionString();
        }
    }
    return true;
}

}  // namespace

bool Main() {
    const bool isEditor = Command().empty();
    const bool started = Run(CommonSteps()) && Run(isEditor ? EditorSteps() : SchedulerSteps());
    if (isEditor) {
        return true;
    }
    RunLog::Instance().PollEnds();
    // The process would live on without polls, and nothing on the screen would show it.
    if (!started) {
        journal::Write({journal::Level::Error,
                        "start-failed",
                        {},
                        "The start of the scheduler failed: nothing is polled until it is started again"});
        return false;
    }
    if (!frmMain::Instance().Timer1->isActive()) {
        journal::Write(
            {journal::Level::Error,
             "polling-stopped",
             {},
             "Polling has stopped, as the first poll of the packages failed: nothing is polled until "
             "the scheduler is started again"});
        return false;
    }
    return true;
}

}  // namespace Global
