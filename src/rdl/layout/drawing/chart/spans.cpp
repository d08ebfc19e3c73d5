// SPDX-License-Identifier: GPL-3.0-or-later
// What reaches from a low to a high value: stocks, candlesticks, errors and boxes.
#include <algorithm>

#include "rdl/layout/drawing/chart/draw.h"
#include "rdl/layout/drawing/chart/plot.h"

namespace rdl::layout {
namespace {

constexpr Color White = 0xFFFFFFFF;

// One point in its place: `place` has its width, and reaches from the high to the low value.
struct Span {
    const ChartPlot& plot;
    const ChartRow& row;
    const ChartMark& mark;
    Rect place;

    double Middle() const { return place.x + place.width / 2; }
    double HeightOf(double value) const {
        return plot.At(0, plot.HeldShare(row.valueAxis, value), row.valueAxis).y;
    }
    void Level(double from, double to, double y) const { plot.canvas.Line({from, y}, {to, y}, mark.border); }
    void Upright(double from, double to) const {
        plot.canvas.Line({Middle(), from}, {Middle(), to}, mark.border);
    }
    void Body(double from, double to, Color fill) const {
        const double a = HeightOf(from), b = HeightOf(to);
        plot.canvas.Rectangle({place.x, std::min(a, b), place.width, std::abs(a - b)}, fill, mark.border);
    }
};

// An opening price is drawn to the left of the line, a closing one to its right.
void Price(const Span& span, double value, bool opening) {
    const double y = span.HeightOf(value), middle = span.Middle();
    const double outer = opening ? span.place.x : span.place.Right();
    if (span.row.look.prices == ChartLook::Prices::Line) {
        span.Level(std::min(middle, outer), std::max(middle, outer), y);
        return;
    }
    const double half = span.place.width / 4;
    span.plot.canvas.Polygon({{middle, y}, {outer, y - half}, {outer, y + half}}, span.mark.color, Border());
}

void Candle(const Span& span) {
    const ChartMark& mark = span.mark;
    if (!mark.start || !mark.end) {
        span.Upright(span.place.y, span.place.Bottom());
        return;
    }
    // The line ends where the body begins: a body may be transparent.
    const double open = span.HeightOf(*mark.start), close = span.HeightOf(*mark.end);
    span.Upright(span.place.y, std::min(open, close));
    span.Upright(std::max(open, close), span.place.Bottom());
    const bool up = *mark.end >= *mark.start;
    const Color own = up ? span.row.look.upColor : span.row.look.downColor;
    span.Body(*mark.start, *mark.end, IsVisible(own) ? own : up ? White : mark.color);
}

void Stock(const Span& span) {
    const ChartLook& look = span.row.look;
    if (look.prices == ChartLook::Prices::Candlestick) {
        Candle(span);
        return;
    }
    span.Upright(span.place.y, span.place.Bottom());
    if (look.showOpen && span.mark.start) {
        Price(span, *span.mark.start, true);
    }
    if (look.showClose && span.mark.end) {
        Price(span, *span.mark.end, false);
    }
}

void Error(const Span& span) {
    const double quarter = span.place.width / 4;
    span.Upright(span.place.y, span.place.Bottom());
    for (const auto& [value, shown] : {std::pair{span.mark.high, span.row.look.upperError},
                                       std::pair{span.mark.low, span.row.look.lowerError}}) {
        if (shown) {
            span.Level(span.place.x + quarter, span.place.Right() - quarter, span.HeightOf(value));
        }
    }
    DrawShape(span.mark.shape, {span.Middle(), span.HeightOf(span.mark.y)}, span.mark.shapeSize,
              span.mark.shapeColor, span.plot.canvas);
}

void Box(const Span& span) {
    const ChartMark& mark = span.mark;
    const ChartLook& look = span.row.look;
    const double quarter = span.place.width / 4;
    for (const double end : {mark.high, mark.low}) {
        span.Level(span.place.x + quarter, span.place.Right() - quarter, span.HeightOf(end));
    }
    const bool boxed = mark.start && mark.end;
    const double a = boxed ? span.HeightOf(*mark.start) : span.place.Bottom();
    const double b = boxed ? span.HeightOf(*mark.end) : span.place.Bottom();
    span.Upright(span.place.y, std::min(a, b));
    span.Upright(std::max(a, b), span.place.Bottom());
    const Border line{LineStyle::Solid, Black, mark.border.width};
    if (boxed) {
        span.plot.canvas.Rectangle({span.place.x, std::min(a, b), span.place.width, std::abs(a - b)},
                                   mark.color, line);
    }
    if (look.showMedian && mark.median) {
        const double y = span.HeightOf(*mark.median);
        span.plot.canvas.Line({span.place.x, y}, {span.place.Right(), y}, line);
    }
    if (look.showMean && mark.mean) {
        const Border dashed{LineStyle::Dashed, Black, mark.border.width};
        const double y = span.HeightOf(*mark.mean);
        span.plot.canvas.Line({span.place.x, y}, {span.place.Right(), y}, dashed);
    }
}

}  // namespace

void DrawSpans(const ChartPlot& plot) {
    for (std::size_t r = 0; r < plot.area.rows.size(); ++r) {
        const ChartRow& row = plot.area.rows[r];
        for (std::size_t i = 0; i < row.marks.size() && IsSpan(*row.definition); ++i) {
            if (!row.marks[i].hasY) {
                continue;
            }
            const Span span{plot, row, row.marks[i], ColumnOf(plot, r, i)};
            switch (row.definition->kind) {
                case ChartKind::ErrorBar:
                    Error(span);
                    break;
                case ChartKind::BoxPlot:
                    Box(span);
                    break;
                default:
                    Stock(span);
            }
        }
    }
}

}  // namespace rdl::layout
