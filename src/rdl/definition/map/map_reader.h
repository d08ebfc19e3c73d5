// SPDX-License-Identifier: GPL-3.0-or-later
// Reads the element Map (MS-RDL, Map) with the shapes that the report contains. Raises rdl::Error for what
// cannot be drawn; tile layers, which need a network, are skipped.
#pragma once

#include <functional>

#include "rdl/definition/item_reader.h"
#include "rdl/definition/map/map.h"

namespace rdl {

ItemPtr ReadMap(Context& context, const XmlElement& element, Extent container);

// Reads one layer; sets `map.regions` for the rows of a spatial data set. `where` names the layer.
MapLayer ReadMapLayer(Context& context, const XmlElement& element, MapLayerKind kind,
                      const std::string& where, spatial::Allowance& allowance, Map& map);

// Reads each child that is only a text, and the style.
void ReadMapPart(Context& context, const XmlElement& element, const std::string& where, MapPart& part);
// The same for the child `name`; not set if there is none.
MapPart ReadMapChild(Context& context, const XmlElement& element, std::string_view name,
                     const std::string& where);
// Reads MapBindingFieldPairs.
std::vector<std::pair<std::string, Expr>> ReadMapBindings(Context& context, const XmlElement& element,
                                                          const std::string& where);
// Calls `read` for each child `name` of the collection, which may be null. Raises rdl::Error for more than
// 200 of them.
void ForEachMapChild(Context& context, const XmlElement* collection, std::string_view name,
                     const std::string& where, const std::function<void(const XmlElement&)>& read);

}  // namespace rdl
