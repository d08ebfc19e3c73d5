// SPDX-License-Identifier: GPL-3.0-or-later
// A text box with several lines. Tab moves to the next control. Every line end becomes "\n".
#pragma once

#include <QPlainTextEdit>

#include "platform/controls/lockable_box.h"

class MultiLineTextBox : public LockableBox<QPlainTextEdit> {
    Q_OBJECT
 public:
    explicit MultiLineTextBox(QWidget* parent = nullptr);

    std::string Text() const override;
    // Setting the current text changes nothing, the cursor included, so that typing can still be undone.
    void Text(const std::string& text) override;

 signals:
    void LostFocus();  // see FocusHasLeft

 protected:
    void EmitLostFocus() override { emit LostFocus(); }
};
