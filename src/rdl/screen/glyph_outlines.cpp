// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/screen/glyph_outlines.h"

namespace rdl::screen {

const std::vector<text::OutlineStep>& GlyphOutlines::Of(text::FontId font, std::uint16_t glyph) {
    constexpr std::size_t MostKnown =
        8192;  // a limit for scripts with thousands of characters: the cache is cleared
    const std::uint64_t key = static_cast<std::uint64_t>(font) << 16 | glyph;
    if (const auto known = m_known.find(key); known != m_known.end()) {
        return known->second;
    }
    if (m_known.size() >= MostKnown) {
        m_known.clear();
    }
    return m_known.emplace(key, text::Outline(font, glyph)).first->second;
}

}  // namespace rdl::screen
