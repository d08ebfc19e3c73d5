// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/graphic_dialogs/expression_field.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QToolButton>

namespace designer {

ExpressionField::ExpressionField(const QString& title, QWidget* parent)
    : QWidget(parent), m_line(new QComboBox(this)), m_button(new QToolButton(this)) {
    m_line->setEditable(true);
    m_line->setInsertPolicy(QComboBox::NoInsert);
    m_line->setAccessibleName(title);
    m_line->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    m_line->setMinimumContentsLength(20);
    m_button->setText("fx");
    m_button->setAccessibleName(tr("Expression: %1").arg(title));
    m_button->setToolTip(tr("Expression"));
    m_button->setFocusPolicy(Qt::StrongFocus);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_line, 1);
    layout->addWidget(m_button);
    setFocusProxy(m_line);
    connect(m_line, &QComboBox::editTextChanged, this, &ExpressionField::Edited);
    connect(m_button, &QToolButton::clicked, this, [this] {
        if (const auto value = m_opener ? m_opener() : std::nullopt) {
            m_line->setEditText(QString::fromStdString(*value));
        }
        m_line->setFocus();
    });
}

void ExpressionField::SetChoices(const std::vector<std::string>& choices) {
    const QSignalBlocker quiet(m_line);
    const QString text = m_line->currentText();
    m_line->clear();
    for (const std::string& choice : choices) {
        m_line->addItem(QString::fromStdString(choice));
    }
    m_line->setEditText(text);
}

std::string ExpressionField::Value() const {
    return m_line->currentText().trimmed().toStdString();
}

void ExpressionField::SetValue(const std::string& value) {
    const QSignalBlocker quiet(m_line);
    m_line->setEditText(QString::fromStdString(value));
    m_line->lineEdit()->setCursorPosition(0);
}

}  // namespace designer
