// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>

#include "fuzz/targets.h"
#include "rdl/spatial/shapefile.h"
#include "rdl/values/error.h"

namespace fuzz {
namespace {

using rdl::spatial::Geometry;
using rdl::spatial::Positions;

void Require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

// Ends the process if a shape is not as its header says.
void CheckShape(const Geometry& geometry) {
    constexpr double Farthest = 1e9;
    const auto check = [](const Positions& positions) {
        for (const rdl::spatial::Position& position : positions) {
            Require(std::abs(position.x) <= Farthest && std::abs(position.y) <= Farthest);
        }
    };
    for (const Positions& ring : geometry.rings) {
        Require(ring.size() > 2);
        check(ring);
    }
    for (const Positions& line : geometry.lines) {
        Require(line.size() > 1);
        check(line);
    }
    check(geometry.points);
}

}  // namespace

void RunShape(std::string_view input) {
    const std::size_t end = std::min(input.find('\n'), input.size());
    const std::string_view kind = input.substr(0, end);
    std::string_view rest = input.substr(std::min(end + 1, input.size()));
    try {
        rdl::spatial::Allowance allowance;
        if (kind == "text") {
            CheckShape(rdl::spatial::ReadText(rest, allowance));
        } else if (kind == "bytes") {
            CheckShape(rdl::spatial::ReadBinary(rest, allowance));
        } else {
            std::size_t size = 0;
            std::from_chars(kind.data(), kind.data() + kind.size(), size);
            size = std::min(size, rest.size());
            const auto shapes =
                rdl::spatial::ReadShapefile(rest.substr(0, size), rest.substr(size), allowance);
            for (const auto& shape : shapes.shapes) {
                CheckShape(shape.geometry);
                Require(shape.values.size() <= shapes.fieldNames.size());
            }
        }
    } catch (const rdl::Error&) {
        return;
    }
}

}  // namespace fuzz
