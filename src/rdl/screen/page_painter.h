// SPDX-License-Identifier: GPL-3.0-or-later
// Draws the objects of a page as the PDF document shows them, with edges aligned to pixels.
#pragma once

#include <QPainter>
#include <QPainterPath>

#include "rdl/layout/model/page.h"
#include "rdl/screen/glyph_outlines.h"
#include "rdl/screen/image_cache.h"
#include "rdl/screen/pixel_grid.h"

namespace rdl::screen {

class PagePainter {
 public:
    // One point is one unit of the painter. Draws only inside the page and the painter's clip. Raises
    // rdl::Error naming the item for an image that cannot be read.
    void Draw(const layout::Page& page, QPainter& painter);

 private:
    struct Target {
        const layout::Page& page;
        QPainter& painter;
        PixelGrid grid;
        QRectF shown;  // visible area in points
    };
    void Op(Target& target, const layout::TextOp& op);
    void Op(Target& target, const layout::LineOp& op);
    void Op(Target& target, const layout::RectOp& op);
    void Op(Target& target, const layout::PathOp& op);
    void Op(Target& target, const layout::ImageOp& op);
    void Op(Target& target, const layout::ClipOp& op);
    void Op(Target& target, const layout::UnclipOp& op);
    void Op(Target&, const layout::LinkOp&) {}
    void Op(Target&, const layout::AnchorOp&) {}
    void Stroke(const Target& target, QPointF from, QPointF to, const layout::LineOp& op, double width);
    QPainterPath OutlineOf(const Target& target, const layout::TextOp& op);

    GlyphOutlines m_outlines;
    ImageCache m_images;
    int m_clips = 0;
};

}  // namespace rdl::screen
