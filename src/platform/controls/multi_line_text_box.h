// SPDX-License-Identifier: GPL-3.0-or-later
// A text box with several lines. Tab moves to the next control. Every line end becomes "\n".
#pragma once

#include <QPlainTextEdit>

#include "platform/controls/editable_text.h"

class MultiLineTextBox : public QPlainTextEdit, public EditableText {
    Q_OBJECT
 public:
    explicit MultiLineTextBox(QWidget* parent = nullptr);

    std::string Text() const override;
    // Setting the current text changes nothing, the cursor included, so that typing can still be undone.
    void Text(const std::string& text) override;

    // A locked text can be read and copied but not changed. It has the background of a button.
    bool Locked() const { return isReadOnly(); }
    void Locked(bool locked);

 signals:
    void LostFocus();  // see FocusHasLeft

 protected:
    void dropEvent(QDropEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
};
