// SPDX-License-Identifier: GPL-3.0-or-later
// Places, sizes and order of report items, written to the document. Lengths are points; a place starts at the
// top left corner of the item's band. The functions raise EditError as editing.h does.
#pragma once

#include <vector>

#include "designer/document/document.h"
#include "designer/document/report_items.h"
#include "designer/model/arranging.h"

namespace designer {

// Returns the item, null if it is not among them.
const ReportItem* FindItem(const ReportItems& items, ElementId id);

// Whether the item has a place of its own: one in a cell has not.
bool CanMove(const ReportItem& item);
// Whether it has a size of its own: one in a cell, and a table, which is as large as its cells, have not.
bool CanResize(const ReportItem& item);

// Returns the items that can be moved and that are in no other one of them, in the same order.
std::vector<ElementId> Movable(const ReportItems& items, const std::vector<ElementId>& ids);
std::vector<ElementId> Resizable(const ReportItems& items, const std::vector<ElementId>& ids);

// Writes the new places, and their sizes where these are new. A band that is too small for its item grows. No
// item leaves its container at the left or at the top.
void Place(Document& document, const ReportItems& items, const std::vector<Placement>& placements);

// Moves an item to another band, or places it in its own as Place does.
void PlaceInBand(Document& document, const ReportItems& items, const Placement& placement,
                 const ReportBand& band);

// Makes a band reach to the right and to the bottom, if it is smaller.
void GrowBand(Document& document, const ReportBand& band, double right, double bottom);
// Moves the items by so many points to the right and down, as they are written. Their bands do not grow.
void ShiftItems(Document& document, const std::vector<ElementId>& ids, double shift);
// Moves items that a command has placed, together, so far to the left that they do not reach over the right
// edge of their band, if there is room; the band grows for what is left.
void KeepInBand(Document& document, const std::vector<ElementId>& ids);
// Makes room for a table as it is written now: items below it keep their distance from it, upwards as far as
// nothing is in their way; the rectangles and the band around it grow. `items` are those before the edit.
void GrowBandOfTable(Document& document, const ReportItems& items, ElementId region);

// Sets the height of a band, or the width of the report at the band.
void SetBandHeight(Document& document, const ReportBand& band, double height);
void SetBandWidth(Document& document, const ReportBand& band, double width);

// Draws the items before or after all others of their container (MS-RDL, ZIndex).
void BringToFront(Document& document, const ReportItems& items, const std::vector<ElementId>& ids);
void SendToBack(Document& document, const ReportItems& items, const std::vector<ElementId>& ids);

}  // namespace designer
