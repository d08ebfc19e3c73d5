// SPDX-License-Identifier: GPL-3.0-or-later
// Why a command is grey: the status bar says it when the pointer is on the command, and the window when its
// keys are pressed.
#pragma once

#include <QAction>
#include <QString>

namespace designer {

// Enables the command if there is no reason against it.
inline void ShowReason(QAction& action, const QString& reason) {
    action.setEnabled(reason.isEmpty());
    action.setStatusTip(reason);
}

}  // namespace designer
