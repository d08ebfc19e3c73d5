// Report items of every kind, whatever the schema calls them.
#pragma once

#include "rdl/definition/context.h"

namespace rdl {

// Of the container, in points: an item that does not say how wide or high it is reaches to the container's
// edge.
struct Extent {
    double width = 0, height = 0;
};

// The items of `owner`'s child ReportItems.
std::vector<ItemPtr> ReadItems(Context& context, const XmlElement& owner, Extent container);

// The one item of a cell (the child ReportItems or CellContents of `owner`), made to fill it; null when
// empty.
ItemPtr ReadCellItem(Context& context, const XmlElement* owner, Extent cell);
// Makes a cell's item fill a cell whose size became known only later.
void Fill(ReportItem& item, Extent cell);

// What all kinds have in common: name, place, style, visibility, action, page break.
void ReadBasics(Context& context, const XmlElement& element, ReportItem& item, Extent container);

}  // namespace rdl
