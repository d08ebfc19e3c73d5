// When a control has lost the focus, as the forms understand it.
#pragma once

#include <QApplication>
#include <QFocusEvent>

// The focus is another control's now. A list or a menu that opens, and another window that comes to the
// front, only borrow it: the control has it again when they are gone.
inline bool FocusHasLeft(const QFocusEvent& event) {
    return event.reason() != Qt::PopupFocusReason && event.reason() != Qt::MenuBarFocusReason &&
           event.reason() != Qt::ActiveWindowFocusReason && QApplication::activePopupWidget() == nullptr;
}
