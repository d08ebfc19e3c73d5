// SPDX-License-Identifier: GPL-3.0-or-later
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
    if (!m_showsPaths) {
        return shown;
    }
    return !m_given.empty() && text() == m_shown ? m_given : paths::FromUser(shown);
}

void TextBox::Text(const std::string& text) {
    const std::string shown = m_showsPaths ? paths::ForUserAsOnDisk(text) : text;
    m_given = m_showsPaths && shown != paths::ForUser(text) ? text : std::string();
    m_shown = QString::fromStdString(shown);
    setText(m_shown);
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
