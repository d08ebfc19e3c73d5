// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/window/xml_colours.h"

#include <QPalette>

namespace designer {
namespace {

// What a line begins within; -1 is what a new block has.
enum State { InText = -1, Tag = 1, Comment = 2, SingleQuoted = 3, DoubleQuoted = 4 };

}  // namespace

XmlColours::XmlColours(QTextDocument* document, const QPalette& palette) : QSyntaxHighlighter(document) {
    SetPalette(palette);
}

void XmlColours::SetPalette(const QPalette& palette) {
    const bool isDark = palette.color(QPalette::Base).lightness() < 128;
    m_tag.setForeground(isDark ? QColor("#7fb7ff") : QColor("#00418a"));
    m_value.setForeground(isDark ? QColor("#ffb27a") : QColor("#8a3b00"));
    m_comment.setForeground(isDark ? QColor("#8fc48f") : QColor("#3d6b3d"));
    rehighlight();
}

void XmlColours::highlightBlock(const QString& text) {
    int state = previousBlockState();
    for (qsizetype at = 0; at < text.size();) {
        const qsizetype begin = at;
        if (state == Comment) {
            const qsizetype end = text.indexOf("-->", at);
            at = end < 0 ? text.size() : end + 3;
            state = end < 0 ? Comment : InText;
            setFormat(static_cast<int>(begin), static_cast<int>(at - begin), m_comment);
        } else if (state == SingleQuoted || state == DoubleQuoted) {
            const qsizetype end = text.indexOf(state == SingleQuoted ? '\'' : '"', at);
            at = end < 0 ? text.size() : end + 1;
            state = end < 0 ? state : static_cast<int>(Tag);
            setFormat(static_cast<int>(begin), static_cast<int>(at - begin), m_value);
        } else if (state == Tag) {
            const QChar c = text[at++];
            state = c == '>' ? InText : c == '\'' ? SingleQuoted : c == '"' ? DoubleQuoted : Tag;
            setFormat(static_cast<int>(begin), 1, state > Tag ? m_value : m_tag);
        } else {
            const qsizetype tag = text.indexOf('<', at);
            at = tag < 0 ? text.size() : tag;
            state = tag < 0 ? InText : QStringView(text).sliced(tag).startsWith(u"<!--") ? Comment : Tag;
        }
    }
    setCurrentBlockState(state);
}

}  // namespace designer
