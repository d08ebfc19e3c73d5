// SPDX-License-Identifier: GPL-3.0-or-later
// Colours the tags, values of attributes and comments of an XML text while it is typed.
#pragma once

#include <QSyntaxHighlighter>

namespace designer {

class XmlColours : public QSyntaxHighlighter {
 public:
    // The document owns it. Light or dark colours follow the palette.
    XmlColours(QTextDocument* document, const QPalette& palette);
    void SetPalette(const QPalette& palette);

 protected:
    void highlightBlock(const QString& text) override;

 private:
    QTextCharFormat m_tag, m_value, m_comment;
};

}  // namespace designer
