// SPDX-License-Identifier: GPL-3.0-or-later
// The events that a view of items reports to its control.
#pragma once

#include <QPoint>

class ItemEvents {
 public:
    virtual ~ItemEvents() = default;
    virtual void ItemClicked() = 0;
    virtual void ItemActivated() = 0;  // double click or Enter
    // `place` is in the view's viewport; for `button` see MouseButtonNumber.
    virtual void ButtonReleased(int button, QPoint place) = 0;
    virtual void KeyPressed(int keyCode) = 0;  // before the view handles the key
    virtual void EditAsked() {}                // F2 was pressed
    virtual void ClickedBeside() {}  // a click on an empty place; the selection is gone where that clears it
};

// 1 left, 2 right, 4 middle.
inline int MouseButtonNumber(Qt::MouseButton button) {
    return static_cast<int>(button);
}
