// One face of a font file, opened: glyphs of characters, advances, and HarfBuzz's view of it.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

#include "rdl/text/fonts.h"

struct FT_FaceRec_;
struct hb_font_t;

namespace rdl::text {

class Face {
 public:
    // Opens the file; raises rdl::Error when it is no font.
    explicit Face(FontFile file);
    ~Face();
    Face(const Face&) = delete;
    Face& operator=(const Face&) = delete;

    const FontFile& File() const { return m_file; }
    const FontMetrics& Metrics() const { return m_metrics; }
    std::uint16_t GlyphOf(char32_t character);  // 0: the font has none
    double AdvanceOf(std::uint16_t glyph);      // per em
    hb_font_t* Shaper();                        // in font units
    bool SameFile(const FontFile& other) const;

 private:
    using Block = std::array<std::uint16_t, 256>;
    void ReadFacts();

    FontFile m_file;
    FontMetrics m_metrics{};
    FT_FaceRec_* m_face = nullptr;
    hb_font_t* m_shaper = nullptr;
    std::vector<std::unique_ptr<Block>>
        m_blocks;                   // glyphs by the upper bits of the character, filled when asked for
    std::vector<float> m_advances;  // below 0: not asked for yet
};

}  // namespace rdl::text
