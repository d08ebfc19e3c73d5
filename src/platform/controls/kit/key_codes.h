// Keys as the system's handlers know them.
#pragma once

class QKeyEvent;

// The virtual key code: 13 Enter, 27 Esc, 46 Delete, 112 to 123 F1 to F12, letters and digits as their
// capital ASCII codes; 0 for a key that has none.
int KeyCode(const QKeyEvent& event);
