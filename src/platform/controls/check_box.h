// SPDX-License-Identifier: GPL-3.0-or-later
// A check box.
#pragma once

#include <QCheckBox>

class CheckBox : public QCheckBox {
    Q_OBJECT
 public:
    explicit CheckBox(QWidget* parent = nullptr);

    bool Value() const { return isChecked(); }
    void Value(bool ticked) { setChecked(ticked); }

 signals:
    // The box was ticked or cleared, by the user or by code. Setting the value that it has emits no signal.
    void Click();
};
