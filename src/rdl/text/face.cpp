// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/text/face.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_TRUETYPE_TABLES_H
#include FT_FONT_FORMATS_H
#include FT_ADVANCES_H
#include <hb-ot.h>

#include <algorithm>
#include <cerrno>
#include <new>
#include <string_view>
#include <system_error>

#include "rdl/values/error.h"

namespace rdl::text {

namespace {

FT_Library Library() {
    static FT_Library library = [] {
        FT_Library made = nullptr;
        if (FT_Init_FreeType(&made) != 0) {
            throw Error("The font library cannot be started");
        }
        return made;
    }();
    return library;
}

constexpr char32_t CharacterCount = 0x110000;
// Metrics of fonts that state none: a little below the line, a third above it.
constexpr double UsualUnderline = 0.1;
constexpr double UsualThickness = 0.05;
constexpr double UsualStrike = 0.3;

// Raises an error if the machine lacks what opening the file takes. The file can be a font all the same: a
// process that took another one would keep it for all reports that follow. `code` is the machine's error
// code.
void RaiseLack(const std::string& path, int code) {
    if (code == EMFILE || code == ENFILE) {
        throw Error("The font file " + path + " cannot be read: " + std::generic_category().message(code));
    }
    if (code == ENOMEM) {
        throw std::bad_alloc();
    }
}

}  // namespace

Face::Face(FontFile file) : m_file(std::move(file)), m_blocks(CharacterCount >> 8U) {
    errno = 0;
    const FT_Error error = FT_New_Face(Library(), m_file.path.c_str(), m_file.index, &m_face);
    if (error != 0) {
        RaiseLack(m_file.path, error == FT_Err_Out_Of_Memory ? ENOMEM : errno);
        throw NotAFont("The font file " + m_file.path + " cannot be read");
    }
    try {
        m_advances.assign(static_cast<std::size_t>(std::max<FT_Long>(m_face->num_glyphs, 1)), -1.0F);
        ReadFacts();
    } catch (...) {
        Close();
        throw;
    }
}

Face::~Face() {
    Close();
}

void Face::Close() {
    if (m_shaper != nullptr) {
        hb_font_destroy(m_shaper);
    }
    FT_Done_Face(m_face);
}

void Face::ReadFacts() {
    const double em = m_face->units_per_EM > 0 ? m_face->units_per_EM : 1000;
    m_metrics.unitsPerEm = static_cast<int>(em);
    m_metrics.ascent = m_face->ascender / em;
    m_metrics.descent = -m_face->descender / em;
    m_metrics.lineGap = std::max(0.0, m_face->height / em - m_metrics.ascent - m_metrics.descent);
    m_metrics.underlinePosition =
        m_face->underline_position != 0 ? -m_face->underline_position / em : UsualUnderline;
    m_metrics.underlineThickness =
        m_face->underline_thickness != 0 ? m_face->underline_thickness / em : UsualThickness;
    m_metrics.strikePosition = UsualStrike;
    m_file.capHeight = 700;
    if (const auto* os2 = static_cast<TT_OS2*>(FT_Get_Sfnt_Table(m_face, FT_SFNT_OS2))) {
        if (os2->yStrikeoutPosition != 0) {
            m_metrics.strikePosition = os2->yStrikeoutPosition / em;
        }
        if (os2->version >= 2 && os2->sCapHeight != 0) {
            m_file.capHeight = 1000 * os2->sCapHeight / em;
        }
        // OS/2 fsType: restricted licence, no subsetting, bitmaps only. Such fonts must not be embedded.
        constexpr unsigned UsageMask = 0x000F, Restricted = 0x0002, NoSubsetting = 0x0100,
                           BitmapsOnly = 0x0200;
        m_file.embeddable =
            (os2->fsType & UsageMask) != Restricted && (os2->fsType & (NoSubsetting | BitmapsOnly)) == 0;
    }
    if (const auto* post = static_cast<TT_Postscript*>(FT_Get_Sfnt_Table(m_face, FT_SFNT_POST))) {
        m_file.italicAngle = static_cast<double>(post->italicAngle) / 65536.0;
    }
    const FT_BBox& box = m_face->bbox;
    const FT_Pos edges[4] = {box.xMin, box.yMin, box.xMax, box.yMax};
    for (int i = 0; i < 4; ++i) {
        m_file.bbox[i] = 1000 * static_cast<double>(edges[i]) / em;
    }
    if (const char* name = FT_Get_Postscript_Name(m_face)) {
        m_file.postscriptName = name;
    }
    const char* format = FT_Get_Font_Format(m_face);
    m_file.isCff = format != nullptr && std::string_view(format) == "CFF";
    // A kind of file that the subsetter cannot read (Type 1, WOFF) could only leave a document without its
    // glyphs.
    const auto readable = static_cast<long>(hb_face_get_glyph_count(hb_font_get_face(Shaper())));
    m_file.embeddable = m_file.embeddable && readable > 0 && readable == m_face->num_glyphs;
}

std::uint16_t Face::GlyphOf(char32_t character) {
    if (character >= CharacterCount) {
        return 0;
    }
    std::unique_ptr<Block>& block = m_blocks[character >> 8U];
    if (!block) {
        block = std::make_unique<Block>();
        const char32_t first = character & ~static_cast<char32_t>(0xFF);
        for (std::uint32_t i = 0; i < block->size(); ++i) {
            (*block)[i] = static_cast<std::uint16_t>(FT_Get_Char_Index(m_face, first + i));
        }
    }
    return (*block)[character & 0xFFU];
}

double Face::AdvanceOf(std::uint16_t glyph) {
    if (glyph >= m_advances.size()) {
        return 0;
    }
    float& advance = m_advances[glyph];
    if (advance < 0) {
        FT_Fixed units = 0;
        const FT_Error error = FT_Get_Advance(m_face, glyph, FT_LOAD_NO_SCALE, &units);
        if (error == FT_Err_Out_Of_Memory) {
            throw std::bad_alloc();
        }
        advance = error == 0 ? static_cast<float>(static_cast<double>(units) / m_metrics.unitsPerEm) : 0.0F;
    }
    return static_cast<double>(advance);
}

hb_font_t* Face::Shaper() {
    if (m_shaper == nullptr) {
        errno = 0;
        hb_blob_t* blob = hb_blob_create_from_file_or_fail(m_file.path.c_str());
        if (blob == nullptr) {
            RaiseLack(m_file.path, errno);
            throw NotAFont("The font file " + m_file.path + " cannot be read");
        }
        hb_face_t* face = hb_face_create(blob, static_cast<unsigned>(m_file.index));
        hb_font_t* shaper = hb_font_create(face);
        const bool hasMemory = face != hb_face_get_empty() && shaper != hb_font_get_empty();
        hb_face_destroy(face);
        hb_blob_destroy(blob);
        if (!hasMemory) {
            hb_font_destroy(shaper);
            throw std::bad_alloc();
        }
        m_shaper = shaper;
        hb_ot_font_set_funcs(m_shaper);
        hb_font_set_scale(m_shaper, m_metrics.unitsPerEm, m_metrics.unitsPerEm);
    }
    return m_shaper;
}

bool Face::SameFile(const FontFile& other) const {
    return m_file.path == other.path && m_file.index == other.index &&
           m_file.syntheticBold == other.syntheticBold && m_file.syntheticItalic == other.syntheticItalic;
}

}  // namespace rdl::text
