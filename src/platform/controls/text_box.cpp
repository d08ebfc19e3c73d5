#include "platform/controls/text_box.h"

#include <limits>

#include "platform/controls/focus.h"
#include "platform/controls/locked_look.h"

TextBox::TextBox(QWidget* parent) : QLineEdit(parent) {
    setMaxLength(std::numeric_limits<int>::max());
}

void TextBox::Locked(bool locked) {
    setReadOnly(locked);
    ShowLocked(*this, locked);
}

// What was dropped is the box's to clean when it is left.
void TextBox::dropEvent(QDropEvent* event) {
    setFocus(Qt::MouseFocusReason);
    QLineEdit::dropEvent(event);
}

void TextBox::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    if (FocusHasLeft(*event)) {
        emit LostFocus();
    }
}
