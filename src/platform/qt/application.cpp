#include "platform/qt/application.h"

#include <unistd.h>

#include <csignal>
#include <optional>

#include "platform/contracts/process.h"
#include "platform/contracts/prompts.h"
#include "platform/contracts/regional.h"
#include "platform/qt/messages.h"

namespace {

constexpr const char* PlatformVariable = "QT_QPA_PLATFORM";
// The user's value (empty if unset) before FallBackToOffscreen replaced it.
std::optional<QByteArray> formerPlatform;

bool IsSet(const char* name) {
    return !qEnvironmentVariableIsEmpty(name);
}

void EndNow(int /*signal*/) {
    ::_exit(0);
}

}  // namespace

Application::Application(int& argc, char** argv) : QApplication(argc, argv) {
    KeepNumbersPlain();
    // Only for this process: an editor that it starts must show its windows.
    if (formerPlatform && formerPlatform->isEmpty()) {
        qunsetenv(PlatformVariable);
    } else if (formerPlatform) {
        qputenv(PlatformVariable, *formerPlatform);
    }
    formerPlatform.reset();
    DisplayHasAnswered();
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
    return IsSet("DISPLAY") || IsSet("WAYLAND_DISPLAY") || IsSet(PlatformVariable);
}

bool HasDisplay() {
    const QString platform = QGuiApplication::platformName();
    return platform != "offscreen" && platform != "minimal";
}

void FallBackToOffscreen() {
    const QByteArray former = qgetenv(PlatformVariable);
    QByteArray chosen = former;
    if (former.isEmpty()) {
        chosen = IsSet("WAYLAND_DISPLAY") ? "wayland;xcb" : IsSet("DISPLAY") ? "xcb" : "";
    }
    formerPlatform = former;
    qputenv(PlatformVariable, chosen.isEmpty() ? "offscreen" : chosen + ";offscreen");
}

void EndOnSignals() {
    std::signal(SIGTERM, EndNow);
    std::signal(SIGINT, EndNow);
}
