// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/expressions/expression_line.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QToolButton>

namespace designer {

ExpressionLine::ExpressionLine(const DesignModel& model, const char* name, const QString& title,
                               ExpressionCheck::Write write, QWidget* parent)
    : QWidget(parent), m_model(model), m_place{title, std::move(write)}, m_line(new QLineEdit(this)) {
    m_line->setObjectName(name);
    m_line->setAccessibleName(title);
    auto* button = new QToolButton(this);
    button->setObjectName(QString(name) + "Fx");
    button->setText(tr("fx"));
    button->setAccessibleName(tr("Expression: %1").arg(title));
    button->setToolTip(tr("An expression"));
    button->setFocusPolicy(Qt::TabFocus);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_line, 1);
    layout->addWidget(button);
    setFocusProxy(m_line);
    connect(m_line, &QLineEdit::textEdited, this, &ExpressionLine::Edited);
    connect(button, &QToolButton::clicked, this, &ExpressionLine::Ask);
}

std::string ExpressionLine::Text() const {
    return m_line->text().toStdString();
}

void ExpressionLine::SetText(const std::string& text) {
    m_line->setText(QString::fromStdString(text));
    m_line->setCursorPosition(0);
}

void ExpressionLine::Ask() {
    if (const auto value = AskForExpression(m_model, m_place, Text(), this)) {
        SetText(*value);
        emit Edited();
    }
}

}  // namespace designer
