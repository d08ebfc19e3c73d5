// SPDX-License-Identifier: GPL-3.0-or-later
// The children of a collection that a dialog shows as rows, which are added, removed and ordered there.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "designer/document/document.h"

namespace designer {

// Makes the children of this name in the collection at `path` those of the rows, in their order. `places` has
// for each row its place among the children that are there, or NewRow. `xml` returns the element of a new
// row. A row that keeps its place is not touched. Returns the elements of the rows. Edits of the step that is
// open.
inline constexpr int NewRow = -1;
std::vector<ElementId> PutRows(Document& document, ElementId owner, std::string_view path,
                               std::string_view element, const std::vector<int>& places,
                               const std::function<std::string(std::size_t row)>& xml);

}  // namespace designer
