// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/drawing/chart/draw.h"

#include <algorithm>

#include "rdl/definition/context.h"

namespace rdl::layout {
namespace {

constexpr double Gap = 4;  // points

// A small chart, one in the cell of a table, keeps nearly all of its room.
double MarginOf(double width, double height) {
    constexpr double Usual = 6, Part = 1.0 / 16;
    return std::min(Usual, std::min(width, height) * Part);
}

enum class Side { Top, Bottom, Left, Right };

Side SideOf(const std::string& position) {
    for (const auto& [word, side] :
         {std::pair{"Bottom", Side::Bottom}, {"Left", Side::Left}, {"Right", Side::Right}}) {
        if (EqualNoCase(position.substr(0, std::string_view(word).size()), word)) {
            return side;
        }
    }
    return Side::Top;
}

// Along its side: 0 at the beginning, 1 at the end.
double PlaceOf(const std::string& position, Side side) {
    const auto ends = [&](std::string_view word) {
        return position.size() > word.size() &&
               EqualNoCase(position.substr(position.size() - word.size()), word);
    };
    if (side == Side::Top || side == Side::Bottom) {
        return ends("Left") ? 0 : ends("Right") ? 1 : 0.5;
    }
    return ends("Top") ? 0 : ends("Bottom") ? 1 : 0.5;
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

void DrawAreas(const ChartData& data, const Rect& room, Canvas& canvas) {
    const auto shown = static_cast<double>(std::count_if(
        data.areas.begin(), data.areas.end(), [](const ChartAreaData& area) { return !area.rows.empty(); }));
    Rect part = room;
    part.height = room.height / std::max(shown, 1.0);
    for (const ChartAreaData& area : data.areas) {
        if (!area.rows.empty()) {
            DrawerOf(area)(data, area, part, canvas);
            part.y += part.height;
        }
    }
}

// A chart too small for its titles and legends is drawn without them.
bool IsTooSmall(const Rect& room) {
    constexpr double Least = 16;  // points
    return room.width < Least || room.height < Least;
}

}  // namespace

void DrawTitle(const ChartCaption& title, Rect& room, Canvas& canvas) {
    if (title.text.empty()) {
        return;
    }
    const Side side = SideOf(title.position);
    const double place = PlaceOf(title.position, side);
    const bool upright = side == Side::Left || side == Side::Right;
    const std::string text = Wrapped(title.text, *title.style, upright ? room.height : room.width);
    const Extents size = Canvas::Measure(text, *title.style);
    const double thick = size.height + Gap;
    if (thick > (upright ? room.width : room.height)) {
        return;
    }
    Rect band = room;
    if (upright) {
        band.width = size.height;
        band.x = side == Side::Left ? room.x : room.Right() - size.height;
        room.x += side == Side::Left ? thick : 0;
        room.width -= thick;
        canvas.Box(band, title.box.get());
        canvas.Text(text, *title.style, {band.x + band.width / 2, band.y + band.height / 2}, {0.5, 0.5},
                    side == Side::Left ? -90 : 90);
        return;
    }
    band.height = size.height;
    band.y = side == Side::Top ? room.y : room.Bottom() - size.height;
    room.y += side == Side::Top ? thick : 0;
    room.height -= thick;
    const double x = band.x + band.width * place;
    const Rect box{x - (size.width + 2 * Gap) * place, band.y, size.width + 2 * Gap, band.height};
    canvas.Box(box, title.box.get());
    canvas.Text(text, *title.style, {box.x + box.width / 2, band.y}, {0.5, 0});
}

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
    Rect room = whole;
    for (const ChartCaption& title : data.titles) {
        drawing->description += (drawing->description.empty() || title.text.empty() ? "" : ", ") + title.text;
        DrawTitle(title, room, canvas);
    }
    if (drawing->description.empty()) {
        drawing->description = data.name;
    }
    if (data.message) {
        const std::string text = Wrapped(data.message->text, *data.message->style, room.width);
        canvas.Text(text, *data.message->style, {room.x + room.width / 2, room.y + room.height / 2},
                    {0.5, 0.5});
        return drawing;
    }
    for (const ChartLegendData& legend : data.legends) {
        if (!IsTooSmall(room)) {
            DrawLegend(data, legend, room, canvas);
        }
    }
    if (IsTooSmall(room)) {
        drawing->content = Page();
        drawing->content.width = width;
        drawing->content.height = height;
        room = whole;
    }
    DrawAreas(data, room, canvas);
    return drawing;
}

}  // namespace rdl::layout
