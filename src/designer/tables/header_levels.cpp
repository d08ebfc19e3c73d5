// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/tables/header_levels.h"

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "designer/document/editing.h"
#include "designer/document/item_size.h"
#include "designer/tables/cell_text.h"
#include "designer/tables/tracks.h"

namespace designer {
namespace {

constexpr std::size_t MostMembers = 500;  // each of them is an edit of its own

class LevelInserter {
 public:
    LevelInserter(Document& document, ElementId region, Axis axis, double points, ElementId except)
        : m_document(document),
          m_shape(document, region),
          m_axis(axis),
          m_points(points),
          m_names(document),
          m_except(m_shape.IndexOf(axis, except)) {}

    void Insert(std::size_t level) {
        for (const int member : m_shape.ChildrenOf(m_axis, NoIndex)) {
            Visit(member, level);
        }
    }

 private:
    const TablixMemberNode& Node(int member) const {
        return m_shape.Members(m_axis)[static_cast<std::size_t>(member)];
    }

    bool IsAroundExcept(int member) const {
        const std::vector<int> path = m_shape.PathTo(m_axis, m_except);
        return std::find(path.begin(), path.end(), member) != path.end();
    }

    std::string Header() {
        return HeaderXml(m_document, m_points, BoxXml(m_document, m_names.Take("Textbox1"), {}, {}));
    }

    // `level` headers come before the new one. The depth of elements is bounded, and so is this recursion.
    void Visit(int member, std::size_t level) {
        if (member == m_except) {
            return;
        }
        const TablixMemberNode& node = Node(member);
        const bool hasHeader = node.header != NoElement;
        if (level == 0 && hasHeader) {
            Wrap(node.id);
            return;
        }
        if (level == 0 && !IsAroundExcept(member)) {
            InsertXml(m_document, node.id, Header());
            return;
        }
        const std::size_t rest = level - (hasHeader ? 1 : 0);
        if (node.isLeaf) {
            InsertXml(m_document, node.id,
                      "<TablixMembers><TablixMember>" + Header() + "</TablixMember></TablixMembers>");
            return;
        }
        for (const int child : m_shape.ChildrenOf(m_axis, member)) {
            Visit(child, rest);
        }
    }

    // Puts a static member with the header around the member. A row that stays with a group still does.
    void Wrap(ElementId member) {
        std::string kept;
        for (const char* name : {"KeepWithGroup", "RepeatOnNewPage"}) {
            if (const ElementId element = m_document.Find(member, name); element != NoElement) {
                kept += XmlOf(m_document, element);
            }
        }
        const ElementId around =
            InsertXml(m_document, m_document.Parent(member),
                      "<TablixMember>" + Header() + "<TablixMembers/>" + kept + "</TablixMember>", member);
        Move(m_document, member, m_document.Find(around, "TablixMembers"));
    }

    Document& m_document;
    const TablixShape m_shape;  // as it was before
    const Axis m_axis;
    const double m_points;
    NewNames m_names;
    const int m_except;
};

std::string CornerCell(const Document& document, NewNames& names) {
    return "<TablixCornerCell><CellContents>" + BoxXml(document, names.Take("Textbox1"), {}, {}) +
           "</CellContents></TablixCornerCell>";
}

// Makes a cell that spans the place, of those before it, one larger. Returns whether there is one.
bool Widen(Document& document, const std::vector<ElementId>& cells, std::size_t level, Axis axis) {
    for (std::size_t index = 0; index < level && index < cells.size(); ++index) {
        const std::size_t span = SpanOf(document, cells[index], axis);
        if (index + span > level) {
            SetText(document, cells[index],
                    axis == Axis::Columns ? "CellContents/ColSpan" : "CellContents/RowSpan",
                    std::to_string(span + 1));
            return true;
        }
    }
    return false;
}

// Row headers are columns of the corner, and column headers its rows.
void GrowCorner(Document& document, ElementId region, Axis headers, std::size_t level) {
    const std::vector<ElementId> rows =
        ChildrenNamed(document, region, "TablixCorner/TablixCornerRows", "TablixCornerRow");
    if (rows.empty()) {
        return;
    }
    NewNames names(document);
    const auto cellsOf = [&](ElementId row) { return ChildrenNamed(document, row, {}, "TablixCornerCell"); };
    const std::string empty = "<TablixCornerCell />";
    if (headers == Axis::Rows) {
        for (const ElementId row : rows) {
            const std::vector<ElementId> cells = cellsOf(row);
            const bool isSpanned = Widen(document, cells, level, Axis::Columns);
            InsertXml(document, row, isSpanned ? empty : CornerCell(document, names),
                      level < cells.size() ? cells[level] : NoElement);
        }
        return;
    }
    std::string row;
    for (std::size_t column = 0; column < cellsOf(rows.front()).size(); ++column) {
        std::vector<ElementId> cells;
        for (const ElementId one : rows) {
            const std::vector<ElementId> own = cellsOf(one);
            cells.push_back(column < own.size() ? own[column] : one);
        }
        row += Widen(document, cells, level, Axis::Rows) ? empty : CornerCell(document, names);
    }
    InsertXml(document, document.Parent(rows.front()), "<TablixCornerRow>" + row + "</TablixCornerRow>",
              level < rows.size() ? rows[level] : NoElement);
}

}  // namespace

void InsertHeaderLevel(Document& document, ElementId region, Axis axis, std::size_t level, double points,
                       ElementId except) {
    if (TablixShape(document, region).Members(axis).size() > MostMembers) {
        throw EditError("The table has too many rows or columns for another level of headers");
    }
    LevelInserter(document, region, axis, points, except).Insert(level);
    GrowCorner(document, region, axis, level);
}

namespace {

constexpr double SameEdge = 0.01;  // points between edges that are one

struct Extent {
    double begin = 0, end = 0;
};

bool IsHeaderOf(const GridCell& cell, Axis axis) {
    return cell.part == (axis == Axis::Columns ? GridCell::Part::RowHeader : GridCell::Part::ColumnHeader);
}

Extent ExtentOf(const GridCell& cell, Axis axis) {
    return axis == Axis::Columns ? Extent{cell.place.left, cell.place.Right()}
                                 : Extent{cell.place.top, cell.place.Bottom()};
}

// Returns the element that has the size of the header; NoElement for a total of a Matrix, which has none.
ElementId SizedElement(const Document& document, const GridCell& cell, Axis axis) {
    const std::string name = document.Name(cell.element);
    if (name == "TablixHeader" || name == "Subtotal") {
        return name == "Subtotal" ? NoElement : cell.element;
    }
    const std::string grouping = axis == Axis::Columns ? "RowGrouping" : "ColumnGrouping";
    ElementId around = cell.element;
    while (around != NoElement && document.Name(around) != grouping) {
        around = document.Parent(around);
    }
    return around;
}

}  // namespace

std::vector<GridTrack> HeaderTracksOf(const TablixGrid& grid, Axis axis) {
    std::vector<double> edges;
    for (const GridCell& cell : grid.cells) {
        if (IsHeaderOf(cell, axis)) {
            const Extent extent = ExtentOf(cell, axis);
            edges.push_back(extent.begin);
            edges.push_back(extent.end);
        }
    }
    std::sort(edges.begin(), edges.end());
    std::vector<GridTrack> tracks;
    for (std::size_t edge = 1; edge < edges.size(); ++edge) {
        if (edges[edge] - edges[edge - 1] > SameEdge) {
            tracks.push_back({NoElement, edges[edge - 1], edges[edge] - edges[edge - 1]});
        }
    }
    return tracks;
}

void SetHeaderSize(Document& document, ElementId region, Axis axis, std::size_t level, double points,
                   const std::string& step) {
    const StepGroup group(document, step.empty() ? "Resize headings" : step);
    const TablixGrid grid = GridOf(document, region);
    const std::vector<GridTrack> tracks = HeaderTracksOf(grid, axis);
    if (level >= tracks.size()) {
        throw EditError("The table has no such headings");
    }
    const double middle = tracks[level].begin + tracks[level].size / 2;
    std::vector<SizeChange> sizes;
    std::set<ElementId> met;
    for (const GridCell& cell : grid.cells) {
        const Extent extent = ExtentOf(cell, axis);
        if (!IsHeaderOf(cell, axis) || extent.begin > middle || extent.end < middle) {
            continue;
        }
        const ElementId sized = SizedElement(document, cell, axis);
        const char* const path = document.Name(cell.element) == "TablixHeader" ? "Size"
                                 : axis == Axis::Columns                       ? "Width"
                                                                               : "Height";
        if (sized != NoElement && met.insert(sized).second) {
            sizes.push_back({sized, path, extent.end - extent.begin + points - tracks[level].size});
        }
    }
    SetSizes(document, sizes, "Resize headings");
    FollowSize(document, region);
}

}  // namespace designer
