// How a box looks whose text may be read but not changed.
#pragma once

class QWidget;

// The background of a button face while it is locked, that of the window's text boxes else.
void ShowLocked(QWidget& box, bool locked);
