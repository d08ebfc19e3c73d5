// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/pdf/content.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "rdl/layout/model/double_line.h"

namespace rdl::writers {
namespace {

using layout::Color;
using layout::LineStyle;

unsigned AlphaOf(Color color) {
    return color >> 24;
}

void PutColor(std::string& out, Color color, const char* op) {
    for (const int shift : {16, 8, 0}) {
        PdfNumber(out, static_cast<double>(color >> shift & 0xFF) / 255);
        out += ' ';
    }
    out += op;
}

constexpr std::size_t MostBytesOfGlyph = 4;
constexpr std::uint32_t MostInString = 8000;  // glyphs; a string has an end

// Returns the end of what it put.
char* PutGlyph(char* out, std::uint16_t glyph) {
    for (const int byte : {glyph >> 8, glyph & 0xFF}) {
        if (byte == '(' || byte == ')' || byte == '\\') {
            *out++ = '\\';
            *out++ = static_cast<char>(byte);
        } else if (byte == '\r') {
            *out++ = '\\';  // a bare one would be read as a line feed
            *out++ = 'r';
        } else {
            *out++ = static_cast<char>(byte);
        }
    }
    return out;
}

}  // namespace

const std::string& PdfContent::Draw(const layout::Page& page, double height) {
    // What is drawn over this page next begins with a fresh graphics state.
    m_out = "q\n";
    m_height = height;
    m_state = {};
    m_saved.clear();
    for (const layout::Op& op : page.ops) {
        if (const auto* text = std::get_if<layout::TextOp>(&op)) {
            Text(page, *text);
        } else if (const auto* line = std::get_if<layout::LineOp>(&op)) {
            Line(*line);
        } else if (const auto* rect = std::get_if<layout::RectOp>(&op)) {
            Rect(*rect);
        } else if (const auto* path = std::get_if<layout::PathOp>(&op)) {
            Path(*path);
        } else if (const auto* image = std::get_if<layout::ImageOp>(&op)) {
            Image(*image);
        } else if (const auto* clip = std::get_if<layout::ClipOp>(&op)) {
            Save();
            Number(clip->x);
            Number(m_height - clip->y - clip->height);
            Number(clip->width);
            Number(clip->height);
            m_out += "re W n\n";
        } else if (std::holds_alternative<layout::UnclipOp>(op)) {
            Restore();
        }
    }
    Leave();
    while (!m_saved.empty()) {
        Restore();
    }
    m_out += "Q\n";
    return m_out;
}

void PdfContent::Leave() {
    if (m_tag != Nowhere) {
        m_out += "EMC\n";
        m_tag = Nowhere;
    }
}

void PdfContent::Save() {
    m_saved.push_back(m_state);
    m_out += "q ";
}

void PdfContent::Restore() {
    if (!m_saved.empty()) {
        m_state = m_saved.back();
        m_saved.pop_back();
        m_out += "Q\n";
    }
}

void PdfContent::Alpha(Color color) {
    const unsigned alpha = AlphaOf(color);
    if (alpha != m_state.alpha) {
        m_state.alpha = alpha;
        m_alphas.insert(alpha);
        m_out += "/A" + std::to_string(alpha) + " gs ";
    }
}

void PdfContent::Fill(Color color) {
    Alpha(color);
    if ((m_state.fill ^ color) & 0xFFFFFF) {
        PutColor(m_out, color, "rg ");
    }
    m_state.fill = color;
}

void PdfContent::StrokeWith(Color color, double width, LineStyle style) {
    Alpha(color);
    if ((m_state.stroke ^ color) & 0xFFFFFF) {
        PutColor(m_out, color, "RG ");
    }
    m_state.stroke = color;
    const bool isNewWidth = width != m_state.width;
    if (isNewWidth) {
        Number(width);
        m_out += "w ";
        m_state.width = width;
    }
    const std::string_view dashes = layout::DashesOf(style);
    if (dashes != m_state.dashes || (isNewWidth && !dashes.empty())) {
        m_out += '[';
        for (const char part : dashes) {
            Number((part - '0') * std::max(width, 0.25));
        }
        m_out += "] 0 d ";
        m_state.dashes = dashes;
    }
}

bool PdfContent::NoteGlyphs(const layout::Page& page, const layout::TextOp& op, PdfFonts::Font& font) {
    const std::string_view text = std::string_view(page.text).substr(op.textBegin, op.textEnd - op.textBegin);
    const text::Glyph* glyphs = page.glyphs.data() + op.firstGlyph;
    const bool backwards = op.glyphCount > 1 && glyphs[0].cluster > glyphs[op.glyphCount - 1].cluster;
    bool clear = true;
    for (std::uint32_t i = 0; i < op.glyphCount; ++i) {
        const std::size_t begin = std::min<std::size_t>(glyphs[i].cluster, text.size());
        const bool last = backwards ? i == 0 : i + 1 == op.glyphCount;
        const std::size_t end = last ? text.size() : glyphs[backwards ? i - 1 : i + 1].cluster;
        // Nearly all glyphs are a character of one byte that was seen before.
        const std::uint16_t id = glyphs[i].id;
        if (end == begin + 1 && id < font.says.size() && text[begin] > 0 &&
            font.says[id] == static_cast<char32_t>(text[begin])) {
            continue;
        }
        // Glyphs of one cluster share its text, which no table from glyphs to characters can hold.
        const std::string_view says = end > begin ? text.substr(begin, end - begin) : std::string_view();
        clear = PdfFonts::Note(font, op.font, id, says) && !says.empty() && clear;
    }
    return clear;
}

// The box of a text from its baseline to the height of its characters, turned about its beginning.
void PdfContent::CoverText(const layout::Page& page, const layout::TextOp& op) {
    if (op.tag == 0) {
        return;
    }
    double width = 0;
    for (std::uint32_t i = 0; i < op.glyphCount; ++i) {
        width += static_cast<double>(page.glyphs[op.firstGlyph + i].advance);
    }
    const double angle = static_cast<double>(op.rotation) * 3.14159265358979323846 / 180;
    const double c = std::cos(angle), s = std::sin(angle), size = op.size;
    Cover(op.tag, op.x, op.baseline, op.x + width * c, op.baseline + width * s);
    Cover(op.tag, op.x + size * s, op.baseline - size * c, op.x + size * s + width * c,
          op.baseline - size * c + width * s);
}

void PdfContent::Text(const layout::Page& page, const layout::TextOp& op) {
    if (op.glyphCount == 0 || AlphaOf(op.color) == 0 || !(op.size > 0)) {
        return;
    }
    Enter(op.tag);
    CoverText(page, op);
    const text::FontFile& file = text::File(op.font);
    PdfFonts::Font& font = m_fonts.Use(op.font);
    const bool clear = NoteGlyphs(page, op, font);
    if (!clear) {
        const auto text = std::string_view(page.text).substr(op.textBegin, op.textEnd - op.textBegin);
        m_out += "/Span<</ActualText<FEFF" + PdfHexUtf16(text) + ">>>BDC ";
    }
    if (file.syntheticBold) {
        Save();
    }
    Fill(op.color);
    if (file.syntheticBold) {
        StrokeWith(op.color, op.size / 30, LineStyle::Solid);
        m_out += "2 Tr ";
    }
    m_out += "BT ";
    if (op.font != m_state.font || op.size != m_state.size) {
        m_out += "/F" + std::to_string(font.number) + " ";
        Number(op.size);
        m_out += "Tf ";
        m_state.font = op.font;
        m_state.size = op.size;
    }
    constexpr double Slant = 0.2126;  // 12 degrees
    const double angle = -static_cast<double>(op.rotation) * 3.14159265358979323846 / 180;
    const double slant = file.syntheticItalic ? Slant : 0;
    if (op.rotation != 0 || slant != 0) {
        const double c = std::cos(angle), s = std::sin(angle);
        for (const double part : {c, s, slant * c - s, slant * s + c}) {
            Number(part);
        }
    }
    Number(op.x);
    Number(m_height - op.baseline);
    m_out += op.rotation != 0 || slant != 0 ? "Tm " : "Td ";
    Glyphs(page, op);
    m_out += "ET\n";
    if (m_drawsMissing) {
        MissingGlyphs(page, op);
    }
    if (file.syntheticBold) {
        Restore();
    }
    if (!clear) {
        m_out += "EMC\n";
    }
}

void PdfContent::Glyphs(const layout::Page& page, const layout::TextOp& op) {
    const PdfFonts::Font& font = m_fonts.Use(op.font);
    const double toUnits = 1000.0 / op.size;
    double lag = 0;  // of where the next glyph belongs, in thousandths of the size
    float rise = 0;
    std::size_t begin = m_out.size();
    bool isArray = false;
    const auto end = [&] { m_out += isArray ? ")]TJ " : ")Tj "; };
    m_out += '(';
    // Appended by the piece: most of a document is glyphs.
    std::array<char, 64 * MostBytesOfGlyph> bytes;
    char* put = bytes.data();
    const auto flush = [&] {
        m_out.append(bytes.data(), put);
        put = bytes.data();
    };
    for (std::uint32_t i = 0; i < op.glyphCount; ++i) {
        const text::Glyph& glyph = page.glyphs[op.firstGlyph + i];
        if (glyph.id == 0 && m_drawsMissing) {
            lag += glyph.advance * toUnits;
            continue;
        }
        if (glyph.dy != rise || (i > 0 && i % MostInString == 0)) {
            flush();
            end();
            if (glyph.dy != rise) {
                rise = glyph.dy;
                Number(rise);
                m_out += "Ts ";
            }
            begin = m_out.size();
            isArray = false;
            m_out += '(';
        }
        const double shift = lag + glyph.dx * toUnits;
        double moved = 0;
        if (std::abs(shift) >= 1) {
            flush();
            if (!isArray) {
                m_out.insert(begin, 1, '[');
                isArray = true;
            }
            moved = std::round(shift);
            m_out += ')';
            PdfNumber(m_out, -moved);
            m_out += '(';
        }
        if (put + MostBytesOfGlyph > bytes.data() + bytes.size()) {
            flush();
        }
        put = PutGlyph(put, glyph.id);
        lag += glyph.advance * toUnits - static_cast<double>(font.widths[glyph.id]) - moved;
    }
    flush();
    end();
    m_out += rise != 0 ? "0 Ts " : "";
}

void PdfContent::MissingGlyphs(const layout::Page& page, const layout::TextOp& op) {
    constexpr double Inset = 0.08, Pen = 0.04;  // of the size
    const auto size = static_cast<double>(op.size);
    const double high = text::File(op.font).capHeight / 1000 * size;
    const double angle = -static_cast<double>(op.rotation) * 3.14159265358979323846 / 180;
    double along = 0;
    for (std::uint32_t i = 0; i < op.glyphCount; ++i) {
        const text::Glyph& glyph = page.glyphs[op.firstGlyph + i];
        const auto advance = static_cast<double>(glyph.advance);
        if (glyph.id == 0) {
            Save();
            for (const double part : {std::cos(angle), std::sin(angle), -std::sin(angle), std::cos(angle),
                                      op.x, m_height - op.baseline}) {
                Number(part);
            }
            m_out += "cm ";
            StrokeWith(op.color, Pen * size, LineStyle::Solid);
            Number(along + static_cast<double>(glyph.dx) + Inset * size);
            Number(static_cast<double>(glyph.dy));
            Number(std::max(advance - 2 * Inset * size, Pen * size));
            Number(high > 0 ? high : 0.7 * size);
            m_out += "re S ";
            Restore();
        }
        along += advance;
    }
}

void PdfContent::Stroke(double x1, double y1, double x2, double y2) {
    Number(x1);
    Number(m_height - y1);
    m_out += "m ";
    Number(x2);
    Number(m_height - y2);
    m_out += "l S\n";
}

void PdfContent::Line(const layout::LineOp& op) {
    if (op.style == LineStyle::None || AlphaOf(op.color) == 0) {
        return;
    }
    Enter(op.tag);
    Cover(op.tag, op.x1, op.y1, op.x2, op.y2);
    if (op.style != LineStyle::Double) {
        StrokeWith(op.color, op.width, op.style);
        Stroke(op.x1, op.y1, op.x2, op.y2);
        return;
    }
    for (const layout::LineOp& one : layout::LinesOfDouble(op)) {
        StrokeWith(one.color, one.width, one.style);
        Stroke(one.x1, one.y1, one.x2, one.y2);
    }
}

void PdfContent::Rect(const layout::RectOp& op) {
    if (AlphaOf(op.color) == 0) {
        return;
    }
    Enter(op.tag);
    Cover(op.tag, op.x, op.y, op.x + op.width, op.y + op.height);
    Fill(op.color);
    Number(op.x);
    Number(m_height - op.y - op.height);
    Number(op.width);
    Number(op.height);
    m_out += "re f\n";
}

void PdfContent::Path(const layout::PathOp& op) {
    const bool fill = AlphaOf(op.fill) != 0;
    const bool stroke = AlphaOf(op.stroke) != 0 && op.strokeStyle != LineStyle::None;
    if ((!fill && !stroke) || op.segments.empty()) {
        return;
    }
    Enter(op.tag);
    if (fill && stroke && AlphaOf(op.fill) != AlphaOf(op.stroke)) {
        layout::PathOp half = op;
        half.stroke = layout::Transparent;
        Path(half);
        half = op;
        half.fill = layout::Transparent;
        Path(half);
        return;
    }
    if (stroke) {
        StrokeWith(op.stroke, op.strokeWidth, op.strokeStyle);
    }
    if (fill) {
        Fill(op.fill);
    }
    using Kind = layout::PathOp::Segment::Kind;
    for (const auto& segment : op.segments) {
        const int points = segment.kind == Kind::CurveTo ? 3 : segment.kind == Kind::Close ? 0 : 1;
        for (int i = 0; i < points; ++i) {
            Cover(op.tag, segment.x[i], segment.y[i], segment.x[i], segment.y[i]);
            Number(segment.x[i]);
            Number(m_height - segment.y[i]);
        }
        m_out += segment.kind == Kind::Move     ? "m "
                 : segment.kind == Kind::LineTo ? "l "
                 : segment.kind == Kind::Close  ? "h "
                                                : "c ";
    }
    m_out += fill && stroke ? "B\n" : fill ? "f\n" : "S\n";
}

void PdfContent::Image(const layout::ImageOp& op) {
    if (!op.bytes || op.bytes->empty()) {
        return;
    }
    const int number = m_images.Use(op.bytes, op.name);
    Enter(op.tag);
    Cover(op.tag, op.x, op.y, op.x + op.width, op.y + op.height);
    Save();
    Alpha(layout::Black);
    Number(op.width);
    m_out += "0 0 ";
    Number(op.height);
    Number(op.x);
    Number(m_height - op.y - op.height);
    m_out += "cm /I" + std::to_string(number) + " Do ";
    Restore();
}

std::string PdfContent::Resources() const {
    std::string out;
    for (const unsigned alpha : m_alphas) {
        std::string share;
        PdfNumber(share, alpha / 255.0);
        out.append("/A")
            .append(std::to_string(alpha))
            .append("<</ca ")
            .append(share)
            .append("/CA ")
            .append(share);
        out += ">>";
    }
    return out;
}

}  // namespace rdl::writers
