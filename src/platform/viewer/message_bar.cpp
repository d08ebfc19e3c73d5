// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/viewer/message_bar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

#include "platform/viewer/icons.h"

namespace viewer {

MessageBar::MessageBar(QWidget* parent) : QFrame(parent), m_text(new QLabel(this)) {
    constexpr int Margin = 6;
    setFrameShape(QFrame::StyledPanel);
    m_text->setObjectName("lblMessage");
    m_text->setWordWrap(true);
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_text->setTextFormat(Qt::PlainText);
    auto* close = new QToolButton(this);
    close->setObjectName("cmdMessageClose");
    close->setAutoRaise(true);
    close->setIcon(IconOf(Symbol::Close, palette()));
    close->setToolTip(tr("Close (Esc)"));
    close->setAccessibleName(tr("Close the message"));
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(Margin, Margin, Margin, Margin);
    layout->addWidget(m_text, 1);
    layout->addWidget(close, 0, Qt::AlignTop);
    connect(close, &QToolButton::clicked, this, &MessageBar::CloseRequested);
}

void MessageBar::ShowText(const QString& text) {
    m_text->setText(text);
    show();
}

}  // namespace viewer
