// Style elements, in both spellings: BorderStyle/Left of the older schemas, LeftBorder/Style of the newer.
#pragma once

#include "rdl/definition/context.h"

namespace rdl {

// The style of `owner` (its child Style); empty when there is none.
Style ReadStyle(Context& context, const XmlElement& owner, const std::string& where);

// What of a box's style older schemas meant for the text in it: the run's part and the paragraph's part.
Style RunPart(const Style& style);
Style ParagraphPart(const Style& style);

// Puts every property of `over` into `style`, replacing what is there.
void Override(Style& style, const Style& over);

}  // namespace rdl
