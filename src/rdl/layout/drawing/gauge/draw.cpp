// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/drawing/gauge/draw.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>

#include "rdl/layout/drawing/gauge/scale.h"
#include "rdl/values/ascii.h"

namespace rdl::layout {
namespace {

constexpr double Degree = std::numbers::pi / 180;
constexpr double LeastAngle = 0.01;  // degrees

GaugeTrack RoundTrack(const GaugeItem& gauge, const GaugeScale& scale, const Rect& square,
                      const GaugeKit& kit) {
    constexpr double UsualRadius = 37, UsualStart = 20, UsualSweep = 320, Bottom = 180;
    GaugeTrack track;
    track.round = true;
    track.center = {square.x + square.width * kit.Number(gauge, "PivotX", 50) * Percent,
                    square.y + square.height * kit.Number(gauge, "PivotY", 50) * Percent};
    track.radius = std::max(kit.Number(scale, "Radius", UsualRadius) * Percent * square.width, 0.0);
    // The report counts angles from the bottom.
    track.first = (kit.Number(scale, "StartAngle", UsualStart) + Bottom) * Degree;
    track.sweep = std::clamp(kit.Number(scale, "SweepAngle", UsualSweep), LeastAngle, 360.0) * Degree;
    track.unit = track.radius;
    return track;
}

GaugeTrack StraightTrack(const GaugeItem& gauge, const GaugeScale& scale, const Rect& area,
                         const GaugeKit& kit) {
    constexpr double UsualMargin = 8, UsualPosition = 50;
    const std::string orientation = kit.Text(gauge, "Orientation");
    const bool upright = EqualNoCase(orientation, "Vertical") ||
                         (!EqualNoCase(orientation, "Horizontal") && area.height > area.width);
    const double start = kit.Number(scale, "StartMargin", UsualMargin) * Percent;
    const double end = kit.Number(scale, "EndMargin", UsualMargin) * Percent;
    const double across = kit.Number(scale, "Position", UsualPosition) * Percent;
    GaugeTrack track;
    track.unit = std::min(area.width, area.height);
    if (upright) {
        const double x = area.x + area.width * across;
        track.from = {x, area.Bottom() - area.height * start};
        track.to = {x, area.y + area.height * end};
        track.outwards = {1, 0};
    } else {
        const double y = area.y + area.height * across;
        track.from = {area.x + area.width * start, y};
        track.to = {area.Right() - area.width * end, y};
        track.outwards = {0, 1};
    }
    return track;
}

Rect SquareIn(const Rect& area) {
    const double side = std::min(area.width, area.height);
    return {area.x + (area.width - side) / 2, area.y + (area.height - side) / 2, side, side};
}

std::string DrawLabelItem(const GaugeItem& label, const Rect& area, const GaugeKit& kit) {
    std::string text = ReadableText(kit.Text(label, "Text"));
    CharStyle textStyle = *kit.Styles().TextStyle(label.style, 10);
    if (kit.Flag(label, "UseFontPercent", false)) {
        textStyle.size = static_cast<float>(static_cast<double>(textStyle.size) * Percent * area.height);
    }
    const BoxStylePtr box = kit.Styles().Box(label.style);
    kit.Paper().Box(area, box.get());
    DrawFitted(text, textStyle, *box, area, !kit.Is(label, "ResizeMode", "None"),
               kit.Number(label, "Angle", 0), kit.Paper());
    return text;
}

void DrawPicture(const GaugeItem& item, const Rect& area, PropertyReader& reader, const GaugeKit& kit) {
    kit.Paper().Picture(reader.PictureOf(item.image, item.name), area, item.name);
}

}  // namespace

std::string DrawGauge(const GaugeItem& gauge, const Rect& area, const GaugeKit& kit) {
    const bool round = gauge.kind == GaugeItemKind::Radial;
    const Rect body = round ? SquareIn(area) : area;
    std::string words;
    FrameShape around{round, {}, 0, 0, 0};
    std::vector<GaugeAxis> axes;
    for (const GaugeScale& scale : gauge.scales) {
        GaugeTrack track =
            round ? RoundTrack(gauge, scale, body, kit) : StraightTrack(gauge, scale, area, kit);
        track.width = std::max(kit.Number(scale, "Width", 0), 0.0) * Percent * track.unit;
        track.reversed = kit.Flag(scale, "Reversed", false);
        if (track.unit > 0 && track.Length() > 0) {
            axes.push_back(MakeAxis(scale, track, kit));
            if (track.radius > around.radius) {
                around = {round, track.center, track.radius, track.first, track.sweep};
            }
        }
    }
    DrawFrame(gauge.frame, body, around, kit);
    for (const GaugeAxis& axis : axes) {
        DrawScale(axis, kit);
    }
    for (const GaugeAxis& axis : axes) {
        DrawPointers(axis, kit);
        const std::string more = DescribeScale(axis, kit);
        words += (words.empty() || more.empty() ? "" : ", ") + more;
    }
    return words;
}

std::shared_ptr<DrawingInstance> DrawGaugePanel(GaugePlan& plan, PropertyReader& reader, double width,
                                                double height) {
    const GaugePanel& panel = *plan.definition;
    const Evaluator::Stay stay(reader.Place());
    const GaugeValues values(plan, reader);
    auto drawing = std::make_shared<DrawingInstance>();
    drawing->content.width = width;
    drawing->content.height = height;
    Canvas canvas(drawing->content);
    const GaugeKit kit(values, canvas, reader.Place().CurrentCulture());
    DrawFrame(panel.frame, {0, 0, width, height}, FrameShape(), kit);
    const std::vector<Rect> areas = ArrangeGauges(panel, width, height, kit);
    std::vector<std::size_t> order(panel.items.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [&](std::size_t left, std::size_t right) {
        return kit.Number(panel.items[left], "ZIndex", 0) < kit.Number(panel.items[right], "ZIndex", 0);
    });
    for (const std::size_t i : order) {
        const GaugeItem& item = panel.items[i];
        if (kit.IsHidden(item) || !(areas[i].width > 0) || !(areas[i].height > 0)) {
            continue;
        }
        std::string words;
        switch (item.kind) {
            case GaugeItemKind::Radial:
            case GaugeItemKind::Linear:
                words = DrawGauge(item, areas[i], kit);
                break;
            case GaugeItemKind::StateIndicator:
                words = DrawStateIndicator(item, values.OfIndicator(i), areas[i], kit, reader);
                break;
            case GaugeItemKind::NumericIndicator:
                words = DrawNumericIndicator(item, areas[i], kit);
                break;
            case GaugeItemKind::Label:
                words = DrawLabelItem(item, areas[i], kit);
                break;
            case GaugeItemKind::Image:
                DrawPicture(item, areas[i], reader, kit);
                break;
        }
        if (const std::string tip = kit.Text(item, "ToolTip"); !tip.empty()) {
            words = tip;
        }
        drawing->description += (drawing->description.empty() || words.empty() ? "" : ", ") + words;
    }
    if (drawing->description.empty()) {
        drawing->description = panel.name;
    }
    return drawing;
}

}  // namespace rdl::layout
