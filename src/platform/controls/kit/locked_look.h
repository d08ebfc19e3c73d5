// SPDX-License-Identifier: GPL-3.0-or-later
// The look of a box whose text can be read but not changed.
#pragma once

class QWidget;

// Gives a locked box the background of a button, and any other box that of the window's text boxes.
void ShowLocked(QWidget& box, bool locked);
