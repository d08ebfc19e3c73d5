// Drawable objects of a page as a PDF content stream.
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
    // The stream for a page of that height; good until the next call. Links and anchors are not drawn.
    const std::string& Draw(const layout::Page& page, double height);
    // Graphics states for see-through colours, as entries of the resource dictionary.
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

    // What the viewer's graphics state holds, so that it is not told again.
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
