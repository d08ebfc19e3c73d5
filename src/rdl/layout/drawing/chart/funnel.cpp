// SPDX-License-Identifier: GPL-3.0-or-later
// Funnels and pyramids: the points of a series above each other, the first one at the top.
#include <algorithm>
#include <cmath>

#include "rdl/layout/drawing/chart/draw.h"
#include "rdl/layout/drawing/chart/labels.h"
#include "rdl/layout/drawing/chart/ring.h"
#include "rdl/values/ascii.h"

namespace rdl::layout {
namespace {

// One point: its place from the top, as fractions of the height, and its widths there, as fractions of the
// width.
struct Segment {
    const ChartMark* mark;
    double top = 0, bottom = 0, upper = 0, lower = 0;
};

std::vector<Segment> SegmentsOf(const ChartRow& row) {
    std::vector<Segment> segments;
    double total = 0;
    for (const ChartMark& mark : row.marks) {
        if (mark.hasY && mark.y != 0) {
            segments.push_back({&mark});
            total += std::abs(mark.y);
        }
    }
    if (!std::isfinite(total)) {
        segments.clear();
    }
    return segments;
}

// Sets heights as `parts`, none less than the series asks for, with gaps between them.
void SetHeights(std::vector<Segment>& segments, std::vector<double> parts, const ChartLook& look) {
    const auto count = static_cast<double>(segments.size());
    const double gap = count > 1 ? std::min(look.gap, 0.5 / (count - 1)) : 0;  // at most half of the height
    double total = 0;
    for (double& part : parts) {
        part = std::max(part, std::min(look.leastHeight, 1 / count));
        total += part;
    }
    const double scale = (1 - gap * (count - 1)) / total;
    double top = 0;
    for (std::size_t i = 0; i < segments.size(); ++i) {
        segments[i].top = top;
        segments[i].bottom = top + parts[i] * scale;
        top = segments[i].bottom + gap;
    }
}

void Funnel(std::vector<Segment>& segments, const ChartLook& look) {
    double total = 0, largest = 0;
    for (const Segment& segment : segments) {
        total += std::abs(segment.mark->y);
        largest = std::max(largest, std::abs(segment.mark->y));
    }
    std::vector<double> parts;
    for (const Segment& segment : segments) {
        parts.push_back(look.byWidth ? 1 / static_cast<double>(segments.size())
                                     : std::abs(segment.mark->y) / total);
    }
    SetHeights(segments, parts, look);
    // A cone down to the neck, or each point as wide as its value above and as the next value below.
    const auto cone = [&](double down) {
        const double neck = 1 - look.neckHeight;
        return down >= neck ? look.neckWidth : 1 - (1 - look.neckWidth) * down / neck;
    };
    for (std::size_t i = 0; i < segments.size(); ++i) {
        Segment& segment = segments[i];
        if (look.byWidth) {
            segment.upper = std::abs(segment.mark->y) / largest;
            segment.lower =
                i + 1 < segments.size() ? std::abs(segments[i + 1].mark->y) / largest : segment.upper;
        } else {
            segment.upper = cone(segment.top);
            segment.lower = cone(segment.bottom);
        }
    }
}

void Pyramid(std::vector<Segment>& segments, const ChartLook& look) {
    double total = 0;
    for (const Segment& segment : segments) {
        total += std::abs(segment.mark->y);
    }
    // The surface above a height is as the square of its distance from the top.
    std::vector<double> parts;
    double above = 0;
    for (const Segment& segment : segments) {
        const double share = std::abs(segment.mark->y) / total;
        parts.push_back(look.bySurface ? std::sqrt(above + share) - std::sqrt(above) : share);
        above += share;
    }
    SetHeights(segments, parts, look);
    for (Segment& segment : segments) {
        segment.upper = segment.top;
        segment.lower = segment.bottom;
    }
}

// A series in its part of the room.
class StackDrawer {
 public:
    StackDrawer(const ChartRow& row, const Rect& available, Canvas& canvas)
        : m_row(row),
          m_available(available),
          m_inside(available),
          m_canvas(canvas),
          m_segments(SegmentsOf(row)) {
        m_cone = row.definition->kind == ChartKind::Funnel && !row.look.byWidth;
        row.definition->kind == ChartKind::Funnel ? Funnel(m_segments, row.look)
                                                  : Pyramid(m_segments, row.look);
        if (AnyOutside()) {
            double widest = 0;
            for (const Segment& segment : m_segments) {
                widest = std::max(widest, SizeOf(*segment.mark).width);
            }
            m_inside.width = std::max(available.width - widest - Leader - LabelGap, available.width / 2);
        }
    }

    void Draw() const {
        for (const Segment& segment : m_segments) {
            m_canvas.Polygon(Corners(segment), segment.mark->color, BorderOrSeam(segment.mark->border));
        }
        for (const Segment& segment : m_segments) {
            if (!segment.mark->label.empty()) {
                Label(segment);
            }
        }
    }

 private:
    static Extents SizeOf(const ChartMark& mark) {
        return mark.label.empty() ? Extents() : Canvas::Measure(mark.label, *mark.labelStyle);
    }

    bool AnyOutside() const {
        return std::any_of(m_segments.begin(), m_segments.end(), [this](const Segment& segment) {
            return !segment.mark->label.empty() && IsOutside(segment);
        });
    }

    bool IsOutside(const Segment& segment) const {
        if (m_row.look.labels == ChartLook::Labels::Outside ||
            EqualNoCase(segment.mark->labelPosition, "Outside")) {
            return true;
        }
        const Extents size = SizeOf(*segment.mark);
        const double narrow = std::min(segment.upper, segment.lower),
                     wide = std::max(segment.upper, segment.lower);
        return size.height > (segment.bottom - segment.top) * m_available.height ||
               size.width > (narrow + wide) / 2 * m_inside.width;
    }

    Spot At(double width, double down, double side) const {  // side: -1 the left, 1 the right
        return {m_inside.x + m_inside.width / 2 * (1 + side * width), m_inside.y + m_inside.height * down};
    }

    std::vector<Spot> Corners(const Segment& segment) const {
        const double neck = 1 - m_row.look.neckHeight;
        std::vector<Spot> corners{At(segment.upper, segment.top, -1), At(segment.upper, segment.top, 1)};
        const bool bent = m_cone && segment.top < neck && segment.bottom > neck;
        if (bent) {
            corners.push_back(At(m_row.look.neckWidth, neck, 1));
        }
        corners.push_back(At(segment.lower, segment.bottom, 1));
        corners.push_back(At(segment.lower, segment.bottom, -1));
        if (bent) {
            corners.push_back(At(m_row.look.neckWidth, neck, -1));
        }
        return corners;
    }

    // A label that its point has no room for stands to the right, with a line to it.
    void Label(const Segment& segment) const {
        const ChartMark& mark = *segment.mark;
        const double middle = (segment.top + segment.bottom) / 2;
        if (!IsOutside(segment)) {
            m_canvas.Text(mark.label, InsideTextStyle(mark), At(0, middle, 1), {0.5, 0.5});
            return;
        }
        const Spot from = At((segment.upper + segment.lower) / 2, middle, 1);
        const Spot to{from.x + Leader, from.y};
        m_canvas.Line(from, to, {LineStyle::Solid, 0xFF808080, 0.5F});
        m_canvas.Text(Shortened(mark.label, *mark.labelStyle, m_available.Right() - to.x - 2),
                      *mark.labelStyle, {to.x + 2, to.y}, {0, 0.5});
    }

    const ChartRow& m_row;
    const Rect m_available;
    Rect m_inside;  // of the shape
    Canvas& m_canvas;
    std::vector<Segment> m_segments;
    bool m_cone = false;
};

}  // namespace

void DrawFunnels(const ChartData&, const ChartAreaData& area, const Rect& available, Canvas& canvas) {
    canvas.Box(available, area.box.get());
    // Several series stand beside each other.
    Rect part = available;
    part.width = available.width / static_cast<double>(area.rows.size());
    for (const ChartRow& row : area.rows) {
        Rect inside = part;
        const double gap = area.rows.size() > 1 ? std::min(LabelGap, part.width / 8) : 0;
        inside.x += gap;
        inside.width -= 2 * gap;
        StackDrawer(row, inside, canvas).Draw();
        part.x += part.width;
    }
}

}  // namespace rdl::layout
