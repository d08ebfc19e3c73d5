// SPDX-License-Identifier: GPL-3.0-or-later
// Colours the words, texts, numbers and comments of a statement while it is typed.
#pragma once

#include <QSyntaxHighlighter>

namespace designer {

class SqlColours : public QSyntaxHighlighter {
 public:
    // The document owns it. Light or dark colours follow the palette.
    SqlColours(QTextDocument* document, const QPalette& palette);

 protected:
    void highlightBlock(const QString& text) override;

 private:
    qsizetype EndOfPiece(const QString& text, qsizetype at, QTextCharFormat& format);
    qsizetype EndOfComment(const QString& text, qsizetype at);

    QTextCharFormat m_word, m_text, m_number, m_comment;
};

}  // namespace designer
