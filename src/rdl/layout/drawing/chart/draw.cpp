// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/drawing/chart/draw.h"

#include <algorithm>

#include "rdl/layout/drawing/docking.h"
#include "rdl/layout/model/colors.h"

namespace rdl::layout {
namespace {

// A small chart, one in the cell of a table, keeps nearly all of its room.
double MarginOf(double width, double height) {
    constexpr double Usual = 6, Part = 1.0 / 16;
    return std::min(Usual, std::min(width, height) * Part);
}

}  // namespace

bool IsRound(const ChartAreaData& area) {
    return !area.rows.empty() && IsRound(*area.rows.front().definition);
}

CharStyle InsideLetters(const ChartMark& mark) {
    CharStyle letters = *mark.labelStyle;
    if (!mark.ownLabelColor && IsDark(mark.color)) {
        letters.color = 0xFFFFFFFF;
    }
    return letters;
}

std::shared_ptr<DrawingInstance> DrawChart(const ChartData& data, double width, double height) {
    auto drawing = std::make_shared<DrawingInstance>();
    drawing->content.width = width;
    drawing->content.height = height;
    Canvas canvas(drawing->content);
    const double margin = MarginOf(width, height);
    Rect room{margin, margin, width - 2 * margin, height - 2 * margin};
    for (const ChartCaption& title : data.titles) {
        drawing->description += (drawing->description.empty() || title.text.empty() ? "" : ", ") + title.text;
        DrawTitle(title, room, canvas);
    }
    if (drawing->description.empty()) {
        drawing->description = data.name;
    }
    if (room.width <= 0 || room.height <= 0) {
        return drawing;
    }
    if (data.message) {
        const std::string text = Wrapped(data.message->text, *data.message->style, room.width);
        canvas.Text(text, *data.message->style, {room.x + room.width / 2, room.y + room.height / 2},
                    {0.5, 0.5});
        return drawing;
    }
    for (const ChartLegendData& legend : data.legends) {
        DrawLegend(data, legend, room, canvas);
    }
    const auto shown = static_cast<double>(std::count_if(
        data.areas.begin(), data.areas.end(), [](const ChartAreaData& area) { return !area.rows.empty(); }));
    Rect part = room;
    part.height = room.height / std::max(shown, 1.0);
    for (const ChartAreaData& area : data.areas) {
        if (!area.rows.empty()) {
            IsRound(area) ? DrawPies(data, area, part, canvas) : DrawPlot(data, area, part, canvas);
            part.y += part.height;
        }
    }
    return drawing;
}

}  // namespace rdl::layout
