// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/xls/styles.h"

#include <algorithm>
#include <cstdlib>

#include "rdl/writers/common/flow_text.h"
#include "rdl/writers/xls/box_codes.h"

namespace rdl::writers {
namespace {

using layout::BoxStyle;
using layout::CharStyle;
using layout::Color;
using layout::HAlign;

constexpr std::uint16_t FontRecord = 0x0031, FormatRecord = 0x041E, XfRecord = 0x00E0, StyleRecord = 0x0293,
                        PaletteRecord = 0x0092;
constexpr std::uint16_t FirstOwnXf = 16, FirstOwnFormat = 164;
constexpr std::size_t MostXfs = 3900, MostPlainXfs = 100, MostFonts = 500, PaletteSize = 56;
constexpr unsigned FirstPaletteIndex = 8;

int Distance(Color a, Color b) {
    int sum = 0;
    for (const int shift : {0, 8, 16}) {
        const int difference = static_cast<int>(a >> shift & 0xFF) - static_cast<int>(b >> shift & 0xFF);
        sum += difference * difference;
    }
    return sum;
}

std::string FontData(const CharStyle& style, unsigned color) {
    XlsRecords data;
    data.U16(static_cast<unsigned>(std::clamp(style.size, 1.0F, 409.0F) * 20));
    data.U16((style.italic ? 0x2u : 0u) | (style.decoration == layout::Decoration::LineThrough ? 0x8u : 0u));
    data.U16(color);
    data.U16(style.bold || style.weight >= 600 ? 700 : 400);
    data.U16(0);
    data.U8(style.decoration == layout::Decoration::Underline ? 1 : 0);
    data.U8(0);
    data.U8(1);  // the system's character set
    data.U8(0);
    const std::u16string name = ToUtf16(style.family, 31);
    data.ShortText(name.empty() ? u"Arial" : name);
    return data.bytes();
}

}  // namespace

XlsStyles::XlsStyles() {
    m_palette = {0xFF000000, 0xFFFFFFFF};
    Font(CharStyle());
}

std::uint16_t XlsStyles::Format(const std::string& excelFormat) {
    if (excelFormat == "General") {
        return 0;
    }
    const auto next = static_cast<std::uint16_t>(FirstOwnFormat + m_formats.size());
    return m_formats.try_emplace(excelFormat, next).first->second;
}

// Past the palette's size the nearest colour that is there.
unsigned XlsStyles::ColorIndex(Color color) {
    color = layout::IsVisible(color) ? OnPaper(color) : color | 0xFF000000;
    auto found = std::find(m_palette.begin(), m_palette.end(), color);
    if (found == m_palette.end() && m_palette.size() < PaletteSize) {
        found = m_palette.insert(m_palette.end(), color);
    } else if (found == m_palette.end()) {
        found = std::min_element(m_palette.begin(), m_palette.end(),
                                 [&](Color a, Color b) { return Distance(a, color) < Distance(b, color); });
    }
    return FirstPaletteIndex + static_cast<unsigned>(found - m_palette.begin());
}

// Number 4 is left out in counting fonts; the first four are the default.
std::uint16_t XlsStyles::Font(const CharStyle& style) {
    const std::string data = FontData(style, ColorIndex(style.color));
    if (const auto found = m_fontIndexes.find(data); found != m_fontIndexes.end()) {
        return found->second;
    }
    if (m_fonts.empty()) {
        m_fonts.assign(4, data);
        m_fontIndexes[data] = 0;
        return 0;
    }
    if (m_fonts.size() >= MostFonts) {
        return 0;
    }
    m_fonts.push_back(data);
    const auto index = static_cast<std::uint16_t>(m_fonts.size());
    m_fontIndexes[data] = index;
    return index;
}

std::string XlsStyles::CellRecord(const BoxStyle& box, std::uint16_t font, HAlign align, std::uint16_t format,
                                  bool wrap) {
    XlsRecords data;
    data.U16(font);
    data.U16(format);
    data.U16(0x0001);  // locked, parent 0
    const AlignmentCodes place = AlignmentOf(box, align);
    data.U8(place.horizontal | (wrap ? 0x08u : 0u) | place.vertical << 4);
    data.U8(box.writingMode == layout::WritingMode::Vertical    ? 180
            : box.writingMode == layout::WritingMode::Rotate270 ? 90
                                                                : 0);
    data.U8(IndentCode(box, align) | (box.rightToLeft ? 0x80u : 0u));
    data.U8(0xFC);
    data.U32(BorderCode(box.left) | BorderCode(box.right) << 4 | BorderCode(box.top) << 8 |
             BorderCode(box.bottom) << 12 | ColorIndex(box.left.color) << 16 |
             ColorIndex(box.right.color) << 23);
    const bool filled = layout::IsVisible(box.background);
    data.U32(ColorIndex(box.top.color) | ColorIndex(box.bottom.color) << 7 | (filled ? 1u : 0u) << 26);
    data.U16((filled ? ColorIndex(box.background) : 0x40u) | 0x41u << 7);
    return data.bytes();
}

// The borders are two numbers of 32 bits at byte 10: styles and two colours, the other colours and the fill.
std::uint16_t XlsStyles::Framed(std::uint16_t xf, const BoxStyle& box, unsigned sides) {
    constexpr std::size_t Place = 10;
    std::string data =
        xf >= FirstOwnXf ? m_xfs[xf - FirstOwnXf] : CellRecord(BoxStyle(), 0, HAlign::General, 0, false);
    std::uint64_t borders = 0;
    for (unsigned i = 0; i < 8; ++i) {
        borders |= static_cast<std::uint64_t>(static_cast<unsigned char>(data[Place + i])) << 8 * i;
    }
    const layout::Border* const lines[] = {&box.left, &box.right, &box.top, &box.bottom};
    constexpr unsigned ColorPlaces[] = {16, 23, 32, 39};
    for (unsigned i = 0; i < 4; ++i) {
        const std::uint64_t style = BorderCode(*lines[i]);
        if ((sides >> i & 1) != 0 && style != 0 && (borders >> 4 * i & 15) == 0) {
            borders |= style << 4 * i;
            borders &= ~(std::uint64_t{127} << ColorPlaces[i]);
            borders |= static_cast<std::uint64_t>(ColorIndex(lines[i]->color)) << ColorPlaces[i];
        }
    }
    for (unsigned i = 0; i < 8; ++i) {
        data[Place + i] = static_cast<char>(borders >> 8 * i & 0xFF);
    }
    const std::uint16_t framed = Record(data, MostXfs);
    return framed == DefaultCell ? xf : framed;
}

// DefaultCell when it is new and there are `most` already.
std::uint16_t XlsStyles::Record(const std::string& data, std::size_t most) {
    if (const auto found = m_xfIndexes.find(data); found != m_xfIndexes.end()) {
        return found->second;
    }
    if (m_xfs.size() >= most) {
        return DefaultCell;
    }
    m_xfs.push_back(data);
    return m_xfIndexes.emplace(data, static_cast<std::uint16_t>(FirstOwnXf + m_xfs.size() - 1)).first->second;
}

std::uint16_t XlsStyles::Cell(const layout::BoxStylePtr& box, const layout::CharStylePtr& text, HAlign align,
                              std::uint16_t format, bool wrap) {
    const StyleCache::Key key = StyleCache::KeyOf(box, text, align, format, wrap);
    if (const auto known = m_known.Find(key)) {
        return *known;
    }
    const std::string data =
        CellRecord(box ? *box : BoxStyle(), text ? Font(*text) : std::uint16_t{0}, align, format, wrap);
    std::uint16_t xf = Record(data, MostXfs);
    if (xf == DefaultCell && format != 0) {
        // The look is given up, but a date must not show as a number.
        xf = Record(CellRecord(BoxStyle(), 0, HAlign::General, format, false), MostXfs + MostPlainXfs);
    }
    m_known.Keep(key, box, text, xf);
    return xf;
}

void XlsStyles::Write(XlsRecords& records) const {
    const auto write = [&](std::uint16_t type, const std::string& data) {
        records.Begin(type);
        records.Bytes(data);
        records.End();
    };
    for (const std::string& font : m_fonts) {
        write(FontRecord, font);
    }
    std::vector<const std::string*> formats(m_formats.size());
    for (const auto& [text, index] : m_formats) {
        formats[index - FirstOwnFormat] = &text;
    }
    for (std::size_t i = 0; i < formats.size(); ++i) {
        records.Begin(FormatRecord);
        records.U16(static_cast<unsigned>(FirstOwnFormat + i));
        records.LongText(ToUtf16(*formats[i], 255));
        records.End();
    }
    for (std::uint16_t i = 0; i < FirstOwnXf; ++i) {  // fifteen of styles, then that of cells
        XlsRecords data;
        data.U16(0);
        data.U16(0);
        data.U16(i < DefaultCell ? 0xFFF5 : 0x0001);
        data.U16(0x0020);
        data.U8(0);
        data.U8(i > 0 && i < DefaultCell ? 0xF4 : 0);
        data.U32(0);
        data.U32(0);
        data.U16(0x20C0);
        write(XfRecord, data.bytes());
    }
    for (const std::string& xf : m_xfs) {
        write(XfRecord, xf);
    }
    records.Begin(StyleRecord);
    records.U16(0x8000);
    records.U8(0);  // Normal
    records.U8(0xFF);
    records.End();
    records.Begin(PaletteRecord);
    records.U16(PaletteSize);
    for (std::size_t i = 0; i < PaletteSize; ++i) {
        const Color color = i < m_palette.size() ? m_palette[i] : 0;
        records.U8(color >> 16);
        records.U8(color >> 8);
        records.U8(color);
        records.U8(0);
    }
    records.End();
}

}  // namespace rdl::writers
