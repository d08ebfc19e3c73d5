// SPDX-License-Identifier: GPL-3.0-or-later
// The key codes that the system's handlers use.
#pragma once

class QKeyEvent;

// Returns the virtual key code: 13 Enter, 27 Esc, 46 Delete, 112 to 123 F1 to F12, the ASCII code of the
// capital letter or of the digit. Returns 0 for any other key.
int KeyCode(const QKeyEvent& event);
