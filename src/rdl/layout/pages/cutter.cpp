// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/pages/cutter.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace rdl::layout {
namespace {

constexpr double Tolerance = 0.02;

class Cutter {
 public:
    Cutter(const Page& wide, double left, double width, int index, Page& out)
        : m_wide(wide), m_width(width), m_from(left + index * width), m_index(index), m_out(out) {}

    void operator()(const TextOp& op) {
        double right = op.x;
        if (op.rotation == 0) {
            for (std::uint32_t i = op.firstGlyph; i < op.firstGlyph + op.glyphCount; ++i) {
                right += static_cast<double>(m_wide.glyphs[i].advance);
            }
        }
        Cut(op.x, right, [&] { Text(op); });
    }
    void operator()(const LineOp& op) {
        LineOp moved = op;
        if (op.x1 == op.x2) {
            const double to = m_from + m_width;
            const bool isAtStart = m_index > 0 && op.x1 < m_from + Tolerance;
            const bool isAtEnd = op.x1 > to - Tolerance;
            if (op.x1 < m_from - Tolerance || op.x1 > to + Tolerance ||
                (isAtStart && op.edge == LineOp::Edge::Ends) ||
                (isAtEnd && op.edge == LineOp::Edge::Begins)) {
                return;
            }
        } else {
            moved.x1 = std::clamp(op.x1, m_from, m_from + m_width);
            moved.x2 = std::clamp(op.x2, m_from, m_from + m_width);
            if (std::abs(moved.x2 - moved.x1) < Tolerance) {
                return;
            }
            const double slope = (op.y2 - op.y1) / (op.x2 - op.x1);
            moved.y1 = op.y1 + slope * (moved.x1 - op.x1);
            moved.y2 = op.y1 + slope * (moved.x2 - op.x1);
        }
        moved.x1 -= Shift();
        moved.x2 -= Shift();
        m_out.ops.emplace_back(moved);
    }
    void operator()(const RectOp& op) { Area(op); }
    void operator()(const ClipOp& op) {
        // Clips stand in pairs, so every page gets them.
        ClipOp moved = op;
        moved.x -= Shift();
        m_out.ops.emplace_back(moved);
    }
    void operator()(const UnclipOp& op) { m_out.ops.emplace_back(op); }
    void operator()(const ImageOp& op) {
        Cut(op.x, op.x + op.width, [&] {
            ImageOp moved = op;
            moved.x -= Shift();
            m_out.ops.emplace_back(std::move(moved));
        });
    }
    void operator()(const LinkOp& op) { Whole(op); }
    void operator()(const AnchorOp& op) { Whole(op); }
    void operator()(const PathOp& op) {
        double left = std::numeric_limits<double>::infinity();
        double right = -left;
        for (const PathOp::Segment& segment : op.segments) {
            if (segment.kind != PathOp::Segment::Close) {
                const int points = segment.kind == PathOp::Segment::CurveTo ? 3 : 1;
                left = std::min(left, *std::min_element(segment.x, segment.x + points));
                right = std::max(right, *std::max_element(segment.x, segment.x + points));
            }
        }
        Cut(left, right, [&] {
            PathOp moved = op;
            for (PathOp::Segment& segment : moved.segments) {
                for (double& x : segment.x) {
                    x -= Shift();
                }
            }
            m_out.ops.emplace_back(std::move(moved));
        });
    }

 private:
    double Shift() const { return m_index * m_width; }
    bool BeginsHere(double x) const {
        return (m_index == 0 || x >= m_from - Tolerance) && x < m_from + m_width - Tolerance;
    }
    // What crosses an edge of the page by more than a letter's overhang stands on both sides of it in part.
    template <typename Put>
    void Cut(double left, double right, const Put& put) {
        constexpr double Overhang = 1;
        const double to = m_from + m_width;
        const bool goesOn = right > to + Overhang && left < to - Tolerance;
        const bool cameOver = m_index > 0 && left < m_from - Tolerance && right > m_from + Overhang;
        if (!goesOn && !cameOver) {
            if (BeginsHere(left)) {
                put();
            }
            return;
        }
        if (right <= m_from || left >= to) {
            return;
        }
        m_out.ops.emplace_back(ClipOp{m_from - Shift(), 0, m_width, m_wide.height});
        put();
        m_out.ops.emplace_back(UnclipOp{});
    }
    void Text(const TextOp& op) {
        TextOp moved = op;
        moved.x -= Shift();
        moved.firstGlyph = static_cast<std::uint32_t>(m_out.glyphs.size());
        const auto first = m_wide.glyphs.begin() + op.firstGlyph;
        m_out.glyphs.insert(m_out.glyphs.end(), first, first + op.glyphCount);
        moved.textBegin = static_cast<std::uint32_t>(m_out.text.size());
        m_out.text.append(m_wide.text, op.textBegin, op.textEnd - op.textBegin);
        moved.textEnd = static_cast<std::uint32_t>(m_out.text.size());
        m_out.ops.emplace_back(moved);
    }
    template <typename Op>
    void Whole(const Op& op) {
        if (BeginsHere(op.x)) {
            Op moved = op;
            moved.x -= Shift();
            m_out.ops.emplace_back(std::move(moved));
        }
    }
    void Area(const RectOp& op) {
        const double from = m_index == 0 ? op.x : std::max(op.x, m_from);
        const double to = std::min(op.x + op.width, m_from + m_width);
        if (to - from > Tolerance) {
            m_out.ops.emplace_back(RectOp{from - Shift(), op.y, to - from, op.height, op.color});
        }
    }

    const Page& m_wide;
    const double m_width, m_from;
    const int m_index;
    Page& m_out;
};

}  // namespace

void EndLinesAt(double right, Page& page) {
    const auto isBeyond = [right](const Op& op) {
        if (const auto* line = std::get_if<LineOp>(&op)) {
            return std::min(line->x1, line->x2) > right + Tolerance;
        }
        const auto* box = std::get_if<RectOp>(&op);
        return box && box->x > right - Tolerance;
    };
    std::erase_if(page.ops, isBeyond);
    for (Op& op : page.ops) {
        if (auto* box = std::get_if<RectOp>(&op)) {
            box->width = std::min(box->width, right - box->x);
        } else if (auto* line = std::get_if<LineOp>(&op);
                   line && line->x1 != line->x2 && std::max(line->x1, line->x2) > right) {
            const double slope = (line->y2 - line->y1) / (line->x2 - line->x1);
            (line->x1 > line->x2 ? line->y1 : line->y2) += slope * (right - std::max(line->x1, line->x2));
            (line->x1 > line->x2 ? line->x1 : line->x2) = right;
        }
    }
}

void CutPages(const Page& wide, double left, double width, int count, std::deque<Page>& pages) {
    for (int i = 0; i < count; ++i) {
        Page& page = pages.emplace_back();
        page.width = wide.width;
        page.height = wide.height;
        Cutter cutter(wide, left, width, i, page);
        for (const Op& op : wide.ops) {
            std::visit(cutter, op);
        }
    }
}

}  // namespace rdl::layout
