// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/multi_line_text_box.h"

#include "platform/controls/kit/focus.h"
#include "platform/controls/kit/locked_look.h"

MultiLineTextBox::MultiLineTextBox(QWidget* parent) : QPlainTextEdit(parent) {
    setTabChangesFocus(true);
}

std::string MultiLineTextBox::Text() const {
    // The document's plain text would have blanks in place of no-break spaces.
    QString text = document()->toRawText();
    text.replace(QChar::ParagraphSeparator, '\n');
    text.replace(QChar::LineSeparator, '\n');
    return text.toStdString();
}

void MultiLineTextBox::Text(const std::string& text) {
    if (text != Text()) {
        setPlainText(QString::fromStdString(text));
    }
}

void MultiLineTextBox::Locked(bool locked) {
    setReadOnly(locked);
    ShowLocked(*this, locked);
}

// The box takes the focus, so that the dropped text is cleaned when the focus leaves it.
void MultiLineTextBox::dropEvent(QDropEvent* event) {
    setFocus(Qt::MouseFocusReason);
    QPlainTextEdit::dropEvent(event);
}

void MultiLineTextBox::focusOutEvent(QFocusEvent* event) {
    QPlainTextEdit::focusOutEvent(event);
    if (FocusHasLeft(*event)) {
        emit LostFocus();
    }
}
