// A one-line text box. Its text is what stands in it, in UTF-8.
#pragma once

#include <QLineEdit>

#include "platform/controls/editable_text.h"

class TextBox : public QLineEdit, public EditableText {
    Q_OBJECT
 public:
    // Holds a text of any length: a list of recipients must not lose its end.
    explicit TextBox(QWidget* parent = nullptr);

    std::string Text() const override;
    // A text that is longer than the box shows its beginning.
    void Text(const std::string& text) override;

    // Whether the box holds a path: it shows it as people write paths on this machine, with names as the disk
    // has them, and gives it as the system does; see paths::ForUser. A text that nobody has changed is given
    // as it was set. Off at first. To be set before the text.
    void ShowsPaths(bool on) { m_showsPaths = on; }

    // A locked text can be read and copied, not changed; it stands on the colour of a button.
    bool Locked() const { return isReadOnly(); }
    void Locked(bool locked);

 signals:
    void LostFocus();  // see FocusHasLeft

 protected:
    void dropEvent(QDropEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

 private:
    bool m_showsPaths = false;
    std::string m_given;  // the text of the system, when what is shown does not lead back to it
    QString m_shown;      // for it
};
