// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/pages/backdrop.h"

#include <algorithm>
#include <cmath>

#include "rdl/layout/model/image_size.h"
#include "rdl/layout/pages/tolerance.h"
#include "rdl/values/error.h"

namespace rdl::layout {
namespace {

constexpr int MostSteps = 64;      // steps of a gradient; finer ones are not distinguishable
constexpr double MostTiles = 2e4;  // repetitions of a background image
constexpr Color White = 0xFFFFFFFF;

struct Point {
    double x, y;
};

Color Between(Color from, Color to, double share) {
    Color mixed = 0;
    for (int shift = 0; shift < 32; shift += 8) {
        const double first = from >> shift & 0xFF;
        const double second = to >> shift & 0xFF;
        mixed |= static_cast<Color>(std::lround(first + (second - first) * share)) << shift;
    }
    return mixed;
}

// Returns as many steps as the two colours are apart, but none is smaller than half a point.
int StepsOf(Color from, Color to, double length) {
    int apart = 1;
    for (int shift = 0; shift < 32; shift += 8) {
        const int difference = static_cast<int>(from >> shift & 0xFF) - static_cast<int>(to >> shift & 0xFF);
        apart = std::max(apart, std::abs(difference));
    }
    return std::clamp(std::min(apart, static_cast<int>(length * 2)), 1, MostSteps);
}

// The part of a polygon where x * along.x + y * along.y is at least `least`.
std::vector<Point> Beyond(const std::vector<Point>& polygon, Point along, double least) {
    std::vector<Point> part;
    const auto place = [&](const Point& point) { return point.x * along.x + point.y * along.y - least; };
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        const Point& from = polygon[i];
        const Point& to = polygon[(i + 1) % polygon.size()];
        const double a = place(from);
        const double b = place(to);
        if (a >= 0) {
            part.push_back(from);
        }
        if ((a < 0) != (b < 0)) {
            const double share = a / (a - b);
            part.push_back({from.x + (to.x - from.x) * share, from.y + (to.y - from.y) * share});
        }
    }
    return part;
}

PathOp Polygon(const std::vector<Point>& corners, Color color) {
    PathOp op{{}, color, Transparent, 0, LineStyle::None};
    for (const Point& corner : corners) {
        const auto kind = op.segments.empty() ? PathOp::Segment::Move : PathOp::Segment::LineTo;
        op.segments.push_back({kind, {corner.x, 0, 0}, {corner.y, 0, 0}});
    }
    op.segments.push_back({PathOp::Segment::Close, {}, {}});
    return op;
}

PathOp Ellipse(const Rect& area, Color color) {
    constexpr double Bulge = 0.5522847498;  // of a quarter of a circle, as a curve
    const double rx = area.width / 2;
    const double ry = area.height / 2;
    const double x = area.x + rx;
    const double y = area.y + ry;
    using Segment = PathOp::Segment;
    PathOp op{{}, color, Transparent, 0, LineStyle::None};
    op.segments.push_back({Segment::Move, {x + rx, 0, 0}, {y, 0, 0}});
    const Point turns[] = {{1, 0}, {0, 1}, {-1, 0}, {0, -1}, {1, 0}};
    for (int i = 0; i < 4; ++i) {
        const Point& from = turns[i];
        const Point& to = turns[i + 1];
        op.segments.push_back(
            {Segment::CurveTo,
             {x + (from.x + to.x * Bulge) * rx, x + (to.x + from.x * Bulge) * rx, x + to.x * rx},
             {y + (from.y + to.y * Bulge) * ry, y + (to.y + from.y * Bulge) * ry, y + to.y * ry}});
    }
    op.segments.push_back({Segment::Close, {}, {}});
    return op;
}

// Steps lie upon one another, so that no seam shows between them.
class GradientPainter {
 public:
    GradientPainter(const Rect& area, const BoxStyle& box, std::vector<Op>& ops)
        : m_area(area),
          m_from(IsVisible(box.background) ? box.background : White),
          m_to(box.gradientEnd),
          m_ops(ops) {}

    void Paint(Gradient kind) {
        switch (kind) {
            case Gradient::LeftRight:
                return Straight({1, 0});
            case Gradient::TopBottom:
                return Straight({0, 1});
            case Gradient::DiagonalLeft:
                return Straight({m_area.height, m_area.width});
            case Gradient::DiagonalRight:
                return Straight({-m_area.height, m_area.width});
            case Gradient::Center:
                return Outwards(true, true);
            case Gradient::HorizontalCenter:
                return Outwards(false, true);
            case Gradient::VerticalCenter:
                return Outwards(true, false);
            case Gradient::None:
                break;
        }
    }

 private:
    void Straight(Point along) {
        const std::vector<Point> corners{{m_area.x, m_area.y},
                                         {m_area.Right(), m_area.y},
                                         {m_area.Right(), m_area.Bottom()},
                                         {m_area.x, m_area.Bottom()}};
        double begin = corners[0].x * along.x + corners[0].y * along.y;
        double end = begin;
        for (const Point& corner : corners) {
            const double place = corner.x * along.x + corner.y * along.y;
            begin = std::min(begin, place);
            end = std::max(end, place);
        }
        const int steps = StepsOf(m_from, m_to, (end - begin) / std::hypot(along.x, along.y));
        const bool upright = along.x == 0 || along.y == 0;
        for (int i = 0; i < steps; ++i) {
            const Color color = ColorOf(i, steps);
            const double from = begin + (end - begin) * i / steps;
            if (!upright) {
                m_ops.emplace_back(Polygon(Beyond(corners, along, from), color));
            } else if (along.x != 0) {
                Area({from, m_area.y, m_area.Right() - from, m_area.height}, color);
            } else {
                Area({m_area.x, from, m_area.width, m_area.Bottom() - from}, color);
            }
        }
    }

    // From the middle to the edges, painted from the edges inwards.
    void Outwards(bool acrossX, bool acrossY) {
        const double half = std::max(acrossX ? m_area.width / 2 : 0, acrossY ? m_area.height / 2 : 0);
        const int steps = StepsOf(m_from, m_to, half);
        for (int i = 0; i < steps; ++i) {
            const double share = static_cast<double>(i) / steps / 2;
            const double x = acrossX ? m_area.width * share : 0;
            const double y = acrossY ? m_area.height * share : 0;
            const Rect part{m_area.x + x, m_area.y + y, m_area.width - 2 * x, m_area.height - 2 * y};
            const Color color = ColorOf(steps - 1 - i, steps);
            if (acrossX && acrossY && i > 0) {
                m_ops.emplace_back(Ellipse(part, color));
            } else {
                Area(part, color);
            }
        }
    }

    Color ColorOf(int step, int steps) const {
        return steps == 1 ? m_from : Between(m_from, m_to, static_cast<double>(step) / (steps - 1));
    }

    void Area(const Rect& area, Color color) {
        m_ops.emplace_back(RectOp{area.x, area.y, area.width, area.height, color});
    }

    const Rect m_area;
    const Color m_from, m_to;
    std::vector<Op>& m_ops;
};

void AppendPicture(const Rect& area, const BackgroundPicture& picture, std::vector<Op>& ops) {
    using Repeat = BackgroundPicture::Repeat;
    ImageSize size = SizeOfImage(*picture.bytes);
    if (size.width <= 0 || size.height <= 0 || picture.repeat == Repeat::Stretch) {
        ops.emplace_back(ImageOp{area.x, area.y, area.width, area.height, picture.bytes, picture.item});
        return;
    }
    const bool across = picture.repeat == Repeat::Both || picture.repeat == Repeat::Across;
    const bool down = picture.repeat == Repeat::Both || picture.repeat == Repeat::Down;
    // A picture of one dot in a direction looks the same drawn out, and is one instead of hundreds.
    constexpr double Dot = 0.76;
    size.width = across && size.width < Dot ? area.width : size.width;
    size.height = down && size.height < Dot ? area.height : size.height;
    const double columns = across ? std::ceil((area.width - Tolerance) / size.width) : 1;
    const double rows = down ? std::ceil((area.height - Tolerance) / size.height) : 1;
    if (columns * rows > MostTiles) {
        throw Error("The picture behind \"" + picture.item + "\" is too small to be repeated so often");
    }
    const bool once = picture.repeat == Repeat::None;
    const double left = area.x + (once ? (area.width - size.width) * static_cast<double>(picture.alignX) : 0);
    const double top =
        area.y + (once ? (area.height - size.height) * static_cast<double>(picture.alignY) : 0);
    ops.emplace_back(ClipOp{area.x, area.y, area.width, area.height});
    for (int row = 0; row < static_cast<int>(rows); ++row) {
        for (int column = 0; column < static_cast<int>(columns); ++column) {
            ops.emplace_back(ImageOp{left + column * size.width, top + row * size.height, size.width,
                                     size.height, picture.bytes, picture.item});
        }
    }
    ops.emplace_back(UnclipOp{});
}

}  // namespace

void AppendBackdrop(const Rect& area, const BoxStyle& box, std::vector<Op>& ops) {
    if (area.width <= Tolerance || area.height <= Tolerance) {
        return;
    }
    if (box.gradient != Gradient::None && IsVisible(box.gradientEnd)) {
        GradientPainter(area, box, ops).Paint(box.gradient);
    }
    if (box.picture) {
        AppendPicture(area, *box.picture, ops);
    }
}

}  // namespace rdl::layout
