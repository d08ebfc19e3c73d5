// The process's Qt application: the one place where an error that left an event handler is met.
#pragma once

#include <QApplication>

#include "platform/runtime.h"

class Application : public QApplication {
    Q_OBJECT
 public:
    Application(int& argc, char** argv);
    bool notify(QObject* receiver, QEvent* event) override;
};

// Shows the run time's error box, with the number and the description, and ends the process with code 1.
void EndByRuntimeError(const RuntimeError& error);

// SIGTERM and SIGINT end the process at once with code 0, as the tray's Exit does.
void EndOnSignals();
