// SPDX-License-Identifier: GPL-3.0-or-later
// AddTotal of groups.h.
#include <algorithm>
#include <string>
#include <vector>

#include "designer/document/editing.h"
#include "designer/document/tablix_grid.h"
#include "designer/tables/fields.h"
#include "designer/tables/groups.h"
#include "designer/tables/older_tables.h"
#include "platform/base/ascii.h"

namespace designer {
namespace {

// Returns what a total says of a cell's text: the sum of a field that is a number, an aggregate as it is.
// Empty if there is nothing to sum.
std::string TotalOf(const Document& document, ElementId region, const std::string& text) {
    const std::string field = FieldOfValue(text);
    if (!field.empty()) {
        return IsNumericField(document, region, field) ? FieldSum(field) : std::string();
    }
    constexpr std::string_view Aggregates[] = {"=Sum(", "=Count(", "=CountRows(", "=CountDistinct("};
    const std::string_view begin = Trim(text);
    const bool isAggregate =
        std::any_of(std::begin(Aggregates), std::end(Aggregates), [&begin](std::string_view one) {
            return begin.size() > one.size() && SameAscii(begin.substr(0, one.size()), one);
        });
    // With a scope of its own it would be the same number in the total.
    return isAggregate && begin.find('"') == std::string_view::npos && begin.ends_with(')') ? text
                                                                                            : std::string();
}

struct TotalCell {
    std::string value;
    ElementId like = NoElement;
};

// Of the cells of a group the first one counts that has something to sum.
void Consider(const Document& document, ElementId region, ElementId item, TotalCell& cell) {
    if (item == NoElement || !cell.value.empty()) {
        return;
    }
    cell.value = TotalOf(document, region, TextOfBox(document, item));
    cell.like = cell.value.empty() && cell.like != NoElement ? cell.like : item;
}

void CheckTotals(const std::vector<TotalCell>& cells) {
    if (std::all_of(cells.begin(), cells.end(), [](const TotalCell& cell) { return cell.value.empty(); })) {
        throw EditError("The group shows no number that can be summed");
    }
}

std::size_t AddTablixTotal(Document& document, ElementId region, Axis axis, const RegionGroup& group,
                           Side side) {
    const TablixShape shape(document, region);
    std::vector<TotalCell> cells(shape.Count(Other(axis)));
    for (std::size_t across = 0; across < cells.size(); ++across) {
        for (std::size_t track = group.first; track < group.first + group.count; ++track) {
            Consider(document, region, ItemInCell(document, shape.Cell(axis, track, across)), cells[across]);
        }
    }
    CheckTotals(cells);
    const int member = shape.IndexOf(axis, group.member);
    NewNames names(document);
    const std::string keep = axis == Axis::Columns  ? ""
                             : side == Side::Before ? "<KeepWithGroup>After</KeepWithGroup>"
                                                    : "<KeepWithGroup>Before</KeepWithGroup>";
    const std::string xml = StaticMemberXml(document, shape, axis, member, "Total", keep, names);
    if (xml.find("<TablixHeader>") == std::string::npos && cells.front().value.empty()) {
        cells.front().value = "Total";
    }
    const ElementId next = document.IdAt(document.Tree()[document.IndexOf(group.member)].nextSibling);
    const ElementId before = side == Side::Before ? group.member : next;
    InsertXml(document, document.Parent(group.member), xml, before);
    const std::size_t at = side == Side::Before ? group.first : group.first + group.count;
    InsertBodyTrack(document, shape, axis, at, group.first, [&cells](std::size_t across) {
        const TotalCell& cell = cells[across];
        return NewCell{cell.value, {cell.like, cell.value != "Total", true}};
    });
    return at;
}

// The row stands in the header or footer of what is around the group: the next outer group, or the table.
std::size_t AddTableTotal(Document& document, ElementId table, const RegionGroup& group, Side side) {
    const TablixGrid grid = GridOf(document, table);
    std::vector<TotalCell> cells(grid.columns.size());
    for (const GridCell& cell : grid.cells) {
        if (cell.row >= group.first && cell.row < group.first + group.count && cell.columnSpan == 1) {
            Consider(document, table, cell.item, cells[cell.column]);
        }
    }
    CheckTotals(cells);
    const std::size_t beside = side == Side::Before ? group.first : group.first + group.count - 1;
    const std::size_t added = AddRowAround(document, table, group.member, beside, side == Side::After);
    if (cells.front().value.empty()) {
        cells.front().value = "Total";
    }
    const TablixGrid now = GridOf(document, table);
    for (const GridCell& cell : now.cells) {
        if (cell.row == added && cell.item != NoElement && !cells[cell.column].value.empty()) {
            const TotalCell& total = cells[cell.column];
            const std::string name = document.Attribute(cell.item, "Name").value_or("");
            const ElementId holder = document.Parent(cell.item);
            const std::string box =
                BoxXml(document, name, total.value, {total.like, total.value != "Total", true});
            InsertXml(document, holder, box, cell.item);
            Remove(document, cell.item);
        }
    }
    return added;
}

}  // namespace

std::size_t AddTotal(Document& document, ElementId region, Axis axis, ElementId member, Side side) {
    const StepGroup step(document, "Add total");
    const std::vector<RegionGroup> groups = GroupsOf(document, region, axis);
    const auto found = std::find_if(groups.begin(), groups.end(),
                                    [member](const RegionGroup& one) { return one.member == member; });
    if (found == groups.end() || found->count == 0) {
        throw EditError("The group has no rows or columns to sum");
    }
    const std::size_t added = document.Name(region) == "Table"
                                  ? AddTableTotal(document, region, *found, side)
                                  : AddTablixTotal(document, region, axis, *found, side);
    FollowSize(document, region);
    return added;
}

}  // namespace designer
