// SPDX-License-Identifier: GPL-3.0-or-later
// The layouts of new reports. Each function gives the item for the body, its top at `top` millimetres.
#pragma once

#include "designer/new_report/parts.h"
#include "designer/new_report/report_plan.h"

namespace designer {

struct PlacedItem {
    Xml item;
    double height = 0;  // mm
};

// Groups with a heading above and totals below their rows, and a grand total.
PlacedItem TableItem(const Plan& plan, Parts& parts, double top);
// Groups in columns of their own; needs a group.
PlacedItem BlockedItem(const Plan& plan, Parts& parts, double top);
PlacedItem MatrixItem(const Plan& plan, Parts& parts, double top);
PlacedItem LetterItem(const Plan& plan, Parts& parts);
PlacedItem ChartItem(const Plan& plan, Parts& parts, double top);

// A sheet of labels: lengths are millimetres.
struct LabelSheet {
    double width, height;   // of a label
    double left, top, gap;  // margins of the sheet, space between two labels
    int across;
};
const LabelSheet& SheetOf(ReportPaper paper);
// One label for each row. Raises RuntimeError 5 if it has more lines than fit.
PlacedItem LabelItem(const Plan& plan, Parts& parts);

}  // namespace designer
