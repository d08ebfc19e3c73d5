// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/spatial/geometry.h"

#include <algorithm>
#include <cmath>

#include "rdl/values/error.h"

namespace rdl::spatial {

void Allowance::TakePositions(std::size_t count) {
    if (count > MostPositions - m_positions) {
        throw Error("its shapes have more than " + std::to_string(MostPositions) + " points");
    }
    m_positions += count;
    if (m_watch) {
        m_watch->CheckBounds();
    }
}

void Allowance::TakeShape() {
    if (m_shapes == MostShapes) {
        throw Error("it has more than " + std::to_string(MostShapes) + " shapes");
    }
    ++m_shapes;
}

Position CheckedPosition(double x, double y) {
    constexpr double Farthest = 1e9;
    // NaN fails both comparisons.
    if (!(std::abs(x) <= Farthest) || !(std::abs(y) <= Farthest)) {
        throw Error("a coordinate is not a number or beyond every map");
    }
    return {x, y};
}

double SignedArea(const Positions& ring) {
    double area = 0;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const Position& from = ring[i];
        const Position& to = ring[(i + 1) % ring.size()];
        area += from.x * to.y - to.x * from.y;
    }
    return area;
}

void AddRing(Positions ring, bool isHole, Geometry& geometry) {
    const auto same = [](const Position& left, const Position& right) {
        return left.x == right.x && left.y == right.y;
    };
    ring.erase(std::unique(ring.begin(), ring.end(), same), ring.end());
    while (ring.size() > 1 && same(ring.front(), ring.back())) {
        ring.pop_back();
    }
    if (ring.size() < 3) {
        return;
    }
    if ((SignedArea(ring) < 0) != isHole) {
        std::reverse(ring.begin(), ring.end());
    }
    geometry.rings.push_back(std::move(ring));
}

void AddLine(Positions line, Geometry& geometry) {
    if (line.size() > 1) {
        geometry.lines.push_back(std::move(line));
    }
}

}  // namespace rdl::spatial
