// SPDX-License-Identifier: GPL-3.0-or-later
// Rows of forms whose fields consist of several controls.
#pragma once

class QFormLayout;
class QString;
class QWidget;

namespace designer {

// Returns the control that has the focus when the field gets it: its focus proxy or that one's, else the
// field.
QWidget& EditedPart(QWidget& field);
// Adds a row. The key of its label leads to the edited part: a field that only leads on takes no key itself.
void AddFieldRow(QFormLayout& form, const QString& label, QWidget* field);

}  // namespace designer
