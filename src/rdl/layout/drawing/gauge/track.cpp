// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/drawing/gauge/track.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace rdl::layout {
namespace {

constexpr double PieceOfCurve = std::numbers::pi / 18;  // radians: near enough for a curve through points

}  // namespace

Spot GaugeTrack::At(double share, double distance) const {
    const double along = reversed ? 1 - share : share;
    if (round) {
        return OnCircle(center, radius + distance, first + sweep * along);
    }
    return {from.x + (to.x - from.x) * along + outwards.x * distance,
            from.y + (to.y - from.y) * along + outwards.y * distance};
}

double GaugeTrack::Direction(double share) const {
    return round ? first + sweep * (reversed ? 1 - share : share) : std::atan2(outwards.x, -outwards.y);
}

double GaugeTrack::Length() const {
    return round ? radius * std::abs(sweep) : std::hypot(to.x - from.x, to.y - from.y);
}

std::vector<PathOp::Segment> GaugeTrack::Band(double begin, double end, double beginInner, double beginOuter,
                                              double endInner, double endOuter) const {
    const double turned = round ? std::abs(end - begin) * std::abs(sweep) : 0;
    const int pieces = std::max(1, static_cast<int>(std::ceil(turned / PieceOfCurve)));
    std::vector<Spot> outer, inner;
    for (int i = 0; i <= pieces; ++i) {
        const double part = static_cast<double>(i) / pieces;
        const double share = begin + (end - begin) * part;
        outer.push_back(At(share, beginOuter + (endOuter - beginOuter) * part));
        inner.push_back(At(share, beginInner + (endInner - beginInner) * part));
    }
    std::reverse(inner.begin(), inner.end());
    const Course course = round ? Course::Smooth : Course::Straight;
    std::vector<PathOp::Segment> segments;
    AppendCurve(outer, course, PathOp::Segment::Move, segments);
    AppendCurve(inner, course, PathOp::Segment::LineTo, segments);
    segments.push_back({PathOp::Segment::Close, {}, {}});
    return segments;
}

GaugePlace PlaceBeside(const GaugeTrack& track, GaugePlacement placement, double distance, double thick) {
    const double half = track.width / 2;
    switch (placement) {
        case GaugePlacement::Inside:
            return {-half - distance - thick, -half - distance};
        case GaugePlacement::Outside:
            return {half + distance, half + distance + thick};
        case GaugePlacement::Cross:
            break;
    }
    return {-thick / 2 - distance, thick / 2 - distance};
}

}  // namespace rdl::layout
