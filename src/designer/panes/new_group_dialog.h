// SPDX-License-Identifier: GPL-3.0-or-later
// Asks what a new group is by: a field of the data set or any expression, and which rows of its own it has.
#pragma once

#include <QDialog>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "designer/tables/groups.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QToolButton;

namespace designer {

class NewGroupDialog : public QDialog {
    Q_OBJECT
 public:
    // Lets the user change an expression in a dialog of its own. Returns nullopt if the user cancels.
    using Ask = std::function<std::optional<std::string>(const std::string& value, QWidget* parent)>;

    // `hasBands`: a header and a footer can be chosen. Without `ask` there is no button for an expression.
    NewGroupDialog(const QString& title, const std::vector<std::string>& fields, Axis axis, bool hasBands,
                   const Ask& ask, QWidget* parent = nullptr);
    NewGroup Group() const;
    // The name of a field stands for its value. Any other text that is no expression is refused, and the
    // dialog stays.
    void accept() override;

 private:
    QToolButton* ExpressionButton(const Ask& ask);

    std::vector<std::string> m_fields;
    QComboBox* m_expression;
    QLabel* m_fault;
    QCheckBox *m_header, *m_footer;
};

}  // namespace designer
