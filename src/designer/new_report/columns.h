// SPDX-License-Identifier: GPL-3.0-or-later
// The columns of a query, and what their values ask of a report.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "rdl/api/query_rows.h"

namespace designer {

enum class ColumnKind {
    Text,
    Whole,   // whole numbers that count something
    Code,    // whole numbers that name something: keys, years
    Number,  // numbers with decimals
    Date,    // days
    Moment,  // days with times
    Boolean,
    Bytes,  // pictures and the like, which a table does not show
};

struct ReportColumn {
    std::string name;          // in the query
    std::string field;         // in the report: an identifier, different from all others
    std::string typeName;      // System.Int64 ...
    bool isTypeKnown = false;  // from a value, or as the data source declares it
    ColumnKind kind = ColumnKind::Text;
    int decimals = 0;           // Number: 2, or of values below 10 as many as they have, up to 6
    double widest = 0;          // value, in parts of the font size
    double widestWord = 0;      // within a value, in the same unit
    std::size_t different = 0;  // values
    bool hasNulls = false;

    bool IsNumeric() const { return kind == ColumnKind::Whole || kind == ColumnKind::Number; }
};

// Returns the columns of the rows in their order. Kinds, widths and counts are those of the rows that were
// read; a column without values is of texts, and one without a name as well is left out. Raises RuntimeError
// 5 if there is no column, or for a name that a report file cannot have: none, control characters, or that of
// another column without regard to case.
std::vector<ReportColumn> ColumnsOf(const rdl::QueryRows& rows);

// Returns the format string of a column's values; empty if they need none.
std::string FormatOf(const ReportColumn& column);

}  // namespace designer
