// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/drawing/chart/plot.h"

#include <algorithm>
#include <cmath>

#include "rdl/layout/drawing/chart/draw.h"

namespace rdl::layout {
namespace {

bool IsOnlyAreas(const ChartAreaData& area) {
    return std::all_of(area.rows.begin(), area.rows.end(),
                       [](const ChartRow& row) { return row.definition->kind == ChartKind::Area; });
}

bool HasColumns(const ChartAreaData& area) {
    return std::any_of(area.rows.begin(), area.rows.end(), [](const ChartRow& row) {
        const ChartKind kind = row.definition->kind;
        return kind == ChartKind::Column || kind == ChartKind::Bar || IsSpan(*row.definition);
    });
}

// Every x is a date.
bool AreDates(const ChartAreaData& area) {
    return std::all_of(area.rows.begin(), area.rows.end(), [](const ChartRow& row) {
        return std::all_of(row.marks.begin(), row.marks.end(),
                           [](const ChartMark& mark) { return mark.isDate || !mark.hasY; });
    });
}

}  // namespace

double ChartPlot::CategoryWidth() const {
    const auto count = static_cast<double>(CategoryCount());
    return margin ? 1 / count : count > 1 ? 1 / (count - 1) : 1;
}

double ChartPlot::CategoryShare(double category) const {
    return margin                ? (category + 0.5) * CategoryWidth()
           : CategoryCount() > 1 ? category * CategoryWidth()
                                 : 0.5;
}

double ChartPlot::Across(const ChartMark& mark, std::size_t category) const {
    return scattered ? numbers.Share(mark.x) : CategoryShare(static_cast<double>(category));
}

double ChartPlot::ValueShare(std::size_t axis, double value) const {
    const double share = values[axis].Share(value);
    return std::isfinite(share) ? std::clamp(share, -10.0, 11.0) : 0;
}

double ChartPlot::HeldShare(std::size_t axis, double value) const {
    return std::clamp(ValueShare(axis, value), 0.0, 1.0);
}

Spot ChartPlot::At(double category, double value, std::size_t valueAxis) const {
    if (area.categoryAxes.front().reverse) {
        category = 1 - category;
    }
    if (area.valueAxes[valueAxis].reverse) {
        value = 1 - value;
    }
    const double across = swapped ? value : category;
    const double up = swapped ? category : value;
    return {inside.x + inside.width * across, inside.Bottom() - inside.height * up};
}

void DrawPlot(const ChartData& data, const ChartAreaData& area, const Rect& available, Canvas& canvas) {
    ChartPlot plot{data, area, canvas, available};
    plot.swapped = area.rows.front().definition->kind == ChartKind::Bar;
    plot.scattered = IsScattered(area);
    plot.dates = plot.scattered && AreDates(area);
    const bool usual = !IsOnlyAreas(area);
    plot.margin = HasColumns(area) || area.categoryAxes.front().margin.value_or(usual);
    plot.reaches = StackRows(area);
    PlaceAxes(plot, available);
    if (plot.inside.width <= 0 || plot.inside.height <= 0) {
        return;
    }
    canvas.Rectangle(plot.inside, area.box->background, Border());
    if (!plot.bare) {
        DrawGrid(plot);
    }
    DrawColumns(plot);
    // Lines and points at the edge keep their whole width.
    constexpr double Edge = 3;
    canvas.Clip({plot.inside.x - Edge, plot.inside.y - Edge, plot.inside.width + 2 * Edge,
                 plot.inside.height + 2 * Edge});
    DrawLines(plot);
    canvas.Unclip();
    canvas.Rectangle(plot.inside, Transparent, area.box->left);
    if (!plot.bare) {
        DrawAxes(plot);
    }
    DrawLabels(plot);
}

}  // namespace rdl::layout
