// Text boxes: paragraphs of runs, which the older schemas wrote as one Value.
#pragma once

#include "rdl/definition/item_reader.h"

namespace rdl {

ItemPtr ReadTextbox(Context& context, const XmlElement& element, Extent container);

}  // namespace rdl
