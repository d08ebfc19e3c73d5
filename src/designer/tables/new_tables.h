// SPDX-License-Identifier: GPL-3.0-or-later
// New tables, matrices and lists of a data set (MS-RDL, Tablix).
#pragma once

#include <string>
#include <vector>

#include "designer/document/document.h"
#include "designer/document/report_items.h"

namespace designer {

enum class NewTable {
    Table,   // a head, and a row for each row of data; a column for each field
    Matrix,  // a group of rows, one of columns, and a sum in the cells
    List     // a rectangle for each row of data
};

// Inserts the region at the place of the band, whose size it chooses itself if the place has none, and
// returns it. Without fields a table has three empty columns, and a matrix takes the first fields that fit.
// An empty `dataSet` is the first one of the report. Raises EditError if there is none, or in an older
// schema.
ElementId InsertNewTable(Document& document, const ReportBand& band, const Rect& place, NewTable kind,
                         const std::string& dataSet, const std::vector<std::string>& fields);

}  // namespace designer
