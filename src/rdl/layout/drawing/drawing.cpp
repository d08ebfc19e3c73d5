// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/drawing/drawing.h"

namespace rdl::layout {
namespace {

struct Move {
    double x, y;
    std::uint32_t glyphs, text;  // what the page had before

    void operator()(TextOp& op) const {
        op.x += x;
        op.baseline += y;
        op.firstGlyph += glyphs;
        op.textBegin += text;
        op.textEnd += text;
    }
    void operator()(LineOp& op) const {
        op.x1 += x;
        op.x2 += x;
        op.y1 += y;
        op.y2 += y;
    }
    void operator()(PathOp& op) const {
        for (PathOp::Segment& segment : op.segments) {
            for (int i = 0; i < 3; ++i) {
                segment.x[i] += x;
                segment.y[i] += y;
            }
        }
    }
    void operator()(UnclipOp&) const {}
    template <typename Placed>
    void operator()(Placed& op) const {
        op.x += x;
        op.y += y;
    }
};

}  // namespace

void AppendMoved(const Page& from, double x, double y, Page& page) {
    const Move move{x, y, static_cast<std::uint32_t>(page.glyphs.size()),
                    static_cast<std::uint32_t>(page.text.size())};
    page.glyphs.insert(page.glyphs.end(), from.glyphs.begin(), from.glyphs.end());
    page.text += from.text;
    for (const Op& op : from.ops) {
        std::visit(move, page.ops.emplace_back(op));
    }
}

}  // namespace rdl::layout
