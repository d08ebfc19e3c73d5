// SPDX-License-Identifier: GPL-3.0-or-later
// Levels of headers on one side of a Tablix: all of its tracks have the same ones (MS-RDL, TablixHeader).
#pragma once

#include <cstddef>

#include "designer/document/document.h"
#include "designer/tables/tablix_shape.h"

namespace designer {

// Gives every track a header after its first `level` ones, and the corner a place for it. The member
// `except`, and what is in it, has it already. `points` is the size of the headers. An edit of the step that
// is open.
void InsertHeaderLevel(Document& document, ElementId region, Axis axis, std::size_t level, double points,
                       ElementId except);

}  // namespace designer
