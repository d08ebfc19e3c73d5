// SPDX-License-Identifier: GPL-3.0-or-later
// Draws the shapes of a map.
#include <algorithm>
#include <cmath>
#include <numbers>

#include "rdl/layout/drawing/map/view.h"
#include "rdl/layout/model/colors.h"
#include "rdl/values/ascii.h"

namespace rdl::layout {
namespace {

using spatial::Position;
using spatial::Positions;

constexpr double LabelGap = 2;  // points between a place and its label

struct Frame {
    double left = 1e9, right = -1e9, top = 1e9, bottom = -1e9;
    void Add(Spot spot) {
        left = std::min(left, spot.x);
        right = std::max(right, spot.x);
        top = std::min(top, spot.y);
        bottom = std::max(bottom, spot.y);
    }
    bool Touches(const Rect& area) const {
        return left <= area.Right() && right >= area.x && top <= area.Bottom() && bottom >= area.y;
    }
};

// Omits spots that look the same as the one before.
std::vector<Spot> SpotsOf(const Positions& positions, const MapScreen& screen, Frame& frame) {
    constexpr double Visible = 0.05;  // points
    std::vector<Spot> spots;
    for (const Position& position : positions) {
        const Spot spot = screen.At(position);
        if (spots.empty() || std::abs(spot.x - spots.back().x) > Visible ||
            std::abs(spot.y - spots.back().y) > Visible) {
            spots.push_back(spot);
        }
        frame.Add(spot);
    }
    return spots;
}

void DrawPolygons(const MapShapeData& shape, const MapScreen& screen, Canvas& canvas) {
    std::vector<PathOp::Segment> segments;
    Frame frame;
    for (const Positions& ring : shape.geometry->rings) {
        const std::vector<Spot> spots = SpotsOf(ring, screen, frame);
        if (spots.size() > 2) {
            AppendCurve(spots, Course::Straight, PathOp::Segment::Move, segments);
            segments.push_back({PathOp::Segment::Close, {}, {}});
        }
    }
    if (frame.Touches(screen.Area())) {
        canvas.Path(std::move(segments), shape.fill, shape.border);
    }
}

void DrawLines(const MapShapeData& shape, const MapScreen& screen, Canvas& canvas) {
    for (const Positions& line : shape.geometry->lines) {
        Frame frame;
        const std::vector<Spot> spots = SpotsOf(line, screen, frame);
        if (frame.Touches(screen.Area())) {
            canvas.Curve(spots, Course::Straight, shape.border);
        }
    }
}

// The centre of gravity of the largest ring, and the frame of that ring.
bool CenterOf(const MapShapeData& shape, const MapScreen& screen, Spot& center, Frame& frame) {
    const Positions* largest = nullptr;
    double area = 0;
    for (const Positions& ring : shape.geometry->rings) {
        if (const double size = spatial::SignedArea(ring); size > area) {
            area = size;
            largest = &ring;
        }
    }
    if (!largest) {
        return false;
    }
    const Position& origin = largest->front();
    double x = 0, y = 0;
    for (std::size_t i = 0; i < largest->size(); ++i) {
        const Position &from = (*largest)[i], &to = (*largest)[(i + 1) % largest->size()];
        const double x1 = from.x - origin.x, y1 = from.y - origin.y, x2 = to.x - origin.x,
                     y2 = to.y - origin.y;
        const double cross = x1 * y2 - x2 * y1;
        x += (x1 + x2) * cross;
        y += (y1 + y2) * cross;
        frame.Add(screen.At(from));
    }
    center = screen.At({origin.x + x / (3 * area), origin.y + y / (3 * area)});
    return true;
}

bool Contains(const std::string& word, std::string_view part) {
    return LowerAscii(word).find(part) != std::string::npos;
}

void LabelPolygon(const MapShapeData& shape, const MapScreen& screen, Canvas& canvas) {
    Spot center;
    Frame frame;
    if (shape.label.empty() || shape.labelMode == MapLabelMode::Never ||
        !CenterOf(shape, screen, center, frame)) {
        return;
    }
    const Extents size = Canvas::Measure(shape.label, *shape.textStyle);
    const bool fits = size.width <= frame.right - frame.left && size.height <= frame.bottom - frame.top;
    if (fits || shape.labelMode == MapLabelMode::Always) {
        CharStyle textStyle = *shape.textStyle;
        if (!shape.ownLabelColor && IsDark(shape.fill)) {
            textStyle.color = 0xFFFFFFFF;
        }
        canvas.Text(shape.label, textStyle, center, {0.5, 0.5});
    }
}

// Draws the label in the middle of the longest line.
void LabelLine(const MapShapeData& shape, const MapScreen& screen, Canvas& canvas) {
    const Positions* longest = nullptr;
    for (const Positions& line : shape.geometry->lines) {
        if (!longest || line.size() > longest->size()) {
            longest = &line;
        }
    }
    if (shape.label.empty() || shape.labelMode == MapLabelMode::Never || !longest) {
        return;
    }
    const std::size_t middle = (longest->size() - 1) / 2;
    const Spot from = screen.At((*longest)[middle]), to = screen.At((*longest)[middle + 1]);
    const bool isBelow = Contains(shape.labelPlacement, "below"),
               isCentred = Contains(shape.labelPlacement, "center");
    const double away = static_cast<double>(shape.border.width) / 2 + LabelGap;
    canvas.Text(shape.label, *shape.textStyle,
                {(from.x + to.x) / 2, (from.y + to.y) / 2 + (isCentred ? 0
                                                             : isBelow ? away
                                                                       : -away)},
                {0.5, isCentred ? 0.5
                      : isBelow ? 0
                                : 1.0});
}

// Below its marker unless the report says otherwise.
void LabelPoint(const MapShapeData& shape, Spot spot, Canvas& canvas) {
    if (shape.label.empty()) {
        return;
    }
    const double away = shape.mark->size / 2 + LabelGap;
    const std::string& placement = shape.labelPlacement;
    Anchor anchor{0.5, 0};
    if (Contains(placement, "left")) {
        anchor = {1, 0.5};
        spot.x -= away;
    } else if (Contains(placement, "right")) {
        anchor = {0, 0.5};
        spot.x += away;
    } else if (Contains(placement, "top")) {
        anchor = {0.5, 1};
        spot.y -= away;
    } else if (Contains(placement, "center")) {
        anchor = {0.5, 0.5};
    } else {
        spot.y += away;
    }
    canvas.Text(shape.label, *shape.textStyle, spot, anchor);
}

void DrawPoints(const MapShapeData& shape, const MapScreen& screen, Canvas& canvas) {
    for (const Position& position : shape.geometry->points) {
        Frame frame;
        const Spot spot = screen.At(position);
        frame.Add(spot);
        if (frame.Touches(screen.Area())) {
            DrawMark(*shape.mark, spot, canvas);
            LabelPoint(shape, spot, canvas);
        }
    }
}

void DrawLayer(const MapLayerData& layer, const MapScreen& screen, Canvas& canvas) {
    const auto each = [&layer](const auto& draw) {
        for (const MapShapeData& shape : layer.shapes) {
            if (!shape.isHidden) {
                draw(shape);
            }
        }
    };
    switch (layer.kind) {
        case MapLayerKind::Polygon:
            each([&](const MapShapeData& shape) { DrawPolygons(shape, screen, canvas); });
            each([&](const MapShapeData& shape) {
                Spot center;
                Frame frame;
                if (shape.mark && CenterOf(shape, screen, center, frame)) {
                    DrawMark(*shape.mark, center, canvas);
                }
            });
            each([&](const MapShapeData& shape) { LabelPolygon(shape, screen, canvas); });
            break;
        case MapLayerKind::Line:
            each([&](const MapShapeData& shape) { DrawLines(shape, screen, canvas); });
            each([&](const MapShapeData& shape) { LabelLine(shape, screen, canvas); });
            break;
        case MapLayerKind::Point:
            each([&](const MapShapeData& shape) { DrawPoints(shape, screen, canvas); });
            break;
    }
}

// The corners of a marker in a square from -1 to 1, y downwards.
std::vector<Spot> CornersOf(const std::string& shape) {
    if (EqualNoCase(shape, "Rectangle")) {
        return {{-1, -1}, {1, -1}, {1, 1}, {-1, 1}};
    }
    if (EqualNoCase(shape, "Diamond")) {
        return {{0, -1}, {1, 0}, {0, 1}, {-1, 0}};
    }
    if (EqualNoCase(shape, "Triangle")) {
        return {{0, -1}, {1, 1}, {-1, 1}};
    }
    if (EqualNoCase(shape, "Trapezoid")) {
        return {{-0.5, -1}, {0.5, -1}, {1, 1}, {-1, 1}};
    }
    if (EqualNoCase(shape, "Wedge")) {
        return {{-0.6, -1}, {0.6, -1}, {0, 1}};
    }
    if (EqualNoCase(shape, "PushPin")) {  // its tip is at the place
        return {{0, 0}, {-0.7, -1.2}, {-0.5, -1.8}, {0, -2}, {0.5, -1.8}, {0.7, -1.2}};
    }
    const bool isStar = EqualNoCase(shape, "Star"), isPentagon = EqualNoCase(shape, "Pentagon");
    std::vector<Spot> corners;
    for (int i = 0; i < 10 && (isStar || (isPentagon && i < 5)); ++i) {
        const double angle = std::numbers::pi * (isStar ? i * 0.2 : i * 0.4);
        corners.push_back(OnCircle({0, 0}, isStar && i % 2 ? 0.4 : 1, angle));
    }
    return corners;
}

}  // namespace

void DrawMark(const MapMark& mark, Spot center, Canvas& canvas) {
    if (EqualNoCase(mark.shape, "None") || mark.size <= 0) {
        return;
    }
    std::vector<Spot> corners = CornersOf(mark.shape);
    if (corners.empty()) {
        canvas.Circle(center, mark.size / 2, mark.fill, mark.border);
        return;
    }
    for (Spot& corner : corners) {
        corner = {center.x + corner.x * mark.size / 2, center.y + corner.y * mark.size / 2};
    }
    canvas.Polygon(corners, mark.fill, mark.border);
}

void DrawLayers(const MapData& data, const MapScreen& screen, Canvas& canvas) {
    for (const MapLayerData& layer : data.layers) {
        if (!layer.isHidden) {
            DrawLayer(layer, screen, canvas);
        }
    }
}

}  // namespace rdl::layout
