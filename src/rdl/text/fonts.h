// SPDX-License-Identifier: GPL-3.0-or-later
// Finds fonts by name and turns text into positioned glyphs: fontconfig substitutes, FreeType gives metrics,
// HarfBuzz shapes scripts that need it, a table lookup serves the others. Needs neither a display nor Qt.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace rdl::text {

using FontId = std::int32_t;  // index into the process's font table, valid for the life of the process

struct FontRequest {
    std::string family;  // as written in the report; empty: Arial
    bool bold = false, italic = false;
};

// Sizes as fractions of the font size.
struct FontMetrics {
    double ascent, descent, lineGap;  // descent is positive below the baseline
    double underlinePosition, underlineThickness, strikePosition;
    int unitsPerEm;
};

struct Glyph {
    std::uint16_t id;
    float advance;  // in points
    float dx = 0, dy = 0;
    std::uint32_t cluster = 0;  // byte offset of its character in the shaped text
};

// One piece of text in one font.
struct GlyphRun {
    FontId font = 0;
    bool rightToLeft = false;
    std::vector<Glyph> glyphs;         // in visual order
    double width = 0;                  // points
    std::uint32_t begin = 0, end = 0;  // bytes of the text
};

// Returns the font for a request; equal requests return the same id. Unknown families are substituted. Raises
// rdl::Error only if the system has no font at all.
FontId FindFont(const FontRequest& request);
const FontMetrics& Metrics(FontId font);

// Splits UTF-8 text into runs of one font and direction (characters that `font` lacks come from a fallback
// font) and positions the glyphs for `size` in points. Appends to `runs` in visual order. Does not break
// lines; control characters have no glyph.
void Shape(std::string_view utf8, FontId font, double size, bool rightToLeft, std::vector<GlyphRun>& runs);

// Returns the width of the text in points: equal to that of Shape, but faster.
double TextWidth(std::string_view utf8, FontId font, double size);

// A font file as writers and the screen need it.
struct FontFile {
    std::string path;
    int index = 0;  // face within a collection
    std::string postscriptName, family;
    bool bold = false, italic = false;                    // of the file itself
    bool syntheticBold = false, syntheticItalic = false;  // requested, but missing in the file
    double italicAngle = 0, capHeight = 0,
           bbox[4] = {0, 0, 0, 0};  // italicAngle in degrees, the others in 1/1000 em
    bool isCff = false, embeddable = true;
};
const FontFile& File(FontId font);
// Returns a font program with only these glyphs; glyph indexes do not change. The same glyphs give the same
// bytes. Raises rdl::Error if the font cannot be subset.
std::string Subset(FontId font, const std::vector<std::uint16_t>& glyphs);
// Returns the advance width in 1/1000 em.
double GlyphAdvance(FontId font, std::uint16_t glyph);

}  // namespace rdl::text
