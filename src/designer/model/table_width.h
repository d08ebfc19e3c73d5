// SPDX-License-Identifier: GPL-3.0-or-later
// The width of a table that gets columns.
#pragma once

#include "designer/document/document.h"
#include "designer/document/report_items.h"

namespace designer {

// Makes room for a table that an edit has changed, as GrowBandOfTable does. If it would leave the page that
// it was on, its columns become narrower in proportion, none below a quarter of an inch. `items` are those
// before the edit.
void FitTable(Document& document, const ReportItems& items, ElementId region);

}  // namespace designer
