// SPDX-License-Identifier: GPL-3.0-or-later
// Fonts that tests ask for by name: which of them this machine has.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "rdl/text/fonts.h"

namespace rdl::text::test {

inline bool Has(const std::string& family) {
    return File(FindFont({family})).family == family;
}

inline FontId Arial() {
    return FindFont({"Arial"});
}

inline std::vector<GlyphRun> Shaped(std::string_view text, FontId font = Arial(), double size = 10,
                                    bool rightToLeft = false) {
    std::vector<GlyphRun> runs;
    Shape(text, font, size, rightToLeft, runs);
    return runs;
}

inline std::vector<std::uint16_t> GlyphIds(const std::vector<GlyphRun>& runs) {
    std::vector<std::uint16_t> ids;
    for (const GlyphRun& run : runs) {
        for (const Glyph& glyph : run.glyphs) {
            ids.push_back(glyph.id);
        }
    }
    return ids;
}

inline double WidthOf(const std::vector<GlyphRun>& runs) {
    double width = 0;
    for (const GlyphRun& run : runs) {
        width += run.width;
    }
    return width;
}

// Places in the text, glyph by glyph from the left.
inline std::vector<std::uint32_t> Clusters(const std::vector<GlyphRun>& runs) {
    std::vector<std::uint32_t> clusters;
    for (const GlyphRun& run : runs) {
        for (const Glyph& glyph : run.glyphs) {
            clusters.push_back(glyph.cluster);
        }
    }
    return clusters;
}

}  // namespace rdl::text::test

#define NEEDS_FONT(family)                                  \
    if (!rdl::text::test::Has(family)) {                    \
        GTEST_SKIP() << "this machine has no font " family; \
    }
