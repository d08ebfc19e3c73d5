// SPDX-License-Identifier: GPL-3.0-or-later
// The widths of a table's columns.
#pragma once

#include <string>
#include <vector>

namespace designer {

// What a column asks for, in parts of the font size.
struct ColumnNeed {
    double wish = 0;   // all on one line
    double least = 0;  // no less as long as the paper allows it; at most `wish`
};

struct ColumnFit {
    double fontSize = 9;         // points, from 6 to 9
    std::vector<double> widths;  // millimetres
};

// Returns widths that fit into `width` millimetres: a wide table has its texts on several lines, then a
// smaller font, then columns narrower than their words. A narrow table is made wider by at most a half.
// Raises RuntimeError 5 if there are more columns than fit.
ColumnFit FitColumns(const std::vector<ColumnNeed>& needs, double width);

}  // namespace designer
