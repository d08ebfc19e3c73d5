// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/option_button.h"

OptionButton::OptionButton(QWidget* parent) : QRadioButton(parent) {
    connect(this, &QRadioButton::toggled, this, [this](bool ticked) {
        if (ticked) {
            TakeTab();
            emit Click();
        }
    });
}

// Tab goes to the ticked option; the arrow keys tick the others.
void OptionButton::TakeTab() {
    for (auto* option : parent() != nullptr
                            ? parent()->findChildren<OptionButton*>(QString(), Qt::FindDirectChildrenOnly)
                            : QList<OptionButton*>()) {
        option->setFocusPolicy(Qt::ClickFocus);
    }
    setFocusPolicy(Qt::StrongFocus);
}

void OptionButton::Value(bool ticked) {
    // An option of an exclusive group cannot be cleared.
    setAutoExclusive(ticked);
    setChecked(ticked);
    setAutoExclusive(true);
}
