// Data regions. All four kinds become a Tablix.
#pragma once

#include "rdl/definition/item_reader.h"

namespace rdl {

ItemPtr ReadTablix(Context& context, const XmlElement& element, Extent container);
ItemPtr ReadTable(Context& context, const XmlElement& element, Extent container);
ItemPtr ReadList(Context& context, const XmlElement& element, Extent container);
ItemPtr ReadMatrix(Context& context, const XmlElement& element, Extent container);

// What the four have in common: data set, filters, sorts, message without rows, keeping together.
void ReadRegion(Context& context, const XmlElement& element, Tablix& tablix, Extent container);

// `count` cells, of which the first holds the item and spans `span` of them.
void AddSpanned(std::vector<TablixCell>& cells, ItemPtr item, int span);
double SumOf(const std::vector<double>& sizes, std::size_t first, std::size_t count);
std::size_t LeafCount(const std::vector<TablixMember>& members);

}  // namespace rdl
