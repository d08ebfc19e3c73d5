#include "platform/qt/application.h"

#include <unistd.h>
#include <csignal>

#include "platform/process.h"
#include "platform/prompts.h"
#include "platform/regional.h"

namespace {

bool platformChosen = false;  // by FallBackToOffscreen, not by the user

bool IsSet(const char* name) {
    return !qEnvironmentVariableIsEmpty(name);
}

void EndNow(int /*signal*/) {
    ::_exit(0);
}

}  // namespace

Application::Application(int& argc, char** argv) : QApplication(argc, argv) {
    KeepNumbersPlain();
    // Made for this process alone: an editor that it starts must show its windows.
    if (platformChosen) {
        qunsetenv("QT_QPA_PLATFORM");
        platformChosen = false;
    }
    setApplicationName(AppTitle);
    setQuitOnLastWindowClosed(false);
}

bool Application::notify(QObject* receiver, QEvent* event) {
    try {
        return QApplication::notify(receiver, event);
    } catch (...) {
        EndByRuntimeError(CurrentError());
    }
    return false;
}

void EndByRuntimeError(const RuntimeError& error) {
    MsgBox("Run-time error \"" + std::to_string(error.Number()) + "\":\n\n" + error.Description(),
           vbCritical);
    TheProcess().End(1);
}

bool MayHaveDisplay() {
    return IsSet("DISPLAY") || IsSet("WAYLAND_DISPLAY") || IsSet("QT_QPA_PLATFORM");
}

bool HasDisplay() {
    const QString platform = QGuiApplication::platformName();
    return platform != "offscreen" && platform != "minimal";
}

void FallBackToOffscreen() {
    if (IsSet("QT_QPA_PLATFORM")) {
        return;
    }
    platformChosen = true;
    if (IsSet("WAYLAND_DISPLAY")) {
        qputenv("QT_QPA_PLATFORM", "wayland;xcb;offscreen");
    } else {
        qputenv("QT_QPA_PLATFORM", IsSet("DISPLAY") ? "xcb;offscreen" : "offscreen");
    }
}

void EndOnSignals() {
    std::signal(SIGTERM, EndNow);
    std::signal(SIGINT, EndNow);
}
