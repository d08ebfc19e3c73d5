// SPDX-License-Identifier: GPL-3.0-or-later
// Sizes in reports (MS-RDL, Size).
#pragma once

#include <optional>
#include <string_view>

#include "rdl/api/size_units.h"

namespace rdl {

// Returns the points of a number with a unit in, cm, mm, pt or pc; white space may separate them. nullopt for
// any other text. ParseSize in layout/model/units.h reads the sizes that expressions give in another way: it
// also knows px and exponents, as style sheets do, and refuses sizes that no page can hold.
std::optional<double> ParseSize(std::string_view text);

}  // namespace rdl
