// SPDX-License-Identifier: GPL-3.0-or-later
// The process's Qt application. It catches every error that leaves an event handler.
#pragma once

#include <QApplication>

#include "platform/contracts/runtime.h"

class Application : public QApplication {
    Q_OBJECT
 public:
    Application(int& argc, char** argv);
    bool notify(QObject* receiver, QEvent* event) override;
};

// Shows the error box of run-time errors with number and description, and ends the process with code 1.
void EndByRuntimeError(const RuntimeError& error);

// SIGTERM and SIGINT end the process at once with code 0, as the menu's Exit does.
void EndOnSignals();
