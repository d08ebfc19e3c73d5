// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/text_box.h"

#include <limits>

#include "platform/base/paths.h"

TextBox::TextBox(QWidget* parent) : LockableBox(parent) {
    setMaxLength(std::numeric_limits<int>::max());
}

std::string TextBox::Text() const {
    const std::string shown = text().toStdString();
    if (!m_showsPaths) {
        return shown;
    }
    return !m_given.empty() && text() == m_shown ? m_given : paths::FromUser(shown);
}

void TextBox::Text(const std::string& text) {
    const std::string shown = m_showsPaths ? paths::ForUserAsOnDisk(text) : text;
    m_given = m_showsPaths && shown != paths::ForUser(text) ? text : std::string();
    m_shown = QString::fromStdString(shown);
    setText(m_shown);
    setCursorPosition(0);
}
