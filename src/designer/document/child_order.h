// SPDX-License-Identifier: GPL-3.0-or-later
// The order in which the schemas list the children of an element (MS-RDL, section 2).
#pragma once

#include <string_view>

namespace designer {

// Returns a number that is less for a child that stands earlier in its parent; -1 if the schemas do not have
// this child, or the parent is one whose children are alike.
int PlaceInOrder(std::string_view parent, std::string_view child);

// Whether the element only gathers others, so that it means nothing without children and may be left out.
bool IsCollection(std::string_view name);

}  // namespace designer
