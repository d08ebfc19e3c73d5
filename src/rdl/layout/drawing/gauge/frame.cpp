// SPDX-License-Identifier: GPL-3.0-or-later
// The frames of gauges and where gauges lie in their panel.
#include <algorithm>
#include <cmath>
#include <numbers>

#include "rdl/layout/drawing/gauge/draw.h"
#include "rdl/values/ascii.h"

namespace rdl::layout {
namespace {

constexpr Color FrameGray = 0xFFC8CDD2, FaceGray = 0xFFF7F8F9;

bool IsPlaced(const GaugeItem& item) {
    return item["Left"].IsSet() || item["Top"].IsSet() || item["Width"].IsSet() || item["Height"].IsSet();
}

bool IsArranged(const GaugeItem& item, bool autoLayout) {
    const bool positioned = item.kind == GaugeItemKind::Label || item.kind == GaugeItemKind::Image;
    return item.parent < 0 && !(IsPlaced(item) && (positioned || !autoLayout));
}

// A grid whose cells are as square as can be.
std::vector<Rect> Grid(std::size_t count, double width, double height) {
    std::size_t columns = 1;
    double best = 0;
    for (std::size_t tried = 1; tried <= count; ++tried) {
        const double rows = std::ceil(static_cast<double>(count) / static_cast<double>(tried));
        const double side = std::min(width / static_cast<double>(tried), height / rows);
        if (side > best + 0.01) {
            best = side;
            columns = tried;
        }
    }
    const std::size_t rows = (count + columns - 1) / std::max<std::size_t>(columns, 1);
    std::vector<Rect> cells;
    for (std::size_t i = 0; i < count; ++i) {
        const double wide = width / static_cast<double>(columns), high = height / static_cast<double>(rows);
        const std::size_t row = i / columns, column = i % columns;
        cells.push_back({wide * static_cast<double>(column), high * static_cast<double>(row), wide, high});
    }
    return cells;
}

Rect Within(const GaugeItem& item, const Rect& parent, const GaugeKit& kit) {
    const double left = kit.Number(item, "Left", 0), top = kit.Number(item, "Top", 0);
    return {parent.x + parent.width * left * Percent, parent.y + parent.height * top * Percent,
            parent.width * kit.Number(item, "Width", 100 - left) * Percent,
            parent.height * kit.Number(item, "Height", 100 - top) * Percent};
}

// The part of a dial that its scale goes around, with the pivot's surroundings.
void Sector(const FrameShape& around, double wider, Color fill, Canvas& paper) {
    constexpr double Hub = 0.3, Room = 1.12;  // of the radius
    const double radius = around.radius * Room + wider, hub = around.radius * Hub + wider;
    const double aside = std::asin(std::min(1.0, hub / radius));
    std::vector<PathOp::Segment> segments;
    AppendArc(around.pivot, radius, around.first - aside, around.first + around.sweep + aside,
              PathOp::Segment::Move, segments);
    AppendArc(around.pivot, hub, around.first + around.sweep + std::numbers::pi / 2,
              around.first - std::numbers::pi / 2 + 2 * std::numbers::pi, PathOp::Segment::LineTo, segments);
    segments.push_back({PathOp::Segment::Close, {}, {}});
    paper.Path(std::move(segments), fill, Border());
}

}  // namespace

void DrawFrame(const GaugeFrame& frame, const Rect& area, const FrameShape& around, const GaugeKit& kit) {
    const std::string style = kit.Text(frame, "FrameStyle");
    if (style.empty() || EqualNoCase(style, "None")) {
        return;
    }
    constexpr double UsualWidth = 8;  // percent
    const double wide =
        kit.Number(frame, "FrameWidth", UsualWidth) * Percent * std::min(area.width, area.height) / 2;
    const std::string shape = kit.Text(frame, "FrameShape");
    const bool circle =
        shape.find("Circular") != std::string::npos ||
        (around.round && (shape.empty() || EqualNoCase(shape, "Default") || EqualNoCase(shape, "AutoShape")));
    const Color outer = kit.Fill(frame.style, FrameGray), inner = kit.Fill(frame.background, FaceGray);
    const Border line = kit.Outline(frame.style);
    Canvas& paper = kit.Paper();
    const bool cut =
        shape.find("SemiCircular") != std::string::npos || shape.find("QuarterCircular") != std::string::npos;
    // More than half a circle is cut nowhere.
    if (cut && around.radius > 0 && around.sweep < std::numbers::pi + 0.01) {
        Sector(around, wide, outer, paper);
        Sector(around, 0, inner, paper);
    } else if (circle) {
        const Spot center{area.x + area.width / 2, area.y + area.height / 2};
        const double radius = std::min(area.width, area.height) / 2;
        paper.Circle(center, radius, outer, line);
        paper.Circle(center, std::max(radius - wide, 0.0), inner, Border());
    } else {
        paper.Rectangle(area, outer, line);
        paper.Rectangle({area.x + wide, area.y + wide, area.width - 2 * wide, area.height - 2 * wide}, inner,
                        Border());
    }
}

std::vector<Rect> ArrangeGauges(const GaugePanel& panel, double width, double height, const GaugeKit& kit) {
    const bool autoLayout = kit.Flag(panel.panel, "AutoLayout", false);
    const auto count = static_cast<std::size_t>(std::count_if(
        panel.items.begin(), panel.items.end(),
        [&](const GaugeItem& item) { return IsArranged(item, autoLayout) && !kit.IsHidden(item); }));
    const std::vector<Rect> cells = Grid(count, width, height);
    std::vector<Rect> areas(panel.items.size());
    std::vector<bool> known(panel.items.size(), false);
    std::size_t next = 0;
    const Rect whole{0, 0, width, height};
    for (std::size_t i = 0; i < areas.size(); ++i) {
        const GaugeItem& item = panel.items[i];
        if (item.parent >= 0) {
            continue;
        }
        known[i] = true;
        if (!IsArranged(item, autoLayout)) {
            areas[i] = Within(item, whole, kit);
        } else if (!kit.IsHidden(item)) {
            areas[i] = cells[next++];
        }
    }
    // Items in items, from the outside inwards.
    for (std::size_t round = 0; round < areas.size(); ++round) {
        for (std::size_t i = 0; i < areas.size(); ++i) {
            const int parent = panel.items[i].parent;
            if (!known[i] && parent >= 0 && known[static_cast<std::size_t>(parent)]) {
                areas[i] = Within(panel.items[i], areas[static_cast<std::size_t>(parent)], kit);
                known[i] = true;
            }
        }
    }
    return areas;
}

}  // namespace rdl::layout
