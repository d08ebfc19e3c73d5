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

namespace rdl::writers {

class PdfContent {
 public:
    PdfContent(PdfFonts& fonts, PdfImages& images) : m_fonts(fonts), m_images(images) {}
    // Returns the stream of a page of `height` points; valid until the next call. Links and anchors are not
    // drawn. Raises rdl::Error naming the item for an image that cannot be read.
    const std::string& Draw(const layout::Page& page, double height);
    // Returns the entries of the resource dictionary for graphics states with transparency (8.4.5, 11.6.4).
    std::string Resources() const;

 private:
    void Text(const layout::Page& page, const layout::TextOp& op);
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
    std::string m_out;
    double m_height = 0;
    State m_state;
    std::vector<State> m_saved;
    std::set<unsigned> m_alphas;
};

}  // namespace rdl::writers
