// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/dialogs/note.h"

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
    Show(text, palette().color(QPalette::WindowText));
}

void Note::Clear() {
    Show({}, palette().color(QPalette::WindowText));
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
