// SPDX-License-Identifier: GPL-3.0-or-later
// The names that an expression can use, with a line of help for each.
#pragma once

#include <QString>
#include <QStringView>
#include <vector>

#include "designer/document/document.h"

namespace designer {

struct ExpressionName {
    QString shown;   // "Mid(text, start[, count])"
    QString text;    // what is typed into the expression: "Mid()"
    int cursor = 0;  // where the cursor is in it afterwards
    QString help;    // one line
    QString row;     // all names that the help is for
};

struct ExpressionGroup {
    QString title;
    std::vector<ExpressionName> names = {};
    std::vector<ExpressionGroup> groups = {};
};

// Returns the fields of each data set, the parameters, the text boxes and the own functions of a report.
std::vector<ExpressionGroup> NamesOfReport(const Document& document);

// Returns what can be typed in an expression of this data set, which may be empty: names of the report, those
// of its data set first, and of the guide.
std::vector<ExpressionName> NamesToType(const Document& document, const std::string& dataSet);

// Returns the globals, functions and aggregates that the guide to report files lists, under the titles of its
// tables.
std::vector<ExpressionGroup> NamesOfGuide();
// Returns the rows of the list in a guide, one group for each of its tables. A list stands between the
// comments
// <!-- NAME --> and <!-- end of NAME -->; the first column has names between `, the second one the help.
std::vector<ExpressionGroup> TablesOfGuide(QStringView guide, const QString& list);

}  // namespace designer
