#include "platform/qt/messages.h"

#include <unistd.h>

#include <QtCore/qlogging.h>
#include <QtCore/QString>
#include <algorithm>
#include <array>
#include <cstdlib>
#include <iostream>
#include <string_view>

#include "platform/base/journal.h"

namespace {

bool isStarting = false;
std::string programName, adviceGiven;

std::string Variable(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? std::string() : std::string(value);
}

std::string WhatDoesNotAnswer() {
    const std::string platform = Variable("QT_QPA_PLATFORM");
    if (!platform.empty()) {
        return "no window can be opened with QT_QPA_PLATFORM \"" + platform + "\"";
    }
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY"}) {
        const std::string display = Variable(name);
        if (!display.empty()) {
            return "the display \"" + display + "\" does not answer";
        }
    }
    return "there is no display";
}

bool IsOfNoUse(std::string_view text) {
    constexpr std::array<std::string_view, 6> Starts{
        "QStandardPaths: XDG_RUNTIME_DIR not set",
        "could not connect to display",
        "Could not load the Qt platform plugin",
        "Could not find the Qt platform plugin",
        "This plugin does not support propagateSizeHints",
        "QObject::connect: No such signal QPlatformNativeInterface::",
    };
    return std::any_of(Starts.begin(), Starts.end(),
                       [text](std::string_view start) { return text.starts_with(start); });
}

void Take(QtMsgType type, const QMessageLogContext& /*context*/, const QString& message) {
    if (type == QtFatalMsg && isStarting) {
        std::cerr << programName + ": " + WhatDoesNotAnswer() + "; " + adviceGiven + "\n" << std::flush;
        ::_exit(1);
    }
    const std::string text = message.toStdString();
    if (!IsOfNoUse(text)) {
        Journal(text);
    }
}

}  // namespace

void TakeQtMessages(const std::string& program, const std::string& advice) {
    programName = program;
    adviceGiven = advice;
    isStarting = true;
    qInstallMessageHandler(&Take);
}

void DisplayHasAnswered() {
    isStarting = false;
}
