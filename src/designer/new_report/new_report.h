// SPDX-License-Identifier: GPL-3.0-or-later
// Makes a report file from a short description.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "designer/new_report/columns.h"

namespace designer {

enum class ReportLayout {
    Table,    // groups have a row of their own above their rows
    Blocked,  // groups have columns of their own beside their rows
    Matrix,   // sums by rows and columns
    Labels,   // a sheet of adhesive labels, one for each row
    Letter,   // a page for each instance of the groups; without groups for each row
};
enum class ReportChart { None, Column, Bar, Line, Pie };
enum class ReportPaper { A4, Letter };

// The words of the choices above, for command lines, in the order of their values.
inline constexpr std::array<std::string_view, 5> LayoutWords = {"table", "blocked", "matrix", "labels",
                                                                "letter"};
inline constexpr std::array<std::string_view, 5> ChartWords = {"none", "column", "bar", "line", "pie"};
inline constexpr std::array<std::string_view, 2> PaperWords = {"a4", "letter"};

struct NewReport {
    std::string title;
    std::string language = "en-US";  // of formats
    std::string sourceName;          // empty: Source
    std::string provider, connectString, query;
    std::vector<ReportColumn> columns;  // of the query, all of them

    ReportLayout layout = ReportLayout::Table;
    // Names of columns, without regard to case. A layout ignores what it does not have: `groups` are of
    // tables and letters, outermost first, `shown` and `sums` of these and `shown` of labels, `rows`,
    // `across` and `values` of a matrix. A sum is shown, too.
    std::vector<std::string> shown;  // empty: all that are no bytes
    std::vector<std::string> groups, sums;
    std::vector<std::string> rows, across, values;
    // Above tables and matrices: the first sum or value, else the number of rows, by the first group, or else
    // by the first column.
    ReportChart chart = ReportChart::None;
    std::string theme = "plain";  // a name of themes.h
    ReportPaper paper = ReportPaper::A4;
    bool landscape = false;
};

// Returns the text of a report, RDL of 2016/01 in UTF-8. Raises RuntimeError 5 with a line that names what
// cannot be used (a column, a theme, too many columns for the paper) and what can.
std::string NewReportText(const NewReport& report);

}  // namespace designer
