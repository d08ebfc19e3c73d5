// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/drawing/chart/labels.h"

#include <algorithm>

#include "rdl/layout/model/colors.h"
#include "rdl/values/ascii.h"

namespace rdl::layout {
namespace {

constexpr double LabelMargin = 2;  // points

Rect BoxOf(Spot spot, Anchor anchor, Extents size) {
    return {spot.x - size.width * anchor.across, spot.y - size.height * anchor.down, size.width, size.height};
}

}  // namespace

void LabelPlacer::Place(const ChartMark& mark, const CharStyle& textStyle, Spot spot, Anchor anchor,
                        bool mayMove) {
    spot.x += (0.5 - anchor.across) * 2 * LabelMargin;
    spot.y += (0.5 - anchor.down) * 2 * LabelMargin;
    Extents size = Turned(Canvas::Measure(mark.label, *mark.labelStyle), mark.labelTurn);
    const Spot first = spot;
    for (const double shift : {0.0, -1.0, 1.0, -2.0}) {
        spot.y = first.y + shift * size.height;
        if (!mayMove || !Covers(BoxOf(spot, anchor, size))) {
            break;
        }
        spot = first;
    }
    const Rect box = BoxOf(spot, anchor, size);
    m_drawn.push_back(box);
    m_canvas.Box(box, mark.labelBox.get());
    m_canvas.Text(mark.label, textStyle, {box.x + box.width / 2, box.y + box.height / 2}, {0.5, 0.5},
                  mark.labelTurn);
}

bool LabelPlacer::Covers(const Rect& box) const {
    constexpr std::size_t Nearby = 400;  // enough to look back on: labels come from left to right
    const std::size_t begin = m_drawn.size() > Nearby ? m_drawn.size() - Nearby : 0;
    return std::any_of(m_drawn.begin() + static_cast<std::ptrdiff_t>(begin), m_drawn.end(),
                       [&](const Rect& other) {
                           return box.x < other.Right() && other.x < box.Right() && box.y < other.Bottom() &&
                                  other.y < box.Bottom();
                       });
}

Anchor LabelAnchor(const std::string& position) {
    const auto has = [&](std::string_view word) {
        return EqualNoCase(position.substr(0, word.size()), word) ||
               (position.size() > word.size() &&
                EqualNoCase(position.substr(position.size() - word.size()), word));
    };
    return {has("Left")    ? 1.0
            : has("Right") ? 0.0
                           : 0.5,
            has("Top") || has("Outside") ? 1.0
            : has("Bottom")              ? 0.0
                                         : 0.5};
}

bool IsAutomatic(const std::string& position) {
    return position.empty() || EqualNoCase(position, "Auto");
}

CharStyle LegibleOn(Color below, const CharStyle& textStyle, bool ownColor) {
    CharStyle legible = textStyle;
    if (!ownColor && IsDark(below)) {
        legible.color = 0xFFFFFFFF;
    }
    return legible;
}

CharStyle InsideTextStyle(const ChartMark& mark) {
    return LegibleOn(mark.color, *mark.labelStyle, mark.ownLabelColor);
}

}  // namespace rdl::layout
