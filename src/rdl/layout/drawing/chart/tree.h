// SPDX-License-Identifier: GPL-3.0-or-later
// The points of an area as a tree: series, then the groups of categories, outermost first, then the
// categories. Tree maps and sunbursts draw it.
#pragma once

#include <string>
#include <vector>

#include "rdl/layout/drawing/chart/data.h"

namespace rdl::layout {

struct ChartNode {
    std::string name;
    double value = 0;  // above 0: its own without its sign, or the sum of its children
    Color color = Transparent;
    const ChartMark* mark = nullptr;  // of a leaf; else null
    std::vector<ChartNode> children;
};

// Returns the nodes of the first level. Gaps, zeros and groups that have nothing else are left out. Empty if
// the sum of the values is not finite. `area` must outlive the result.
std::vector<ChartNode> TreeOf(const ChartData& data, const ChartAreaData& area);

// Returns the index of the last group that begins at the category or before it; else 0.
std::size_t GroupAt(const std::vector<ChartSpan>& spans, std::size_t category);

// The text on a node: the label of its point, else its name; empty if the chart shows neither.
struct ChartNodeText {
    std::string text;
    CharStyle style;  // legible on the node's colour
};
ChartNodeText TextOf(const ChartNode& node, const ChartAreaData& area);

}  // namespace rdl::layout
