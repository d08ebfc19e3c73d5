// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/drawing/chart/tree.h"

#include <algorithm>
#include <cmath>

#include "rdl/layout/drawing/chart/labels.h"

namespace rdl::layout {
namespace {

// Children of one series.
class Grower {
 public:
    Grower(const ChartData& data, const ChartRow& row, bool colorBySpan)
        : m_data(data), m_row(row), m_colorBySpan(colorBySpan) {}

    std::vector<ChartNode> Grow() const {
        // The slices of a whole without categories are series: they have no groups.
        const bool grouped = m_row.marks.size() == m_data.categories.size();
        return Level(0, m_row.marks.size(), grouped ? 0 : m_data.outer.size(), m_row.color);
    }

 private:
    // The nodes of the categories from `first` to `last`, within the groups before `level`.
    std::vector<ChartNode> Level(std::size_t first, std::size_t last, std::size_t level, Color color) const {
        std::vector<ChartNode> nodes;
        for (std::size_t i = first; i < last;) {
            const ChartSpan* span = level < m_data.outer.size() ? SpanAt(level, i) : nullptr;
            if (!span) {
                Leaf(m_row.marks[i++], nodes);
                continue;
            }
            const bool own = level == 0 && m_colorBySpan;
            ChartNode node;
            node.name = span->label;
            node.color = own ? m_data.PaletteColor(GroupAt(m_data.outer.front(), i)) : color;
            const std::size_t end = std::min(last, span->first + span->count);
            node.children = Level(i, end, level + 1, node.color);
            for (const ChartNode& child : node.children) {
                node.value += child.value;
            }
            if (!node.children.empty()) {
                nodes.push_back(std::move(node));
            }
            i = end;
        }
        return nodes;
    }

    static void Leaf(const ChartMark& mark, std::vector<ChartNode>& nodes) {
        if (mark.hasY && mark.y != 0) {
            nodes.push_back({mark.name, std::abs(mark.y), mark.color, &mark, {}});
        }
    }

    // Null if the category has no group of the level.
    const ChartSpan* SpanAt(std::size_t level, std::size_t category) const {
        const std::size_t index = GroupAt(m_data.outer[level], category);
        if (index >= m_data.outer[level].size()) {
            return nullptr;
        }
        const ChartSpan& span = m_data.outer[level][index];
        return category >= span.first && category < span.first + span.count ? &span : nullptr;
    }

    const ChartData& m_data;
    const ChartRow& m_row;
    const bool m_colorBySpan;
};

}  // namespace

std::size_t GroupAt(const std::vector<ChartSpan>& spans, std::size_t category) {
    const auto after =
        std::upper_bound(spans.begin(), spans.end(), category,
                         [](std::size_t place, const ChartSpan& span) { return place < span.first; });
    return static_cast<std::size_t>(std::max<std::ptrdiff_t>(after - spans.begin(), 1)) - 1;
}

std::vector<ChartNode> TreeOf(const ChartData& data, const ChartAreaData& area) {
    std::vector<ChartNode> nodes;
    const bool several = area.rows.size() > 1;
    for (const ChartRow& row : area.rows) {
        std::vector<ChartNode> grown = Grower(data, row, !several && !row.ownColor).Grow();
        if (!several) {
            nodes = std::move(grown);
            break;
        }
        ChartNode series{row.name, 0, row.color, nullptr, std::move(grown)};
        for (const ChartNode& child : series.children) {
            series.value += child.value;
        }
        if (!series.children.empty()) {
            nodes.push_back(std::move(series));
        }
    }
    double total = 0;
    for (const ChartNode& node : nodes) {
        total += node.value;
    }
    if (!std::isfinite(total)) {
        nodes.clear();
    }
    return nodes;
}

ChartNodeText TextOf(const ChartNode& node, const ChartAreaData& area) {
    if (node.mark && !node.mark->label.empty()) {
        return {node.mark->label, InsideTextStyle(*node.mark)};
    }
    const ChartAxisData& axis = area.categoryAxes.front();
    if (!axis.visible || !axis.labels) {
        return {};
    }
    return {node.name, LegibleOn(node.color, *axis.style, axis.style->color != Black)};
}

}  // namespace rdl::layout
