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

// Returns true if the environment names a display or a platform. The display may still not answer.
bool MayHaveDisplay();
// Returns true if a user can see boxes. Call it only after the application is made.
bool HasDisplay();
// Call it before the application is made, in a program that also works without windows. Without a display, or
// with one that does not answer, it selects Qt's offscreen platform, whatever QT_QPA_PLATFORM says. Child
// processes do not inherit this choice.
void FallBackToOffscreen();
// Makes SIGTERM and SIGINT end the process at once with code 0, as the tray's Exit does.
void EndOnSignals();
