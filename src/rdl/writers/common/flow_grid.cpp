// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/common/flow_grid.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "rdl/values/error.h"
#include "rdl/writers/common/content.h"
#include "rdl/writers/common/extent.h"

namespace rdl::writers {
namespace {

using layout::Border;
using layout::Instance;
using layout::InstanceKind;
using layout::LineStyle;

constexpr double Farthest = 1e6;            // points
constexpr std::size_t MostUnits = 500'000;  // of rows times columns
constexpr double LineSpacing = 1.2;         // of a font's size, about

double Bounded(double position) {
    return std::isfinite(position) ? std::clamp(position, -Farthest, Farthest) : 0;
}

// The height of the text if no line is broken. A box that can grow has room for a line even when it is empty.
double UnbrokenHeight(const Instance& item) {
    double height = 0;
    for (const layout::ParagraphInstance& paragraph : item.paragraphs) {
        double line = 0;
        for (const layout::RunInstance& run : paragraph.runs) {
            const bool shown = run.style && (item.canGrow || !run.text.empty());
            line = std::max(line, shown ? static_cast<double>(run.style->size) * LineSpacing : 0.0);
        }
        if (line > 0 && paragraph.lineHeight > 0) {
            line = static_cast<double>(paragraph.lineHeight);
        }
        height += line + static_cast<double>(paragraph.spaceBefore + paragraph.spaceAfter);
    }
    return height;
}

}  // namespace

FlowExtent::FlowExtent(const Instance& item, double x, double y)
    : left(Bounded(x + Left(item))),
      top(Bounded(y + Top(item))),
      right(Bounded(x + Right(item))),
      bottom(Bounded(y + Bottom(item))) {}

bool HasLook(const Instance& item) {
    if (!item.box) {
        return false;
    }
    const layout::BoxStyle& box = *item.box;
    const auto shown = [](const Border& border) { return border.style != LineStyle::None; };
    return layout::IsVisible(box.background) || shown(box.left) || shown(box.top) || shown(box.right) ||
           shown(box.bottom);
}

bool HoldsTable(const Instance& item, int depth) {
    if (depth > MaxNesting) {
        throw Error("Item \"" + item.name + "\" is nested too deeply");
    }
    return item.kind == InstanceKind::Table ||
           std::any_of(item.children.begin(), item.children.end(),
                       [depth](const Instance& child) { return HoldsTable(child, depth + 1); });
}

bool MayGrow(const Instance& item) {
    if (item.kind != InstanceKind::Text) {
        return item.kind != InstanceKind::Line;
    }
    const double needed = UnbrokenHeight(item);
    return needed > 0 && (item.canGrow || needed > std::fabs(item.height));
}

bool FlowGrid::Unit::LooksLike(const Unit& other) const {
    return piece == other.piece && background == other.background && !sides[Left] && !other.sides[Left] &&
           !sides[Right] && !other.sides[Right] && sides[Top] == other.sides[Top] &&
           sides[Bottom] == other.sides[Bottom];
}

FlowGrid::FlowGrid(const std::vector<const Instance*>& items, double x, double left, double right)
    : m_name(items.front()->name) {
    if (left < right) {
        m_columns.Add(left);
        m_columns.Add(right);
    }
    for (const Instance* item : items) {
        Gather(*item, x, 0);
    }
    if (!m_pieces.empty()) {
        Piece& last = m_pieces.back();
        last.marks.insert(last.marks.end(), m_waiting.begin(), m_waiting.end());
        m_waiting.clear();
    }
    Settle();
    for (const Stroke& frame : m_frames) {
        PlaceFrame(frame);
    }
    for (std::size_t i = 0; i < m_pieces.size(); ++i) {
        PlacePiece(i);
    }
    for (const Stroke& line : m_lines) {
        PlaceLine(line);
    }
}

// HoldsTable has seen how deep it goes.
void FlowGrid::Gather(const Instance& item, double x, double y) {
    const FlowExtent extent(item, x, y);
    const bool open = item.kind == InstanceKind::Container && !HoldsTable(item);
    if (!open || HasLook(item)) {
        m_columns.Add(extent.left);
        m_columns.Add(extent.right);
        m_rows.Add(extent.top);
        m_rows.Add(extent.bottom);
    }
    const bool line = item.kind == InstanceKind::Line;
    if ((open || line) && !(item.bookmark.empty() && item.documentMapLabel.empty())) {
        m_waiting.push_back(&item);
    }
    if (open) {
        m_keepTogether = m_keepTogether || item.keepTogether;
        if (HasLook(item)) {
            m_frames.push_back({&item, extent});
        }
        for (const Instance& child : item.children) {
            Gather(child, x + item.x, y + item.y);
        }
    } else if (line && (extent.right - extent.left <= Tolerance || extent.bottom - extent.top <= Tolerance)) {
        m_lines.push_back({&item, extent});
    } else {
        m_pieces.push_back({&item, extent, 0, 0, 0, 0, {}, std::exchange(m_waiting, {})});
    }
}

void FlowGrid::Settle() {
    for (Edges* edges : {&m_columns, &m_rows}) {
        edges->Settle();
        if (edges->TrackCount() == 0 && !edges->lines().empty()) {
            edges->Add(edges->lines().front() + 1);  // room for a line alone
            edges->Settle();
        }
    }
    if (m_rows.TrackCount() * m_columns.TrackCount() > MostUnits) {
        throw Error("Item \"" + m_name + "\" has too many others beside it for a text document");
    }
    m_units.resize(m_rows.TrackCount() * m_columns.TrackCount());
}

FlowGrid::Span FlowGrid::TracksOf(const Edges& edges, double from, double to) {
    const std::size_t first = std::min(edges.Line(from), edges.TrackCount() - 1);
    return {first, std::min(std::max(edges.Line(to), first + 1), edges.TrackCount())};
}

void FlowGrid::PlaceFrame(const Stroke& frame) {
    const layout::BoxStyle& box = *frame.item->box;
    const Span rows = TracksOf(m_rows, frame.extent.top, frame.extent.bottom);
    const Span columns = TracksOf(m_columns, frame.extent.left, frame.extent.right);
    const auto put = [](Unit& unit, Side side, const Border& border) {
        unit.sides[side] = border.style == LineStyle::None ? unit.sides[side] : &border;
    };
    for (std::size_t row = rows.first; row < rows.end; ++row) {
        for (std::size_t column = columns.first; column < columns.end; ++column) {
            Unit& unit = At(row, column);
            unit.background = layout::IsVisible(box.background) ? box.background : unit.background;
            if (row == rows.first) {
                put(unit, Top, box.top);
            }
            if (row + 1 == rows.end) {
                put(unit, Bottom, box.bottom);
            }
            if (column == columns.first) {
                put(unit, Left, box.left);
            }
            if (column + 1 == columns.end) {
                put(unit, Right, box.right);
            }
        }
    }
}

// A line is a border of the cells that it runs along: below it or right of it, where there are any.
void FlowGrid::PlaceLine(const Stroke& line) {
    if (!line.item->box) {
        return;
    }
    const Border* border = &line.item->box->top;
    const bool upright = line.extent.right - line.extent.left <= Tolerance;
    if (upright && line.extent.bottom - line.extent.top > Tolerance) {
        const std::size_t at = m_columns.Line(line.extent.left);
        const bool outside = at >= m_columns.TrackCount();
        const Span rows = TracksOf(m_rows, line.extent.top, line.extent.bottom);
        for (std::size_t row = rows.first; row < rows.end; ++row) {
            At(row, outside ? at - 1 : at).sides[outside ? Right : Left] = border;
        }
        return;
    }
    const std::size_t at = m_rows.Line(line.extent.top);
    const Span columns = TracksOf(m_columns, line.extent.left, line.extent.right);
    for (std::size_t column = columns.first; column < columns.end; ++column) {
        if (at > 0) {
            At(at - 1, column).sides[Bottom] = border;
        }
        if (at < m_rows.TrackCount()) {
            At(at, column).sides[Top] = border;
        }
    }
}

void FlowGrid::Mark(Piece& piece, std::size_t index) {
    for (std::size_t row = piece.firstRow; row < piece.endRow; ++row) {
        for (std::size_t column = piece.firstColumn; column < piece.endColumn; ++column) {
            At(row, column).piece = static_cast<int>(index);
        }
    }
}

// An item that overlaps another keeps the cells that are left, or shares the other's: nothing is lost.
void FlowGrid::PlacePiece(std::size_t index) {
    Piece& piece = m_pieces[index];
    const Span rows = TracksOf(m_rows, piece.extent.top, piece.extent.bottom);
    const Span columns = TracksOf(m_columns, piece.extent.left, piece.extent.right);
    const auto isFree = [&](std::size_t row, std::size_t first, std::size_t end) {
        for (std::size_t column = first; column < end; ++column) {
            if (At(row, column).piece >= 0) {
                return false;
            }
        }
        return true;
    };
    std::size_t row = rows.first, first = columns.first;
    for (; row < rows.end; ++row) {
        for (first = columns.first; first < columns.end && At(row, first).piece >= 0;) {
            ++first;
        }
        if (first < columns.end) {
            break;
        }
    }
    if (row == rows.end) {
        Piece& other = m_pieces[static_cast<std::size_t>(At(rows.first, columns.first).piece)];
        if (piece.item->kind != InstanceKind::Line) {
            other.content.push_back(piece.item);
        }
        other.marks.insert(other.marks.end(), piece.marks.begin(), piece.marks.end());
        return;
    }
    std::size_t end = first + 1;
    while (end < columns.end && At(row, end).piece < 0) {
        ++end;
    }
    piece.firstRow = row;
    piece.firstColumn = first;
    piece.endColumn = end;
    while (row < rows.end && isFree(row, first, end)) {
        ++row;
    }
    piece.endRow = row;
    if (piece.item->kind != InstanceKind::Line) {
        piece.content.push_back(piece.item);
    }
    Mark(piece, index);
}

// The border that lies along most of the cell's side.
const Border* FlowGrid::Along(std::size_t row, Span columns, Side side) const {
    const Border* found = nullptr;
    double covered = 0, width = 0;
    for (std::size_t column = columns.first; column < columns.end; ++column) {
        const Border* border = At(row, column).sides[side];
        width += m_columns.Track(column);
        covered += border ? m_columns.Track(column) : 0;
        found = border ? border : found;
    }
    return covered * 2 >= width ? found : nullptr;
}

FlowCell FlowGrid::PieceCell(const Piece& piece, std::size_t row) const {
    FlowCell cell;
    const Instance& item = *piece.item;
    cell.background = At(row, piece.firstColumn).background;
    if (item.kind == InstanceKind::Line) {
        cell.diagonal =
            (item.width < 0) != (item.height < 0) ? FlowCell::Diagonal::Up : FlowCell::Diagonal::Down;
        cell.diagonalBorder = item.box ? item.box->top : Border();
    } else if (item.box) {
        const layout::Color behind = cell.background;
        cell.Take(*item.box);
        cell.background = layout::IsVisible(cell.background) ? cell.background : behind;
    }
    const Span columns{piece.firstColumn, piece.endColumn};
    const bool top = row == piece.firstRow, bottom = row + 1 == piece.endRow;
    const auto fill = [](Border& own, const Border* other) {
        if (own.style == LineStyle::None && other) {
            own = *other;
        }
    };
    fill(cell.leftBorder, At(row, columns.first).sides[Left]);
    fill(cell.topBorder, top ? Along(row, columns, Top) : nullptr);
    fill(cell.rightBorder, At(row, columns.end - 1).sides[Right]);
    fill(cell.bottomBorder, bottom ? Along(row, columns, Bottom) : nullptr);
    if (!top || !bottom) {
        cell.merge = top ? FlowCell::Merge::First : FlowCell::Merge::Continued;
    }
    if (top) {
        cell.content = piece.content;
        cell.marks = piece.marks;
    }
    return cell;
}

FlowCell FlowGrid::EmptyCell(std::size_t row, std::size_t column) const {
    const Unit& unit = At(row, column);
    FlowCell cell;
    cell.background = unit.background;
    Border* const borders[] = {&cell.leftBorder, &cell.topBorder, &cell.rightBorder, &cell.bottomBorder};
    for (int side = Left; side < SideCount; ++side) {
        *borders[side] = unit.sides[side] ? *unit.sides[side] : Border();
    }
    return cell;
}

FlowRow FlowGrid::Row(std::size_t index) const {
    FlowRow row;
    row.item = m_name;
    row.height = m_rows.Track(index);
    row.exact = true;
    row.keepNext = m_keepTogether && index + 1 < RowCount();
    for (std::size_t column = 0; column < m_columns.TrackCount();) {
        const Unit& unit = At(index, column);
        std::size_t end = column + 1;
        if (unit.piece >= 0) {
            const Piece& piece = m_pieces[static_cast<std::size_t>(unit.piece)];
            end = piece.endColumn;
            row.cells.push_back(PieceCell(piece, index));
            const bool grows = std::any_of(piece.content.begin(), piece.content.end(),
                                           [](const Instance* item) { return MayGrow(*item); });
            row.exact = row.exact && (index + 1 != piece.endRow || !grows);
            row.keep = row.keep && !std::any_of(piece.content.begin(), piece.content.end(),
                                                [](const Instance* item) { return HoldsTable(*item); });
        } else {
            while (end < m_columns.TrackCount() && At(index, end).LooksLike(unit)) {
                ++end;
            }
            row.cells.push_back(EmptyCell(index, column));
        }
        row.cells.back().left = m_columns.lines()[column];
        row.cells.back().right = m_columns.lines()[end];
        row.cells.back().firstColumn = column;
        row.cells.back().endColumn = end;
        column = end;
    }
    return row;
}

}  // namespace rdl::writers
