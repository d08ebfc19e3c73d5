// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/display.h"

#include <unistd.h>

#include <QtCore/QByteArray>
#include <QtGui/QGuiApplication>
#include <atomic>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/base/environment.h"
#include "platform/base/journal.h"
#include "platform/qt/silence_watch.h"

namespace {

constexpr const char* PlatformVariable = "QT_QPA_PLATFORM";
// Tells a program that begins again without its display what PlatformVariable was.
constexpr const char* FormerVariable = "OXC_FORMER_PLATFORM";

// What the user had set (perhaps nothing, which is empty) when FallBackToOffscreen put its choice there.
std::optional<std::string> formerPlatform;
bool isOffscreen = false;
std::atomic<bool> isAwaiting{false};
std::string programName, adviceGiven;
char** argumentsGiven = nullptr;
std::unique_ptr<SilenceWatch> watch;

bool IsSet(const char* name) {
    return !EnvironmentText(name).empty();
}

std::string WhatDoesNotAnswer() {
    const std::string platform = formerPlatform ? *formerPlatform : EnvironmentText(PlatformVariable);
    if (!platform.empty()) {
        return "no window can be opened with " + std::string(PlatformVariable) + " \"" + platform + "\"";
    }
    std::string displays;
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY"}) {
        if (IsSet(name)) {
            displays += (displays.empty() ? "\"" : " or \"") + EnvironmentText(name) + "\"";
        }
    }
    return displays.empty() ? "there is no display" : "the display " + displays + " does not answer";
}

// The environment of a program that takes the offscreen platform and puts back what the user had set. A copy:
// the thread that waits for the display may be reading the one of the process.
std::vector<std::string> OffscreenEnvironment() {
    std::vector<std::string> pairs{std::string(PlatformVariable) + "=offscreen",
                                   std::string(FormerVariable) + "=" + *formerPlatform};
    for (char** pair = environ; *pair != nullptr; ++pair) {
        if (!std::string_view(*pair).starts_with(std::string(PlatformVariable) + "=")) {
            pairs.emplace_back(*pair);
        }
    }
    return pairs;
}

// The call into the display's library cannot be ended, so the process starts the same program again.
void BeginAgainOffscreen() {
    std::vector<std::string> pairs = OffscreenEnvironment();
    std::vector<char*> environment;
    environment.reserve(pairs.size() + 1);
    for (std::string& pair : pairs) {
        environment.push_back(pair.data());
    }
    environment.push_back(nullptr);
    ::execve("/proc/self/exe", argumentsGiven, environment.data());
}

void GiveUp() {
    if (formerPlatform) {
        Journal("No window is shown: " + WhatDoesNotAnswer());
        BeginAgainOffscreen();
    }
    EndWithoutDisplay();
}

}  // namespace

bool MayHaveDisplay() {
    return IsSet("DISPLAY") || IsSet("WAYLAND_DISPLAY") || IsSet(PlatformVariable);
}

bool HasDisplay() {
    const QString platform = QGuiApplication::platformName();
    return platform != "offscreen" && platform != "minimal";
}

void FallBackToOffscreen() {
    if (const char* const former = std::getenv(FormerVariable)) {
        formerPlatform = former;
        isOffscreen = true;
        qunsetenv(FormerVariable);
        return;
    }
    formerPlatform = EnvironmentText(PlatformVariable);
    std::string chosen = *formerPlatform;
    if (chosen.empty()) {
        chosen = IsSet("WAYLAND_DISPLAY") ? "wayland;xcb" : IsSet("DISPLAY") ? "xcb" : "";
    }
    isOffscreen = chosen.empty();
    chosen += chosen.empty() ? "offscreen" : ";offscreen";
    qputenv(PlatformVariable, QByteArray::fromStdString(chosen));
}

void AwaitDisplay(const std::string& program, const std::string& advice, char** arguments,
                  std::chrono::milliseconds patience) {
    programName = program;
    adviceGiven = advice;
    argumentsGiven = arguments;
    isAwaiting = true;
    if (!isOffscreen) {
        watch = std::make_unique<SilenceWatch>(patience, &GiveUp);
    }
}

bool IsAwaitingDisplay() {
    return isAwaiting;
}

void EndWithoutDisplay() {
    std::cerr << programName + ": " + WhatDoesNotAnswer() + "; " + adviceGiven + "\n" << std::flush;
    ::_exit(1);
}

void DisplayHasAnswered() {
    watch.reset();
    isAwaiting = false;
    // Made for this process alone: an editor that it starts must show its windows.
    if (formerPlatform && formerPlatform->empty()) {
        qunsetenv(PlatformVariable);
    } else if (formerPlatform) {
        qputenv(PlatformVariable, QByteArray::fromStdString(*formerPlatform));
    }
    formerPlatform.reset();
}
