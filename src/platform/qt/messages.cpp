// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/messages.h"

#include <QtCore/qlogging.h>
#include <QtCore/QString>
#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "platform/base/journal.h"
#include "platform/qt/display.h"

namespace {

bool IsOfNoUse(std::string_view text) {
    constexpr std::array<std::string_view, 6> Starts{
        "QStandardPaths: ",
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
    if (type == QtFatalMsg && IsAwaitingDisplay()) {
        EndWithoutDisplay();
    }
    const std::string text = message.toStdString();
    if (!IsOfNoUse(text)) {
        Journal(text);
    }
}

}  // namespace

void TakeQtMessages() {
    qInstallMessageHandler(&Take);
}
