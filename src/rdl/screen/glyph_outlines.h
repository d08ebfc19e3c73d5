// SPDX-License-Identifier: GPL-3.0-or-later
// Caches outlines of glyphs.
#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "rdl/text/outline.h"

namespace rdl::screen {

class GlyphOutlines {
 public:
    // The reference is valid until the next call.
    const std::vector<text::OutlineStep>& Of(text::FontId font, std::uint16_t glyph);

 private:
    std::unordered_map<std::uint64_t, std::vector<text::OutlineStep>> m_known;
};

}  // namespace rdl::screen
