// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/dialogs/sql_colours.h"

#include <QPalette>
#include <algorithm>
#include <array>
#include <string_view>

#include "platform/base/ascii.h"

namespace designer {
namespace {

constexpr int InComment = 1;  // state of a line that ends within a comment

constexpr std::array<std::string_view, 62> Words = {
    "all",       "and",       "as",        "asc",   "between", "by",     "case",    "cast",  "cross",
    "current",   "desc",      "distinct",  "else",  "end",     "except", "exists",  "false", "fetch",
    "first",     "following", "from",      "full",  "group",   "having", "in",      "inner", "intersect",
    "is",        "join",      "lateral",   "left",  "like",    "limit",  "natural", "next",  "not",
    "null",      "offset",    "on",        "only",  "or",      "order",  "outer",   "over",  "partition",
    "preceding", "range",     "recursive", "right", "row",     "rows",   "select",  "then",  "top",
    "true",      "unbounded", "union",     "using", "values",  "when",   "where",   "with"};
static_assert(std::is_sorted(Words.begin(), Words.end()));

bool IsWord(const QString& text) {
    const std::string word = ToLower(text.toStdString());
    return std::binary_search(Words.begin(), Words.end(), word);
}

QTextCharFormat Coloured(const QColor& colour) {
    QTextCharFormat format;
    format.setForeground(colour);
    return format;
}

bool IsNameCharacter(QChar c) {
    return c.isLetterOrNumber() || c == '_';
}

}  // namespace

SqlColours::SqlColours(QTextDocument* document, const QPalette& palette) : QSyntaxHighlighter(document) {
    const bool isDark = palette.color(QPalette::Base).lightness() < 128;
    m_word = Coloured(isDark ? QColor(130, 180, 255) : QColor(20, 70, 160));
    m_word.setFontWeight(QFont::DemiBold);
    m_text = Coloured(isDark ? QColor(150, 210, 130) : QColor(40, 110, 30));
    m_number = Coloured(isDark ? QColor(230, 170, 110) : QColor(150, 70, 0));
    m_comment = Coloured(palette.color(QPalette::Disabled, QPalette::Text));
}

qsizetype SqlColours::EndOfComment(const QString& text, qsizetype at) {
    const qsizetype end = text.indexOf("*/", at);
    setCurrentBlockState(end < 0 ? InComment : 0);
    return end < 0 ? text.size() : end + 2;
}

// Returns the end of the piece that begins at `at`, and its format; an invalid one has no colour.
qsizetype SqlColours::EndOfPiece(const QString& text, qsizetype at, QTextCharFormat& format) {
    const QChar first = text[at];
    if (text.mid(at, 2) == "--") {
        format = m_comment;
        return text.size();
    }
    if (text.mid(at, 2) == "/*") {
        format = m_comment;
        return EndOfComment(text, at + 2);
    }
    if (first == '\'' || first == '"' || first == '`') {
        format = first == '\'' ? m_text : QTextCharFormat();
        const qsizetype end = text.indexOf(first, at + 1);
        return end < 0 ? text.size() : end + 1;
    }
    if (!IsNameCharacter(first)) {
        return at + 1;
    }
    qsizetype end = at;
    while (end < text.size() && (IsNameCharacter(text[end]) || (first.isDigit() && text[end] == '.'))) {
        ++end;
    }
    if (first.isDigit()) {
        format = m_number;
    } else if (IsWord(text.mid(at, end - at))) {
        format = m_word;
    }
    return end;
}

void SqlColours::highlightBlock(const QString& text) {
    setCurrentBlockState(0);
    qsizetype at = 0;
    if (previousBlockState() == InComment) {
        at = EndOfComment(text, 0);
        setFormat(0, static_cast<int>(at), m_comment);
    }
    while (at < text.size()) {
        QTextCharFormat format;
        const qsizetype end = EndOfPiece(text, at, format);
        if (format.hasProperty(QTextFormat::ForegroundBrush)) {
            setFormat(static_cast<int>(at), static_cast<int>(end - at), format);
        }
        at = end;
    }
}

}  // namespace designer
