#include "platform/controls/multi_line_text_box.h"

#include "platform/controls/kit/focus.h"
#include "platform/controls/kit/locked_look.h"

MultiLineTextBox::MultiLineTextBox(QWidget* parent) : QPlainTextEdit(parent) {
    setTabChangesFocus(true);
}

std::string MultiLineTextBox::Text() const {
    // The plain text of a document would have blanks in the place of its no-break spaces.
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

// What was dropped is the box's to clean when it is left.
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
