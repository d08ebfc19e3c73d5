// SPDX-License-Identifier: GPL-3.0-or-later
// One of several options with the same parent. At most one of them is ticked.
#pragma once

#include <QRadioButton>

class OptionButton : public QRadioButton {
    Q_OBJECT
 public:
    explicit OptionButton(QWidget* parent = nullptr);

    bool Value() const { return isChecked(); }
    // Ticking a button clears the others. Clearing it leaves no button ticked.
    void Value(bool ticked);

 signals:
    void Click();  // the button was ticked, by the user or by code

 private:
    void TakeTab();
};
