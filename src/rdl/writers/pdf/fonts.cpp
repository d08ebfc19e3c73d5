// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/pdf/fonts.h"

#include <cstdio>

#include "rdl/text/cff.h"
#include "rdl/values/ascii.h"
#include "rdl/values/utf8.h"

namespace rdl::writers {
namespace {

std::vector<std::uint16_t> UsedGlyphs(const PdfFonts::Font& font) {
    std::vector<std::uint16_t> glyphs;
    for (std::size_t glyph = 0; glyph < font.says.size(); ++glyph) {
        if (font.says[glyph]) {
            glyphs.push_back(static_cast<std::uint16_t>(glyph));
        }
    }
    return glyphs;
}

// A subset tag of six letters, computed from its glyphs (ISO 32000-1, 9.6.4): merged documents keep the
// subsets apart.
std::string SubsetName(const std::string& name, const std::vector<std::uint16_t>& glyphs) {
    std::uint32_t hash = 2166136261u;
    for (const std::uint16_t glyph : glyphs) {
        hash = (hash ^ glyph) * 16777619u;
    }
    std::string out;
    for (int i = 0; i < 6; ++i, hash /= 26) {
        out += static_cast<char>('A' + hash % 26);
    }
    out += '+';
    for (const char c : name) {
        const bool plain = IsAsciiLetterOrDigit(c) || c == '-';
        out += plain ? c : '_';
    }
    return out;
}

std::string Widths(const PdfFonts::Font& font, const std::vector<std::uint16_t>& glyphs) {
    std::string out = "[";
    for (std::size_t i = 0; i < glyphs.size(); ++i) {
        if (i == 0 || glyphs[i] != glyphs[i - 1] + 1) {
            out += i == 0 ? "" : "]";
            out += std::to_string(glyphs[i]) + "[";
        } else {
            out += ' ';
        }
        PdfNumber(out, font.widths[glyphs[i]]);
    }
    return out + (glyphs.empty() ? "]" : "]]");
}

std::string ToUnicode(const PdfFonts::Font& font, const std::vector<std::uint16_t>& glyphs) {
    constexpr std::size_t MostInBlock = 100;
    std::vector<std::string> lines;
    char head[16];
    for (const std::uint16_t glyph : glyphs) {
        const char32_t says = font.says[glyph];
        if (says == PdfFonts::Unmapped) {
            continue;
        }
        std::snprintf(head, sizeof head, "<%04X><", glyph);
        const auto several = font.several.find(glyph);
        lines.push_back(
            head + PdfHexUtf16(several != font.several.end() ? several->second : ToUtf8({&says, 1})) + ">\n");
    }
    std::string map =
        "/CIDInit/ProcSet findresource begin\n12 dict begin\nbegincmap\n"
        "/CIDSystemInfo<</Registry(Adobe)/Ordering(UCS)/Supplement 0>>def\n"
        "/CMapName/Adobe-Identity-UCS def\n/CMapType 2 def\n1 "
        "begincodespacerange\n<0000><FFFF>\nendcodespacerange\n";
    for (std::size_t from = 0; from < lines.size(); from += MostInBlock) {
        const std::size_t to = std::min(lines.size(), from + MostInBlock);
        map += std::to_string(to - from) + " beginbfchar\n";
        for (std::size_t i = from; i < to; ++i) {
            map += lines[i];
        }
        map += "endbfchar\n";
    }
    return map + "endcmap\nCMapName currentdict/CMap defineresource pop\nend\nend\n";
}

int Descriptor(PdfFile& file, text::FontId id, const std::string& name,
               const std::vector<std::uint16_t>& glyphs) {
    const text::FontFile& font = text::File(id);
    const text::FontMetrics& metrics = text::Metrics(id);
    const std::string program = text::Subset(id, glyphs);
    const std::string cid = font.isCff ? text::CidProgram(program) : std::string();
    const int stream = !cid.empty() ? file.Stream("/Subtype/CIDFontType0C", cid)
                       : font.isCff ? file.Stream("/Subtype/OpenType", program)
                                    : file.Stream("/Length1 " + std::to_string(program.size()), program);
    constexpr int Symbolic = 4, Italic = 64;
    std::string out = "<</Type/FontDescriptor/FontName/" + name + "/Flags " +
                      std::to_string(Symbolic | (font.italic ? Italic : 0)) + "/FontBBox[";
    for (const double edge : font.bbox) {
        PdfNumber(out, edge);
        out += ' ';
    }
    out += "]/ItalicAngle ";
    PdfNumber(out, font.italicAngle);
    out += "/Ascent ";
    PdfNumber(out, metrics.ascent * 1000);
    out += "/Descent ";
    PdfNumber(out, -metrics.descent * 1000);
    out += "/CapHeight ";
    PdfNumber(out, font.capHeight);
    out += font.bold ? "/StemV 120" : "/StemV 80";
    out += (font.isCff ? "/FontFile3 " : "/FontFile2 ") + PdfReference(stream) + ">>";
    return file.Object(out);
}

}  // namespace

PdfFonts::Font& PdfFonts::Use(text::FontId font) {
    const auto [place, isNew] = m_fonts.try_emplace(font);
    if (isNew) {
        // Not by the font's id: ids depend on what the process did before, and the document must not.
        place->second.number = static_cast<int>(m_fonts.size());
    }
    return place->second;
}

bool PdfFonts::Note(Font& font, text::FontId id, std::uint16_t glyph, std::string_view says) {
    if (glyph >= font.says.size()) {
        font.says.resize(glyph + 1u, 0);
        font.widths.resize(glyph + 1u, 0);
    }
    char32_t code = Unmapped;
    std::size_t used = 0;
    if (!says.empty()) {
        code = NextCharacter(says, used);
        if (used < says.size()) {
            code = Several;
        }
    }
    char32_t& known = font.says[glyph];
    if (known == 0) {
        font.widths[glyph] = static_cast<float>(text::GlyphAdvance(id, glyph));
    }
    if (known == 0 || known == Unmapped) {
        known = code;
        if (code == Several) {
            font.several[glyph] = says;
        }
        return true;
    }
    return code == known && (code != Several || font.several[glyph] == says);
}

std::string PdfFonts::Write(PdfFile& file) const {
    std::map<int, text::FontId> byNumber;
    for (const auto& [id, font] : m_fonts) {
        byNumber.emplace(font.number, id);
    }
    std::string resources;
    for (const auto& [number, id] : byNumber) {
        const Font& font = m_fonts.at(id);
        const std::vector<std::uint16_t> glyphs = UsedGlyphs(font);
        const std::string name = SubsetName(text::File(id).postscriptName, glyphs);
        const bool cff = text::File(id).isCff;
        const int descriptor = Descriptor(file, id, name, glyphs);
        const int cid = file.Object(
            "<</Type/Font/Subtype/" + std::string(cff ? "CIDFontType0" : "CIDFontType2") + "/BaseFont/" +
            name + "/CIDSystemInfo<</Registry(Adobe)/Ordering(Identity)/Supplement 0>>/FontDescriptor " +
            PdfReference(descriptor) + (cff ? "" : "/CIDToGIDMap/Identity") + "/DW 1000/W" +
            Widths(font, glyphs) + ">>");
        const int unicode = file.Stream("", ToUnicode(font, glyphs));
        const int whole = file.Object("<</Type/Font/Subtype/Type0/BaseFont/" + name +
                                      "/Encoding/Identity-H/DescendantFonts[" + PdfReference(cid) +
                                      "]/ToUnicode " + PdfReference(unicode) + ">>");
        resources += "/F" + std::to_string(number) + " " + PdfReference(whole);
    }
    return resources;
}

}  // namespace rdl::writers
