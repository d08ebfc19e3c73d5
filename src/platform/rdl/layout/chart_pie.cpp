#include <algorithm>
#include <cmath>
#include <numbers>

#include "platform/rdl/definition/context.h"
#include "platform/rdl/layout/chart_draw.h"

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
               return SameWord(mark.labelPosition, "Outside") && !mark.label.empty();
           });
}

Extents LargestLabel(const ChartRow& row) {
    Extents largest;
    for (const ChartMark& mark : row.marks) {
        if (!mark.label.empty()) {
            const Extents size = ChartCanvas::Measure(mark.label, *mark.labelStyle);
            largest.width = std::max(largest.width, size.width);
            largest.height = std::max(largest.height, size.height);
        }
    }
    return largest;
}

void Slice(const ChartMark& mark, const Ring& ring, double from, double to, ChartCanvas& canvas) {
    std::vector<PathOp::Segment> segments;
    AppendArc(ring.center, ring.outer, from, to, false, segments);
    if (ring.inner > 0) {
        AppendArc(ring.center, ring.inner, to, from, true, segments);
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

void Label(const ChartMark& mark, const Ring& ring, double middle, double share, bool outside,
           ChartCanvas& canvas) {
    if (mark.label.empty()) {
        return;
    }
    const Extents size = ChartCanvas::Measure(mark.label, *mark.labelStyle);
    const double place = ring.inner > 0 ? (ring.outer + ring.inner) / 2 : ring.outer * 0.65;
    // A label that a slice has no room for stands beside it, with a line to it.
    const bool fits = place * share * Turn > std::min(size.width, size.height * 1.5);
    if (!outside && fits) {
        canvas.Text(mark.label, InsideLetters(mark), OnCircle(ring.center, place, middle), {0.5, 0.5});
        return;
    }
    const Border line{LineStyle::Solid, 0xFF808080, 0.5F};
    const Spot from = OnCircle(ring.center, ring.outer, middle);
    const Spot to = OnCircle(ring.center, ring.outer + Leader, middle);
    const bool right = std::sin(middle) >= 0;
    canvas.Line(from, to, line);
    canvas.Text(mark.label, *mark.labelStyle, {to.x + (right ? 2 : -2), to.y}, {right ? 0.0 : 1.0, 0.5});
}

void DrawRow(const ChartRow& row, const Ring& ring, bool exploded, ChartCanvas& canvas) {
    double total = 0;
    for (const ChartMark& mark : row.marks) {
        total += mark.hasY ? std::abs(mark.y) : 0;
    }
    if (!(total > 0)) {
        return;
    }
    const bool outside = LabelsOutside(row);
    struct Cut {
        const ChartMark* mark;
        Ring ring;
        double from, to;
    };
    std::vector<Cut> cuts;
    double angle = FirstAngle;
    for (const ChartMark& mark : row.marks) {
        if (!mark.hasY || mark.y == 0) {
            continue;
        }
        const double to = angle + std::abs(mark.y) / total * Turn;
        Ring moved = ring;
        if (exploded) {
            moved.center = OnCircle(ring.center, ring.outer * ExplodedShare, (angle + to) / 2);
        }
        Slice(mark, moved, angle, to, canvas);
        cuts.push_back({&mark, moved, angle, to});
        angle = to;
    }
    for (const Cut& cut : cuts) {  // over all slices
        Label(*cut.mark, cut.ring, (cut.from + cut.to) / 2, (cut.to - cut.from) / Turn, outside, canvas);
    }
}

}  // namespace

void DrawPies(const ChartData&, const ChartAreaData& area, const Rect& room, ChartCanvas& canvas) {
    canvas.Box(room, area.box.get());
    const ChartRow& first = area.rows.front();
    const Extents label = LargestLabel(first);
    const bool beside = LabelsOutside(first);
    const double aside = beside && label.width > 0 ? label.width + Leader + LabelGap : LabelGap;
    const double above = label.height > 0 ? label.height + Leader : LabelGap;
    double radius = std::min(room.width / 2 - aside, room.height / 2 - above);
    radius = std::max(radius, std::min(room.width, room.height) / 6);
    const bool exploded = first.definition->exploded && area.rows.size() == 1;  // rings stay together
    if (exploded) {
        radius /= 1 + ExplodedShare;
    }
    const Spot center{room.x + room.width / 2, room.y + room.height / 2};
    const bool doughnut = first.definition->kind == ChartKind::Doughnut;
    // Several series are rings, the first one outside.
    const double hole = doughnut ? radius * first.hole : 0;
    const double thick = (radius - hole) / static_cast<double>(area.rows.size());
    double outer = radius;
    for (const ChartRow& row : area.rows) {
        const bool innermost = &row == &area.rows.back();
        DrawRow(row, {center, outer, innermost ? hole : outer - thick}, exploded, canvas);
        outer -= thick;
    }
}

}  // namespace rdl::layout
