// SPDX-License-Identifier: GPL-3.0-or-later
// What the tables of new reports share: looks of rows, needs of columns, rows of totals.
#pragma once

#include <string>
#include <vector>

#include "designer/new_report/parts.h"
#include "designer/new_report/report_plan.h"
#include "designer/new_report/widths.h"

namespace designer {

inline constexpr double RowHeight = 6;  // mm
inline constexpr std::string_view NoRows = "No rows";

// `size` is that of the font in points. The look of a column's values is on the side where they belong.
Look HeadLook(const Theme& theme, double size);
Look RightHeadLook(const Theme& theme, double size);
Look HeadLookOf(const Theme& theme, double size, const ReportColumn& column);
Look GroupLook(const Theme& theme, double size, std::size_t level);
Look DetailLook(const Theme& theme, double size, const ReportColumn& column);
Look SubtotalLook(const Theme& theme, double size);
Look TotalLook(const Theme& theme, double size);
// The same look for the sum of a column.
Look ForSum(Look look, const ReportColumn& column);

ColumnNeed NeedOf(const Plan& plan, const ReportColumn& column);
// The same for a column of row headings that has the totals of `outer`, too; null: none.
ColumnNeed NeedOfHeading(const Plan& plan, const ReportColumn& column, const ReportColumn* outer);
// The same for a column whose values are sums of the column.
ColumnNeed NeedOfSum(const Plan& plan, const ReportColumn& column);

// The cells of a row of totals over the columns `plan.details`: the label before the first sum, then the
// sums. Without a column before the first sum there is no label. Names of the boxes end in `suffix`.
XmlList TotalCells(const Plan& plan, Parts& parts, const std::string& label, const std::string& suffix,
                   const Look& look);
// Returns the value "Total North" for a group.
std::string TotalLabel(const ReportColumn& group);

Xml HeadingCells(const Plan& plan, Parts& parts, double height, double fontSize);
Xml DetailCells(const Plan& plan, Parts& parts, double fontSize, double indent);

// A row of a group's heading, which is on each page of the group, or a total stays with the group's rows.
Xml RepeatedRowWithNext();
Xml RowWithPrevious();

}  // namespace designer
