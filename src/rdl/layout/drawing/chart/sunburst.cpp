// SPDX-License-Identifier: GPL-3.0-or-later
// Sunbursts: a ring for each level of the tree, the outermost groups innermost.
#include <algorithm>

#include "rdl/layout/drawing/chart/draw.h"
#include "rdl/layout/drawing/chart/ring.h"
#include "rdl/layout/drawing/chart/tree.h"

namespace rdl::layout {
namespace {

constexpr double Hole = 0.5;      // its radius, in rings
constexpr double TextMargin = 4;  // points

std::size_t DepthOf(const std::vector<ChartNode>& nodes) {
    std::size_t depth = 0;
    for (const ChartNode& node : nodes) {
        depth = std::max(depth, 1 + DepthOf(node.children));
    }
    return depth;
}

struct Sunburst {
    const ChartAreaData& area;
    Canvas& canvas;
    Spot center;
    double ring;   // its thickness, in points
    double total;  // of all values

    void Draw(const std::vector<ChartNode>& nodes, std::size_t level, double from) const {
        const double inner = (static_cast<double>(level) + Hole) * ring;
        for (const ChartNode& node : nodes) {
            const double to = from + node.value / total * Turn;
            const RingSlice slice{center, inner + ring, inner, from, to};
            slice.Draw(node.color, node.mark ? node.mark->border : Border(), canvas);
            Text(node, slice);
            Draw(node.children, level + 1, from);
            from = to;
        }
    }

    void Text(const ChartNode& node, const RingSlice& slice) const {
        const ChartNodeText text = TextOf(node, area);
        const double least = static_cast<double>(text.style.size) / 2;  // a slice thinner has no room
        if (text.text.empty() || ring < least || slice.outer * (slice.to - slice.from) < least) {
            return;
        }
        const std::string wrapped = Wrapped(text.text, text.style, ring - TextMargin);
        for (const std::string& shown : {text.text, wrapped}) {
            if (slice.HasRoomFor(Canvas::Measure(shown, text.style))) {
                canvas.Text(shown, text.style, slice.LabelSpot(), {0.5, 0.5});
                return;
            }
        }
        Turned(text, slice);
    }

    // A text that has no room while it is level runs along its ring, or along the radius.
    void Turned(const ChartNodeText& text, const RingSlice& slice) const {
        constexpr double Share = 0.9;  // of the arc
        const double degrees = slice.Middle() / Turn * 360, radius = slice.inner + ring / 2;
        const double arc = radius * (slice.to - slice.from);
        const Extents size = Canvas::Measure(text.text, text.style);
        const double bend = size.width * size.width / (4 * radius);  // of the ring, along the text
        if (size.width <= Share * arc && size.height + bend <= ring) {
            const bool upper = degrees <= 90 || degrees >= 270;
            canvas.Text(text.text, text.style, slice.LabelSpot(), {0.5, 0.5},
                        upper ? degrees : degrees - 180);
        } else if (arc >= size.height) {
            canvas.Text(Shortened(text.text, text.style, ring - TextMargin), text.style, slice.LabelSpot(),
                        {0.5, 0.5}, degrees < 180 ? degrees - 90 : degrees - 270);
        }
    }
};

}  // namespace

void DrawSunburst(const ChartData& data, const ChartAreaData& area, const Rect& available, Canvas& canvas) {
    canvas.Box(available, area.box.get());
    const std::vector<ChartNode> nodes = TreeOf(data, area);
    double total = 0;
    for (const ChartNode& node : nodes) {
        total += node.value;
    }
    const double radius = std::min(available.width, available.height) / 2;
    const double ring = radius / (static_cast<double>(DepthOf(nodes)) + Hole);
    const Spot center{available.x + available.width / 2, available.y + available.height / 2};
    Sunburst{area, canvas, center, ring, total}.Draw(nodes, 0, 0);
}

}  // namespace rdl::layout
