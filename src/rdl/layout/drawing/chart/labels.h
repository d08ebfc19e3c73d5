// SPDX-License-Identifier: GPL-3.0-or-later
// Labels of points, placed so that they do not cover each other.
#pragma once

#include <string>
#include <vector>

#include "rdl/layout/drawing/canvas.h"
#include "rdl/layout/drawing/chart/data.h"

namespace rdl::layout {

constexpr double LabelGap = 4, Leader = 8;  // points: beside a label, and the line from its part to it

class LabelPlacer {
 public:
    explicit LabelPlacer(Canvas& canvas) : m_canvas(canvas) {}
    // Draws the label of a point. One that `mayMove` is moved when it would cover another one.
    void Place(const ChartMark& mark, const CharStyle& textStyle, Spot spot, Anchor anchor, bool mayMove);

 private:
    bool Covers(const Rect& box) const;

    Canvas& m_canvas;
    std::vector<Rect> m_drawn;
};

// Returns the anchor for a position of the schema: a label at the top has its point below it.
Anchor LabelAnchor(const std::string& position);
// Whether this system chooses the position.
bool IsAutomatic(const std::string& position);

// Returns the style of text on the colour `below`: white on a dark one, unless it has a colour of its
// own.
CharStyle LegibleOn(Color below, const CharStyle& textStyle, bool ownColor);
// The same for a label that lies on its point.
CharStyle InsideTextStyle(const ChartMark& mark);

}  // namespace rdl::layout
