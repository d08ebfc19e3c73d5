// CFF font programs within OpenType files, as far as documents must know them.
#pragma once

#include <string>
#include <string_view>

namespace rdl::text {

// The CFF program of an OpenType file whose glyphs are named by numbers of a character collection, with each
// number made the glyph's own index: a viewer finds glyphs by those numbers, and the text is written in
// indexes. Empty when the program names its glyphs otherwise, or cannot be read.
std::string CidProgram(std::string_view openType);

}  // namespace rdl::text
