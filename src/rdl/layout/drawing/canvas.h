// What charts and gauges are drawn with: shapes and single texts on a page.
#pragma once

#include <string>
#include <vector>

#include "rdl/layout/model/page.h"
#include "rdl/layout/model/rect.h"

namespace rdl::layout {

struct Extents {
    double width = 0, height = 0;
};

struct Spot {
    double x = 0, y = 0;
};

// How a text lies at its spot: the share of its width and height that is before the spot.
struct Anchor {
    double across = 0.5, down = 0.5;
};

class Canvas {
 public:
    explicit Canvas(Page& page) : m_page(page) {}

    // Until Unclip nothing is drawn outside of the area.
    void Clip(const Rect& area) { m_page.ops.emplace_back(ClipOp{area.x, area.y, area.width, area.height}); }
    void Unclip() { m_page.ops.emplace_back(UnclipOp{}); }
    void Rectangle(const Rect& area, Color fill, const Border& border);
    void Box(const Rect& area, const BoxStyle* box);  // background and borders of a style
    void Line(Spot from, Spot to, const Border& border);
    void Polygon(const std::vector<Spot>& corners, Color fill, const Border& border);
    // Through the points: straight, or curved so that it passes through each.
    void Curve(const std::vector<Spot>& points, bool smooth, const Border& border);
    void Path(std::vector<PathOp::Segment> segments, Color fill, const Border& border);
    void Circle(Spot center, double radius, Color fill, const Border& border);

    // In the middle of the area, in its own proportions; nothing when null.
    void Picture(const std::shared_ptr<const std::string>& bytes, const Rect& area, const std::string& name);

    // Line feeds begin new lines. Degrees are clockwise about the spot.
    void Text(const std::string& text, const CharStyle& style, Spot spot, Anchor anchor, double degrees = 0);
    static Extents Measure(const std::string& text, const CharStyle& style);
    static double LineHeight(const CharStyle& style);

 private:
    void Line(const std::string& text, const CharStyle& style, Spot start, double degrees);

    Page& m_page;
};

// Segments of the pieces between points; the first point is a Move unless `goesOn`.
void AppendCurve(const std::vector<Spot>& points, bool smooth, bool goesOn,
                 std::vector<PathOp::Segment>& segments);
// A piece of a circle from an angle to another, in radians clockwise from the top.
void AppendArc(Spot center, double radius, double from, double to, bool goesOn,
               std::vector<PathOp::Segment>& segments);
// The place that far from the center, in radians clockwise from the top.
Spot OnCircle(Spot center, double radius, double angle);
// Lines no wider than that, broken at blanks.
std::string Wrapped(const std::string& text, const CharStyle& style, double width);
// Cut to that width, with an ellipsis.
std::string Shortened(const std::string& text, const CharStyle& style, double width);
// The box around a text that is turned.
Extents Turned(Extents size, double degrees);

}  // namespace rdl::layout
