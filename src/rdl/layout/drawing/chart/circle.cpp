// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/drawing/chart/circle.h"

#include <algorithm>
#include <cmath>

#include "rdl/layout/drawing/chart/draw.h"

namespace rdl::layout {
namespace {

constexpr double LargestName = 0.25;  // of the room's width
constexpr double LeastRadius = 8;     // points: a smaller plot has no texts
constexpr double UsualAngle = 30;     // degrees between ticks

PathOp::Segment Closing() {
    return {PathOp::Segment::Close, {}, {}};
}

void Number(CirclePlot& plot) {
    const ChartAxisData& axis = plot.area.categoryAxes.front();
    ScaleRequest request;
    request.minimum = axis.minimum.value_or(0);
    request.maximum = axis.maximum.value_or(360);
    request.interval = axis.interval.value_or(UsualAngle);
    plot.numbers = MakeScale(request);
    for (const double tick : plot.numbers.ticks) {
        const double share = plot.numbers.Share(tick);
        if (share < 1 - 1e-9) {  // the last one lies on the first
            plot.spokes.push_back((axis.reverse ? -share : share) * Turn);
            plot.names.push_back(TickText(axis, plot.numbers, tick, TickKind::Number, *plot.data.culture));
        }
    }
}

void Spokes(CirclePlot& plot) {
    plot.numbered = std::any_of(plot.area.rows.begin(), plot.area.rows.end(), [](const ChartRow& row) {
        return row.definition->kind == ChartKind::Polar &&
               std::any_of(row.marks.begin(), row.marks.end(),
                           [](const ChartMark& mark) { return mark.hasX; });
    });
    if (plot.numbered) {
        Number(plot);
    } else {
        for (std::size_t i = 0; i < plot.data.categories.size(); ++i) {
            plot.spokes.push_back(plot.AngleOf({}, i));
            plot.names.push_back(plot.data.categories[i]);
        }
    }
    plot.polygon =
        plot.spokes.size() > 2 && std::any_of(plot.area.rows.begin(), plot.area.rows.end(),
                                              [](const ChartRow& row) { return row.look.polygon; });
}

bool HasNames(const CirclePlot& plot) {
    const ChartAxisData& axis = plot.area.categoryAxes.front();
    return axis.visible && axis.labels;
}

// A name ends at the circle on the left, begins there on the right and is in its middle at top and bottom.
Anchor NameAnchor(double angle) {
    return {(1 - std::sin(angle)) / 2, (1 + std::cos(angle)) / 2};
}

// The numbers of the value axis end beside the top of the circle: a name there stands above them.
double NameGap(const CirclePlot& plot, double angle) {
    const ChartAxisData& axis = plot.area.valueAxes.front();
    const bool meets = angle == 0 && axis.visible && axis.labels;
    return TickGap + (meets ? Canvas::LineHeight(*axis.style) / 2 : 0);
}

// The largest radius at which all names that are drawn lie within the room.
double RadiusFor(CirclePlot& plot, const Rect& available) {
    const double most = std::min(available.width, available.height) / 2;
    if (!HasNames(plot)) {
        return most;
    }
    const CharStyle& style = *plot.area.categoryAxes.front().style;
    const double around = Turn * most / static_cast<double>(std::max<std::size_t>(plot.spokes.size(), 1));
    plot.every = static_cast<std::size_t>(std::max(1.0, std::ceil(Canvas::LineHeight(style) / around)));
    double radius = most - TickGap;
    for (std::size_t i = 0; i < plot.names.size(); i += plot.every) {
        plot.names[i] = Shortened(plot.names[i], style, available.width * LargestName);
        const Extents size = Canvas::Measure(plot.names[i], style);
        const double across = std::abs(std::sin(plot.spokes[i])), up = std::abs(std::cos(plot.spokes[i]));
        const double gap = NameGap(plot, plot.spokes[i]);
        if (across > 0.01) {
            radius = std::min(radius, (available.width / 2 - size.width * (1 + across) / 2) / across - gap);
        }
        if (up > 0.01) {
            radius = std::min(radius, (available.height / 2 - size.height * (1 + up) / 2) / up - gap);
        }
    }
    return radius;
}

// The titles of axes stand beside the plot.
void Titles(const CirclePlot& plot, Rect& available) {
    const auto draw = [&](const ChartAxisData& axis, const char* position) {
        if (axis.visible) {
            ChartCaption title = axis.title;
            title.position = position;
            DrawTitle(title, available, plot.canvas);
        }
    };
    draw(plot.area.valueAxes.front(), "LeftCenter");
    draw(plot.area.categoryAxes.front(), "BottomCenter");
}

bool HasTexts(const CirclePlot& plot) {
    return plot.radius >= LeastRadius;
}

std::vector<PathOp::Segment> Sector(const CirclePlot& plot, double from, double to) {
    std::vector<PathOp::Segment> segments;
    if (plot.polygon) {
        AppendCurve({plot.At(from, 1), plot.At(to, 1)}, Course::Straight, PathOp::Segment::Move, segments);
    } else {
        AppendArc(plot.center, plot.radius, from, to, PathOp::Segment::Move, segments);
    }
    segments.push_back({PathOp::Segment::LineTo, {plot.center.x, 0, 0}, {plot.center.y, 0, 0}});
    segments.push_back(Closing());
    return segments;
}

std::vector<double> SharesOf(const CirclePlot& plot, std::size_t axis, const std::vector<double>& ticks) {
    std::vector<double> shares;
    for (const double tick : ticks) {
        shares.push_back(plot.ShareOf(axis, tick));
    }
    return shares;
}

// Every other ring, and every other sector.
void Stripes(const CirclePlot& plot) {
    const ChartAxisData& category = plot.area.categoryAxes.front();
    for (std::size_t i = 0; category.visible && IsVisible(category.stripe) && i + 1 < plot.spokes.size();
         i += 2) {
        plot.canvas.Path(Sector(plot, plot.spokes[i], plot.spokes[i + 1]), category.stripe, Border());
    }
    const ChartAxisData& value = plot.area.valueAxes.front();
    if (!value.visible || !IsVisible(value.stripe)) {
        return;
    }
    const std::vector<double> shares = SharesOf(plot, 0, plot.values.front().ticks);
    for (std::size_t i = 0; i + 1 < shares.size(); i += 2) {
        // Outwards and back: the inner line is a hole because it goes around the other way.
        std::vector<PathOp::Segment> ring = plot.Outline(std::max(shares[i], shares[i + 1]));
        const double inner = std::min(shares[i], shares[i + 1]);
        if (plot.polygon) {
            std::vector<Spot> corners;
            for (const double angle : plot.spokes) {
                corners.push_back(plot.At(angle, inner));
            }
            std::reverse(corners.begin(), corners.end());
            AppendCurve(corners, Course::Straight, PathOp::Segment::Move, ring);
        } else {
            AppendArc(plot.center, plot.radius * inner, Turn, 0, PathOp::Segment::Move, ring);
        }
        ring.push_back(Closing());
        plot.canvas.Path(std::move(ring), value.stripe, Border());
    }
}

// A name that would touch the one before it or the first one is omitted.
void Names(const CirclePlot& plot) {
    const CharStyle& style = *plot.area.categoryAxes.front().style;
    std::vector<Rect> drawn;
    for (std::size_t i = 0; i < plot.names.size(); i += plot.every) {
        const double angle = plot.spokes[i];
        const Spot spot = OnCircle(plot.center, plot.radius + NameGap(plot, angle), angle);
        const Anchor anchor = NameAnchor(angle);
        const Extents size = Canvas::Measure(plot.names[i], style);
        const Rect box{spot.x - size.width * anchor.across, spot.y - size.height * anchor.down, size.width,
                       size.height};
        const auto touches = [&box](const Rect& other) {
            return box.x < other.Right() && other.x < box.Right() && box.y < other.Bottom() &&
                   other.y < box.Bottom();
        };
        if (drawn.empty() || (!touches(drawn.front()) && !touches(drawn.back()))) {
            plot.canvas.Text(plot.names[i], style, spot, anchor);
            drawn.push_back(box);
        }
    }
}

void ValueAxis(const CirclePlot& plot, std::size_t index) {
    const ChartAxisData& axis = plot.area.valueAxes[index];
    const Scale& scale = plot.values[index];
    const double side = axis.opposite ? 1 : -1;
    plot.canvas.Line(plot.center, plot.At(0, 1), axis.line);
    for (const double tick : scale.ticks) {
        const Spot spot = plot.At(0, plot.ShareOf(index, tick));
        if (axis.majorTicks.shown) {
            plot.canvas.Line(spot, {spot.x + side * TickLength, spot.y}, axis.majorTicks.border);
        }
        if (axis.labels && HasTexts(plot)) {
            const double x = spot.x + side * (TickLength + TickGap / 2);
            const std::string text = TickText(axis, scale, tick, TickKind::Number, *plot.data.culture);
            const double most = axis.opposite ? plot.available.Right() - x : x - plot.available.x;
            plot.canvas.Text(Shortened(text, *axis.style, most), *axis.style, {x, spot.y},
                             {axis.opposite ? 0.0 : 1.0, 0.5});
        }
    }
}

}  // namespace

double CirclePlot::AngleOf(const ChartMark& mark, std::size_t category) const {
    const double share = numbered
                             ? numbers.Share(mark.x)
                             : static_cast<double>(category) / static_cast<double>(data.categories.size());
    const double angle = std::fmod(share, 1.0) * Turn;
    return area.categoryAxes.front().reverse ? -angle : angle;
}

double CirclePlot::ShareOf(std::size_t valueAxis, double value) const {
    const double share = values[valueAxis].Share(value);
    const double held = std::isfinite(share) ? std::clamp(share, 0.0, 1.0) : 0;
    return area.valueAxes[valueAxis].reverse ? 1 - held : held;
}

Spot CirclePlot::SpotOf(std::size_t row, std::size_t category) const {
    const ChartRow& series = area.rows[row];
    const ChartMark& mark = series.marks[category];
    return At(AngleOf(mark, category), ShareOf(series.valueAxis, mark.y));
}

std::vector<PathOp::Segment> CirclePlot::Outline(double share) const {
    std::vector<PathOp::Segment> segments;
    if (polygon) {
        std::vector<Spot> corners;
        for (const double angle : spokes) {
            corners.push_back(At(angle, share));
        }
        AppendCurve(corners, Course::Straight, PathOp::Segment::Move, segments);
    } else {
        AppendArc(center, radius * share, 0, Turn, PathOp::Segment::Move, segments);
    }
    segments.push_back(Closing());
    return segments;
}

void PlaceCircle(CirclePlot& plot, const Rect& available) {
    Rect rest = plot.available = available;
    Titles(plot, rest);
    Spokes(plot);
    plot.reaches = StackRows(plot.area);
    plot.radius = RadiusFor(plot, rest);
    if (!HasTexts(plot)) {
        rest = available;
        plot.every = std::max<std::size_t>(plot.every, plot.spokes.size());
        plot.radius = std::min(available.width, available.height) / 2;
    }
    plot.center = {rest.x + rest.width / 2, rest.y + rest.height / 2};
    for (std::size_t i = 0; i < plot.area.valueAxes.size(); ++i) {
        plot.values.push_back(ValueScale(plot.area, i, plot.reaches, plot.radius));
    }
}

void DrawCircleGrid(const CirclePlot& plot) {
    plot.canvas.Path(plot.Outline(1), plot.area.box->background, Border());
    Stripes(plot);
    const ChartAxisData& category = plot.area.categoryAxes.front();
    for (std::size_t i = 0; category.visible && category.majorGrid.shown && i < plot.spokes.size();
         i += plot.every) {
        plot.canvas.Line(plot.center, plot.At(plot.spokes[i], 1), category.majorGrid.border);
    }
    const ChartAxisData& value = plot.area.valueAxes.front();
    const auto lines = [&](const ChartLinesData& grid, const std::vector<double>& ticks) {
        for (const double share :
             value.visible&& grid.shown ? SharesOf(plot, 0, ticks) : std::vector<double>()) {
            if (share > 1e-9) {
                plot.canvas.Path(plot.Outline(share), Transparent, grid.border);
            }
        }
    };
    lines(value.minorGrid, plot.values.front().MinorTicks(value.minorGrid.interval));
    lines(value.majorGrid, plot.values.front().ticks);
}

void DrawCircleAxes(const CirclePlot& plot) {
    const ChartAxisData& category = plot.area.categoryAxes.front();
    if (category.visible) {
        plot.canvas.Path(plot.Outline(1), Transparent, category.line);
    }
    if (HasNames(plot) && HasTexts(plot)) {
        Names(plot);
    }
    for (std::size_t i = 0; i < plot.values.size(); ++i) {
        const bool used = std::any_of(plot.area.rows.begin(), plot.area.rows.end(),
                                      [i](const ChartRow& row) { return row.valueAxis == i; });
        if (plot.area.valueAxes[i].visible && used) {
            ValueAxis(plot, i);
        }
    }
}

}  // namespace rdl::layout
