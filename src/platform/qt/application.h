// The process's Qt application: the one place where an error that left an event handler is met.
#pragma once

#include <QApplication>

#include "platform/contracts/runtime.h"

class Application : public QApplication {
    Q_OBJECT
 public:
    Application(int& argc, char** argv);
    bool notify(QObject* receiver, QEvent* event) override;
};

// Shows the run time's error box, with the number and the description, and ends the process with code 1.
void EndByRuntimeError(const RuntimeError& error);

// Whether the environment names a display or a platform. The display may turn out not to answer.
bool MayHaveDisplay();
// Whether boxes can be shown to somebody. Only once the application is made.
bool HasDisplay();
// Call before the application is made by a program that can do without windows: with no display, or one that
// does not answer, Qt's offscreen platform is taken, whatever QT_QPA_PLATFORM wishes. Programs that this one
// starts are not told.
void FallBackToOffscreen();
// SIGTERM and SIGINT end the process at once with code 0, as the tray's Exit does.
void EndOnSignals();
