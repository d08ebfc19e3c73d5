// SPDX-License-Identifier: GPL-3.0-or-later
// Where and how a new element is written, so that the file looks as if its author had written it.
#pragma once

#include <string>
#include <string_view>

#include "designer/document/document.h"

namespace designer {

// Returns the child of `parent` that a new child of this name is written before, by the order of the schemas;
// NoElement: it comes last.
ElementId FollowingSibling(const Document& document, ElementId parent, std::string_view name);

// Returns the splice that writes the element as a child of `parent`, before its child `before` or last, on a
// line of its own if its neighbours are, with the prefix of its parent. `xml` is one element, whose names
// without prefix are those of the report. Raises EditError if it is not well-formed or has a prefix that is
// not declared there.
Splice InsertionOf(const Document& document, ElementId parent, ElementId before, std::string_view xml);

// Returns the splice that removes the element, with its line if it is alone on it.
Splice RemovalOf(const Document& document, ElementId id);

}  // namespace designer
