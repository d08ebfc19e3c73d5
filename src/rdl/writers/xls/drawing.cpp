// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/xls/drawing.h"

#include <algorithm>
#include <cmath>

namespace rdl::writers {
namespace {

constexpr std::uint16_t MsoDrawingGroup = 0x00EB, MsoDrawing = 0x00EC, Obj = 0x005D;
constexpr std::uint16_t DggContainer = 0xF000, BStoreContainer = 0xF001, DgContainer = 0xF002,
                        SpgrContainer = 0xF003, SpContainer = 0xF004, Dgg = 0xF006, Bse = 0xF007, Dg = 0xF008,
                        Spgr = 0xF009, Sp = 0xF00A, Opt = 0xF00B, ClientAnchor = 0xF010, ClientData = 0xF011,
                        BlipJpeg = 0xF01D, BlipPng = 0xF01E, BlipDib = 0xF01F, SplitMenuColors = 0xF11E;
constexpr std::uint32_t ShapesInCluster = 1024;
constexpr std::size_t BitmapFileHeader = 14;  // which the workbook leaves out

// A piece of drawing data: version and instance, type, length, then what it holds.
std::string Piece(unsigned version, unsigned instance, std::uint16_t type, std::string_view data) {
    XlsRecords piece;
    piece.U16(version | instance << 4);
    piece.U16(type);
    piece.U32(static_cast<std::uint32_t>(data.size()));
    piece.Bytes(data);
    return std::move(piece.bytes());
}

// Images are identified by a digest of 16 bytes.
std::string Fingerprint(std::string_view bytes) {
    XlsRecords print;
    for (const std::uint64_t seed : {14695981039346656037ull, 7809847782465536322ull}) {
        std::uint64_t hash = seed;
        for (const char c : bytes) {
            hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211ull;
        }
        print.U32(static_cast<std::uint32_t>(hash));
        print.U32(static_cast<std::uint32_t>(hash >> 32));
    }
    return std::move(print.bytes());
}

struct Place {
    unsigned index, part;  // column or row, and how far into it
};

// The column `points` right of the left edge of `from`; parts are 1/1024 of it.
Place RightOf(const XlsSheet& sheet, unsigned from, double points) {
    const std::vector<double>& widths = sheet.columnWidths();
    constexpr double DefaultWidth = 48;
    for (unsigned column = from;; ++column) {
        const double width = column < widths.size() ? widths[column] : DefaultWidth;
        if (points < width || column + 1 == XlsMostColumns) {
            return {column,
                    static_cast<unsigned>(std::clamp(points / std::max(width, 0.1), 0.0, 1.0) * 1023)};
        }
        points -= width;
    }
}

// The same downwards; parts are 1/256 of the row.
Place Below(const XlsSheet& sheet, unsigned from, double points) {
    for (unsigned row = from;; ++row) {
        const double height = sheet.RowHeight(row);
        if (points < height || row + 1 == XlsMostRows) {
            return {row, static_cast<unsigned>(std::clamp(points / std::max(height, 0.1), 0.0, 1.0) * 255)};
        }
        points -= height;
    }
}

std::string Anchor(const XlsSheet& sheet, const XlsPicture& picture) {
    const Place right = RightOf(sheet, picture.column, picture.width);
    const Place bottom = Below(sheet, picture.row, picture.height);
    XlsRecords anchor;
    anchor.U16(2);  // moves with the cells and keeps its size
    anchor.U16(picture.column);
    anchor.U16(0);
    anchor.U16(picture.row);
    anchor.U16(0);
    anchor.U16(right.index);
    anchor.U16(right.part);
    anchor.U16(bottom.index);
    anchor.U16(bottom.part);
    return Piece(0, 0, ClientAnchor, anchor.bytes());
}

std::uint32_t Fraction(double part) {
    return static_cast<std::uint32_t>(std::lround(std::clamp(part, 0.0, 1.0) * 65536));
}

std::string Shape(const XlsSheet& sheet, const XlsPicture& picture, std::uint32_t id) {
    XlsRecords shape, properties;
    shape.U32(id);
    shape.U32(0xA00);        // has an anchor and a type
    properties.U16(0x0101);  // cut away below and on the right, in parts of 65,536
    properties.U32(Fraction(picture.cutBottom));
    properties.U16(0x0103);
    properties.U32(Fraction(picture.cutRight));
    properties.U16(0x4104);  // the picture by its number
    properties.U32(static_cast<std::uint32_t>(picture.image + 1));
    return Piece(15, 0, SpContainer,
                 Piece(2, 75, Sp, shape.bytes()) + Piece(3, 3, Opt, properties.bytes()) +
                     Anchor(sheet, picture) + Piece(0, 0, ClientData, {}));
}

void AppendObject(unsigned number, XlsRecords& records) {
    records.Begin(Obj);
    records.U16(0x0015);  // common data
    records.U16(18);
    records.U16(8);  // a picture
    records.U16(number);
    records.U16(0x6011);
    records.U32(0);
    records.U32(0);
    records.U32(0);
    records.U16(0x0007);  // format of its data: none
    records.U16(2);
    records.U16(0xFFFF);
    records.U16(0x0008);  // flags
    records.U16(2);
    records.U16(0x0001);
    records.U32(0);  // the end
    records.End();
}

}  // namespace

void XlsDrawingGroup::AddImage(std::string_view bytes, image::Type image, unsigned uses) {
    struct Form {
        unsigned type, instance;
        std::uint16_t blip;
    };
    const Form form = image == image::Type::Png    ? Form{6, 0x6E0, BlipPng}
                      : image == image::Type::Jpeg ? Form{5, 0x46A, BlipJpeg}
                                                   : Form{7, 0x7A8, BlipDib};
    if (image == image::Type::Bmp) {
        bytes.remove_prefix(std::min(bytes.size(), BitmapFileHeader));
    }
    const std::string print = Fingerprint(bytes);
    const std::string blip = Piece(0, form.instance, form.blip, print + '\xFF' + std::string(bytes));
    const unsigned type = form.type;
    XlsRecords entry;
    entry.U8(type);
    entry.U8(type);
    entry.Bytes(print);
    entry.U16(0xFF);
    entry.U32(static_cast<std::uint32_t>(blip.size()));
    entry.U32(uses);
    entry.U32(0);
    entry.U32(0);
    entry.Bytes(blip);
    m_store += Piece(2, type, Bse, entry.bytes());
    ++m_imageCount;
}

std::string XlsDrawingGroup::Records() const {
    XlsRecords clusters;
    std::uint32_t highest = 0, shapes = 0, drawings = 0, clusterCount = 0;
    for (std::size_t i = 0; i < m_sheets.size(); ++i) {
        if (m_sheets[i] == 0) {
            continue;
        }
        const std::uint32_t used = m_sheets[i] + 1;  // with the group that they are in
        shapes += used;
        ++drawings;
        clusters.U32(static_cast<std::uint32_t>(i + 1));
        clusters.U32(used);
        ++clusterCount;
        highest = static_cast<std::uint32_t>(i + 1) * ShapesInCluster + used;
    }
    XlsRecords head;
    head.U32(highest);
    head.U32(clusterCount + 1);
    head.U32(shapes);
    head.U32(drawings);
    head.Bytes(clusters.bytes());
    XlsRecords colors;
    for (const std::uint32_t color : {0x0800000Du, 0x0800000Cu, 0x08000017u, 0x100000F7u}) {
        colors.U32(color);
    }
    const std::string data =
        Piece(15, 0, DggContainer,
              Piece(0, 0, Dgg, head.bytes()) + Piece(15, m_imageCount, BStoreContainer, m_store) +
                  Piece(0, 4, SplitMenuColors, colors.bytes()));
    XlsRecords records;
    for (std::size_t i = 0; i < data.size(); i += XlsRecordLimit) {
        records.Begin(i == 0 ? MsoDrawingGroup : XlsContinue);
        records.Bytes(std::string_view(data).substr(i, XlsRecordLimit));
        records.End();
    }
    return std::move(records.bytes());
}

std::string XlsPictures(const XlsSheet& sheet, std::uint32_t drawing) {
    const std::vector<XlsPicture>& pictures = sheet.pictures();
    if (pictures.empty()) {
        return {};
    }
    const std::uint32_t firstId = drawing * ShapesInCluster;
    std::vector<std::string> shapes;
    std::size_t shapesSize = 0;
    for (std::size_t i = 0; i < pictures.size(); ++i) {
        shapes.push_back(Shape(sheet, pictures[i], firstId + 1 + static_cast<std::uint32_t>(i)));
        shapesSize += shapes.back().size();
    }
    XlsRecords group, groupShape, counts;
    for (int i = 0; i < 4; ++i) {
        group.U32(0);
    }
    groupShape.U32(firstId);
    groupShape.U32(5);  // the group of all
    counts.U32(static_cast<std::uint32_t>(pictures.size() + 1));
    counts.U32(firstId + static_cast<std::uint32_t>(pictures.size()));
    const std::string groupData =
        Piece(15, 0, SpContainer, Piece(1, 0, Spgr, group.bytes()) + Piece(2, 0, Sp, groupShape.bytes()));
    const std::string countData = Piece(0, drawing, Dg, counts.bytes());
    // The heads of the two containers, whose content is spread over records, one for each object.
    std::string head =
        Piece(15, 0, DgContainer, {}) + countData + Piece(15, 0, SpgrContainer, {}) + groupData;
    const auto patch = [&head](std::size_t at, std::size_t length) {
        for (std::size_t k = 0; k < 4; ++k) {
            head[at + 4 + k] = static_cast<char>(length >> (8 * k) & 0xFF);
        }
    };
    patch(0, head.size() - 8 + shapesSize);
    patch(8 + countData.size(), groupData.size() + shapesSize);
    XlsRecords records;
    for (std::size_t i = 0; i < shapes.size(); ++i) {
        records.Begin(MsoDrawing);
        records.Bytes(i == 0 ? head + shapes[i] : shapes[i]);
        records.End();
        AppendObject(static_cast<unsigned>(i + 1), records);
    }
    return std::move(records.bytes());
}

}  // namespace rdl::writers
