// SPDX-License-Identifier: GPL-3.0-or-later
// Writes the objects of a page as a PDF content stream (ISO 32000-1, 7.8.2; graphics 8, text 9).
#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "rdl/layout/model/page.h"
#include "rdl/writers/pdf/fonts.h"
#include "rdl/writers/pdf/images.h"
#include "rdl/writers/pdf/structure.h"

namespace rdl::writers {

class PdfContent {
 public:
    PdfContent(PdfFonts& fonts, PdfImages& images) : m_fonts(fonts), m_images(images) {}
    // From now on the content is marked (14.6): as that of its element, or as an artifact (14.8.2.2).
    void MarkFor(PdfStructure& structure) { m_structure = &structure; }
    // From now on no glyph is one for characters that no font has (ISO 19005-2, 6.2.11.8): a box is drawn.
    void DrawMissingGlyphs() { m_drawsMissing = true; }
    // Returns the stream of a page of `height` points; valid until the next call. Links and anchors are not
    // drawn. Raises rdl::Error naming the item for an image that cannot be read.
    const std::string& Draw(const layout::Page& page, double height);
    // Returns the entries of the resource dictionary for graphics states with transparency (8.4.5, 11.6.4).
    std::string Resources() const;

 private:
    // The marked-content sequence in which the next operators are.
    void Enter(layout::ElementId tag) {
        if (m_structure && tag != m_tag) {
            Leave();
            m_out += tag ? m_structure->Mark(tag) : "/Artifact BMC ";
            m_tag = tag;
        }
    }
    void Leave();
    // What belongs to an element reaches from one corner to the other, y downwards.
    void Cover(layout::ElementId tag, double x1, double y1, double x2, double y2) {
        if (m_structure && tag) {
            m_structure->Cover(tag, x1, m_height - y1, x2, m_height - y2);
        }
    }
    void CoverText(const layout::Page& page, const layout::TextOp& op);
    void Text(const layout::Page& page, const layout::TextOp& op);
    void MissingGlyphs(const layout::Page& page, const layout::TextOp& op);
    void Glyphs(const layout::Page& page, const layout::TextOp& op);
    bool NoteGlyphs(const layout::Page& page, const layout::TextOp& op, PdfFonts::Font& font);
    void Line(const layout::LineOp& op);
    void Stroke(double x1, double y1, double x2, double y2);
    void Rect(const layout::RectOp& op);
    void Path(const layout::PathOp& op);
    void Image(const layout::ImageOp& op);
    void Fill(layout::Color color);
    void StrokeWith(layout::Color color, double width, layout::LineStyle style);
    void Alpha(layout::Color color);
    void Save();
    void Restore();
    void Number(double number) {
        PdfNumber(m_out, number);
        m_out += ' ';
    }

    // The current graphics state (8.4), to avoid redundant operators.
    struct State {
        layout::Color fill = layout::Black, stroke = layout::Black;
        text::FontId font = -1;
        float size = 0;
        unsigned alpha = 255;
        double width = 1;
        std::string_view dashes;
    };
    PdfFonts& m_fonts;
    PdfImages& m_images;
    PdfStructure* m_structure = nullptr;
    static constexpr layout::ElementId Nowhere = static_cast<layout::ElementId>(-1);
    layout::ElementId m_tag = Nowhere;
    bool m_drawsMissing = false;
    std::string m_out;
    double m_height = 0;
    State m_state;
    std::vector<State> m_saved;
    std::set<unsigned> m_alphas;
};

}  // namespace rdl::writers
