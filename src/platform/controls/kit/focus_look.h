// How lists and trees show the item that has the keyboard while it is not selected: by a dotted line around
// it. Some styles fill it nearly as they fill a selected one, and commands would be expected to act on it.
#pragma once

class QWidget;

void ShowFocusAsLine(QWidget& view);
