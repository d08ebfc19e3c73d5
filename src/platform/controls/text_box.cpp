#include "platform/controls/text_box.h"

#include "platform/controls/focus.h"
#include "platform/controls/locked_look.h"

void TextBox::Locked(bool locked) {
    setReadOnly(locked);
    ShowLocked(*this, locked);
}

void TextBox::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    if (FocusHasLeft(*event)) {
        emit LostFocus();
    }
}
