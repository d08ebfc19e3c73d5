// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/application.h"

#include <unistd.h>

#include <csignal>

#include "platform/base/journal.h"
#include "platform/contracts/process.h"
#include "platform/contracts/prompts.h"
#include "platform/contracts/regional.h"
#include "platform/contracts/shared_store.h"
#include "platform/qt/display.h"

namespace {

void EndNow(int /*signal*/) {
    ::_exit(0);
}

}  // namespace

Application::Application(int& argc, char** argv) : QApplication(argc, argv) {
    KeepNumbersPlain();
    DisplayHasAnswered();
    setApplicationName(AppTitle);
    setQuitOnLastWindowClosed(false);
}

bool Application::notify(QObject* receiver, QEvent* event) {
    try {
        return QApplication::notify(receiver, event);
    } catch (const StoreGivenUp&) {
        // The user has read the error and chosen to go on without the store. The next command connects again.
    } catch (...) {
        EndByRuntimeError(CurrentError());
    }
    return false;
}

void EndByRuntimeError(const RuntimeError& error) {
    journal::Write({journal::Level::Error,
                    "stop",
                    {journal::Text("reason", "run-time error"), journal::Number("number", error.Number())}});
    MsgBox("Run-time error \"" + std::to_string(error.Number()) + "\":\n\n" + error.Description(),
           vbCritical);
    TheProcess().End(1);
}

void EndOnSignals() {
    std::signal(SIGTERM, EndNow);
    std::signal(SIGINT, EndNow);
}
