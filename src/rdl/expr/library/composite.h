// SPDX-License-Identifier: GPL-3.0-or-later
// Composite formatting: "{0:N2} of {1,8}".
#pragma once

#include <string_view>

#include "rdl/format/format.h"

namespace rdl::expr {

// Replaces {index[,width][:format]}; {{ and }} give single braces. Returns an error value if an index names
// no value.
Value FormatComposite(std::string_view pattern, const ValueList& values, const Culture& culture);

}  // namespace rdl::expr
