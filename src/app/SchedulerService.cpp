// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/SchedulerService.h"

#include <unistd.h>

#include <QCoreApplication>
#include <QTimer>
#include <chrono>
#include <csignal>
#include <mutex>
#include <optional>
#include <string_view>
#include <thread>
#include <vector>

#include "platform/base/journal.h"
#include "platform/contracts/process.h"
#include "platform/contracts/registry.h"
#include "platform/contracts/runtime.h"
#include "platform/contracts/stop_gate.h"
#include "platform/mail/transport/outbox.h"
#include "platform/posix/service_notify.h"
#include "platform/posix/signal_watch.h"
#include "scheduler/NextDue.h"
#include "scheduler/RunLog.h"
#include "shared/Global.h"
#include "store/StartUp.h"
#include "store/TextConventions.h"

namespace SchedulerService {

namespace {

using Facts = std::vector<journal::Fact>;

constexpr std::chrono::seconds StopPatience{30};
constexpr std::chrono::milliseconds PollPatience{200};  // between two tests whether a poll has ended

void Note(journal::Level level, std::string_view event, Facts facts) {
    journal::Write({level, event, std::move(facts)});
}

[[noreturn]] void WaitForEnd() {
    for (;;) {
        std::this_thread::sleep_for(std::chrono::hours(1));
    }
}

// Two threads may get here. The first one ends the process.
[[noreturn]] void End(const char* reason) {
    static std::once_flag once;
    std::call_once(once, [reason] {
        ServiceManager::Instance().Notify("STOPPING=1");
        Note(journal::Level::Notice, "stop", {journal::Text("reason", reason)});
        EndProcess();
    });
    WaitForEnd();
}

// In the thread of the signals: the loop may wait for a report or for a mail server.
void Stop(int signal) {
    static bool isAsked = false;
    const char* const name = signal == SIGINT ? "SIGINT" : "SIGTERM";
    if (isAsked) {
        End("second signal");
    }
    isAsked = true;
    if (TheStopGate().Ask()) {
        End(name);
    }
    ::alarm(static_cast<unsigned>(StopPatience.count()));
    Note(journal::Level::Notice, "stopping",
         {journal::Text("reason", name), journal::Text("waits-for", "mail"),
          journal::Seconds("seconds", StopPatience)});
    ServiceManager::Instance().Notify("STOPPING=1\nSTATUS=Finishing a mail");
}

// Not in the middle of a poll: a run must not get its folder from one settings file and its alert from
// another.
void ReadSettingsAgain() {
    if (Global::RunLog::Instance().IsPolling()) {
        return QTimer::singleShot(PollPatience, qApp, &ReadSettingsAgain);
    }
    using Time = std::chrono::steady_clock;
    const auto now = std::chrono::duration_cast<std::chrono::microseconds>(Time::now().time_since_epoch());
    ServiceManager::Instance().Notify("RELOADING=1\nMONOTONIC_USEC=" + std::to_string(now.count()));
    try {
        // What a damaged file lacks would be empty, the address of alerts too.
        TheRegistry().RequireWhole();
        Global::ReadSettings();
        Note(journal::Level::Notice, "settings-read",
             {journal::Number("poll", Global::PollSeconds), journal::Text("alert", Global::AlertWho)});
    } catch (...) {
        const RuntimeError error = CurrentError();
        Note(journal::Level::Error, "settings-kept",
             {journal::Text("error", error.Description()), journal::Number("number", error.Number())});
    }
    ServiceManager::Instance().NotifyReady();
}

void AppendNextDue(Facts& facts) {
    try {
        const std::optional<Global::NextDue> next = Global::FindNextDue();
        if (!next) {
            return;
        }
        facts.push_back(journal::Text("next-due", cmFunc::FormatMomentText(next->moment)));
        facts.push_back(Global::KeyFact(next->kind, next->reportID, "next-"));
        facts.push_back(journal::Text("next-title", next->title));
    } catch (...) {
        facts.push_back(journal::Text("database", CurrentError().Description()));
    }
}

void WriteState() {
    Facts facts = Global::RunLog::Instance().State();
    AppendNextDue(facts);
    if (const std::optional<std::size_t> waiting = mailer::CountOutbox()) {
        facts.push_back(journal::Number("outbox", static_cast<std::int64_t>(*waiting)));
    }
    Note(journal::Level::Info, "state", std::move(facts));
}

// During a poll the loop may not turn for an hour, and then the question is what takes so long. The database
// belongs to the loop's thread.
void AskForState() {
    const Global::RunLog& log = Global::RunLog::Instance();
    if (log.IsPolling() || qApp == nullptr) {
        Note(journal::Level::Info, "state", log.State());
    } else {
        QMetaObject::invokeMethod(qApp, &WriteState, Qt::QueuedConnection);
    }
}

void Take(int signal) {
    switch (signal) {
        case SIGHUP:
            // Before there is an application the settings have not been read once.
            if (qApp != nullptr) {
                QMetaObject::invokeMethod(qApp, &ReadSettingsAgain, Qt::QueuedConnection);
            }
            break;
        case SIGUSR1:
            AskForState();
            break;
        case SIGALRM:
            End("the mail took too long");
        default:
            Stop(signal);
    }
}

// Twice as often as the manager asks for it. The timer belongs to the loop: a loop that does not turn shows
// no life.
void FeedWatchdog() {
    const std::chrono::microseconds patience = ServiceManager::Instance().Patience();
    if (patience.count() == 0) {
        return;
    }
    auto* const timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, qApp, [] { ServiceManager::Instance().NotifyAlive(); });
    timer->start(std::chrono::duration_cast<std::chrono::milliseconds>(patience / 2));
    Note(journal::Level::Info, "watchdog",
         {journal::Seconds("seconds", std::chrono::duration_cast<std::chrono::milliseconds>(patience))});
}

}  // namespace

bool WantsJson(int argc, char** argv) {
    bool isJson = false;
    for (int at = 1; at < argc; ++at) {
        constexpr std::string_view Option = "--log-format";
        const std::string_view argument(argv[at]);
        std::string word;
        if (argument == Option) {
            word = at + 1 < argc ? argv[at + 1] : "";
        } else if (argument.starts_with(Option) && argument[Option.size()] == '=') {
            word = argument.substr(Option.size() + 1);
        } else {
            continue;
        }
        isJson = word == "json";
        if (!isJson && word != "text") {
            Journal("The log format \"" + word + "\" is not known: text or json. The log is text");
        }
    }
    return isJson;
}

void Start(bool isJson) {
    journal::UseForm(isJson ? journal::Form::Json : journal::Form::Text);
    journal::WriteEvents(true);
    TheStopGate().OnEnd([] { End("the mail is recorded"); });
    Global::RunLog::Instance();  // its start is that of the process
    WatchSignals({SIGTERM, SIGINT, SIGHUP, SIGUSR1, SIGALRM}, &Take);
}

void Serve(bool isPolling) {
    const ServiceManager& manager = ServiceManager::Instance();
    if (isPolling) {
        QTimer::singleShot(0, qApp, [] {
            ServiceManager::Instance().NotifyReady();
            FeedWatchdog();
        });
    } else if (manager.IsThere()) {
        Note(journal::Level::Error, "watchdog", {journal::Text("outcome", "restart")});
        manager.Notify("STATUS=Polling has stopped\nWATCHDOG=trigger");
    }
}

}  // namespace SchedulerService
