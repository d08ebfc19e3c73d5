// SPDX-License-Identifier: GPL-3.0-or-later
// Asks what a new group is by: a field of the data set or any expression, and which rows of its own it has.
#pragma once

#include <QDialog>
#include <string>
#include <vector>

#include "designer/tables/groups.h"

class QCheckBox;
class QComboBox;
class QLabel;

namespace designer {

class GroupDialog : public QDialog {
    Q_OBJECT
 public:
    // `hasBands`: a header and a footer can be chosen.
    GroupDialog(const QString& title, const std::vector<std::string>& fields, Axis axis, bool hasBands,
                QWidget* parent = nullptr);
    NewGroup Group() const;
    // The name of a field stands for its value. Any other text that is no expression is refused, and the
    // dialog stays.
    void accept() override;

 private:
    std::vector<std::string> m_fields;
    QComboBox* m_expression;
    QLabel* m_fault;
    QCheckBox *m_header, *m_footer;
};

}  // namespace designer
