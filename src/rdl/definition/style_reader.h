// SPDX-License-Identifier: GPL-3.0-or-later
// Reads Style elements (MS-RDL, Style) in both spellings: BorderStyle/Left of the older schemas,
// LeftBorder/Style of the newer.
#pragma once

#include "rdl/definition/context.h"

namespace rdl {

// Reads the child Style of `owner`; empty if there is none.
Style ReadStyle(Context& context, const XmlElement& owner, const std::string& where);

// The properties of a box's style that older schemas apply to its text: those of the run and those of the
// paragraph.
Style RunPart(const Style& style);
Style ParagraphPart(const Style& style);

// Sets every property of `over` in `style`, replacing existing ones.
void Override(Style& style, const Style& over);

}  // namespace rdl
