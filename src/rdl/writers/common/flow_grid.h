// SPDX-License-Identifier: GPL-3.0-or-later
// Arranges free-standing items side by side as rows of one table: its lines
// are the items' edges, gaps are empty cells. Rectangles become borders and backgrounds of the cells inside
// them.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "rdl/layout/model/instance.h"
#include "rdl/writers/common/edges.h"
#include "rdl/writers/common/flow_row.h"

namespace rdl::writers {

// The edges of an item in points, clamped to what text documents can hold.
struct FlowExtent {
    double left, top, right, bottom;
    explicit FlowExtent(const layout::Instance& item, double x = 0, double y = 0);
};

// Whether a rectangle has a border or background of its own.
bool HasLook(const layout::Instance& item);
// Whether the item contains a data region: it then needs more than one row. Raises rdl::Error if nested too
// deeply.
bool HoldsTable(const layout::Instance& item, int depth = 0);
// Whether content of the item can grow.
bool MayGrow(const layout::Instance& item);

class FlowGrid {
 public:
    // `x` is the left edge of the items' container in points; rows reach from `left` to `right` at least,
    // which are the same where the items alone decide. `items` is not empty and outlives the grid. Raises
    // rdl::Error if there are too many items.
    FlowGrid(const std::vector<const layout::Instance*>& items, double x, double left, double right);
    std::size_t RowCount() const { return m_rows.TrackCount(); }
    const std::vector<double>& ColumnLines() const { return m_columns.lines(); }
    FlowRow Row(std::size_t index) const;
    // Returns the items with a bookmark or label that have no cell to keep it: it goes before the table.
    const std::vector<const layout::Instance*>& MarksBefore() const { return m_waiting; }

 private:
    struct Piece {  // an item with its own cells
        const layout::Instance* item;
        FlowExtent extent;
        std::size_t firstRow = 0, endRow = 0, firstColumn = 0, endColumn = 0;
        std::vector<const layout::Instance*> content, marks;
    };
    struct Stroke {  // a line or a rectangle
        const layout::Instance* item;
        FlowExtent extent;
    };
    enum Side { Left, Top, Right, Bottom, SideCount };
    struct Unit {  // the intersection of a row and a column
        int piece = -1;
        layout::Color background = layout::Transparent;
        const layout::Border* sides[SideCount] = {};
        bool LooksLike(const Unit& other) const;
    };

    void Gather(const layout::Instance& item, double x, double y);
    void Settle();
    void PlaceFrame(const Stroke& frame);
    void PlaceLine(const Stroke& line);
    void PlacePiece(std::size_t index);
    void Mark(Piece& piece, std::size_t index);
    Unit& At(std::size_t row, std::size_t column) { return m_units[row * m_columns.TrackCount() + column]; }
    const Unit& At(std::size_t row, std::size_t column) const {
        return m_units[row * m_columns.TrackCount() + column];
    }
    struct Span {
        std::size_t first, end;
    };
    static Span TracksOf(const Edges& edges, double from, double to);
    FlowCell PieceCell(const Piece& piece, std::size_t row) const;
    FlowCell EmptyCell(std::size_t row, std::size_t column) const;
    const layout::Border* Along(std::size_t row, Span columns, Side side) const;

    std::string m_name;  // name of the first item, for errors
    static constexpr double Tolerance = 0.5;
    Edges m_columns{Tolerance}, m_rows{Tolerance};
    std::vector<Piece> m_pieces;
    std::vector<Stroke> m_frames, m_lines;
    std::vector<const layout::Instance*> m_waiting;  // with a bookmark or label, until there is a piece
    std::vector<Unit> m_units;
    bool m_keepTogether = false;
};

}  // namespace rdl::writers
