// SPDX-License-Identifier: GPL-3.0-or-later
// Shapes as bytes: well-known binary (OGC 06-103r4, section 8) and the serialized form of geometry columns
// (MS-SSCLRT, section 2.1).
#include <algorithm>

#include "rdl/spatial/geometry.h"
#include "rdl/spatial/shape_bytes.h"

namespace rdl::spatial {
namespace {

enum Kind : std::uint32_t {
    Point = 1,
    LineString,
    Polygon,
    MultiPoint,
    MultiLineString,
    MultiPolygon,
    GeometryCollection
};

[[noreturn]] void FailKind(std::uint32_t kind) {
    throw Error("a shape of the kind " + std::to_string(kind) + " cannot be drawn");
}

class WellKnownReader {
 public:
    WellKnownReader(std::string_view bytes, Allowance& allowance) : m_bytes(bytes), m_allowance(allowance) {}

    Geometry Read() {
        Geometry geometry;
        Shape(geometry, 0);
        return geometry;
    }

 private:
    // Two coordinates, and those of height and measure.
    Position At() {
        const double x = m_bytes.Real(m_order), y = m_bytes.Real(m_order);
        m_bytes.Take(8 * (m_dimensions - 2));
        return CheckedPosition(x, y);
    }

    Positions List() {
        const std::size_t count = m_bytes.Count(8 * m_dimensions, m_order);
        m_allowance.TakePositions(count);
        Positions positions;
        positions.reserve(count);
        for (std::size_t i = 0; i < count; ++i) {
            positions.push_back(At());
        }
        return positions;
    }

    // An empty point has coordinates that are no numbers.
    void OnePoint(Geometry& geometry) {
        Bytes ahead = m_bytes;
        if (const double x = ahead.Real(m_order); x != x) {
            m_bytes.Take(8 * m_dimensions);
            return;
        }
        m_allowance.TakePositions(1);
        geometry.points.push_back(At());
    }

    void Shape(Geometry& geometry, int depth) {
        if (depth > DeepestCollection) {
            throw Error("its collections are nested too deeply");
        }
        const unsigned char order = m_bytes.Byte();
        if (order > 1) {
            throw Error("it is neither well-known text nor a binary shape");
        }
        m_order = order == 1 ? std::endian::little : std::endian::big;
        switch (const std::uint32_t kind = KindOf(m_bytes.Number(m_order))) {
            case Point:
                OnePoint(geometry);
                break;
            case LineString:
                AddLine(List(), geometry);
                break;
            case Polygon: {
                const std::size_t count = m_bytes.Count(4, m_order);
                for (std::size_t i = 0; i < count; ++i) {
                    AddRing(List(), i > 0, geometry);
                }
                break;
            }
            case MultiPoint:
            case MultiLineString:
            case MultiPolygon:
            case GeometryCollection: {
                const std::size_t count = m_bytes.Count(5, m_order);
                for (std::size_t i = 0; i < count; ++i) {
                    Shape(geometry, depth + 1);
                }
                break;
            }
            default:
                FailKind(kind);
        }
    }

    // Sets the dimensions: flags in the highest bits, or thousands. Skips a reference system.
    std::uint32_t KindOf(std::uint32_t code) {
        constexpr std::uint32_t Height = 0x80000000, Measure = 0x40000000, Reference = 0x20000000;
        const std::uint32_t plain = code & ~(Height | Measure | Reference);
        const std::uint32_t thousands = plain / 1000;
        m_dimensions = 2U + (code & Height ? 1U : 0U) + (code & Measure ? 1U : 0U);
        if (m_dimensions == 2) {
            m_dimensions += thousands == 3 ? 2 : thousands > 0 ? 1 : 0;
        }
        if (code & Reference) {
            m_bytes.Number(m_order);
        }
        return thousands > 3 ? plain : plain % 1000;
    }

    Bytes m_bytes;
    Allowance& m_allowance;
    std::endian m_order = std::endian::little;
    std::size_t m_dimensions = 2;
};

// All positions first, then figures that begin in them, then shapes that begin in the figures.
class SerializedReader {
 public:
    SerializedReader(std::string_view bytes, Allowance& allowance) : m_bytes(bytes), m_allowance(allowance) {}

    Geometry Read() {
        constexpr unsigned char HasHeight = 1, HasMeasure = 2, IsPoint = 8, IsLine = 16;
        const std::uint32_t reference = m_bytes.Number();
        m_version = m_bytes.Byte();
        const unsigned char properties = m_bytes.Byte();
        const std::size_t more = (properties & HasHeight ? 8U : 0U) + (properties & HasMeasure ? 8U : 0U);
        const std::size_t count = properties & IsPoint  ? 1
                                  : properties & IsLine ? 2
                                                        : m_bytes.Count(16 + more);
        m_allowance.TakePositions(count);
        for (std::size_t i = 0; i < count; ++i) {
            const double first = m_bytes.Real(), second = m_bytes.Real();
            m_positions.push_back(CheckedPosition(first, second));
        }
        m_bytes.Take(more * count);
        if (IsGeographic(reference)) {
            for (Position& position : m_positions) {
                std::swap(position.x, position.y);
            }
        }
        Geometry geometry;
        if (properties & IsPoint) {
            geometry.points = m_positions;
        } else if (properties & IsLine) {
            geometry.lines.push_back(m_positions);
        } else {
            Figures(geometry);
        }
        return geometry;
    }

 private:
    struct Figure {
        unsigned char attribute;
        std::size_t begin;
    };

    // Geographic columns have the latitude first. Their reference systems have these numbers; a first
    // coordinate that is no latitude shows a planar column with such a number.
    bool IsGeographic(std::uint32_t reference) const {
        return reference >= 4000 && reference < 5000 &&
               std::all_of(m_positions.begin(), m_positions.end(),
                           [](const Position& position) { return position.x >= -90 && position.x <= 90; });
    }

    void Figures(Geometry& geometry) {
        std::vector<Figure> figures(m_bytes.Count(5));
        for (Figure& figure : figures) {
            figure.attribute = m_bytes.Byte();
            figure.begin = m_bytes.Number();
        }
        struct Shape {
            std::uint32_t figure;
            unsigned char kind;
        };
        std::vector<Shape> shapes(m_bytes.Count(9));
        for (Shape& shape : shapes) {
            m_bytes.Number();  // the enclosing shape
            shape.figure = m_bytes.Number();
            shape.kind = m_bytes.Byte();
        }
        std::size_t shape = 0;
        for (std::size_t i = 0; i < figures.size(); ++i) {
            // Shapes without figures, the collections among them, begin where the next one does.
            while (shape + 1 < shapes.size() && (shapes[shape + 1].figure <= i)) {
                ++shape;
            }
            const std::size_t end = i + 1 < figures.size() ? figures[i + 1].begin : m_positions.size();
            if (figures[i].begin > end || end > m_positions.size()) {
                throw Error("a figure of the shape lies outside its points");
            }
            const auto at = m_positions.begin();
            const bool isFirst = shape < shapes.size() && shapes[shape].figure == i;
            AddFigure(
                {at + static_cast<std::ptrdiff_t>(figures[i].begin), at + static_cast<std::ptrdiff_t>(end)},
                shape < shapes.size() ? shapes[shape].kind : 0U, figures[i].attribute, isFirst, geometry);
        }
    }

    void AddFigure(Positions positions, std::uint32_t kind, unsigned char attribute, bool isFirst,
                   Geometry& geometry) const {
        if (m_version > 1 && attribute > 1) {
            throw Error("a shape with arcs cannot be drawn");
        }
        switch (kind) {
            case Point:
                geometry.points.insert(geometry.points.end(), positions.begin(), positions.end());
                break;
            case LineString:
                AddLine(std::move(positions), geometry);
                break;
            case Polygon:
                AddRing(std::move(positions), m_version > 1 ? !isFirst : attribute == 0, geometry);
                break;
            default:
                FailKind(kind);
        }
    }

    Bytes m_bytes;
    Allowance& m_allowance;
    unsigned char m_version = 1;
    Positions m_positions;
};

// Byte 4 is the version (1, 2) in the serialized form. In big-endian WKB a point or line has the same value
// there; the size decides.
bool IsSerialized(std::string_view bytes) {
    constexpr std::size_t Beginning = 6, WellKnownPoint = 21, WellKnownLine = 9;
    if (bytes.size() < Beginning || (bytes[4] != 1 && bytes[4] != 2)) {
        return false;
    }
    const bool isWellKnown =
        bytes[0] == 0 &&
        (bytes[4] == 1
             ? bytes.size() == WellKnownPoint
             : bytes.size() >= WellKnownLine && (bytes.size() - WellKnownLine) % 16 == 0 &&
                   Bytes(bytes.substr(5)).Number(std::endian::big) == (bytes.size() - WellKnownLine) / 16);
    return !isWellKnown;
}

}  // namespace

Geometry ReadBinary(std::string_view bytes, Allowance& allowance) {
    if (bytes.empty()) {
        return {};
    }
    return IsSerialized(bytes) ? SerializedReader(bytes, allowance).Read()
                               : WellKnownReader(bytes, allowance).Read();
}

}  // namespace rdl::spatial
