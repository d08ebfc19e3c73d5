// What the modal forms have in common.
#pragma once

#include <functional>

class QWidget;

// The window that a modal form stands before: the one that is being worked with, else the frame; null when
// there is none.
QWidget* OwnerWindow();

// A form's load is an event of its own: an error that leaves it does not pass to who shows the form but ends
// the process with the run time's error box. False behind such an error.
bool LoadForm(const std::function<void()>& load);
