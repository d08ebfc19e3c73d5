// The fonts of a PDF document: which glyphs its pages use and what they say. They are written last, as
// subsets.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "rdl/text/fonts.h"
#include "rdl/writers/pdf/file.h"

namespace rdl::writers {

class PdfFonts {
 public:
    struct Font {
        int number;                  // in order of first use: its resource name is /F and this
        std::vector<char32_t> says;  // by glyph: 0 unused, Unmapped, Several, or its character
        std::vector<float> widths;   // by glyph, 1/1000 em
        std::map<std::uint16_t, std::string> several;  // glyphs that stand for more than one character
    };
    static constexpr char32_t Unmapped = 0x110000, Several = 0x110001;

    // The reference stays good.
    Font& Use(text::FontId font);
    // Notes the glyph's use. False when it says something else elsewhere, so that the text has to be told
    // beside it.
    static bool Note(Font& font, text::FontId id, std::uint16_t glyph, std::string_view says);
    // Entries for the resource dictionary: "/F0 12 0 R/F3 ...".
    std::string Write(PdfFile& file) const;

 private:
    std::map<text::FontId, Font> m_fonts;
};

}  // namespace rdl::writers
