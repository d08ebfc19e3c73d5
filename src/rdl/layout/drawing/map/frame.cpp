// SPDX-License-Identifier: GPL-3.0-or-later
// Draws what is around the shapes of a map: grid, legends and scales.
#include <algorithm>
#include <cmath>

#include "rdl/layout/drawing/docking.h"
#include "rdl/layout/drawing/map/view.h"

namespace rdl::layout {
namespace {

constexpr double Gap = 4, LargestShare = 0.45;  // points; of the room

// The largest of 1, 2 and 5 times a power of ten that is at most `most`.
double RoundBelow(double most) {
    const double power = std::pow(10, std::floor(std::log10(most)));
    return power * (most >= 5 * power ? 5 : most >= 2 * power ? 2 : 1);
}

std::string Degrees(double value, const char* positive, const char* negative, const Culture& culture) {
    return FormatValue(Value::Real(std::abs(value)), "0.##", culture) + "\xC2\xB0" +
           (value > 0   ? positive
            : value < 0 ? negative
                        : "");
}

// The coordinates that the grid covers: more than the content, as the viewport has room beside it.
MapBounds GridBounds(const MapScreen& screen) {
    MapBounds bounds = screen.Coordinates();
    const double wide = bounds.right - bounds.left, high = bounds.top - bounds.bottom;
    bounds = {bounds.left - wide, bounds.right + wide, bounds.bottom - high, bounds.top + high, true};
    if (screen.IsGeographic()) {
        bounds = {std::max(bounds.left, -180.0), std::min(bounds.right, 180.0),
                  std::max(bounds.bottom, -90.0), std::min(bounds.top, 90.0), true};
    }
    return bounds;
}

// Draws one line, and its label where it enters the viewport.
void DrawGridLine(const MapGridData& grid, const std::vector<Spot>& spots, const std::string& text,
                  Anchor anchor, const MapScreen& screen, Canvas& canvas) {
    canvas.Curve(spots, Course::Straight, grid.line);
    const Rect& area = screen.Area();
    const auto inside = std::find_if(spots.begin(), spots.end(), [&area](const Spot& spot) {
        constexpr double Rounding = 1e-6;
        return spot.x >= area.x - Rounding && spot.x <= area.Right() + Rounding &&
               spot.y >= area.y - Rounding && spot.y <= area.Bottom() + Rounding;
    });
    if (grid.hasLabels && screen.IsGeographic() && inside != spots.end()) {
        canvas.Text(text, *grid.textStyle, *inside, anchor);
    }
}

// Draws the lines of one direction at multiples of the interval.
void DrawGridLines(const MapGridData& grid, bool areMeridians, const MapData& data, const MapScreen& screen,
                   Canvas& canvas) {
    constexpr int Steps = 180, MostLines = 200;
    if (!grid.isShown) {
        return;
    }
    const MapBounds bounds = GridBounds(screen);
    const MapBounds& content = screen.Coordinates();
    const double low = areMeridians ? bounds.left : bounds.bottom,
                 high = areMeridians ? bounds.right : bounds.top;
    double interval = grid.interval.value_or(0);
    if (!(interval > 0) || (high - low) / interval > MostLines) {
        const double span = areMeridians ? content.right - content.left : content.top - content.bottom;
        interval = RoundBelow(std::max(span, (high - low) / MostLines) / 3);
    }
    if (!(interval > 0)) {
        return;
    }
    const double first = std::ceil(low / interval);
    for (int i = 0; i < MostLines && (first + i) * interval <= high; ++i) {
        const double at = (first + i) * interval;
        std::vector<Spot> spots;
        for (int step = 0; step <= Steps; ++step) {
            const double share = static_cast<double>(step) / Steps;
            spots.push_back(areMeridians
                                ? screen.At({at, bounds.bottom + (bounds.top - bounds.bottom) * share})
                                : screen.At({bounds.left + (bounds.right - bounds.left) * share, at}));
        }
        const std::string text =
            areMeridians ? Degrees(at, "E", "W", *data.culture) : Degrees(at, "N", "S", *data.culture);
        DrawGridLine(grid, spots, text, areMeridians ? Anchor{0.5, 1} : Anchor{0, 1}, screen, canvas);
    }
}

void Symbol(const MapLegendEntry& entry, Spot center, double size, Canvas& canvas) {
    switch (entry.kind) {
        case MapLayerKind::Polygon:
            canvas.Rectangle({center.x - size / 2, center.y - size / 2, size, size}, entry.color,
                             entry.border);
            break;
        case MapLayerKind::Line:
            canvas.Line({center.x - size, center.y}, {center.x + size, center.y}, entry.border);
            break;
        case MapLayerKind::Point:
            DrawMark(entry.mark, center, canvas);
            break;
    }
}

}  // namespace

void DrawGrid(const MapData& data, const MapScreen& screen, Canvas& canvas) {
    DrawGridLines(data.viewport.meridians, true, data, screen, canvas);
    DrawGridLines(data.viewport.parallels, false, data, screen, canvas);
}

void DrawLegend(const MapLegendData& legend, Rect& available, Canvas& canvas) {
    if (legend.entries.empty()) {
        return;
    }
    const CharStyle& style = *legend.style;
    const double symbol = static_cast<double>(style.size) * 0.8;
    double line = Canvas::LineHeight(style) * 1.15, symbolRoom = 2 * symbol, text = 0;
    for (const MapLegendEntry& entry : legend.entries) {
        if (entry.kind == MapLayerKind::Point) {
            symbolRoom = std::max(symbolRoom, entry.mark.size);
            line = std::max(line, entry.mark.size + 1);
        }
        text = std::max(text, Canvas::Measure(entry.text, style).width);
    }
    const bool hasTitle = !legend.title.text.empty();
    const double title = hasTitle ? Canvas::LineHeight(*legend.title.style) : 0;
    const double titleWidth = hasTitle ? Canvas::Measure(legend.title.text, *legend.title.style).width : 0;
    const double width =
        std::min(std::max(symbolRoom + Gap + text, titleWidth) + 2 * Gap + 1, available.width * LargestShare);
    const double rows = std::floor((available.height - title - 2 * Gap) / line);
    if (rows < 1) {
        return;
    }
    const std::size_t shown = std::min(legend.entries.size(), static_cast<std::size_t>(rows));
    const Rect area =
        DockAt(legend.position, {width, static_cast<double>(shown) * line + title + 2 * Gap}, available);
    canvas.Box(area, legend.box.get());
    if (hasTitle) {
        canvas.Text(Shortened(legend.title.text, *legend.title.style, width - 2 * Gap), *legend.title.style,
                    {area.x + area.width / 2, area.y + Gap}, {0.5, 0});
    }
    for (std::size_t i = 0; i < shown; ++i) {
        // An ellipsis reports the entries that do not fit.
        const bool more = i + 1 == shown && shown < legend.entries.size();
        const double y = area.y + Gap + title + (static_cast<double>(i) + 0.5) * line;
        if (!more) {
            Symbol(legend.entries[i], {area.x + Gap + symbolRoom / 2, y}, symbol, canvas);
        }
        const double left = symbolRoom + 2 * Gap;
        canvas.Text(more ? "\xE2\x80\xA6" : Shortened(legend.entries[i].text, style, width - left - Gap),
                    style, {area.x + left, y}, {0, 0.5});
    }
}

void DrawColorScale(const MapColorScaleData& scale, const Culture& culture, Rect& available, Canvas& canvas) {
    constexpr double BarHeight = 10, Widest = 250;
    if (scale.bands.empty()) {
        return;
    }
    const CharStyle& style = *scale.frame.style;
    const double label = Canvas::LineHeight(style);
    const bool hasTitle = !scale.frame.title.text.empty();
    const double title = hasTitle ? Canvas::LineHeight(*scale.frame.title.style) : 0;
    const double width = std::min(Widest, available.width * 0.9),
                 height = BarHeight + label + title + 2 * Gap;
    if (height > available.height) {
        return;
    }
    const Rect area = DockAt(scale.frame.position, {width, height}, available);
    canvas.Box(area, scale.frame.box.get());
    if (hasTitle) {
        canvas.Text(Shortened(scale.frame.title.text, *scale.frame.title.style, width),
                    *scale.frame.title.style, {area.x + width / 2, area.y + Gap}, {0.5, 0});
    }
    std::vector<std::string> texts;
    double inset = 0;
    for (std::size_t i = 0; i <= scale.bands.size(); ++i) {
        const double value = i < scale.bands.size() ? scale.bands[i].from : scale.bands.back().to;
        texts.push_back(FormatValue(Value::Real(value), scale.format, culture));
        inset = std::max(inset, Canvas::Measure(texts.back(), style).width / 2 + 1);
    }
    const double step = (width - 2 * inset) / static_cast<double>(scale.bands.size());
    // Labels that would touch are omitted.
    const auto every = static_cast<std::size_t>(std::ceil(std::max(2 * inset / std::max(step, 1.0), 1.0)));
    const double top = area.y + Gap + title;
    for (std::size_t i = 0; i <= scale.bands.size(); ++i) {
        const double x = area.x + inset + static_cast<double>(i) * step;
        if (i < scale.bands.size()) {
            canvas.Rectangle({x, top, step, BarHeight}, scale.bands[i].color,
                             {LineStyle::Solid, scale.border, 0.5F});
        }
        if (i % every == 0) {
            canvas.Text(texts[i], style, {x, top + BarHeight + 1}, {0.5, 0});
        }
    }
}

void DrawDistanceScale(const MapLegendData& frame, Color color, const MapScreen& screen,
                       const Culture& culture, Rect& available, Canvas& canvas) {
    constexpr double Longest = 80, Thick = 3, Step = 0.01;
    if (!screen.IsGeographic()) {
        return;
    }
    // The length of a degree in the middle of the map.
    const spatial::Position middle = screen.Coordinates().Center(), beside{middle.x + Step, middle.y};
    const double points = std::abs(screen.At(beside).x - screen.At(middle).x);
    const double ground = GroundDistance(middle, beside);
    if (!(points > 0) || !(ground > 0)) {
        return;
    }
    const double kilometres = RoundBelow(Longest * ground / points);
    const double length = kilometres * points / ground;
    const CharStyle& style = *frame.style;
    const std::string text = FormatValue(Value::Real(kilometres), "#,##0.###", culture) + " km";
    const Extents size = Canvas::Measure(text, style);
    const Rect area = DockAt(
        frame.position, {std::max(length, size.width) + 2 * Gap, size.height + Thick + 2 * Gap}, available);
    canvas.Box(area, frame.box.get());
    canvas.Text(text, style, {area.x + area.width / 2, area.y + Gap}, {0.5, 0});
    const double left = area.x + (area.width - length) / 2;
    canvas.Rectangle({left, area.Bottom() - Gap - Thick, length, Thick}, color, Border());
}

}  // namespace rdl::layout
