// SPDX-License-Identifier: GPL-3.0-or-later
// Reads the element Textbox (MS-RDL, Textbox): paragraphs of runs, or one Value in the older schemas. Raises
// rdl::Error.
#pragma once

#include "rdl/definition/item_reader.h"

namespace rdl {

ItemPtr ReadTextbox(Context& context, const XmlElement& element, Extent container);

}  // namespace rdl
