// SPDX-License-Identifier: GPL-3.0-or-later
// Reads the data regions Tablix, Table, List and Matrix (MS-RDL, elements of these names) into a Tablix.
// Raises rdl::Error.
#pragma once

#include "rdl/definition/item_reader.h"

namespace rdl {

ItemPtr ReadTablix(Context& context, const XmlElement& element, Extent container);
ItemPtr ReadTable(Context& context, const XmlElement& element, Extent container);
ItemPtr ReadList(Context& context, const XmlElement& element, Extent container);
ItemPtr ReadMatrix(Context& context, const XmlElement& element, Extent container);

// Reads what the four share: data set, filters, sorts, message without rows, keeping together.
void ReadRegion(Context& context, const XmlElement& element, Tablix& tablix, Extent container);

// Appends `span` cells; the first one holds the item and spans them all.
void AddSpanned(std::vector<TablixCell>& cells, ItemPtr item, int span);
double SumOf(const std::vector<double>& sizes, std::size_t first, std::size_t count);
std::size_t LeafCount(const std::vector<TablixMember>& members);

}  // namespace rdl
