// SPDX-License-Identifier: GPL-3.0-or-later
// What the text boxes of one and of several lines have in common.
#pragma once

#include <QDropEvent>
#include <QFocusEvent>

#include "platform/controls/editable_text.h"
#include "platform/controls/kit/focus.h"
#include "platform/controls/kit/locked_look.h"

// `Edit` is Qt's box. A template cannot have signals, so the box itself emits LostFocus.
template <typename Edit>
class LockableBox : public Edit, public EditableText {
 public:
    using Edit::Edit;

    // A locked text can be read and copied but not changed. It has the background of a button.
    bool Locked() const { return Edit::isReadOnly(); }
    void Locked(bool locked) {
        Edit::setReadOnly(locked);
        ShowLocked(*this, locked);
    }

 protected:
    virtual void EmitLostFocus() = 0;

    // The box takes the focus, so that the dropped text is cleaned when the focus leaves it.
    void dropEvent(QDropEvent* event) override {
        Edit::setFocus(Qt::MouseFocusReason);
        Edit::dropEvent(event);
    }
    void focusOutEvent(QFocusEvent* event) override {
        Edit::focusOutEvent(event);
        if (FocusHasLeft(*event)) {
            EmitLostFocus();
        }
    }
};
