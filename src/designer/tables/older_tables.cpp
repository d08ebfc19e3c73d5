// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/tables/older_tables.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "designer/document/constants.h"
#include "designer/document/editing.h"
#include "designer/document/tablix_grid.h"
#include "designer/document/xml_text.h"
#include "designer/tables/cell_text.h"
#include "designer/tables/tablix_shape.h"

namespace designer {
namespace {

std::size_t ColSpanOf(const Document& document, ElementId cell) {
    return static_cast<std::size_t>(NumberAt(document, cell, "ColSpan", 1, 1, 10'000));
}

struct PlacedCell {
    ElementId id;
    std::size_t column, span;
};

std::vector<PlacedCell> CellsOf(const Document& document, ElementId row) {
    std::vector<PlacedCell> cells;
    std::size_t column = 0;
    for (const ElementId cell : ChildrenNamed(document, row, "TableCells", "TableCell")) {
        cells.push_back({cell, column, ColSpanOf(document, cell)});
        column += cells.back().span;
    }
    return cells;
}

std::string TableCellXml(const std::string& item) {
    return "<TableCell><ReportItems>" + item + "</ReportItems></TableCell>";
}

ElementId RowElement(const Document& document, ElementId table, std::size_t row) {
    return GridOf(document, table).rows.at(row).element;
}

// The Header, Details or Footer around a row.
ElementId BandOf(const Document& document, ElementId row) {
    return document.Parent(document.Parent(row));
}

void SetColSpan(Document& document, EditBatch& batch, const PlacedCell& cell, std::size_t span) {
    const ElementId element = document.Find(cell.id, "ColSpan");
    span > 1 ? batch.SetText(element, std::to_string(span)) : batch.Remove(element);
}

std::string RowXml(const Document& document, std::size_t columns, ElementId like, NewNames& names) {
    std::string cells;
    const std::vector<PlacedCell> others = CellsOf(document, like);
    for (std::size_t column = 0; column < columns; ++column) {
        const auto other = std::find_if(others.begin(), others.end(), [column](const PlacedCell& cell) {
            return column >= cell.column && column < cell.column + cell.span;
        });
        const ElementId item = other == others.end() ? NoElement : ItemInCell(document, other->id);
        cells += TableCellXml(BoxXml(document, names.Take("Textbox1"), {}, {item, false, false}));
    }
    return "<TableRow><TableCells>" + cells + "</TableCells><Height>" +
           EscapedText(document.TextAt(like, "Height").value_or("0.25in"), "\n") + "</Height></TableRow>";
}

// Returns what is around a member, which is the Details or a TableGroup: the next outer group or the table.
// NoElement: the member is the table itself.
ElementId OwnerAround(const Document& document, ElementId table, ElementId member) {
    const std::vector<ElementId> groups = ChildrenNamed(document, table, "TableGroups", "TableGroup");
    if (document.Name(member) == "Details") {
        return groups.empty() ? table : groups.back();
    }
    const auto own = std::find(groups.begin(), groups.end(), member);
    if (own == groups.end()) {
        return NoElement;
    }
    return own == groups.begin() ? table : *std::prev(own);
}

// The Details, the TableGroup or the table that a row belongs to.
ElementId MemberOf(const Document& document, ElementId row) {
    const ElementId band = BandOf(document, row);
    return document.Name(band) == "Details" ? band : document.Parent(band);
}

std::size_t NumberOf(const Document& document, ElementId table, ElementId row) {
    const TablixGrid grid = GridOf(document, table);
    const auto found = std::find_if(grid.rows.begin(), grid.rows.end(),
                                    [row](const GridTrack& track) { return track.element == row; });
    return static_cast<std::size_t>(found - grid.rows.begin());
}

}  // namespace

bool IsInTableGroup(const Document& document, ElementId table, std::size_t row) {
    const TablixGrid grid = GridOf(document, table);
    return row < grid.rows.size() &&
           OwnerAround(document, table, MemberOf(document, grid.rows[row].element)) != NoElement;
}

std::size_t AddTableColumn(Document& document, ElementId table, std::size_t at) {
    const TablixGrid grid = GridOf(document, table);
    NewNames names(document);
    EditBatch batch(document);
    for (const GridTrack& row : grid.rows) {
        const std::vector<PlacedCell> cells = CellsOf(document, row.element);
        const auto after = std::find_if(cells.begin(), cells.end(), [at](const PlacedCell& cell) {
            return cell.column + cell.span > at;
        });
        if (cells.empty() || (after == cells.end() && cells.back().column + cells.back().span < at)) {
            continue;  // a short row stays short
        }
        if (after != cells.end() && after->column < at) {
            SetColSpan(document, batch, *after, after->span + 1);
            continue;
        }
        const PlacedCell& like = after == cells.begin() ? *after : *std::prev(after);
        const std::string box =
            BoxXml(document, names.Take("Textbox1"), {}, {ItemInCell(document, like.id), false, false});
        batch.Insert(document.Find(row.element, "TableCells"), after == cells.end() ? NoElement : after->id,
                     TableCellXml(box));
    }
    const ElementId like = grid.columns[at == 0 ? 0 : at - 1].element;
    batch.Insert(document.Parent(like), at < grid.columns.size() ? grid.columns[at].element : NoElement,
                 "<TableColumn><Width>" + EscapedText(document.TextAt(like, "Width").value_or("1in"), "\n") +
                     "</Width></TableColumn>");
    batch.Apply();
    return at;
}

std::size_t AddTableRow(Document& document, ElementId table, std::size_t row, Side side,
                        GroupSide groupSide) {
    const ElementId like = RowElement(document, table, row);
    if (groupSide == GroupSide::Outside) {
        return AddRowAround(document, table, MemberOf(document, like), row, side);
    }
    NewNames names(document);
    const std::string xml = RowXml(document, GridOf(document, table).columns.size(), like, names);
    const ElementId next = document.IdAt(document.Tree()[document.IndexOf(like)].nextSibling);
    const ElementId added =
        InsertXml(document, document.Parent(like), xml, side == Side::After ? next : like);
    return NumberOf(document, table, added);
}

std::size_t AddRowAround(Document& document, ElementId table, ElementId member, std::size_t like, Side side) {
    const ElementId owner = OwnerAround(document, table, member);
    if (owner == NoElement) {
        throw EditError("The row is in no group");
    }
    NewNames names(document);
    const std::string xml =
        RowXml(document, GridOf(document, table).columns.size(), RowElement(document, table, like), names);
    const ElementId outer = EnsureChild(document, owner, side == Side::After ? "Footer" : "Header");
    const ElementId rows = EnsureChild(document, outer, "TableRows");
    const std::vector<ElementId> there = document.Children(rows);
    // Next to the group: the last of the header, the first of the footer.
    const ElementId added =
        InsertXml(document, rows, xml, side == Side::After && !there.empty() ? there.front() : NoElement);
    return NumberOf(document, table, added);
}

void AddTableBands(Document& document, ElementId table, ElementId group, bool hasHeader, bool hasFooter) {
    const TablixGrid grid = GridOf(document, table);
    if (grid.rows.empty()) {
        throw EditError("The table has no rows");
    }
    const auto details = ChildrenNamed(document, table, "Details/TableRows", "TableRow");
    const ElementId like = details.empty() ? grid.rows.front().element : details.front();
    for (const auto& [name, isWanted] : {std::pair("Header", hasHeader), std::pair("Footer", hasFooter)}) {
        if (isWanted) {
            NewNames names(document);
            const std::string tag(name);
            InsertXml(document, group,
                      "<" + tag + "><TableRows>" + RowXml(document, grid.columns.size(), like, names) +
                          "</TableRows></" + tag + ">");
        }
    }
}

void DeleteTableColumns(Document& document, ElementId table, std::size_t first, std::size_t count) {
    const TablixGrid grid = GridOf(document, table);
    EditBatch batch(document);
    for (const GridTrack& row : grid.rows) {
        for (const PlacedCell& cell : CellsOf(document, row.element)) {
            const std::size_t from = std::max(cell.column, first);
            const std::size_t to = std::min(cell.column + cell.span, first + count);
            if (from >= to) {
                continue;
            }
            if (to - from == cell.span) {
                batch.Remove(cell.id);
            } else {
                SetColSpan(document, batch, cell, cell.span - (to - from));
            }
        }
    }
    for (std::size_t column = first; column < first + count; ++column) {
        batch.Remove(grid.columns[column].element);
    }
    batch.Apply();
}

void DeleteTableRows(Document& document, ElementId table, std::size_t first, std::size_t count) {
    const TablixGrid grid = GridOf(document, table);
    for (std::size_t row = first; row < first + count; ++row) {
        const ElementId element = grid.rows[row].element;
        const ElementId band = BandOf(document, element);
        const bool isLast = document.Children(document.Parent(element)).size() == 1;
        Remove(document, isLast ? band : element);
    }
}

void MoveTableColumn(Document& document, ElementId table, std::size_t from, std::size_t to) {
    const TablixGrid grid = GridOf(document, table);
    EditBatch batch(document);
    const auto move = [&](ElementId child, ElementId target) {
        const ElementId next = document.IdAt(document.Tree()[document.IndexOf(target)].nextSibling);
        batch.Move(document.Parent(child), child, to < from ? target : next);
    };
    for (const GridTrack& row : grid.rows) {
        const std::vector<PlacedCell> cells = CellsOf(document, row.element);
        const std::size_t low = std::min(from, to), high = std::max(from, to);
        for (const PlacedCell& cell : cells) {
            if (cell.span > 1 && cell.column <= high && cell.column + cell.span > low) {
                throw EditError("A merged cell is in the way; split it first");
            }
        }
        const auto find = [&cells](std::size_t column) {
            return std::find_if(cells.begin(), cells.end(),
                                [column](const PlacedCell& cell) { return cell.column == column; });
        };
        if (find(from) == cells.end() || find(to) == cells.end()) {
            throw EditError("A row has no cells in these columns");
        }
        move(find(from)->id, find(to)->id);
    }
    move(grid.columns[from].element, grid.columns[to].element);
    batch.Apply();
}

void MoveTableRow(Document& document, ElementId table, std::size_t from, std::size_t to) {
    const ElementId row = RowElement(document, table, from), target = RowElement(document, table, to);
    if (document.Parent(row) != document.Parent(target)) {
        throw EditError("The row cannot leave its group");
    }
    EditBatch batch(document);
    const ElementId next = document.IdAt(document.Tree()[document.IndexOf(target)].nextSibling);
    batch.Move(document.Parent(row), row, to < from ? target : next);
    batch.Apply();
}

}  // namespace designer
