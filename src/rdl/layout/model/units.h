// SPDX-License-Identifier: GPL-3.0-or-later
// Sizes in reports (MS-RDL, Size).
#pragma once

#include <string_view>

namespace rdl::layout {

// Parses a number with a unit (in, cm, mm, pt, pc, px; spaces may separate them) into points. Returns false
// if `text` is not a length. ParseSize in definition/size.h reads the sizes that stand in the definition: it
// knows neither px nor exponents, because the format has none.
bool ParseSize(std::string_view text, double& points);

}  // namespace rdl::layout
