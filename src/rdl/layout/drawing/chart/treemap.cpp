// SPDX-License-Identifier: GPL-3.0-or-later
// Tree maps: tiles whose surfaces are as the values, nearly square, the largest at the top left.
#include <algorithm>
#include <cmath>

#include "rdl/layout/drawing/chart/draw.h"
#include "rdl/layout/drawing/chart/ring.h"
#include "rdl/layout/drawing/chart/tree.h"

namespace rdl::layout {
namespace {

constexpr double TextGap = 2;       // points
constexpr double LeastSide = 1e-3;  // points: a tile that nobody sees

struct Tile {
    const ChartNode* node;
    double surface;
};

// Fills strips along the shorter side of the room that is left. A strip takes one tile more as long as the
// worst proportions of its tiles become better.
class Tiler {
 public:
    Tiler(const std::vector<ChartNode>& nodes, const Rect& available) : m_left(available) {
        double total = 0;
        for (const ChartNode& node : nodes) {
            total += node.value;
        }
        for (const ChartNode& node : nodes) {
            m_tiles.push_back({&node, node.value / total * available.width * available.height});
        }
        std::stable_sort(m_tiles.begin(), m_tiles.end(),
                         [](const Tile& a, const Tile& b) { return a.surface > b.surface; });
    }

    template <typename Visit>
    void ForEach(const Visit& visit) {
        for (std::size_t first = 0; first < m_tiles.size();) {
            const double side = std::min(m_left.width, m_left.height);
            if (side < LeastSide) {
                return;
            }
            double sum = m_tiles[first].surface;
            std::size_t last = first + 1;
            while (last < m_tiles.size() && Worst(first, last, sum + m_tiles[last].surface, side) <=
                                                Worst(first, last - 1, sum, side)) {
                sum += m_tiles[last++].surface;
            }
            Strip(first, last, sum, visit);
            first = last;
        }
    }

 private:
    // The worst proportions, long side by short side, of a strip of the tiles from the first to the last.
    double Worst(std::size_t first, std::size_t last, double sum, double side) const {
        const double thick = sum / side;
        const auto proportions = [&](const Tile& tile) {
            const double length = tile.surface / thick;
            return std::max(length / thick, thick / length);
        };
        return std::max(proportions(m_tiles[first]), proportions(m_tiles[last]));
    }

    template <typename Visit>
    void Strip(std::size_t first, std::size_t last, double sum, const Visit& visit) {
        const bool upright = m_left.width >= m_left.height;
        const double thick = sum / (upright ? m_left.height : m_left.width);
        double along = upright ? m_left.y : m_left.x;
        for (std::size_t i = first; i < last; ++i) {
            const double length = m_tiles[i].surface / thick;
            visit(*m_tiles[i].node,
                  upright ? Rect{m_left.x, along, thick, length} : Rect{along, m_left.y, length, thick});
            along += length;
        }
        (upright ? m_left.x : m_left.y) += thick;
        (upright ? m_left.width : m_left.height) -= thick;
    }

    Rect m_left;
    std::vector<Tile> m_tiles;
};

class TreeMap {
 public:
    TreeMap(const ChartAreaData& area, Canvas& canvas) : m_area(area), m_canvas(canvas) {}

    void Fill(const std::vector<ChartNode>& nodes, const Rect& available) const {
        Tiler(nodes, available).ForEach([this](const ChartNode& node, const Rect& place) {
            node.mark ? Leaf(node, place) : Group(node, place);
        });
    }

 private:
    void Leaf(const ChartNode& node, const Rect& place) const {
        m_canvas.Rectangle(place, node.color, BorderOrSeam(node.mark->border));
        const ChartNodeText text = TextOf(node, m_area);
        const double line = Canvas::LineHeight(text.style);
        const double width = place.width - 2 * TextGap, height = place.height - 2 * TextGap;
        if (text.text.empty() || height < line || width < line) {
            return;
        }
        std::string shown = Wrapped(text.text, text.style, width);
        Extents size = Canvas::Measure(shown, text.style);
        if (size.width > width || size.height > height) {
            shown = Shortened(text.text, text.style, width);
        }
        m_canvas.Text(shown, text.style, {place.x + TextGap, place.y + TextGap}, {0, 0});
    }

    // A group has its name above its tiles, if both have room; else its tiles cover it.
    void Group(const ChartNode& node, const Rect& place) const {
        Rect inside = place;
        const ChartNodeText text = TextOf(node, m_area);
        const double head = Canvas::LineHeight(text.style) + TextGap;
        if (!text.text.empty() && place.height > 2 * head && place.width > 2 * head) {
            m_canvas.Rectangle(place, node.color, BorderOrSeam(Border()));
            m_canvas.Text(Shortened(text.text, text.style, place.width - 2 * TextGap), text.style,
                          {place.x + TextGap, place.y + TextGap / 2}, {0, 0});
            inside.y += head;
            inside.height -= head;
        }
        Fill(node.children, inside);
    }

    const ChartAreaData& m_area;
    Canvas& m_canvas;
};

}  // namespace

void DrawTreeMap(const ChartData& data, const ChartAreaData& area, const Rect& available, Canvas& canvas) {
    canvas.Box(available, area.box.get());
    TreeMap(area, canvas).Fill(TreeOf(data, area), available);
}

}  // namespace rdl::layout
