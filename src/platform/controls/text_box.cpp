#include "platform/controls/text_box.h"

#include <limits>

#include "platform/base/paths.h"
#include "platform/controls/kit/focus.h"
#include "platform/controls/kit/locked_look.h"

TextBox::TextBox(QWidget* parent) : QLineEdit(parent) {
    setMaxLength(std::numeric_limits<int>::max());
}

std::string TextBox::Text() const {
    const std::string shown = text().toStdString();
    return m_showsPaths ? paths::FromUser(shown) : shown;
}

void TextBox::Text(const std::string& text) {
    setText(QString::fromStdString(m_showsPaths ? paths::ForUser(text) : text));
    setCursorPosition(0);
}

void TextBox::Locked(bool locked) {
    setReadOnly(locked);
    ShowLocked(*this, locked);
}

// The box takes the focus, so that the dropped text is cleaned when the focus leaves it.
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
