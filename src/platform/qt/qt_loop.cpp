// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/qt_loop.h"

#include <QCoreApplication>
#include <QEvent>
#include <QTimer>

namespace {

// While an object of this class lives, due timers do not run; repeating timers come again.
class TimersHeld : public QObject {
 public:
    TimersHeld() { QCoreApplication::instance()->installEventFilter(this); }

 protected:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override { return event->type() == QEvent::Timer; }
};

}  // namespace

void QtLoop::Repaint() {
    const TimersHeld held;
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void QtLoop::Yield() {
    QCoreApplication::processEvents();
}

void QtLoop::YieldFor(double seconds) {
    // The timer ends the wait if there is no other event.
    QTimer::singleShot(static_cast<int>(seconds * 1000), [] {});
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}
