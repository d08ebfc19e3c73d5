// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/spatial/shapefile.h"

#include <algorithm>
#include <charconv>

#include "rdl/spatial/shape_bytes.h"
#include "rdl/values/ascii.h"
#include "rdl/values/utf8.h"

namespace rdl::spatial {
namespace {

struct ShapeKind {
    enum : std::uint32_t { Null = 0, Point = 1, Line = 3, Polygon = 5, MultiPoint = 8 };
};

// Each kind is there again with heights, and with measures.
std::uint32_t KindOf(std::uint32_t code) {
    constexpr std::uint32_t WithHeight = 10, WithMeasure = 20, End = 30;
    return code >= WithMeasure && code < End  ? code - WithMeasure
           : code >= WithHeight && code < End ? code - WithHeight
                                              : code;
}

Positions Points(Bytes& bytes, std::size_t count, Allowance& allowance) {
    if (count > bytes.Left() / 16) {
        throw Error("a shape has room for less than the " + std::to_string(count) +
                    " points that it announces");
    }
    allowance.TakePositions(count);
    Positions positions;
    positions.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        const double x = bytes.Real(), y = bytes.Real();
        positions.push_back(CheckedPosition(x, y));
    }
    return positions;
}

// Lines and polygons: several parts, each from its first point to that of the next.
void Parts(Bytes& bytes, bool isPolygon, Allowance& allowance, Geometry& geometry) {
    bytes.Take(32);  // the bounding box
    const std::size_t parts = bytes.Number(), count = bytes.Number();
    if (parts > bytes.Left() / 4) {
        throw Error("a shape has room for less than the " + std::to_string(parts) +
                    " parts that it announces");
    }
    std::vector<std::size_t> begins(parts);
    for (std::size_t& begin : begins) {
        begin = bytes.Number();
    }
    const Positions positions = Points(bytes, count, allowance);
    for (std::size_t i = 0; i < parts; ++i) {
        const std::size_t end = i + 1 < parts ? begins[i + 1] : count;
        if (begins[i] > end || end > count) {
            throw Error("a part of a shape lies outside its points");
        }
        Positions part(positions.begin() + static_cast<std::ptrdiff_t>(begins[i]),
                       positions.begin() + static_cast<std::ptrdiff_t>(end));
        if (isPolygon) {
            const bool isHole = SignedArea(part) > 0;  // outer rings are clockwise in these files
            AddRing(std::move(part), isHole, geometry);
        } else {
            AddLine(std::move(part), geometry);
        }
    }
}

Geometry ShapeOf(std::string_view record, Allowance& allowance) {
    Geometry geometry;
    Bytes bytes(record);
    const std::uint32_t code = bytes.Number();
    switch (KindOf(code)) {
        case ShapeKind::Null:
            break;
        case ShapeKind::Point:
            geometry.points = Points(bytes, 1, allowance);
            break;
        case ShapeKind::MultiPoint: {
            bytes.Take(32);
            const std::size_t count = bytes.Number();
            geometry.points = Points(bytes, count, allowance);
            break;
        }
        case ShapeKind::Line:
            Parts(bytes, false, allowance, geometry);
            break;
        case ShapeKind::Polygon:
            Parts(bytes, true, allowance, geometry);
            break;
        default:
            throw Error("a shape of the kind " + std::to_string(code) + " cannot be drawn");
    }
    // A file of polygons all of which are wound the other way has no holes.
    bool hasOuter = false;
    for (const Positions& ring : geometry.rings) {
        hasOuter = hasOuter || SignedArea(ring) > 0;
    }
    for (Positions& ring : geometry.rings) {
        if (!hasOuter) {
            ring = Positions(ring.rbegin(), ring.rend());
        }
    }
    return geometry;
}

struct Column {
    char type;
    std::size_t size;
};

// Tables are in UTF-8 or in a code page of Western Europe.
std::string TextOf(std::string_view bytes) {
    std::string text;
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t begin = at;
        if (NextCharacter(bytes, at) != ReplacementCharacter) {
            text += bytes.substr(begin, at - begin);
        } else {
            AppendUtf8(static_cast<unsigned char>(bytes[begin]), text);
            at = begin + 1;
        }
    }
    return text;
}

Value ValueOf(std::string_view bytes, char type) {
    const std::string_view text = Trimmed(bytes.substr(0, bytes.find('\0')));
    if (text.empty()) {
        return {};
    }
    if (type == 'N' || type == 'F') {
        double number = 0;
        const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
        return failure == std::errc() && end == text.data() + text.size() ? Value::Real(number) : Value();
    }
    return Value::Text(TextOf(text));
}

void ReadTable(std::string_view table, Allowance& allowance, Shapes& shapes) {
    constexpr std::size_t HeaderSize = 32, MostColumns = 255;
    Bytes bytes(table);
    bytes.Take(4);
    const std::size_t rows = bytes.Number();
    const std::size_t sizes = bytes.Number();
    const std::size_t header = sizes & 0xFFFF, rowSize = sizes >> 16;
    bytes.Take(HeaderSize - 12);
    std::vector<Column> columns;
    std::size_t used = HeaderSize;
    for (; used + HeaderSize < header; used += HeaderSize) {
        Bytes column(bytes.Take(HeaderSize));
        const std::string_view name = column.Take(11);
        if (name.front() == '\r') {
            break;
        }
        const char type = static_cast<char>(column.Byte());
        column.Take(4);
        columns.push_back({type, column.Byte()});
        if (columns.back().size == 0 || columns.size() > MostColumns) {
            throw Error("its table has a column without room or more than " + std::to_string(MostColumns) +
                        " columns");
        }
        shapes.fieldNames.push_back(TextOf(Trimmed(name.substr(0, name.find('\0')))));
    }
    if (header > table.size()) {
        throw Error("its table ends before its rows");
    }
    Bytes data(table.substr(header));
    for (std::size_t row = 0; row < std::min(shapes.shapes.size(), rows) && data.Left() >= rowSize; ++row) {
        allowance.TakePositions(0);  // checks the limits of the run
        Bytes cells(data.Take(rowSize));
        cells.Take(1);  // a mark of deleted rows
        for (const Column& column : columns) {
            shapes.shapes[row].values.push_back(ValueOf(cells.Take(column.size), column.type));
        }
    }
}

}  // namespace

Shapes ReadShapefile(std::string_view file, std::string_view table, Allowance& allowance) {
    constexpr std::uint32_t Signature = 9994;
    constexpr std::size_t HeaderSize = 100, RecordHeader = 8;
    Bytes bytes(file);
    if (file.size() < HeaderSize || bytes.Number(std::endian::big) != Signature) {
        throw Error("it is not a shapefile");
    }
    bytes.Take(HeaderSize - 4);
    Shapes shapes;
    while (bytes.Left() >= RecordHeader) {
        bytes.Number(std::endian::big);
        const std::size_t size = std::size_t{bytes.Number(std::endian::big)} * 2;
        if (size > bytes.Left()) {
            throw Error("it ends within its shape " + std::to_string(shapes.shapes.size() + 1));
        }
        allowance.TakeShape();
        shapes.shapes.push_back({ShapeOf(bytes.Take(size), allowance), {}});
    }
    if (!table.empty()) {
        ReadTable(table, allowance, shapes);
    }
    return shapes;
}

}  // namespace rdl::spatial
