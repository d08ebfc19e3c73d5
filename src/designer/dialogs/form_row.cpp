// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/dialogs/form_row.h"

#include <QFormLayout>
#include <QLabel>

namespace designer {

QWidget& EditedPart(QWidget& field) {
    QWidget* part = &field;
    while (part->focusProxy()) {
        part = part->focusProxy();
    }
    return *part;
}

void AddFieldRow(QFormLayout& form, const QString& label, QWidget* field) {
    form.addRow(label, field);
    static_cast<QLabel*>(form.labelForField(field))->setBuddy(&EditedPart(*field));
}

}  // namespace designer
