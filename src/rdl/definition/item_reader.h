// SPDX-License-Identifier: GPL-3.0-or-later
// Reads report items of every kind and schema (MS-RDL, ReportItems). Raises rdl::Error.
#pragma once

#include "rdl/definition/context.h"

namespace rdl {

// The size of the container in points: an item without a width or height extends to the container's edge.
struct Extent {
    double width = 0, height = 0;
};

struct ItemElement {
    std::string_view name;
    bool isDrawn;  // else it is an error in a report
};
// Returns every report item of the schemas. This function and ReadItem are in kinds/, which knows the readers
// of all kinds.
std::vector<ItemElement> ItemElements();

// Reads the item whose element this is.
ItemPtr ReadItem(Context& context, const XmlElement& element, Extent container);

// The kinds that have no file of their own.
ItemPtr ReadLine(Context& context, const XmlElement& element, Extent container);
ItemPtr ReadRectangle(Context& context, const XmlElement& element, Extent container);
ItemPtr ReadImage(Context& context, const XmlElement& element, Extent container);
ItemPtr ReadSubreport(Context& context, const XmlElement& element, Extent container);

// Reads the child ReportItems of `owner`.
std::vector<ItemPtr> ReadItems(Context& context, const XmlElement& owner, Extent container);

// Reads the single item of a cell (the child ReportItems or CellContents of `owner`), sized to the cell; null
// if the cell is empty.
ItemPtr ReadCellItem(Context& context, const XmlElement* owner, Extent cell);
// Resizes a cell's item when the size of the cell becomes known later.
void Fill(ReportItem& item, Extent cell);

// Reads what all kinds share: name, place, style, visibility, action, page break.
void ReadBasics(Context& context, const XmlElement& element, ReportItem& item, Extent container);

}  // namespace rdl
