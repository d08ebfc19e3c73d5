// SPDX-License-Identifier: GPL-3.0-or-later
// Tool tips with texts of a report: Qt would take one that has marks of HTML for HTML, and load its pictures.
#pragma once

#include <QString>
#include <QTextDocument>

namespace designer {

inline QString PlainTip(const QString& text) {
    return text.isEmpty() ? text : Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal);
}

}  // namespace designer
