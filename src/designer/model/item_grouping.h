// SPDX-License-Identifier: GPL-3.0-or-later
// Items in a rectangle of their own, and out of it again. Both raise EditError, as editing.h does.
#pragma once

#include <vector>

#include "designer/document/document.h"
#include "designer/document/report_items.h"

namespace designer {

// Puts the items into a new rectangle around them, where they stay on the page, and returns it. Refuses items
// that are not all in one band or rectangle.
ElementId GroupItems(Document& document, const ReportItems& items, const std::vector<ElementId>& ids);

// Takes what is in the rectangles out of them, where it stays on the page, and removes the rectangles.
// Returns the items that were in them. Refuses a rectangle that fills a cell, and one that something refers
// to.
std::vector<ElementId> UngroupItems(Document& document, const ReportItems& items,
                                    const std::vector<ElementId>& rectangles);

}  // namespace designer
