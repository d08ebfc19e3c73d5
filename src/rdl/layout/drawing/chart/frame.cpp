// SPDX-License-Identifier: GPL-3.0-or-later
// GridLines lines and the axes around a plot.
#include <algorithm>
#include <cmath>

#include "rdl/layout/drawing/chart/plot.h"

namespace rdl::layout {
namespace {

constexpr Border Separator{LineStyle::Solid, 0xFFB0B0B0, 0.5F};

// One axis as seen along it: where it lies and which way is out of the plot.
struct Edge {
    const ChartPlot& plot;
    const ChartAxisData& axis;
    bool level;  // along the bottom or top

    // Returns the spot at the share of the axis, `outwards` beside it.
    Spot On(double share, double outwards) const {
        const Rect& in = plot.inside;
        const double along = axis.reverse ? 1 - share : share;
        const double out = axis.opposite ? -outwards : outwards;
        if (level) {
            return {in.x + in.width * along, (axis.opposite ? in.y : in.Bottom()) + out};
        }
        return {(axis.opposite ? in.Right() : in.x) - out, in.Bottom() - in.height * along};
    }
    Spot Across(double share) const {  // the far side
        const Spot near = On(share, 0);
        const Rect& in = plot.inside;
        return level ? Spot{near.x, axis.opposite ? in.Bottom() : in.y}
                     : Spot{axis.opposite ? in.x : in.Right(), near.y};
    }
};

std::vector<double> CategoryEdges(const ChartPlot& plot) {
    std::vector<double> edges;
    const std::size_t count = plot.CategoryCount(), every = plot.categoryLabels.every;
    for (std::size_t i = 0; i < count + (plot.margin ? 1 : 0); i += every) {
        edges.push_back(plot.CategoryShare(static_cast<double>(i) - (plot.margin ? 0.5 : 0)));
    }
    return edges;
}

std::vector<double> SharesOf(const Scale& scale, const std::vector<double>& ticks) {
    std::vector<double> shares;
    for (const double tick : ticks) {
        const double share = scale.Share(tick);
        if (std::isfinite(share) && share > -1e-9 && share < 1 + 1e-9) {
            shares.push_back(share);
        }
    }
    return shares;
}

std::vector<double> MajorShares(const ChartPlot& plot, const Scale* scale) {
    return scale ? SharesOf(*scale, scale->ticks) : CategoryEdges(plot);
}

void GridLines(const Edge& edge, const Scale* scale, Canvas& canvas) {
    const std::vector<double> major = MajorShares(edge.plot, scale);
    if (IsVisible(edge.axis.stripe)) {
        for (std::size_t i = 0; i + 1 < major.size(); i += 2) {
            const Spot a = edge.On(major[i], 0), b = edge.Across(major[i + 1]);
            canvas.Rectangle(
                {std::min(a.x, b.x), std::min(a.y, b.y), std::abs(a.x - b.x), std::abs(a.y - b.y)},
                edge.axis.stripe, Border());
        }
    }
    const auto lines = [&](const ChartLinesData& grid, const std::vector<double>& shares) {
        for (const double share : grid.shown ? shares : std::vector<double>()) {
            canvas.Line(edge.On(share, 0), edge.Across(share), grid.border);
        }
    };
    if (scale) {
        lines(edge.axis.minorGrid, SharesOf(*scale, scale->MinorTicks(edge.axis.minorGrid.interval)));
    }
    lines(edge.axis.majorGrid, major);
}

void Ticks(const Edge& edge, const ChartLinesData& ticks, const std::vector<double>& shares, double length,
           Canvas& canvas) {
    if (!ticks.shown) {
        return;
    }
    using Kind = ChartLinesData::Ticks;
    const double out = ticks.ticks == Kind::Inside ? 0 : length;
    const double in = ticks.ticks == Kind::Outside ? 0 : -length;
    for (const double share : shares) {
        canvas.Line(edge.On(share, in), edge.On(share, out), ticks.border);
    }
}

Anchor AnchorOf(const Edge& edge, double degrees) {
    if (!edge.level) {
        return {edge.axis.opposite ? 0.0 : 1.0, 0.5};
    }
    if (degrees == 0) {
        return {0.5, edge.axis.opposite ? 1.0 : 0.0};
    }
    // A turned text ends at its tick when it rises, and begins there when it falls.
    return {(degrees < 0) != edge.axis.opposite ? 1.0 : 0.0, 0.5};
}

void Labels(const Edge& edge, const ChartTickLabels& labels, const std::vector<double>& shares,
            Canvas& canvas) {
    // A turned text's middle line goes by its tick; level ones stand below it.
    const double turned =
        labels.degrees != 0 && edge.level
            ? Canvas::LineHeight(*edge.axis.style) / 2 * std::abs(std::cos(labels.degrees * 0.017453293))
            : 0;
    for (std::size_t i = 0; i < std::min(shares.size(), labels.texts.size()); i += labels.every) {
        Spot spot = edge.On(shares[i], TickLength + TickGap / 2 + turned);
        if (edge.level && labels.degrees == 0) {  // one at an end of the axis stays in the chart
            const Rect& available = edge.plot.available;
            const double half = Canvas::Measure(labels.texts[i], *edge.axis.style).width / 2;
            spot.x = std::max(std::min(spot.x, available.Right() - half), available.x + half);
        }
        canvas.Text(labels.texts[i], *edge.axis.style, spot, AnchorOf(edge, labels.degrees), labels.degrees);
    }
}

double TitleAt(const Edge& edge, const ChartTickLabels& labels, std::size_t levels) {
    const double texts =
        edge.axis.labels ? labels.thick + TickGap +
                               static_cast<double>(levels) * (Canvas::LineHeight(*edge.axis.style) + TickGap)
                         : 0;
    return TickLength + texts + TickGap / 2;
}

void Title(const Edge& edge, double outwards, Canvas& canvas) {
    if (edge.axis.title.text.empty()) {
        return;
    }
    const Rect& in = edge.plot.inside;
    const CharStyle& style = *edge.axis.title.style;
    const double half = Canvas::LineHeight(style) / 2;
    const std::string text = Shortened(edge.axis.title.text, style, edge.level ? in.width : in.height);
    canvas.Text(text, style, edge.On(0.5, outwards + half), {0.5, 0.5},
                edge.level           ? 0
                : edge.axis.opposite ? 90
                                     : -90);
}

// Outer groups of categories, each level further out, with lines between the groups.
void Groups(const Edge& edge, Canvas& canvas) {
    const ChartPlot& plot = edge.plot;
    const double line = Canvas::LineHeight(*edge.axis.style);
    double out = TickLength + TickGap + plot.categoryLabels.thick;
    for (auto level = plot.data.outer.rbegin(); level != plot.data.outer.rend(); ++level) {
        for (const ChartSpan& span : *level) {
            const double half = plot.margin ? 0.5 : 0;
            const double from = plot.CategoryShare(static_cast<double>(span.first) - half);
            const double to = plot.CategoryShare(static_cast<double>(span.first + span.count) - 1 + half);
            const double available = (to - from) * (edge.level ? plot.inside.width : plot.inside.height);
            canvas.Text(Shortened(span.label, *edge.axis.style, available), *edge.axis.style,
                        edge.On((from + to) / 2, out + line / 2), {0.5, 0.5}, edge.level ? 0 : -90);
            for (const double end : {from, to}) {
                canvas.Line(edge.On(end, 0), edge.On(end, out + line), Separator);
            }
        }
        out += line + TickGap;
    }
}

// The axis line; that of categories lies where the value axis is crossed.
void AxisLine(const Edge& edge, Canvas& canvas) {
    canvas.Line(edge.On(0, 0), edge.On(1, 0), edge.axis.line);
}

void CrossingLine(const ChartPlot& plot, Canvas& canvas) {
    const ChartAxisData& category = plot.area.categoryAxes.front();
    const Scale& scale = plot.values.front();
    const double crossing = plot.area.valueAxes.front().crossAt.value_or(
        category.crossAt.value_or(std::clamp(0.0, scale.low, scale.high)));
    const double share = scale.Share(crossing);
    if (share > 1e-9 && share < 1 - 1e-9) {
        canvas.Line(plot.At(0, share), plot.At(1, share), category.line);
    }
}

}  // namespace

void DrawGrid(const ChartPlot& plot) {
    const Edge category{plot, plot.area.categoryAxes.front(), !plot.swapped};
    if (category.axis.visible) {
        GridLines(category, plot.scattered ? &plot.numbers : nullptr, plot.canvas);
    }
    for (std::size_t i = plot.values.size(); i-- > 0;) {
        if (plot.area.valueAxes[i].visible && (i == 0 || plot.IsShown(i))) {
            GridLines({plot, plot.area.valueAxes[i], plot.swapped}, &plot.values[i], plot.canvas);
        }
    }
}

void DrawAxes(const ChartPlot& plot) {
    const ChartAxisData& categories = plot.area.categoryAxes.front();
    if (categories.visible) {
        const Edge edge{plot, categories, !plot.swapped};
        const Scale* scale = plot.scattered ? &plot.numbers : nullptr;
        AxisLine(edge, plot.canvas);
        CrossingLine(plot, plot.canvas);
        Ticks(edge, categories.majorTicks, MajorShares(plot, scale), TickLength, plot.canvas);
        std::vector<double> shares;
        for (std::size_t i = 0; i < plot.CategoryCount() && !scale; ++i) {
            shares.push_back(plot.CategoryShare(static_cast<double>(i)));
        }
        if (categories.labels) {
            Labels(edge, plot.categoryLabels, scale ? SharesOf(*scale, scale->ticks) : shares, plot.canvas);
            if (!scale) {
                Groups(edge, plot.canvas);
            }
        }
        Title(edge, TitleAt(edge, plot.categoryLabels, scale ? 0 : plot.data.outer.size()), plot.canvas);
    }
    for (std::size_t i = 0; i < plot.values.size(); ++i) {
        if (!plot.IsShown(i)) {
            continue;
        }
        const ChartAxisData& axis = plot.area.valueAxes[i];
        const Edge edge{plot, axis, plot.swapped};
        const std::vector<double> shares = SharesOf(plot.values[i], plot.values[i].ticks);
        AxisLine(edge, plot.canvas);
        Ticks(edge, axis.minorTicks,
              SharesOf(plot.values[i], plot.values[i].MinorTicks(axis.minorTicks.interval)), TickLength / 2,
              plot.canvas);
        Ticks(edge, axis.majorTicks, shares, TickLength, plot.canvas);
        if (axis.labels) {
            Labels(edge, plot.valueLabels[i], shares, plot.canvas);
        }
        Title(edge, TitleAt(edge, plot.valueLabels[i], 0), plot.canvas);
    }
}

}  // namespace rdl::layout
