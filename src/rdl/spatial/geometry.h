// SPDX-License-Identifier: GPL-3.0-or-later
// Shapes on a map: polygons, lines and points. Coordinates are as the source has them: longitude and latitude
// in degrees, or planar with y upwards.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "rdl/values/run_watch.h"
#include "rdl/values/value.h"

namespace rdl::spatial {

constexpr int DeepestCollection = 10;  // collections within each other that the readers follow

struct Position {
    double x = 0, y = 0;
};
using Positions = std::vector<Position>;

// A source may mix polygons, lines and points in one shape.
struct Geometry {
    std::vector<Positions> rings;  // of polygons, at least 3 positions each: outer ones counterclockwise,
                                   // holes clockwise
    std::vector<Positions> lines;  // at least 2 positions each
    Positions points;
};

// Shapes with the fields of their source.
struct Shapes {
    struct Shape {
        Geometry geometry;
        std::vector<Value> values;  // in the order of fieldNames; may be shorter
    };
    std::vector<std::string> fieldNames;
    std::vector<Shape> shapes;
};

// Bounds what the shapes of one map take.
class Allowance {
 public:
    static constexpr std::size_t MostPositions = 1'000'000, MostShapes = 100'000;

    // `watch` may be null; it must outlive the allowance.
    explicit Allowance(RunWatch* watch = nullptr) : m_watch(watch) {}
    // Raises rdl::Error past the limits, also those of the run.
    void TakePositions(std::size_t count);
    void TakeShape();

 private:
    RunWatch* m_watch;
    std::size_t m_positions = 0, m_shapes = 0;
};

// Raises rdl::Error for a coordinate that is not finite or beyond any map.
Position CheckedPosition(double x, double y);
// Adds a ring with the direction that its kind has. Omits one with less than 3 different positions.
void AddRing(Positions ring, bool isHole, Geometry& geometry);
// Omits a line of less than 2 positions.
void AddLine(Positions line, Geometry& geometry);
// Returns twice the area within a ring: positive for a counterclockwise one.
double SignedArea(const Positions& ring);

// Reads a shape as a text: well-known text (OGC 06-103r4, section 7), or the bytes that ReadBinary takes in
// hexadecimal digits or base64. An empty text is an empty shape. Raises rdl::Error that says what is wrong.
Geometry ReadText(std::string_view text, Allowance& allowance);
// Reads well-known binary (OGC 06-103r4, section 8, with the dimension codes of ISO and the flags that
// databases add), or the serialized form of a geometry column (MS-SSCLRT, section 2.1). Raises rdl::Error.
Geometry ReadBinary(std::string_view bytes, Allowance& allowance);

}  // namespace rdl::spatial
