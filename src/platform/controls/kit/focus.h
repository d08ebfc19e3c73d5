// SPDX-License-Identifier: GPL-3.0-or-later
// Decides when a control has lost the focus, as the forms understand it.
#pragma once

#include <QApplication>
#include <QFocusEvent>

// Returns true if another control has the focus now. A list or a menu that opens, and another window that
// comes to the front, only borrow it: the control gets it back.
inline bool FocusHasLeft(const QFocusEvent& event) {
    return event.reason() != Qt::PopupFocusReason && event.reason() != Qt::MenuBarFocusReason &&
           event.reason() != Qt::ActiveWindowFocusReason && QApplication::activePopupWidget() == nullptr;
}
