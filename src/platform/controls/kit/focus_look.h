// SPDX-License-Identifier: GPL-3.0-or-later
// Draws a dotted line around the item of a list or tree that has the keyboard focus but is not selected. Some
// styles fill it almost like a selected item, and users would expect commands to act on it.
#pragma once

class QWidget;

void ShowFocusAsLine(QWidget& view);
