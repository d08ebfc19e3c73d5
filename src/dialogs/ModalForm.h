// SPDX-License-Identifier: GPL-3.0-or-later
// How forms are opened.
#pragma once

#include <functional>

class QWidget;

// Returns the window that a modal form opens in front of: the active modal window, else the active window,
// else the frame. Returns null if there is none.
QWidget* OwnerWindow();

// Shows a form that may be hidden or covered by other windows, and makes it the active window.
void BringToFront(QWidget& form);

// Runs a form's load as an event of its own: an error does not pass to the caller that shows the form but
// ends the process with the error box of run-time errors. Returns false after such an error.
bool LoadForm(const std::function<void()>& load);
