// SPDX-License-Identifier: GPL-3.0-or-later
// Escapes texts and formats numbers and bytes for HTML and CSS. Each function appends to `out`.
#pragma once

#include <string>
#include <string_view>

namespace rdl::writers {

// For element content and attribute values; characters that HTML forbids are dropped.
void AppendHtml(std::string_view text, std::string& out);
// Appends a length in points with at most two decimals: 12.5pt.
void AppendPoints(double points, std::string& out);

}  // namespace rdl::writers
