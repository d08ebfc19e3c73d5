// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <cmath>

#include "rdl/layout/drawing/chart/draw.h"
#include "rdl/layout/drawing/chart/labels.h"
#include "rdl/layout/drawing/chart/ring.h"
#include "rdl/values/ascii.h"

namespace rdl::layout {
namespace {

constexpr double FirstAngle = Turn / 4;  // slices begin at the right, as clocks' quarters
constexpr double ExplodedShare = 0.1;

bool LabelsOutside(const ChartRow& row) {
    return row.look.labels == ChartLook::Labels::Outside ||
           std::any_of(row.marks.begin(), row.marks.end(), [](const ChartMark& mark) {
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

// A slice with its place.
struct Cut {
    const ChartMark* mark;
    RingSlice slice;
    bool HasRoomForLabel() const { return slice.HasRoomFor(Canvas::Measure(mark->label, *mark->labelStyle)); }
};

std::vector<Cut> CutsOf(const ChartRow& row, const RingSlice& ring, bool exploded) {
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
        RingSlice moved = ring;
        moved.from = angle;
        moved.to = to;
        if (exploded) {
            moved.center = OnCircle(ring.center, ring.outer * ExplodedShare, (angle + to) / 2);
        }
        cuts.push_back({&mark, moved});
        angle = to;
    }
    return cuts;
}

// A label that its slice has no room for stands beside it, with a line to it.
void Label(const Cut& cut, bool outside, const Rect& available, Canvas& canvas) {
    const ChartMark& mark = *cut.mark;
    if (mark.label.empty()) {
        return;
    }
    if (!outside && cut.HasRoomForLabel()) {
        canvas.Text(mark.label, InsideTextStyle(mark), cut.slice.LabelSpot(), {0.5, 0.5});
        return;
    }
    const Border line{LineStyle::Solid, 0xFF808080, 0.5F};
    const Spot from = OnCircle(cut.slice.center, cut.slice.outer, cut.slice.Middle());
    const Spot to = OnCircle(cut.slice.center, cut.slice.outer + Leader, cut.slice.Middle());
    const bool right = std::sin(cut.slice.Middle()) >= 0;
    const double most = right ? available.Right() - to.x - LabelGap : to.x - available.x - LabelGap;
    canvas.Line(from, to, line);
    canvas.Text(Shortened(mark.label, *mark.labelStyle, most), *mark.labelStyle,
                {to.x + (right ? 2 : -2), to.y}, {right ? 0.0 : 1.0, 0.5});
}

}  // namespace

void DrawPies(const ChartData&, const ChartAreaData& area, const Rect& available, Canvas& canvas) {
    canvas.Box(available, area.box.get());
    const ChartRow& first = area.rows.front();
    const bool exploded = first.definition->exploded && area.rows.size() == 1;  // rings stay together
    const double side = std::min(available.width, available.height);
    const double widest = std::max(side / 2 - LabelGap, side / 4);
    const Spot center{available.x + available.width / 2, available.y + available.height / 2};
    const bool doughnut = first.definition->kind == ChartKind::Doughnut;
    const double grown = exploded ? 1 + ExplodedShare : 1;

    bool outside = LabelsOutside(first);
    const double whole = widest / grown;
    for (const Cut& cut : CutsOf(first, {center, whole, doughnut ? whole * first.look.hole : 0}, exploded)) {
        outside = outside || (!cut.mark->label.empty() && !cut.HasRoomForLabel());
    }
    double radius = widest;
    if (outside) {
        const Extents label = LargestLabel(first);
        radius = std::min(available.width / 2 - label.width - Leader - LabelGap,
                          available.height / 2 - label.height - Leader);
        radius = std::max(radius, side / 4);
    }
    radius /= grown;
    // Several series are rings, the first one outside.
    const double hole = doughnut ? radius * first.look.hole : 0;
    const double thick = (radius - hole) / static_cast<double>(area.rows.size());
    std::vector<std::pair<Cut, bool>> labels;  // over all slices
    double outer = radius;
    for (const ChartRow& row : area.rows) {
        const bool innermost = &row == &area.rows.back();
        const bool aside = &row == &first && LabelsOutside(row);
        for (const Cut& cut : CutsOf(row, {center, outer, innermost ? hole : outer - thick}, exploded)) {
            cut.slice.Draw(cut.mark->color, cut.mark->border, canvas);
            labels.emplace_back(cut, aside);
        }
        outer -= thick;
    }
    for (const auto& [cut, aside] : labels) {
        Label(cut, aside, available, canvas);
    }
}

}  // namespace rdl::layout
