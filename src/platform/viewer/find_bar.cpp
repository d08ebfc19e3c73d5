// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/viewer/find_bar.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>

#include "platform/viewer/icons.h"

namespace viewer {

FindBar::FindBar(QWidget* parent) : QWidget(parent), m_words(new QLineEdit(this)), m_state(new QLabel(this)) {
    setObjectName("findBar");
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(8, 4, 8, 4);
    auto* prompt = new QLabel(tr("Fi&nd:"), this);
    prompt->setBuddy(m_words);
    m_words->setObjectName("txtFind");
    m_words->setClearButtonEnabled(true);
    m_words->setMinimumWidth(fontMetrics().averageCharWidth() * 24);
    m_words->installEventFilter(this);
    auto* previous = new QPushButton(tr("Pre&vious"), this);
    previous->setObjectName("cmdFindPrevious");
    previous->setToolTip(tr("Before this place (Shift+F3)"));
    auto* next = new QPushButton(tr("Ne&xt"), this);
    next->setObjectName("cmdFindNext");
    next->setToolTip(tr("After this place (F3)"));
    auto* close = new QToolButton(this);
    close->setObjectName("cmdFindClose");
    close->setAutoRaise(true);
    close->setIcon(IconOf(Symbol::Close, palette()));
    close->setToolTip(tr("Close (Esc)"));
    m_state->setObjectName("lblFind");
    layout->addWidget(prompt);
    layout->addWidget(m_words);
    layout->addWidget(previous);
    layout->addWidget(next);
    layout->addWidget(m_state, 1);
    layout->addWidget(close);
    connect(m_words, &QLineEdit::textEdited, this, &FindBar::WordsChanged);
    connect(m_words, &QLineEdit::textChanged, this, [this](const QString& words) {
        if (words.isEmpty()) {  // cleared by the button in it, which does not count as an edit
            emit WordsChanged(words);
        }
    });
    connect(next, &QPushButton::clicked, this, &FindBar::NextRequested);
    connect(previous, &QPushButton::clicked, this, &FindBar::PreviousRequested);
    connect(close, &QToolButton::clicked, this, &FindBar::Closed);
}

void FindBar::Open(const QString& words) {
    show();
    if (!words.isEmpty()) {
        m_words->setText(words);
    }
    m_words->selectAll();
    m_words->setFocus(Qt::ShortcutFocusReason);
}

QString FindBar::Words() const {
    return m_words->text();
}

void FindBar::ShowState(const QString& text) {
    Show(text, palette().color(QPalette::Base), palette().color(QPalette::Text));
}

void FindBar::ShowMiss(const QString& text) {
    Show(text, QColor(255, 215, 215), Qt::black);
}

void FindBar::Show(const QString& text, const QColor& back, const QColor& front) {
    m_state->setText(text);
    QPalette colors = m_words->palette();
    colors.setColor(QPalette::Base, back);
    colors.setColor(QPalette::Text, front);
    m_words->setPalette(colors);
}

// Enter goes to the search and not to the window's default button.
bool FindBar::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_words && event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
            if (key->modifiers() & Qt::ShiftModifier) {
                emit PreviousRequested();
            } else {
                emit NextRequested();
            }
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void FindBar::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        emit Closed();
        return;
    }
    QWidget::keyPressEvent(event);
}

}  // namespace viewer
