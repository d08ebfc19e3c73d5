// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/panes/new_group_dialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>
#include <algorithm>

#include "designer/tables/fields.h"
#include "platform/base/text.h"

namespace designer {

NewGroupDialog::NewGroupDialog(const QString& title, const std::vector<std::string>& fields, Axis axis,
                               bool hasBands, const Ask& ask, QWidget* parent)
    : QDialog(parent),
      m_fields(fields),
      m_expression(new QComboBox(this)),
      m_fault(new QLabel(this)),
      m_header(new QCheckBox(axis == Axis::Rows ? tr("&Header row") : tr("&Column before the group"), this)),
      m_footer(new QCheckBox(axis == Axis::Rows ? tr("&Footer row") : tr("C&olumn after the group"), this)) {
    setObjectName("groupDialog");
    setWindowTitle(title);
    m_expression->setObjectName("cboGroupOn");
    m_expression->setEditable(true);
    m_expression->setInsertPolicy(QComboBox::NoInsert);
    // The box keeps Enter to itself; here it takes the dialog as it is.
    connect(m_expression->lineEdit(), &QLineEdit::returnPressed, this, &NewGroupDialog::accept);
    m_expression->setMinimumWidth(fontMetrics().averageCharWidth() * 45);
    for (const std::string& field : fields) {
        m_expression->addItem(QString::fromStdString(FieldValue(field)));
    }
    m_header->setObjectName("chkHeader");
    m_footer->setObjectName("chkFooter");
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &NewGroupDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QFormLayout(this);
    auto* line = new QHBoxLayout;
    line->addWidget(m_expression, 1);
    if (ask) {
        line->addWidget(ExpressionButton(ask));
    }
    auto* label = new QLabel(tr("&Group on:"), this);
    label->setBuddy(m_expression);
    layout->addRow(label, line);
    m_fault->setObjectName("lblFault");
    m_fault->setWordWrap(true);
    m_fault->hide();
    layout->addRow(QString(), m_fault);
    if (hasBands) {
        layout->addRow(QString(), m_header);
        layout->addRow(QString(), m_footer);
    }
    m_header->setVisible(hasBands);
    m_footer->setVisible(hasBands);
    m_header->setChecked(hasBands && axis == Axis::Rows);
    layout->addRow(buttons);
    m_expression->setFocus();
}

QToolButton* NewGroupDialog::ExpressionButton(const Ask& ask) {
    auto* button = new QToolButton(this);
    button->setObjectName("btnExpression");
    button->setText(tr("fx"));
    button->setAccessibleName(tr("Expression for the group"));
    button->setToolTip(tr("Expression"));
    button->setFocusPolicy(Qt::TabFocus);
    setTabOrder(m_expression, button);
    connect(button, &QToolButton::clicked, this, [this, ask] {
        if (const auto value = ask(m_expression->currentText().toStdString(), this)) {
            m_expression->setEditText(QString::fromStdString(*value));
        }
    });
    return button;
}

void NewGroupDialog::accept() {
    const std::string text = m_expression->currentText().trimmed().toStdString();
    const auto field = std::find_if(m_fields.begin(), m_fields.end(),
                                    [&text](const std::string& name) { return SameText(name, text); });
    if (field != m_fields.end()) {
        m_expression->setEditText(QString::fromStdString(FieldValue(*field)));
    } else if (text.size() < 2 || text.front() != '=') {
        m_fault->setText(tr("A group needs the name of a field or an expression: =Fields!Region.Value"));
        m_fault->show();
        m_expression->setFocus();
        return;
    }
    QDialog::accept();
}

NewGroup NewGroupDialog::Group() const {
    return {m_expression->currentText().trimmed().toStdString(), m_header->isChecked(),
            m_footer->isChecked()};
}

}  // namespace designer
