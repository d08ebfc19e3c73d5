// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/canvas/snapping.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace designer {
namespace {

// One axis of an area, with sizes of either sign made positive.
struct Span {
    double begin, end;
    double Middle() const { return (begin + end) / 2; }
};

Span Across(const Rect& area) {
    return {std::min(area.left, area.Right()), std::max(area.left, area.Right())};
}

Span Down(const Rect& area) {
    return {std::min(area.top, area.Bottom()), std::max(area.top, area.Bottom())};
}

struct Catch {
    double shift;  // from where the pointer is to where the edge stops
    double at;
};

// The nearest catch of an edge at `at`, of those that are within reach.
void Consider(std::optional<Catch>& best, double at, double target, double reach) {
    const double shift = target - at;
    if (std::abs(shift) <= reach && (!best || std::abs(shift) < std::abs(best->shift))) {
        best = Catch{shift, target};
    }
}

struct AxisRequest {
    Span area;  // before the move
    double delta;
    bool beginMoves, endMoves;
};

std::optional<Catch> CatchAtOthers(const AxisRequest& request, const std::vector<Span>& others,
                                   double reach) {
    std::optional<Catch> best;
    for (const Span& other : others) {
        for (const double target : {other.begin, other.end, other.Middle()}) {
            if (request.beginMoves) {
                Consider(best, request.area.begin + request.delta, target, reach);
            }
            if (request.endMoves) {
                Consider(best, request.area.end + request.delta, target, reach);
            }
            if (request.beginMoves && request.endMoves) {
                Consider(best, request.area.Middle() + request.delta, target, reach);
            }
        }
    }
    return best;
}

double AtGrid(const AxisRequest& request, double grid) {
    const double edge = request.beginMoves ? request.area.begin : request.area.end;
    return grid > 0 ? std::round((edge + request.delta) / grid) * grid - edge : request.delta;
}

struct AxisResult {
    double delta;
    std::optional<double> line;
};

AxisResult SnapAxis(const AxisRequest& request, const std::vector<Span>& others, const SnapRules& rules) {
    if (!request.beginMoves && !request.endMoves) {
        return {0, std::nullopt};
    }
    if (rules.reach > 0) {
        if (const auto caught = CatchAtOthers(request, others, rules.reach)) {
            return {request.delta + caught->shift, caught->at};
        }
    }
    return {AtGrid(request, rules.grid), std::nullopt};
}

// The line reaches from the area to every item whose edge or centre it touches.
SnapLine LineAt(double at, bool isUpright, const Span& area, const std::vector<Span>& along,
                const std::vector<Span>& across) {
    SnapLine line{isUpright, at, area.begin, area.end};
    for (std::size_t index = 0; index < along.size(); ++index) {
        const Span& other = along[index];
        const auto touches = [at](double edge) { return std::abs(edge - at) < 0.01; };
        if (touches(other.begin) || touches(other.end) || touches(other.Middle())) {
            line.begin = std::min(line.begin, across[index].begin);
            line.end = std::max(line.end, across[index].end);
        }
    }
    return line;
}

}  // namespace

Snapped Snap(const Rect& area, double dx, double dy, const MovingEdges& edges,
             const std::vector<Rect>& others, const SnapRules& rules) {
    std::vector<Span> across, down;
    for (const Rect& other : others) {
        across.push_back(Across(other));
        down.push_back(Down(other));
    }
    const Span x = Across(area), y = Down(area);
    const AxisResult moveX = SnapAxis({x, dx, edges.left, edges.right}, across, rules);
    const AxisResult moveY = SnapAxis({y, dy, edges.top, edges.bottom}, down, rules);
    Snapped result{moveX.delta, moveY.delta, {}};
    if (moveX.line) {
        const Span now{y.begin + moveY.delta, y.end + moveY.delta};
        result.lines.push_back(LineAt(*moveX.line, true, now, across, down));
    }
    if (moveY.line) {
        const Span now{x.begin + moveX.delta, x.end + moveX.delta};
        result.lines.push_back(LineAt(*moveY.line, false, now, down, across));
    }
    return result;
}

}  // namespace designer
