// SPDX-License-Identifier: GPL-3.0-or-later
// Pieces of WordprocessingML (ECMA-376 Part 1, 17). Each function appends to `out`.
#pragma once

#include <string>
#include <string_view>

#include "rdl/layout/model/style.h"

namespace rdl::writers {

// The declaration of a part and the namespaces of its root element.
inline constexpr std::string_view XmlDeclaration =
    "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";
std::string DocxNamespaces();

// Appends document text as elements of a run: w:t, w:tab and w:br. Other control characters are dropped.
void AppendRunText(std::string_view text, std::string& out);
// Appends ` name="value"`; the overload for lengths takes points and writes twips.
void AppendAttribute(const char* name, std::string_view value, std::string& out);
void AppendAttribute(const char* name, int value, std::string& out);
void AppendTwipsAttribute(const char* name, double points, std::string& out);
// Returns the colour on white paper as RRGGBB.
std::string DocxColor(layout::Color color);

}  // namespace rdl::writers
