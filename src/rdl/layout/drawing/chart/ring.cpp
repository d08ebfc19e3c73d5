// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/drawing/chart/ring.h"

#include <cmath>

namespace rdl::layout {
bool RingSlice::IsWhole() const {
    return to - from >= Turn;
}

Spot RingSlice::LabelSpot() const {
    const double place = inner > 0 ? (outer + inner) / 2 : outer * 0.65;
    return OnCircle(center, IsWhole() && inner == 0 ? 0 : place, Middle());
}

bool RingSlice::HasRoomFor(Extents size) const {
    const Spot spot = LabelSpot();
    for (const double x : {-0.5, 0.5}) {
        for (const double y : {-0.5, 0.5}) {
            const double dx = spot.x + x * size.width - center.x;
            const double dy = spot.y + y * size.height - center.y;
            const double radius = std::hypot(dx, dy);
            double turned = std::fmod(std::atan2(dx, -dy) - from, Turn);
            turned += turned < 0 ? Turn : 0;
            if (radius > outer || radius < inner || turned > to - from) {
                return false;
            }
        }
    }
    return true;
}

void RingSlice::Draw(Color fill, Border border, Canvas& canvas) const {
    std::vector<PathOp::Segment> segments;
    AppendArc(center, outer, from, to, PathOp::Segment::Move, segments);
    if (inner > 0) {
        AppendArc(center, inner, to, from, PathOp::Segment::LineTo, segments);
    } else if (!IsWhole()) {
        segments.push_back({PathOp::Segment::LineTo, {center.x, 0, 0}, {center.y, 0, 0}});
    }
    segments.push_back({PathOp::Segment::Close, {}, {}});
    canvas.Path(std::move(segments), fill, BorderOrSeam(border));
}

Border BorderOrSeam(const Border& border) {
    return border.style == LineStyle::None ? Border{LineStyle::Solid, 0xFFFFFFFF, 0.75F} : border;
}

}  // namespace rdl::layout
