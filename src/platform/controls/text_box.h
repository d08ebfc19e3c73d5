// SPDX-License-Identifier: GPL-3.0-or-later
// A one-line text box. Its text is UTF-8.
#pragma once

#include <QLineEdit>

#include "platform/controls/lockable_box.h"

class TextBox : public LockableBox<QLineEdit> {
    Q_OBJECT
 public:
    // Accepts a text of any length: a list of recipients must not be cut off.
    explicit TextBox(QWidget* parent = nullptr);

    std::string Text() const override;
    // A text that is longer than the box shows its beginning.
    void Text(const std::string& text) override;

    // If on, the box holds a path: it shows it as users write paths, with the names that the disk has, and
    // returns it as a path of the system (paths::ForUser). A text that nobody has changed is returned as it
    // was set. Off by default. Set it before the text.
    void ShowsPaths(bool on) { m_showsPaths = on; }

 signals:
    void LostFocus();  // see FocusHasLeft

 protected:
    void EmitLostFocus() override { emit LostFocus(); }

 private:
    bool m_showsPaths = false;
    std::string m_given;  // the text of the system, when what is shown does not lead back to it
    QString m_shown;      // for it
};
