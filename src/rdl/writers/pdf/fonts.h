// SPDX-License-Identifier: GPL-3.0-or-later
// The fonts of a PDF document (ISO 32000-1, 9.7 composite fonts, 9.9 embedded programs, 9.10.3 ToUnicode):
// collects the glyphs in use and writes subsets at the end.
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
        int number;                  // in order of first use; the resource name is /F and this number
        std::vector<char32_t> says;  // by glyph: 0 unused, Unmapped, Several, or its character
        std::vector<float> widths;   // by glyph, 1/1000 em
        std::map<std::uint16_t, std::string>
            several;  // texts of glyphs that stand for more than one character
    };
    static constexpr char32_t Unmapped = 0x110000, Several = 0x110001;

    // Returns the font; the reference stays valid.
    Font& Use(text::FontId font);
    // Records the use of a glyph. Returns false if it stands for another text elsewhere: the text then needs
    // an ActualText entry (14.9.4).
    static bool Note(Font& font, text::FontId id, std::uint16_t glyph, std::string_view says);
    // Writes the fonts and returns the entries of the resource dictionary: "/F0 12 0 R/F3 ...". Raises
    // rdl::Error if a font cannot be embedded.
    std::string Write(PdfFile& file) const;

 private:
    std::map<text::FontId, Font> m_fonts;
};

}  // namespace rdl::writers
