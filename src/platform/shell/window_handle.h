// SPDX-License-Identifier: GPL-3.0-or-later
// The handle of a form, for dialogs that belong to it.
#pragma once

#include <QWidget>

#include "platform/contracts/shell.h"

// The handle holds a QWidget pointer, whatever other base classes the form has: OwnerOf casts it back.
inline WindowHandle HandleOf(QWidget& form) {
    return {&form};
}

// Returns the form's window; for a null handle the active window, or null if there is none.
QWidget* OwnerOf(WindowHandle handle);
