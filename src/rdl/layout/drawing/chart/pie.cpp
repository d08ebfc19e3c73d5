// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <cmath>
#include <numbers>

#include "rdl/definition/context.h"
#include "rdl/layout/drawing/chart/draw.h"

namespace rdl::layout {
namespace {

constexpr double Turn = 2 * std::numbers::pi;
constexpr double FirstAngle = Turn / 4;  // slices begin at the right, as clocks' quarters
constexpr double ExplodedShare = 0.1, LabelGap = 4, Leader = 8;

struct Ring {
    Spot center;
    double outer = 0, inner = 0;
};

bool LabelsOutside(const ChartRow& row) {
    return row.labelsOutside || std::any_of(row.marks.begin(), row.marks.end(), [](const ChartMark& mark) {
               return EqualNoCase(mark.labelPosition, "Outside") && !mark.label.empty();
           });
}

Extents LargestLabel(const ChartRow& row) {
    Extents largest;
    for (const ChartMark& mark : row.marks) {
        if (!mark.label.empty()) {
            const Extents size = Canvas::Measure(mark.label, *mark.labelStyle);
            largest.width = std::max(largest.width, size.width);
            largest.height = std::max(largest.height, size.height);
        }
    }
    return largest;
}

void Slice(const ChartMark& mark, const Ring& ring, double from, double to, Canvas& canvas) {
    std::vector<PathOp::Segment> segments;
    AppendArc(ring.center, ring.outer, from, to, PathOp::Segment::Move, segments);
    if (ring.inner > 0) {
        AppendArc(ring.center, ring.inner, to, from, PathOp::Segment::LineTo, segments);
    } else if (to - from < Turn) {
        segments.push_back({PathOp::Segment::LineTo, {ring.center.x, 0, 0}, {ring.center.y, 0, 0}});
    }
    segments.push_back({PathOp::Segment::Close, {}, {}});
    Border border = mark.border;
    if (border.style == LineStyle::None) {
        border = {LineStyle::Solid, 0xFFFFFFFF, 0.75F};
    }
    canvas.Path(std::move(segments), mark.color, border);
}

// A slice where it lies.
struct Cut {
    const ChartMark* mark;
    Ring ring;
    double from, to;
    double Middle() const { return (from + to) / 2; }
    Spot LabelSpot() const {
        const double place = ring.inner > 0 ? (ring.outer + ring.inner) / 2 : ring.outer * 0.65;
        return OnCircle(ring.center, to - from >= Turn && ring.inner == 0 ? 0 : place, Middle());
    }
    bool HasRoomForLabel() const {
        const Extents size = Canvas::Measure(mark->label, *mark->labelStyle);
        const Spot spot = LabelSpot();
        for (const double x : {-0.5, 0.5}) {
            for (const double y : {-0.5, 0.5}) {
                const double dx = spot.x + x * size.width - ring.center.x;
                const double dy = spot.y + y * size.height - ring.center.y;
                const double radius = std::hypot(dx, dy);
                double turned = std::fmod(std::atan2(dx, -dy) - from, Turn);
                turned += turned < 0 ? Turn : 0;
                if (radius > ring.outer || radius < ring.inner || turned > to - from) {
                    return false;
                }
            }
        }
        return true;
    }
};

std::vector<Cut> CutsOf(const ChartRow& row, const Ring& ring, bool exploded) {
    double total = 0;
    for (const ChartMark& mark : row.marks) {
        total += mark.hasY ? std::abs(mark.y) : 0;
    }
    std::vector<Cut> cuts;
    double angle = FirstAngle;
    for (const ChartMark& mark : row.marks) {
        if (!mark.hasY || mark.y == 0 || !std::isfinite(total)) {
            continue;
        }
        const double to = angle + std::abs(mark.y) / total * Turn;
        Ring moved = ring;
        if (exploded) {
            moved.center = OnCircle(ring.center, ring.outer * ExplodedShare, (angle + to) / 2);
        }
        cuts.push_back({&mark, moved, angle, to});
        angle = to;
    }
    return cuts;
}

// A label that its slice has no room for stands beside it, with a line to it.
void Label(const Cut& cut, bool outside, const Rect& room, Canvas& canvas) {
    const ChartMark& mark = *cut.mark;
    if (mark.label.empty()) {
        return;
    }
    if (!outside && cut.HasRoomForLabel()) {
        canvas.Text(mark.label, InsideLetters(mark), cut.LabelSpot(), {0.5, 0.5});
        return;
    }
    const Border line{LineStyle::Solid, 0xFF808080, 0.5F};
    const Spot from = OnCircle(cut.ring.center, cut.ring.outer, cut.Middle());
    const Spot to = OnCircle(cut.ring.center, cut.ring.outer + Leader, cut.Middle());
    const bool right = std::sin(cut.Middle()) >= 0;
    const double most = right ? room.Right() - to.x - LabelGap : to.x - room.x - LabelGap;
    canvas.Line(from, to, line);
    canvas.Text(Shortened(mark.label, *mark.labelStyle, most), *mark.labelStyle,
                {to.x + (right ? 2 : -2), to.y}, {right ? 0.0 : 1.0, 0.5});
}

}  // namespace

void DrawPies(const ChartData&, const ChartAreaData& area, const Rect& room, Canvas& canvas) {
    canvas.Box(room, area.box.get());
    const ChartRow& first = area.rows.front();
    const bool exploded = first.definition->exploded && area.rows.size() == 1;  // rings stay together
    const double widest = std::min(room.width, room.height) / 2 - LabelGap;
    const Spot center{room.x + room.width / 2, room.y + room.height / 2};
    const bool doughnut = first.definition->kind == ChartKind::Doughnut;
    const double grown = exploded ? 1 + ExplodedShare : 1;

    bool outside = LabelsOutside(first);
    const double whole = widest / grown;
    for (const Cut& cut : CutsOf(first, {center, whole, doughnut ? whole * first.hole : 0}, exploded)) {
        outside = outside || (!cut.mark->label.empty() && !cut.HasRoomForLabel());
    }
    double radius = widest;
    if (outside) {
        const Extents label = LargestLabel(first);
        radius = std::min(room.width / 2 - label.width - Leader - LabelGap,
                          room.height / 2 - label.height - Leader);
        radius = std::max(radius, std::min(room.width, room.height) / 4);
    }
    radius /= grown;
    // Several series are rings, the first one outside.
    const double hole = doughnut ? radius * first.hole : 0;
    const double thick = (radius - hole) / static_cast<double>(area.rows.size());
    std::vector<std::pair<Cut, bool>> labels;  // over all slices
    double outer = radius;
    for (const ChartRow& row : area.rows) {
        const bool innermost = &row == &area.rows.back();
        for (const Cut& cut : CutsOf(row, {center, outer, innermost ? hole : outer - thick}, exploded)) {
            Slice(*cut.mark, cut.ring, cut.from, cut.to, canvas);
            labels.emplace_back(cut, &row == &first && LabelsOutside(row));
        }
        outer -= thick;
    }
    for (const auto& [cut, aside] : labels) {
        Label(cut, aside, room, canvas);
    }
}

}  // namespace rdl::layout
