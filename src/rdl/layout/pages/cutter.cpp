// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/pages/cutter.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace rdl::layout {
namespace {

constexpr double CutTolerance = 0.02;

// Clips that are open, outermost first, and the pages that have drawn in them.
struct OpenClip {
    ClipOp clip;
    std::vector<std::size_t> pages;
};

// One of the pages side by side. An object may be given to each page that it could touch.
class Cutter {
 public:
    Cutter(const Page& wide, std::vector<OpenClip>& clips, double left, double width, int index, Page& out)
        : m_wide(wide),
          m_clips(clips),
          m_width(width),
          m_from(left + index * width),
          m_index(index),
          m_out(out) {}

    void Add(const TextOp& op, double right) {
        Cut(op.x, right, [&] { Text(op); });
    }
    void Add(const LineOp& op) {
        LineOp moved = op;
        if (op.x1 == op.x2) {
            const double to = m_from + m_width;
            const bool isAtStart = m_index > 0 && op.x1 < m_from + CutTolerance;
            const bool isAtEnd = op.x1 > to - CutTolerance;
            if (op.x1 < m_from - CutTolerance || op.x1 > to + CutTolerance ||
                (isAtStart && op.edge == LineOp::Edge::Ends) ||
                (isAtEnd && op.edge == LineOp::Edge::Begins)) {
                return;
            }
        } else {
            moved.x1 = std::clamp(op.x1, m_from, m_from + m_width);
            moved.x2 = std::clamp(op.x2, m_from, m_from + m_width);
            if (std::abs(moved.x2 - moved.x1) < CutTolerance) {
                return;
            }
            const double slope = (op.y2 - op.y1) / (op.x2 - op.x1);
            moved.y1 = op.y1 + slope * (moved.x1 - op.x1);
            moved.y2 = op.y1 + slope * (moved.x2 - op.x1);
        }
        moved.x1 -= Shift();
        moved.x2 -= Shift();
        Put(moved);
    }
    void Add(const RectOp& op) {
        const double from = m_index == 0 ? op.x : std::max(op.x, m_from);
        const double to = std::min(op.x + op.width, m_from + m_width);
        if (to - from > CutTolerance) {
            Put(RectOp{from - Shift(), op.y, to - from, op.height, op.color, op.tag});
        }
    }
    void Add(const ImageOp& op) {
        Cut(op.x, op.x + op.width, [&] {
            ImageOp moved = op;
            moved.x -= Shift();
            Put(std::move(moved));
        });
    }
    void Add(const LinkOp& op) { Whole(op); }
    void Add(const AnchorOp& op) { Whole(op); }
    void Add(const PathOp& op, double left, double right) {
        Cut(left, right, [&] {
            PathOp moved = op;
            for (PathOp::Segment& segment : moved.segments) {
                for (double& x : segment.x) {
                    x -= Shift();
                }
            }
            Put(std::move(moved));
        });
    }
    // Ends the innermost clip, in which this page has drawn.
    void Unclip() {
        m_out.ops.emplace_back(UnclipOp{});
        --m_clipped;
    }

 private:
    double Shift() const { return m_index * m_width; }
    bool BeginsHere(double x) const {
        return (m_index == 0 || x >= m_from - CutTolerance) && x < m_from + m_width - CutTolerance;
    }
    // The clips around an object come with the first object in them: most pages have none.
    void Put(Op op) {
        for (; m_clipped < m_clips.size(); ++m_clipped) {
            ClipOp moved = m_clips[m_clipped].clip;
            moved.x -= Shift();
            m_out.ops.emplace_back(moved);
            m_clips[m_clipped].pages.push_back(static_cast<std::size_t>(m_index));
        }
        m_out.ops.push_back(std::move(op));
    }
    // What crosses an edge of the page by more than a character's overhang stands on both sides of it in
    // part.
    template <typename Draw>
    void Cut(double left, double right, const Draw& draw) {
        constexpr double Overhang = 1;
        const double to = m_from + m_width;
        const bool goesOn = right > to + Overhang && left < to - CutTolerance;
        const bool cameOver = m_index > 0 && left < m_from - CutTolerance && right > m_from + Overhang;
        if (!goesOn && !cameOver) {
            if (BeginsHere(left)) {
                draw();
            }
            return;
        }
        if (right <= m_from || left >= to) {
            return;
        }
        Put(ClipOp{m_from - Shift(), 0, m_width, m_wide.height});
        draw();
        Put(UnclipOp{});
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
        Put(moved);
    }
    template <typename Op>
    void Whole(const Op& op) {
        if (BeginsHere(op.x)) {
            Op moved = op;
            moved.x -= Shift();
            Put(std::move(moved));
        }
    }

    const Page& m_wide;
    std::vector<OpenClip>& m_clips;
    const double m_width, m_from;
    const int m_index;
    std::size_t m_clipped = 0;  // clips that this page has begun
    Page& m_out;
};

// Gives each object to the few pages that it could touch: a wide report has thousands of objects and of
// pages.
class Distributor {
 public:
    Distributor(const Page& wide, double left, double width, int count, std::deque<Page>& pages)
        : m_wide(wide), m_left(left), m_width(width) {
        m_cutters.reserve(static_cast<std::size_t>(count));
        for (int i = 0; i < count; ++i) {
            Page& page = pages.emplace_back();
            page.width = wide.width;
            page.height = wide.height;
            m_cutters.emplace_back(wide, m_clips, left, width, i, page);
        }
    }

    void operator()(const TextOp& op) {
        double right = op.x;
        if (op.rotation == 0) {
            for (std::uint32_t i = op.firstGlyph; i < op.firstGlyph + op.glyphCount; ++i) {
                right += static_cast<double>(m_wide.glyphs[i].advance);
            }
        }
        Each(op.x, right, [&](Cutter& page) { page.Add(op, right); });
    }
    void operator()(const LineOp& op) {
        Each(op.x1, op.x2, [&](Cutter& page) { page.Add(op); });
    }
    void operator()(const RectOp& op) {
        Each(op.x, op.x + op.width, [&](Cutter& page) { page.Add(op); });
    }
    void operator()(const ImageOp& op) {
        Each(op.x, op.x + op.width, [&](Cutter& page) { page.Add(op); });
    }
    void operator()(const LinkOp& op) {
        Each(op.x, op.x, [&](Cutter& page) { page.Add(op); });
    }
    void operator()(const AnchorOp& op) {
        Each(op.x, op.x, [&](Cutter& page) { page.Add(op); });
    }
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
        Each(left, right, [&](Cutter& page) { page.Add(op, left, right); });
    }
    void operator()(const ClipOp& op) { m_clips.push_back({op, {}}); }
    void operator()(const UnclipOp&) {
        const OpenClip ended = std::move(m_clips.back());  // clips stand in pairs
        m_clips.pop_back();
        for (const std::size_t page : ended.pages) {
            m_cutters[page].Unclip();
        }
    }

 private:
    // Calls `add` with each page between x = `one` and `other`, and with the neighbours of these: what
    // reaches an edge by less than the tolerance is theirs to decide on.
    template <typename Add>
    void Each(double one, double other, const Add& add) {
        const auto [from, to] = std::minmax(one, other);
        const std::size_t last = std::min(IndexAt(to) + 1, m_cutters.size() - 1);
        for (std::size_t i = std::max<std::size_t>(IndexAt(from), 1) - 1; i <= last; ++i) {
            add(m_cutters[i]);
        }
    }
    std::size_t IndexAt(double x) const {
        const double index = (x - m_left) / m_width;
        const auto most = static_cast<double>(m_cutters.size() - 1);
        return index > 0 ? static_cast<std::size_t>(std::min(index, most)) : 0;
    }

    const Page& m_wide;
    const double m_left, m_width;
    std::vector<OpenClip> m_clips;
    std::vector<Cutter> m_cutters;
};

}  // namespace

void EndLinesAt(double right, Page& page) {
    const auto isBeyond = [right](const Op& op) {
        if (const auto* line = std::get_if<LineOp>(&op)) {
            return std::min(line->x1, line->x2) > right + CutTolerance;
        }
        const auto* box = std::get_if<RectOp>(&op);
        return box && box->x > right - CutTolerance;
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
    Distributor distributor(wide, left, width, count, pages);
    for (const Op& op : wide.ops) {
        std::visit(distributor, op);
    }
}

}  // namespace rdl::layout
