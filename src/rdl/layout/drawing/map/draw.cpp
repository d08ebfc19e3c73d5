// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/drawing/map/draw.h"

#include <algorithm>

#include "rdl/layout/drawing/docking.h"
#include "rdl/layout/drawing/map/view.h"

namespace rdl::layout {
namespace {

// Titles, legends and the colour scale that are outside the viewport, or those inside.
void DrawParts(const MapData& data, bool outside, Rect& available, Canvas& canvas) {
    for (const MapTitleData& title : data.titles) {
        if (title.isOutside == outside) {
            DrawTitle(title.caption, available, canvas);
        }
    }
    for (const MapLegendData& legend : data.legends) {
        if (legend.isOutside == outside) {
            DrawLegend(legend, available, canvas);
        }
    }
    if (data.colorScale && data.colorScale->frame.isOutside == outside) {
        DrawColorScale(*data.colorScale, *data.culture, available, canvas);
    }
}

// The part of the area that lies within the map.
Rect Common(const Rect& area, const Rect& map) {
    const double left = std::clamp(area.x, map.x, map.Right()), top = std::clamp(area.y, map.y, map.Bottom());
    const double right = std::clamp(area.Right(), left, map.Right());
    return {left, top, right - left, std::clamp(area.Bottom(), top, map.Bottom()) - top};
}

bool HasOutsideParts(const MapData& data) {
    const auto isOutside = [](const auto& part) { return part.isOutside; };
    return std::any_of(data.titles.begin(), data.titles.end(), isOutside) ||
           std::any_of(data.legends.begin(), data.legends.end(), isOutside) ||
           (data.colorScale && data.colorScale->frame.isOutside);
}

std::string DescriptionOf(const MapData& data) {
    std::string description;
    for (const MapTitleData& title : data.titles) {
        description += (description.empty() || title.caption.text.empty() ? "" : ", ") + title.caption.text;
    }
    return description.empty() ? data.name : description;
}

}  // namespace

std::shared_ptr<DrawingInstance> DrawMap(const MapData& data, double width, double height) {
    constexpr double Gap = 4;
    auto drawing = std::make_shared<DrawingInstance>();
    drawing->content.width = width;
    drawing->content.height = height;
    drawing->description = DescriptionOf(data);
    Canvas canvas(drawing->content);
    Rect available{0, 0, width, height};
    if (HasOutsideParts(data)) {
        available = {Gap, Gap, width - 2 * Gap, height - 2 * Gap};
    }
    DrawParts(data, true, available, canvas);
    const Rect area = data.viewport.area ? Common(*data.viewport.area, {0, 0, width, height}) : available;
    if (!(area.width > 0) || !(area.height > 0)) {
        return drawing;
    }
    const MapScreen screen(data, area);
    canvas.Box(area, data.viewport.box.get());
    canvas.Clip(area);
    DrawGrid(data, screen, canvas);
    DrawLayers(data, screen, canvas);
    canvas.Unclip();
    Rect inside{area.x + Gap, area.y + Gap, area.width - 2 * Gap, area.height - 2 * Gap};
    DrawParts(data, false, inside, canvas);
    if (data.distanceScale) {
        DrawDistanceScale(*data.distanceScale, data.distanceColor, screen, *data.culture, inside, canvas);
    }
    return drawing;
}

DrawingData DataOf(const MapData& data) {
    DrawingData table;
    for (const MapLayerData& layer : data.layers) {
        for (const MapShapeData& shape : layer.shapes) {
            if (shape.isBound) {
                table.rows.push_back({Value::Text(layer.name),
                                      Value::Text(shape.name.empty() ? shape.label : shape.name),
                                      shape.value});
            }
        }
    }
    if (!table.rows.empty()) {
        table.columns = {"Layer", "Shape", "Value"};
    }
    return table;
}

}  // namespace rdl::layout
