// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/model/table_selection.h"

#include <algorithm>

namespace designer {
namespace {

// Returns the item itself or the one around it that is in a cell; null if there is none.
const ReportItem* ItemInCellAround(const DesignModel& model, ElementId id) {
    const ReportItem* item = model.Item(id);
    while (item && item->cell == NoElement) {
        item = model.Item(item->container);
    }
    return item;
}

void Include(std::optional<TrackRange>& range, std::size_t first, std::size_t count) {
    const std::size_t begin = range ? std::min(range->first, first) : first;
    const std::size_t end = range ? std::max(range->first + range->count, first + count) : first + count;
    range = TrackRange{begin, end - begin};
}

// A header of a Matrix, and one of a total in it, belongs to a group; a heading of a column or row to that.
void IncludeMatrixHeader(const Document& document, TableSelection& table, const GridCell& cell, Axis axis) {
    const bool isColumns = axis == Axis::Columns;
    if (document.Name(cell.element) == (isColumns ? "StaticColumn" : "StaticRow")) {
        const TablixGrid grid = GridOf(document, table.region);
        const std::vector<GridTrack>& tracks = isColumns ? grid.columns : grid.rows;
        const double begin = isColumns ? cell.place.left : cell.place.top;
        const auto found = std::find_if(tracks.begin(), tracks.end(),
                                        [begin](const GridTrack& track) { return track.begin == begin; });
        if (found != tracks.end()) {
            Include(isColumns ? table.columns : table.rows, static_cast<std::size_t>(found - tracks.begin()),
                    1);
            table.groupAxis = axis;
        }
        return;
    }
    const bool isTotal = document.Name(cell.element) == "Subtotal";
    const ElementId member = isTotal ? document.Parent(cell.element) : cell.element;
    for (const RegionGroup& group : GroupsOf(document, table.region, axis)) {
        if (group.member == member && cell.element == table.cell) {
            table.groupAxis = axis;
            table.group = member;
        }
    }
}

// A header has the tracks of its member.
void IncludeHeader(const Document& document, TableSelection& table, const GridCell& cell) {
    if (cell.part == GridCell::Part::Corner) {
        return;
    }
    const Axis axis = cell.part == GridCell::Part::ColumnHeader ? Axis::Columns : Axis::Rows;
    if (document.Name(table.region) == "Matrix") {
        IncludeMatrixHeader(document, table, cell, axis);
        return;
    }
    try {
        const TablixShape shape(document, table.region);
        const int member = shape.IndexOf(axis, document.Parent(cell.element));
        if (member != NoIndex) {
            const TablixMemberNode& node = shape.Members(axis)[static_cast<std::size_t>(member)];
            Include(axis == Axis::Columns ? table.columns : table.rows, node.first, node.count);
            table.groupAxis = axis;
        }
    } catch (const EditError&) {
        // A damaged table has no tracks to change.
    }
}

void IncludeCells(const DesignModel& model, TableSelection& table) {
    const TablixGrid grid = GridOf(model.Source(), table.region);
    for (const ElementId id : model.Selection()) {
        const ReportItem* item = ItemInCellAround(model, id);
        if (!item || item->container != table.region) {
            continue;
        }
        const auto cell = std::find_if(grid.cells.begin(), grid.cells.end(),
                                       [item](const GridCell& one) { return one.element == item->cell; });
        if (cell == grid.cells.end()) {
            continue;
        }
        if (item->cell == table.cell) {
            table.isBody = cell->part == GridCell::Part::Body;
        }
        if (cell->part == GridCell::Part::Body) {
            Include(table.rows, cell->row, cell->rowSpan);
            Include(table.columns, cell->column, cell->columnSpan);
            table.groupAxis = table.groupAxis.value_or(Axis::Rows);
        } else {
            IncludeHeader(model.Source(), table, *cell);
        }
    }
}

std::optional<TableSelection> OfGroup(const DesignModel& model) {
    const Document& document = model.Source();
    const ElementId member = model.Leader();
    if (!document.Has(member) || member == document.Root()) {
        return std::nullopt;
    }
    for (ElementId region = document.Parent(member); region != NoElement; region = document.Parent(region)) {
        if (!HasGrid(document.Name(region)) || !model.Item(region)) {
            continue;
        }
        for (const Axis axis : {Axis::Rows, Axis::Columns}) {
            for (const RegionGroup& group : GroupsOf(document, region, axis)) {
                if (group.member == member) {
                    TableSelection table{region, NoElement, {}, {}, false, axis, member};
                    (axis == Axis::Rows ? table.rows : table.columns) = TrackRange{group.first, group.count};
                    return table;
                }
            }
        }
        return std::nullopt;
    }
    return std::nullopt;
}

}  // namespace

std::optional<TableSelection> SelectedTable(const DesignModel& model) {
    const ReportItem* leader = model.Item(model.Leader());
    if (!leader) {
        try {
            return OfGroup(model);
        } catch (const EditError&) {
            return std::nullopt;
        }
    }
    TableSelection table;
    if (HasGrid(leader->kind)) {
        table.region = leader->id;
        return table;
    }
    const ReportItem* item = ItemInCellAround(model, leader->id);
    if (!item) {
        return std::nullopt;
    }
    table.region = item->container;
    table.cell = item->cell;
    IncludeCells(model, table);
    return table;
}

std::optional<RegionGroup> GroupOf(const DesignModel& model, const TableSelection& table) {
    if (!table.groupAxis) {
        return std::nullopt;
    }
    const auto& range = *table.groupAxis == Axis::Rows ? table.rows : table.columns;
    std::optional<RegionGroup> innermost;
    try {
        for (const RegionGroup& group : GroupsOf(model.Source(), table.region, *table.groupAxis)) {
            const bool isAround = range && group.first <= range->first &&
                                  range->first + range->count <= group.first + group.count;
            if (table.group == group.member) {
                return group;
            }
            if (table.group == NoElement && isAround) {
                innermost = group;
            }
        }
    } catch (const EditError&) {
        return std::nullopt;
    }
    return innermost;
}

std::vector<ElementId> ItemsOfCells(const DesignModel& model, ElementId region, TrackRange rows,
                                    TrackRange columns) {
    std::vector<ElementId> ids;
    const auto meets = [](TrackRange range, std::size_t first, std::size_t count) {
        return first < range.first + range.count && range.first < first + count;
    };
    for (const GridCell& cell : GridOf(model.Source(), region).cells) {
        if (cell.part == GridCell::Part::Body && cell.item != NoElement &&
            meets(rows, cell.row, cell.rowSpan) && meets(columns, cell.column, cell.columnSpan)) {
            ids.push_back(cell.item);
        }
    }
    return ids;
}

}  // namespace designer
