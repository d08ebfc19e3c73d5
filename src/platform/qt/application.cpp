#include "platform/qt/application.h"

#include <unistd.h>
#include <csignal>

#include "platform/process.h"
#include "platform/prompts.h"

namespace {

bool g_offscreen = false;

bool IsSet(const char* name) {
    return !qEnvironmentVariableIsEmpty(name);
}

void EndNow(int /*signal*/) {
    ::_exit(0);
}

}  // namespace

Application::Application(int& argc, char** argv) : QApplication(argc, argv) {
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

bool HasDisplay() {
    return !g_offscreen;
}

void UseOffscreenWithoutDisplay() {
    if (IsSet("DISPLAY") || IsSet("WAYLAND_DISPLAY") || IsSet("QT_QPA_PLATFORM")) {
        return;
    }
    g_offscreen = true;
    qputenv("QT_QPA_PLATFORM", "offscreen");
}

void EndOnSignals() {
    std::signal(SIGTERM, EndNow);
    std::signal(SIGINT, EndNow);
}
