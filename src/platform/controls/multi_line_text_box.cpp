// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/multi_line_text_box.h"

MultiLineTextBox::MultiLineTextBox(QWidget* parent) : LockableBox(parent) {
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
