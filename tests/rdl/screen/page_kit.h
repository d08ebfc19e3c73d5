// SPDX-License-Identifier: GPL-3.0-or-later
// Pages made by hand.
#pragma once

#include <QImage>
#include <QPainter>
#include <string>

#include "rdl/layout/model/page.h"
#include "rdl/screen/page_painter.h"

namespace rdl::screen::test {

inline layout::Page EmptyPage(double width = 100, double height = 50) {
    layout::Page page;
    page.width = width;
    page.height = height;
    return page;
}

inline void AddText(layout::Page& page, const std::string& text, double x, double baseline,
                    const text::FontRequest& request = {}, float size = 10, float rotation = 0) {
    std::vector<text::GlyphRun> runs;
    text::Shape(text, text::FindFont(request), static_cast<double>(size), false, runs);
    const auto base = static_cast<std::uint32_t>(page.text.size());
    page.text += text;
    for (const text::GlyphRun& run : runs) {
        page.ops.emplace_back(layout::TextOp{
            x, baseline, size, layout::Black, run.font, static_cast<std::uint32_t>(page.glyphs.size()),
            static_cast<std::uint32_t>(run.glyphs.size()), base + run.begin, base + run.end, rotation});
        for (text::Glyph glyph : run.glyphs) {
            glyph.cluster -= run.begin;
            page.glyphs.push_back(glyph);
        }
        x += run.width;
    }
}

// White paper, `scale` pixels a point.
inline QImage Drawn(const layout::Page& page, double scale = 1) {
    QImage image(static_cast<int>(page.width * scale), static_cast<int>(page.height * scale),
                 QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.scale(scale, scale);
    PagePainter().Draw(page, painter);
    return image;
}

inline int DarkPixels(const QImage& image, const QRect& area) {
    int count = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            count += image.valid(x, y) && qGray(image.pixel(x, y)) < 128 ? 1 : 0;
        }
    }
    return count;
}

inline int DarkPixels(const QImage& image) {
    return DarkPixels(image, image.rect());
}

}  // namespace rdl::screen::test
