// SPDX-License-Identifier: GPL-3.0-or-later
// CFF font programs inside OpenType files (Adobe Technical Note 5176).
#pragma once

#include <string>
#include <string_view>

namespace rdl::text {

// Returns the CFF table of a CID-keyed OpenType font with the charset (section 13) replaced by the identity:
// viewers look glyphs up by CID, and documents store glyph indexes. Empty if the font is not CID-keyed or
// cannot be read.
std::string CidProgram(std::string_view openType);

}  // namespace rdl::text
