#include "platform/qt/qt_loop.h"

#include <QCoreApplication>
#include <QTimer>

void QtLoop::Yield() {
    QCoreApplication::processEvents();
}

void QtLoop::YieldFor(double seconds) {
    // The timer ends the wait when nothing else does.
    QTimer::singleShot(static_cast<int>(seconds * 1000), [] {});
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}
