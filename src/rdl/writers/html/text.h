// SPDX-License-Identifier: GPL-3.0-or-later
// Escapes texts and formats numbers and bytes for HTML and CSS. Each function appends to `out`.
#pragma once

#include <string>
#include <string_view>

#include "rdl/image/type.h"
#include "rdl/layout/model/style.h"

namespace rdl::writers {

// For element content and attribute values; characters that HTML forbids are dropped.
void AppendHtml(std::string_view text, std::string& out);
// Appends a number with at most two decimals: 12.5.
void AppendNumber(double number, std::string& out);
// Appends a length in points with at most two decimals: 12.5pt.
void AppendPoints(double points, std::string& out);
// Appends a colour: #rrggbb, or #rrggbbaa if light passes through it.
void AppendColor(layout::Color color, std::string& out);
// Appends an image as a data URI (RFC 2397).
void AppendDataUri(image::Type type, std::string_view bytes, std::string& out);
// Appends the declaration of a font family. Characters that could end its quoted name are dropped.
void AppendFamily(std::string_view family, std::string& css);

}  // namespace rdl::writers
