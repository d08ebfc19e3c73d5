// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/check_box.h"

CheckBox::CheckBox(QWidget* parent) : QCheckBox(parent) {
    connect(this, &QCheckBox::toggled, this, &CheckBox::Click);
}
