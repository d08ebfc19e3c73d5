// SPDX-License-Identifier: GPL-3.0-or-later
// A tooltip for plain text. Qt would read a text with tags as rich text, and would show any other text on a
// single line, however long. Empty for an empty text: there is no tip then.
#pragma once

#include <QString>

inline QString PlainTip(const QString& text) {
    constexpr int Most = 300;  // characters; a longer tip would be wider than a screen
    const QString shown = text.size() > Most ? text.left(Most) + QChar(0x2026) : text;
    return text.isEmpty() ? text : "<qt>" + shown.toHtmlEscaped() + "</qt>";
}
