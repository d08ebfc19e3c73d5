// SPDX-License-Identifier: GPL-3.0-or-later
// The pointer of a program that is working, during the life of the object.
#pragma once

#include <QApplication>

namespace designer {

class BusyPointer {
 public:
    BusyPointer() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~BusyPointer() { QApplication::restoreOverrideCursor(); }
    BusyPointer(const BusyPointer&) = delete;
    BusyPointer& operator=(const BusyPointer&) = delete;
};

}  // namespace designer
