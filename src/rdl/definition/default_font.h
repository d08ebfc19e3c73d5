// SPDX-License-Identifier: GPL-3.0-or-later
// The report's default font family (MS-RDL, DefaultFontFamily).
#pragma once

#include "rdl/definition/model.h"

namespace rdl {

// Sets the family on every run without one. Does nothing if `font` is not set or is an expression.
void ApplyDefaultFont(Definition& definition, const Expr& font);

}  // namespace rdl
