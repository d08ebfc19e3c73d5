// Fonts by name, and text as positioned glyphs. Substitution by fontconfig, metrics by FreeType, shaping by
// HarfBuzz where a script needs it and a plain table lookup where it does not. No display and no Qt needed.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace rdl::text {

using FontId = std::int32_t;  // index into the process's font table, stable for its life

struct FontRequest {
    std::string family;  // as the report says; empty: Arial
    bool bold = false, italic = false;
};

// Sizes as fractions of the font size.
struct FontMetrics {
    double ascent, descent, lineGap;  // descent positive, below the baseline
    double underlinePosition, underlineThickness, strikePosition;
    int unitsPerEm;
};

struct Glyph {
    std::uint16_t id;
    float advance;  // in points at the shaped size
    float dx = 0, dy = 0;
    std::uint32_t cluster = 0;  // byte offset in the shaped text
};

// One piece of text in one font.
struct GlyphRun {
    FontId font = 0;
    bool rightToLeft = false;
    std::vector<Glyph> glyphs;         // in visual order
    double width = 0;                  // points
    std::uint32_t begin = 0, end = 0;  // bytes of the text
};

// The font for a request, the same for the same request. Never fails: a system without any font at all raises
// rdl::Error.
FontId FindFont(const FontRequest& request);
const FontMetrics& Metrics(FontId font);

// Splits UTF-8 into runs by font (a character that the font lacks comes from a fallback font) and direction
// and positions the glyphs. No line breaking: control characters have no glyph. Appends to `runs` (visual
// order).
void Shape(std::string_view utf8, FontId font, double size, bool rightToLeft, std::vector<GlyphRun>& runs);

// The width of a text in points; the fast way for measuring, the same as Shape's.
double TextWidth(std::string_view utf8, FontId font, double size);

// For writers and the screen.
struct FontFile {
    std::string path;
    int index = 0;  // face within a collection
    std::string postscriptName, family;
    bool bold = false, italic = false;                              // of the file
    bool syntheticBold = false, syntheticItalic = false;            // asked for and not in the file
    double italicAngle = 0, capHeight = 0, bbox[4] = {0, 0, 0, 0};  // per em, times 1000
    bool isCff = false, embeddable = true;
};
const FontFile& File(FontId font);
// The font program with only these glyphs, ids kept; the same bytes for the same glyphs.
std::string Subset(FontId font, const std::vector<std::uint16_t>& glyphs);
// Advance width in 1/1000 em.
double GlyphAdvance(FontId font, std::uint16_t glyph);

}  // namespace rdl::text
