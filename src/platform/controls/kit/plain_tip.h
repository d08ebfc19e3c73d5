// A tip that shows a text as it stands. Qt takes a text for rich text where it looks like tags, and runs one
// that does not in a single line, however long.
#pragma once

#include <QString>

inline QString PlainTip(const QString& text) {
    constexpr int Most = 300;  // letters; more are no help, and would be wider than a screen
    const QString shown = text.size() > Most ? text.left(Most) + QChar(0x2026) : text;
    return "<qt>" + shown.toHtmlEscaped() + "</qt>";
}
