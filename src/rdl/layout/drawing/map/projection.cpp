// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/drawing/map/projection.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "rdl/values/ascii.h"
#include "rdl/values/named.h"

namespace rdl::layout {
namespace {

using spatial::Position;

constexpr double Pi = std::numbers::pi, Degree = Pi / 180;

struct Name {
    std::string_view name;
    Projection projection;
};

constexpr Name Names[] = {
    {"Equirectangular", Projection::Equirectangular},
    {"Mercator", Projection::Mercator},
    {"Robinson", Projection::Robinson},
    {"Fahey", Projection::Fahey},
    {"Eckert1", Projection::Eckert1},
    {"Eckert3", Projection::Eckert3},
    {"HammerAitoff", Projection::HammerAitoff},
    {"Wagner3", Projection::Wagner3},
    {"Bonne", Projection::Bonne},
};
static_assert(NamesDiffer(Names));

// The table that defines Robinson's projection: for each 5 degrees of latitude the length of the parallel and
// its distance from the equator.
Position Robinson(double longitude, double latitude) {
    constexpr double Lengths[] = {1,      0.9986, 0.9954, 0.99,   0.9822, 0.973,  0.96,
                                  0.9427, 0.9216, 0.8962, 0.8679, 0.835,  0.7986, 0.7597,
                                  0.7186, 0.6732, 0.6213, 0.5722, 0.5322};
    constexpr double Distances[] = {0,      0.062,  0.124,  0.186,  0.248,  0.31,   0.372,
                                    0.434,  0.4958, 0.5571, 0.6176, 0.6769, 0.7346, 0.7903,
                                    0.8435, 0.8936, 0.9394, 0.9761, 1};
    constexpr double Step = 5, Wide = 0.8487, High = 1.3523;
    const double place = std::min(std::abs(latitude) / Degree / Step, 18.0);
    const auto row = std::min(static_cast<std::size_t>(place), std::size_t{17});
    const double share = place - static_cast<double>(row);
    const double length = Lengths[row] + (Lengths[row + 1] - Lengths[row]) * share;
    const double distance = Distances[row] + (Distances[row + 1] - Distances[row]) * share;
    return {Wide * length * longitude, std::copysign(High * distance, latitude)};
}

Position Mercator(double longitude, double latitude) {
    constexpr double Last = 85.05112878 * Degree;  // where the world is a square
    return {longitude, std::asinh(std::tan(std::clamp(latitude, -Last, Last)))};
}

Position HammerAitoff(double longitude, double latitude) {
    const double root = std::sqrt(1 + std::cos(latitude) * std::cos(longitude / 2));
    return {2 * std::numbers::sqrt2 * std::cos(latitude) * std::sin(longitude / 2) / root,
            std::numbers::sqrt2 * std::sin(latitude) / root};
}

Position Bonne(double longitude, double latitude, double trueLatitude) {
    const double cotangent = 1 / std::tan(trueLatitude);
    const double radius = cotangent + trueLatitude - latitude;
    const double angle = std::abs(radius) > 1e-9 ? longitude * std::cos(latitude) / radius : 0;
    return {radius * std::sin(angle), cotangent - radius * std::cos(angle)};
}

// All in radians.
Position OnSphere(Projection projection, double longitude, double latitude, double trueLatitude) {
    switch (projection) {
        case Projection::Mercator:
            return Mercator(longitude, latitude);
        case Projection::Robinson:
            return Robinson(longitude, latitude);
        case Projection::Fahey: {
            const double tangent = std::tan(latitude / 2), c = std::cos(35 * Degree);
            return {longitude * c * std::sqrt(std::max(1 - tangent * tangent, 0.0)), (1 + c) * tangent};
        }
        case Projection::Eckert1: {
            const double factor = 2 * std::sqrt(2 / (3 * Pi));
            return {factor * longitude * (1 - std::abs(latitude) / Pi), factor * latitude};
        }
        case Projection::Eckert3: {
            const double factor = 2 / std::sqrt(Pi * (4 + Pi)), part = 2 * latitude / Pi;
            return {factor * longitude * (1 + std::sqrt(std::max(1 - part * part, 0.0))),
                    2 * factor * latitude};
        }
        case Projection::HammerAitoff:
            return HammerAitoff(longitude, latitude);
        case Projection::Wagner3:
            return {longitude * std::cos(latitude * 2 / 3), latitude};
        case Projection::Bonne:
            return Bonne(longitude, latitude, trueLatitude);
        case Projection::Planar:
        case Projection::Equirectangular:
            break;
    }
    return {longitude, latitude};
}

}  // namespace

Projection ProjectionNamed(std::string_view name) {
    for (const Name& row : Names) {
        if (EqualNoCase(row.name, name)) {
            return row.projection;
        }
    }
    return Projection::Equirectangular;
}

Position Project(Projection projection, Position place, Position center) {
    if (projection == Projection::Planar) {
        return place;
    }
    constexpr double UsualTrueLatitude = 45, Farthest = 89;
    const double latitude = std::clamp(place.y, -90.0, 90.0) * Degree;
    const bool hasTrueLatitude = std::abs(center.y) >= 1;
    const double trueLatitude =
        (hasTrueLatitude ? std::clamp(center.y, -Farthest, Farthest) : UsualTrueLatitude) * Degree;
    const double longitude = std::clamp(place.x - center.x, -360.0, 360.0) * Degree;
    const Position made = OnSphere(projection, longitude, latitude, trueLatitude);
    return {made.x / Degree, made.y / Degree};
}

double GroundDistance(Position from, Position to) {
    constexpr double Radius = 6371;  // kilometres
    const double up = std::sin((to.y - from.y) * Degree / 2), across = std::sin((to.x - from.x) * Degree / 2);
    const double part = up * up + std::cos(from.y * Degree) * std::cos(to.y * Degree) * across * across;
    return 2 * Radius * std::asin(std::sqrt(std::min(part, 1.0)));
}

}  // namespace rdl::layout
