// A text box of several lines. Tab moves on to the next control; lines end in "\n", whatever ended them
// before.
#pragma once

#include <QPlainTextEdit>

#include "platform/controls/editable_text.h"

class MultiLineTextBox : public QPlainTextEdit, public EditableText {
    Q_OBJECT
 public:
    explicit MultiLineTextBox(QWidget* parent = nullptr);

    std::string Text() const override;
    // The text that stands in it already leaves it as it is, cursor and all: what was typed can be undone.
    void Text(const std::string& text) override;

    // A locked text can be read and copied, not changed; it stands on the colour of a button.
    bool Locked() const { return isReadOnly(); }
    void Locked(bool locked);

 signals:
    void LostFocus();  // see FocusHasLeft

 protected:
    void dropEvent(QDropEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
};
