// SPDX-License-Identifier: GPL-3.0-or-later
// A canvas for charts, gauges and maps: draws shapes and single texts onto a page. Lengths are points.
#pragma once

#include <numbers>
#include <string>
#include <vector>

#include "rdl/layout/model/page.h"
#include "rdl/layout/model/rect.h"

namespace rdl::layout {

constexpr double Turn = 2 * std::numbers::pi;  // a whole turn in radians

struct Extents {
    double width = 0, height = 0;
};

struct Spot {
    double x = 0, y = 0;
};

// The position of a text relative to its spot: the fraction of its width and height before the spot.
struct Anchor {
    double across = 0.5, down = 0.5;
};

// How a line runs from point to point.
enum class Course { Straight, Smooth };

class Canvas {
 public:
    explicit Canvas(Page& page) : m_page(page) {}

    // Limits drawing to the area until Unclip.
    void Clip(const Rect& area) { m_page.ops.emplace_back(ClipOp{area.x, area.y, area.width, area.height}); }
    void Unclip() { m_page.ops.emplace_back(UnclipOp{}); }
    void Rectangle(const Rect& area, Color fill, const Border& border);
    void Box(const Rect& area, const BoxStyle* box);  // background and borders of a style; null draws nothing
    void Line(Spot from, Spot to, const Border& border);
    void Polygon(const std::vector<Spot>& corners, Color fill, const Border& border);
    // Draws a line through the points.
    void Curve(const std::vector<Spot>& points, Course course, const Border& border);
    void Path(std::vector<PathOp::Segment> segments, Color fill, const Border& border);
    void Circle(Spot center, double radius, Color fill, const Border& border);

    // Draws an image centred in the area, in its own proportions; nothing if `bytes` is null.
    void Picture(const std::shared_ptr<const std::string>& bytes, const Rect& area, const std::string& name);

    // Line feeds start new lines. Rotates by `degrees` clockwise about the spot.
    void Text(const std::string& text, const CharStyle& style, Spot spot, Anchor anchor, double degrees = 0);
    static Extents Measure(const std::string& text, const CharStyle& style);
    static double LineHeight(const CharStyle& style);

 private:
    void Line(const std::string& text, const CharStyle& style, Spot start, double degrees);

    Page& m_page;
};

// Appends the segments between points. `first` leads to the first point: Move, or LineTo within a path.
void AppendCurve(const std::vector<Spot>& points, Course course, PathOp::Segment::Kind first,
                 std::vector<PathOp::Segment>& segments);
// Appends a circular arc between two angles, in radians clockwise from the top.
void AppendArc(Spot center, double radius, double from, double to, PathOp::Segment::Kind first,
               std::vector<PathOp::Segment>& segments);
// Returns the point of a circle at an angle, in radians clockwise from the top.
Spot OnCircle(Spot center, double radius, double angle);
// Breaks the text at blanks into lines of at most `width` points.
std::string Wrapped(const std::string& text, const CharStyle& style, double width);
// Cuts the text to `width` points, with an ellipsis.
std::string Shortened(const std::string& text, const CharStyle& style, double width);
// Returns the bounding box of a rotated text.
Extents Turned(Extents size, double degrees);

}  // namespace rdl::layout
