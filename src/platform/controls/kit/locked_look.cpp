// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/kit/locked_look.h"

#include <QPalette>
#include <QWidget>

void ShowLocked(QWidget& box, bool locked) {
    QPalette own;
    own.setResolveMask(0);
    if (locked) {
        // Uses the roles of the window's palette and no fixed colours: the text stays readable on dark
        // desktops.
        const QPalette around = box.parentWidget() != nullptr ? box.parentWidget()->palette() : own;
        own.setBrush(QPalette::Base, around.brush(QPalette::Button));
        own.setBrush(QPalette::Text, around.brush(QPalette::ButtonText));
    }
    box.setPalette(own);
}
