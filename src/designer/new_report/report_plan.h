// SPDX-License-Identifier: GPL-3.0-or-later
// A description of a report with its names looked up.
#pragma once

#include <vector>

#include "designer/new_report/new_report.h"
#include "designer/new_report/themes.h"

namespace designer {

using ColumnList = std::vector<const ReportColumn*>;

// Lengths are millimetres. The columns are those of `report`, which must outlive the plan.
struct Plan {
    const NewReport& report;
    const Theme& theme;
    ColumnList details = {};  // shown, without the groups
    ColumnList groups = {}, sums = {};
    ColumnList rows = {}, across = {}, values = {};
    double pageWidth = 0, pageHeight = 0, width = 0;  // width: between the margins

    bool IsSummed(const ReportColumn& column) const;
};

inline constexpr double SideMargin = 20, TopMargin = 15;

// Raises RuntimeError 5 as NewReportText.
Plan PlanOf(const NewReport& report);

}  // namespace designer
