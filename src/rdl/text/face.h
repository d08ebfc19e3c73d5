// SPDX-License-Identifier: GPL-3.0-or-later
// One open face of a font file: glyph indexes, advances, and its HarfBuzz font.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

#include "rdl/text/fonts.h"
#include "rdl/values/error.h"

struct FT_FaceRec_;
struct hb_font_t;

namespace rdl::text {

// The file is not a font, whatever else the machine has.
class NotAFont : public Error {
 public:
    using Error::Error;
};

class Face {
 public:
    // Opens the file. Raises NotAFont if it is not a font, rdl::Error if the machine has no descriptor for
    // it, and std::bad_alloc if it has no memory.
    explicit Face(FontFile file);
    ~Face();
    Face(const Face&) = delete;
    Face& operator=(const Face&) = delete;

    const FontFile& File() const { return m_file; }
    const FontMetrics& Metrics() const { return m_metrics; }
    std::uint16_t GlyphOf(char32_t character);  // 0: the font lacks the character
    double AdvanceOf(std::uint16_t glyph);      // advance width as a fraction of the em
    hb_font_t* Shaper();                        // owned by the face; scale is font units
    bool SameFile(const FontFile& other) const;

 private:
    using Block = std::array<std::uint16_t, 256>;
    void ReadFacts();
    void Close();

    FontFile m_file;
    FontMetrics m_metrics{};
    FT_FaceRec_* m_face = nullptr;
    hb_font_t* m_shaper = nullptr;
    std::vector<std::unique_ptr<Block>>
        m_blocks;                   // glyph indexes by the upper bits of the character, loaded on demand
    std::vector<float> m_advances;  // negative: not loaded yet
};

}  // namespace rdl::text
