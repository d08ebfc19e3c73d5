// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/panes/group_dialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>

#include "designer/tables/fields.h"

namespace designer {

GroupDialog::GroupDialog(const QString& title, const std::vector<std::string>& fields, Axis axis,
                         bool hasBands, QWidget* parent)
    : QDialog(parent),
      m_expression(new QComboBox(this)),
      m_header(new QCheckBox(axis == Axis::Rows ? tr("&Header row") : tr("&Column before the group"), this)),
      m_footer(new QCheckBox(axis == Axis::Rows ? tr("&Footer row") : tr("C&olumn after the group"), this)) {
    setObjectName("groupDialog");
    setWindowTitle(title);
    m_expression->setObjectName("cboGroupOn");
    m_expression->setEditable(true);
    m_expression->setInsertPolicy(QComboBox::NoInsert);
    // The box keeps Enter to itself; here it takes the dialog as it is.
    connect(m_expression->lineEdit(), &QLineEdit::returnPressed, this, &QDialog::accept);
    m_expression->setMinimumWidth(fontMetrics().averageCharWidth() * 45);
    for (const std::string& field : fields) {
        m_expression->addItem(QString::fromStdString(FieldValue(field)));
    }
    m_header->setObjectName("chkHeader");
    m_footer->setObjectName("chkFooter");
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QFormLayout(this);
    layout->addRow(tr("&Group on:"), m_expression);
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

NewGroup GroupDialog::Group() const {
    return {m_expression->currentText().trimmed().toStdString(), m_header->isChecked(),
            m_footer->isChecked()};
}

}  // namespace designer
