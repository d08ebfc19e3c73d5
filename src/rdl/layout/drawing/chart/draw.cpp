// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/drawing/chart/draw.h"

#include <algorithm>

#include "rdl/layout/drawing/docking.h"

namespace rdl::layout {
namespace {

// A small chart, one in the cell of a table, keeps nearly all of its room.
double MarginOf(double width, double height) {
    constexpr double Usual = 6, Part = 1.0 / 16;
    return std::min(Usual, std::min(width, height) * Part);
}

using DrawArea = void (*)(const ChartData&, const ChartAreaData&, const Rect&, Canvas&);

DrawArea DrawerOf(const ChartAreaData& area) {
    switch (FrameOf(*area.rows.front().definition)) {
        case ChartFrame::Circle:
            return DrawPolar;
        case ChartFrame::Pie:
            return DrawPies;
        case ChartFrame::Funnel:
        case ChartFrame::Pyramid:
            return DrawFunnels;
        case ChartFrame::TreeMap:
            return DrawTreeMap;
        case ChartFrame::Sunburst:
            return DrawSunburst;
        default:
            return DrawPlot;
    }
}

void DrawAreas(const ChartData& data, const Rect& available, Canvas& canvas) {
    const auto shown = static_cast<double>(std::count_if(
        data.areas.begin(), data.areas.end(), [](const ChartAreaData& area) { return !area.rows.empty(); }));
    Rect part = available;
    part.height = available.height / std::max(shown, 1.0);
    for (const ChartAreaData& area : data.areas) {
        if (!area.rows.empty()) {
            DrawerOf(area)(data, area, part, canvas);
            part.y += part.height;
        }
    }
}

// A chart too small for its titles and legends is drawn without them.
bool IsTooSmall(const Rect& available) {
    constexpr double Least = 16;  // points
    return available.width < Least || available.height < Least;
}

}  // namespace

std::shared_ptr<DrawingInstance> DrawChart(const ChartData& data, double width, double height) {
    auto drawing = std::make_shared<DrawingInstance>();
    drawing->content.width = width;
    drawing->content.height = height;
    Canvas canvas(drawing->content);
    const double margin = MarginOf(width, height);
    const Rect whole{margin, margin, width - 2 * margin, height - 2 * margin};
    if (whole.width <= 0 || whole.height <= 0) {
        return drawing;
    }
    Rect available = whole;
    for (const ChartCaption& title : data.titles) {
        drawing->description += (drawing->description.empty() || title.text.empty() ? "" : ", ") + title.text;
        DrawTitle(title, available, canvas);
    }
    if (drawing->description.empty()) {
        drawing->description = data.name;
    }
    if (data.message) {
        const std::string text = Wrapped(data.message->text, *data.message->style, available.width);
        canvas.Text(text, *data.message->style,
                    {available.x + available.width / 2, available.y + available.height / 2}, {0.5, 0.5});
        return drawing;
    }
    for (const ChartLegendData& legend : data.legends) {
        if (!IsTooSmall(available)) {
            DrawLegend(data, legend, available, canvas);
        }
    }
    if (IsTooSmall(available)) {
        drawing->content = Page();
        drawing->content.width = width;
        drawing->content.height = height;
        available = whole;
    }
    DrawAreas(data, available, canvas);
    return drawing;
}

}  // namespace rdl::layout
