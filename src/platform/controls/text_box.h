// A one-line text box. Its text is what stands in it, in UTF-8.
#pragma once

#include <QLineEdit>

#include "platform/controls/editable_text.h"

class TextBox : public QLineEdit, public EditableText {
    Q_OBJECT
 public:
    using QLineEdit::QLineEdit;

    std::string Text() const override { return text().toStdString(); }
    // A text that is longer than the box shows its beginning.
    void Text(const std::string& text) override {
        setText(QString::fromStdString(text));
        setCursorPosition(0);
    }
};
