// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/dialogs/note.h"

#include <QApplication>

namespace designer {

Note::Note(QWidget& control, QWidget* parent) : QLabel(parent), m_control(control) {
    setObjectName(control.objectName() + "Note");
    setWordWrap(true);
    setAlignment(Qt::AlignTop | Qt::AlignLeft);
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    setTextFormat(Qt::PlainText);
    setTextInteractionFlags(Qt::TextSelectableByMouse);
    hide();
}

void Note::ShowError(const QString& text) {
    ShowFault(text);
    m_control.setFocus();
}

void Note::ShowFault(const QString& text) {
    const bool isDark = palette().color(QPalette::Window).lightness() < 128;
    Show(text, isDark ? QColor(255, 150, 140) : QColor(170, 20, 20));
}

void Note::ShowText(const QString& text) {
    Show(text, QApplication::palette(this).color(QPalette::WindowText));  // its own may be that of a fault
}

void Note::Clear() {
    ShowText({});
}

void Note::Show(const QString& text, const QColor& colour) {
    QPalette own = palette();
    own.setColor(QPalette::WindowText, colour);
    setPalette(own);
    setText(text);
    m_control.setAccessibleDescription(text);
    setVisible(!text.isEmpty());
}

}  // namespace designer
