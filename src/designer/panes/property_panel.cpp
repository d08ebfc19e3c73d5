// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/panes/property_panel.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QStyle>
#include <QToolButton>
#include <QVBoxLayout>

namespace designer {

PropertyPanel::PropertyPanel(DesignModel& model, QWidget* parent)
    : QWidget(parent), m_rows(new PropertyPane(model, this)), m_find(new QLineEdit(this)) {
    m_find->setObjectName("findProperty");
    m_find->setAccessibleName(tr("Find a property by its name or value"));
    m_find->setPlaceholderText(tr("Find a name or value"));
    m_find->setClearButtonEnabled(true);
    m_find->installEventFilter(this);
    connect(m_find, &QLineEdit::textChanged, m_rows, &PropertyPane::SetFilter);
    m_order = AddButton("orderProperties", tr("A-Z"), tr("Order by alphabet"),
                        tr("Order by alphabet, not by category"));
    m_order->setCheckable(true);
    connect(m_order, &QToolButton::toggled, m_rows, &PropertyPane::SetAlphabetical);
    QToolButton* expression = AddButton("propertyExpression", tr("fx"), tr("Expression for the property"),
                                        tr("Expression for the property (Ctrl+E)"));
    expression->setEnabled(false);
    connect(expression, &QToolButton::clicked, this, &PropertyPanel::ExpressionRequested);
    connect(m_rows, &PropertyPane::currentItemChanged, expression, [this, expression] {
        const PropertyRow* row = m_rows->CurrentRow();
        expression->setEnabled(row && row->property->expressions != Expressions::No);
    });
    auto* line = new QHBoxLayout;
    line->addWidget(m_find, 1);
    line->addWidget(m_order);
    line->addWidget(expression);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(line);
    layout->addWidget(m_rows, 1);
    setAccessibleName(m_rows->accessibleName());
    setFocusPolicy(Qt::StrongFocus);
    setFocusProxy(m_rows);
    FitFind();
}

// Beside the text there is the button that clears it.
void PropertyPanel::FitFind() {
    const QFontMetrics metrics = fontMetrics();
    const int button = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, m_find);
    m_find->setMinimumWidth(metrics.horizontalAdvance(m_find->placeholderText()) +
                            metrics.averageCharWidth() * 3 + button);
}

void PropertyPanel::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        FitFind();
    }
}

PropertyLook PropertyPanel::Look() const {
    return {m_order->isChecked(), m_rows->NameWidth()};
}

void PropertyPanel::SetLook(const PropertyLook& look) {
    m_order->setChecked(look.isAlphabetical);
    m_rows->SetNameWidth(look.nameWidth);
}

QToolButton* PropertyPanel::AddButton(const char* name, const QString& text, const QString& title,
                                      const QString& tip) {
    auto* button = new QToolButton(this);
    button->setObjectName(name);
    button->setText(text);
    button->setAccessibleName(title);
    button->setToolTip(tip);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    return button;
}

// The arrow goes from the line to the rows that it has found, F2 opens the first one, Escape shows all again.
bool PropertyPanel::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Down || key == Qt::Key_Return || key == Qt::Key_Enter) {
            m_rows->GoToMatch();
            return true;
        }
        if (key == Qt::Key_F2) {
            m_rows->GoToMatch();
            m_rows->EditCurrent();
            return true;
        }
        if (key == Qt::Key_Escape) {
            static_cast<QLineEdit*>(watched)->clear();
            m_rows->setFocus();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

}  // namespace designer
