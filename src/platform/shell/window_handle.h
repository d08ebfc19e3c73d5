// The handle of a form, for dialogs that belong to it.
#pragma once

#include <QWidget>

#include "platform/contracts/shell.h"

// By QWidget, whatever else the form is made of: OwnerOf turns the pointer back.
inline WindowHandle HandleOf(QWidget& form) {
    return {&form};
}

// The form's window; without one the active window, null when there is none either.
QWidget* OwnerOf(WindowHandle handle);
