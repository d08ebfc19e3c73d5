// SPDX-License-Identifier: GPL-3.0-or-later
// AddTotal of groups.h.
#include <algorithm>
#include <string>
#include <vector>

#include "designer/document/editing.h"
#include "designer/document/tablix_grid.h"
#include "designer/tables/fields.h"
#include "designer/tables/groups.h"
#include "designer/tables/older_matrix.h"
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

// The items of a group's tracks: by tracks, each from across to across; NoElement where there is none.
using GroupItems = std::vector<std::vector<ElementId>>;

// Returns what a total shows across the tracks. Of several tracks the first one counts that has something to
// sum. All cells look like the track that most sums are from, so that the total does not mix the looks of the
// group's head and its details.
std::vector<TotalCell> TotalCells(const Document& document, ElementId region, const GroupItems& tracks,
                                  std::size_t count) {
    std::vector<TotalCell> cells(count);
    std::vector<std::size_t> sums(tracks.size());
    for (std::size_t across = 0; across < count; ++across) {
        for (std::size_t track = 0; track < tracks.size() && cells[across].value.empty(); ++track) {
            const ElementId item = tracks[track][across];
            cells[across].value =
                item == NoElement ? "" : TotalOf(document, region, TextOfBox(document, item));
            cells[across].like = item;
            sums[track] += cells[across].value.empty() ? 0 : 1;
        }
    }
    const auto most = static_cast<std::size_t>(std::max_element(sums.begin(), sums.end()) - sums.begin());
    if (tracks.empty() || sums[most] == 0) {
        throw EditError(
            "The group shows no number that can be summed; run the data set with rows, or set the type of "
            "the "
            "field in its Properties");
    }
    for (std::size_t across = 0; across < count; ++across) {
        cells[across].like = cells[across].value.empty() ? tracks[most][across] : cells[across].like;
    }
    return cells;
}

BoxLook LookOf(const TotalCell& cell) {
    return {cell.like, cell.value != "Total" && !cell.value.empty(), true};
}

std::size_t AddTablixTotal(Document& document, ElementId region, Axis axis, const RegionGroup& group,
                           Side side) {
    const TablixShape shape(document, region);
    GroupItems tracks;
    for (std::size_t track = group.first; track < group.first + group.count; ++track) {
        tracks.emplace_back();
        for (std::size_t across = 0; across < shape.Count(Other(axis)); ++across) {
            tracks.back().push_back(ItemInCell(document, shape.Cell(axis, track, across)));
        }
    }
    std::vector<TotalCell> cells = TotalCells(document, region, tracks, shape.Count(Other(axis)));
    const int member = shape.IndexOf(axis, group.member);
    NewNames names(document);
    const std::string keep = axis == Axis::Columns  ? ""
                             : side == Side::Before ? "<KeepWithGroup>After</KeepWithGroup>"
                                                    : "<KeepWithGroup>Before</KeepWithGroup>";
    const std::string xml =
        StaticMemberXml(document, shape, axis, member, {"Total", {NoElement, false, true}}, keep, names);
    if (xml.find("<TablixHeader>") == std::string::npos && cells.front().value.empty()) {
        cells.front().value = "Total";
    }
    const ElementId next = document.IdAt(document.Tree()[document.IndexOf(group.member)].nextSibling);
    const ElementId before = side == Side::Before ? group.member : next;
    InsertXml(document, document.Parent(group.member), xml, before);
    const std::size_t at = side == Side::Before ? group.first : group.first + group.count;
    InsertBodyTrack(document, shape, axis, at, group.first, [&cells](std::size_t across) {
        return NewCell{cells[across].value, LookOf(cells[across])};
    });
    return at;
}

// The row stands in the header or footer of what is around the group: the next outer group, or the table.
std::size_t AddTableTotal(Document& document, ElementId table, const RegionGroup& group, Side side) {
    const TablixGrid grid = GridOf(document, table);
    GroupItems tracks(group.count, std::vector<ElementId>(grid.columns.size(), NoElement));
    for (const GridCell& cell : grid.cells) {
        if (cell.row >= group.first && cell.row < group.first + group.count && cell.columnSpan == 1) {
            tracks[cell.row - group.first][cell.column] = cell.item;
        }
    }
    std::vector<TotalCell> cells = TotalCells(document, table, tracks, grid.columns.size());
    const std::size_t beside = side == Side::Before ? group.first : group.first + group.count - 1;
    const std::size_t added = AddRowAround(document, table, group.member, beside, side);
    if (cells.front().value.empty()) {
        cells.front().value = "Total";
    }
    const TablixGrid now = GridOf(document, table);
    for (const GridCell& cell : now.cells) {
        if (cell.row == added && cell.item != NoElement) {
            const TotalCell& total = cells[cell.column];
            const std::string name = document.Attribute(cell.item, "Name").value_or("");
            const ElementId holder = document.Parent(cell.item);
            InsertXml(document, holder, BoxXml(document, name, total.value, LookOf(total)), cell.item);
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
    std::size_t added = 0;
    if (document.Name(region) == "Matrix") {
        AddMatrixTotal(document, member, side);
        added = side == Side::Before ? 0 : found->count;
    } else if (document.Name(region) == "Table") {
        added = AddTableTotal(document, region, *found, side);
    } else {
        added = AddTablixTotal(document, region, axis, *found, side);
    }
    FollowSize(document, region);
    return added;
}

}  // namespace designer
