// What a view of items tells the control that it belongs to.
#pragma once

#include <QPoint>

class ItemEvents {
 public:
    virtual ~ItemEvents() = default;
    virtual void ItemClicked() = 0;
    virtual void ItemActivated() = 0;  // double click or Enter
    virtual void ButtonReleased(int button,
                                QPoint place) = 0;  // in the view's viewport; see MouseButtonNumber
    virtual void KeyPressed(int keyCode) = 0;       // before the view does anything about it
    virtual void EditAsked() {}                     // F2
    virtual void ClickedBeside() {}                 // and the selection is gone, where that takes it away
};

// 1 left, 2 right, 4 middle.
inline int MouseButtonNumber(Qt::MouseButton button) {
    return static_cast<int>(button);
}
