// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/tables/tracks.h"

#include <algorithm>
#include <optional>

#include "designer/document/editing.h"
#include "designer/document/item_size.h"
#include "designer/document/tablix_grid.h"
#include "designer/document/xml_text.h"
#include "designer/tables/older_matrix.h"
#include "designer/tables/older_tables.h"
#include "platform/base/ascii.h"
#include "platform/base/text.h"

namespace designer {
namespace {

const char* Word(Axis axis) {
    return axis == Axis::Columns ? "column" : "row";
}

const char* SpanName(Axis axis) {
    return axis == Axis::Columns ? "ColSpan" : "RowSpan";
}

const TablixMemberNode& At(const TablixShape& shape, Axis axis, int member) {
    return shape.Members(axis)[static_cast<std::size_t>(member)];
}

// Returns the first cell of the merged one that spans this place, which may be itself.
std::size_t AnchorOf(const Document& document, const TablixShape& shape, Axis axis, std::size_t track,
                     std::size_t across) {
    for (std::size_t begin = 0; begin < track;) {
        const std::size_t span = SpanOf(document, shape.Cell(axis, begin, across), axis);
        if (begin + span > track) {
            return begin;
        }
        begin += span;
    }
    return track;
}

void SetSpan(Document& document, EditBatch& batch, ElementId cell, Axis axis, std::size_t span) {
    const ElementId element = document.Find(cell, std::string("CellContents/") + SpanName(axis));
    if (span > 1) {
        batch.SetText(element, std::to_string(span));
    } else {
        batch.Remove(element);
    }
}

std::string TrackXml(const Document& document, Axis axis, ElementId like, const std::string& cells) {
    const char* const size = axis == Axis::Columns ? "Width" : "Height";
    const std::string text = LeafOf(size, document.TextAt(like, size).value_or("1in"));
    return axis == Axis::Columns
               ? "<TablixColumn>" + text + "</TablixColumn>"
               : "<TablixRow>" + text + "<TablixCells>" + cells + "</TablixCells></TablixRow>";
}

// A row beside a group stays on its page.
std::string KeepXml(Axis axis, Side side) {
    return axis == Axis::Columns ? std::string()
                                 : std::string("<KeepWithGroup>") +
                                       (side == Side::Before ? "After" : "Before") + "</KeepWithGroup>";
}

// What a new row has in common with its neighbour.
std::string KeptXml(const Document& document, ElementId member) {
    std::string xml;
    for (const char* name : {"KeepWithGroup", "RepeatOnNewPage"}) {
        if (const ElementId element = document.Find(member, name); element != NoElement) {
            xml += XmlOf(document, element);
        }
    }
    return xml;
}

std::size_t AddTablixTrack(Document& document, ElementId region, Axis axis, std::size_t track, Side side,
                           GroupSide groupSide) {
    const TablixShape shape(document, region);
    const int leaf = shape.LeafOf(axis, track);
    const int group = shape.GroupAround(axis, leaf);
    const bool isInside = groupSide == GroupSide::Inside;
    if (!isInside && group == NoIndex) {
        throw EditError(std::string("The ") + Word(axis) + " is in no group");
    }
    const TablixMemberNode beside = At(shape, axis, isInside ? leaf : group);
    const std::size_t at = side == Side::Before ? beside.first : beside.first + beside.count;
    NewNames names(document);
    if (isInside && group == leaf) {
        // The group itself was the track: from now on it has two.
        const std::string members = "<TablixMembers><TablixMember/><TablixMember/></TablixMembers>";
        InsertXml(document, beside.id, members);
    } else {
        const std::string properties = !isInside ? KeepXml(axis, side) : KeptXml(document, beside.id);
        const std::string xml =
            StaticMemberXml(document, shape, axis, isInside ? leaf : group, {}, properties, names);
        const ElementId parent = document.Parent(beside.id);
        const ElementId next = document.IdAt(document.Tree()[document.IndexOf(beside.id)].nextSibling);
        if (side == Side::After && next == NoElement) {
            InsertXml(document, parent, xml);
        } else {
            InsertXml(document, parent, xml, side == Side::Before ? beside.id : next);
        }
    }
    InsertBodyTrack(document, shape, axis, at, track, [&](std::size_t across) {
        return NewCell{{}, {ItemInCell(document, shape.Cell(axis, track, across)), false, false}};
    });
    return at;
}

// Which cells of a line across the tracks leave, and the spans of those that stay.
void DeleteFromLine(Document& document, const TablixShape& shape, Axis axis, std::size_t first,
                    std::size_t count, std::size_t across, EditBatch& batch) {
    const std::size_t end = first + count;
    for (std::size_t track = 0; track < shape.Count(axis);) {
        const ElementId cell = shape.Cell(axis, track, across);
        const std::size_t span = std::min(SpanOf(document, cell, axis), shape.Count(axis) - track);
        const std::size_t from = std::max(track, first), to = std::min(track + span, end);
        const std::size_t gone = from < to ? to - from : 0;
        // A merged cell that loses its first column is written in the first one that stays.
        const bool shifts = track >= first && gone > 0 && gone < span;
        if (shifts && axis == Axis::Rows) {
            throw EditError("A merged cell begins in the row; split it first");
        }
        for (std::size_t index = from; axis == Axis::Columns && index < to; ++index) {
            const bool isFirst = index == track;
            batch.Remove(shape.Cell(axis, shifts && isFirst ? end : index, across));
        }
        if (gone > 0 && gone < span) {
            SetSpan(document, batch, cell, axis, span - gone);
        }
        track += span;
    }
}

void DeleteTablixTracks(Document& document, ElementId region, Axis axis, std::size_t first,
                        std::size_t count) {
    const TablixShape shape(document, region);
    EditBatch batch(document);
    for (std::size_t across = 0; across < shape.Count(Other(axis)); ++across) {
        DeleteFromLine(document, shape, axis, first, count, across, batch);
    }
    for (std::size_t track = first; track < first + count; ++track) {
        batch.Remove(shape.Tracks(axis)[track]);
    }
    for (const TablixMemberNode& member : shape.Members(axis)) {
        const auto isGone = [&](const TablixMemberNode& one) {
            return one.first >= first && one.first + one.count <= first + count;
        };
        if (isGone(member) && (member.parent == NoIndex || !isGone(At(shape, axis, member.parent)))) {
            batch.Remove(member.id);
        }
    }
    batch.Apply();
}

void MoveTablixTrack(Document& document, ElementId region, Axis axis, std::size_t from, std::size_t to) {
    const TablixShape shape(document, region);
    const TablixMemberNode moved = At(shape, axis, shape.LeafOf(axis, from));
    const TablixMemberNode place = At(shape, axis, shape.LeafOf(axis, to));
    if (moved.parent != place.parent) {
        throw EditError(std::string("The ") + Word(axis) + " cannot leave its group");
    }
    const std::size_t low = std::min(from, to), high = std::max(from, to);
    for (std::size_t track = low; track <= high; ++track) {
        const TablixMemberNode& leaf = At(shape, axis, shape.LeafOf(axis, track));
        if (axis == Axis::Rows && leaf.group != NoElement) {
            throw EditError("A row cannot move past the rows of a group");
        }
        for (std::size_t across = 0; across < shape.Count(Other(axis)); ++across) {
            if (SpanOf(document, shape.Cell(axis, track, across), axis) > 1 ||
                AnchorOf(document, shape, axis, track, across) != track) {
                throw EditError("A merged cell is in the way; split it first");
            }
        }
    }
    EditBatch batch(document);
    const auto move = [&](ElementId child, ElementId target) {
        const ElementId next = document.IdAt(document.Tree()[document.IndexOf(target)].nextSibling);
        batch.Move(document.Parent(child), child, to < from ? target : next);
    };
    move(shape.Tracks(axis)[from], shape.Tracks(axis)[to]);
    for (std::size_t across = 0; axis == Axis::Columns && across < shape.Count(Axis::Rows); ++across) {
        move(shape.Cell(axis, from, across), shape.Cell(axis, to, across));
    }
    move(moved.id, place.id);
    batch.Apply();
}

std::string StepOr(const std::string& step, const char* verb, Axis axis) {
    return step.empty() ? std::string(verb) + " " + Word(axis) : step;
}

void CheckTrack(const Document& document, ElementId region, Axis axis, std::size_t first, std::size_t count) {
    const TablixGrid grid = GridOf(document, region);
    const std::size_t all = axis == Axis::Columns ? grid.columns.size() : grid.rows.size();
    if (count > all || first > all - count) {
        throw EditError(std::string("The table has no such ") + Word(axis));
    }
}

}  // namespace

void InsertBodyTrack(Document& document, const TablixShape& shape, Axis axis, std::size_t at,
                     std::size_t like, const CellMaker& make) {
    const bool isColumn = axis == Axis::Columns;
    NewNames names(document);
    EditBatch batch(document);
    std::string row;
    for (std::size_t across = 0; across < shape.Count(Other(axis)); ++across) {
        const std::size_t anchor =
            at == 0 || at == shape.Count(axis) ? at : AnchorOf(document, shape, axis, at, across);
        std::string cell = "<TablixCell />";
        if (anchor == at) {
            const NewCell wish = make(across);
            cell = TablixCellXml(BoxXml(document, names.Take("Textbox1"), wish.value, wish.look));
        } else {
            const ElementId merged = shape.Cell(axis, anchor, across);
            SetSpan(document, batch, merged, axis, SpanOf(document, merged, axis) + 1);
        }
        row += cell;
        if (isColumn) {
            const ElementId cells = document.Parent(shape.Cell(axis, 0, across));
            batch.Insert(cells, at < shape.Count(axis) ? shape.Cell(axis, at, across) : NoElement, cell);
        }
    }
    batch.Insert(document.Parent(shape.Tracks(axis).front()),
                 at < shape.Count(axis) ? shape.Tracks(axis)[at] : NoElement,
                 TrackXml(document, axis, shape.Tracks(axis)[like], row));
    batch.Apply();
}

std::string StaticMemberXml(const Document& document, const TablixShape& shape, Axis axis, int member,
                            const NewCell& label, const std::string& properties, NewNames& names) {
    const auto& members = shape.Members(axis);
    std::string before = "<TablixMember>", after;
    bool isFirst = true;
    for (auto index = static_cast<std::size_t>(member);; ++index) {
        const TablixMemberNode& one = members[index];
        if (one.header != NoElement) {
            const BoxLook look{.like = ItemInCell(document, one.header),
                               .isBold = isFirst && label.look.isBold};
            const double size = PointsOf(document.TextAt(one.header, "Size").value_or("")).value_or(72);
            const std::string box =
                BoxXml(document, names.Take("Textbox1"), isFirst ? label.value : "", look);
            if (!isFirst) {
                before += "<TablixMembers><TablixMember>";
                after.insert(0, "</TablixMember></TablixMembers>");
            }
            before += HeaderXml(document, size, box);
            isFirst = false;
        }
        if (one.isLeaf) {
            break;
        }
    }
    return before + after + properties + "</TablixMember>";
}

void FollowSize(Document& document, ElementId region) {
    const TablixGrid grid = GridOf(document, region);
    for (const auto& [path, size] : {std::pair("Width", grid.width), std::pair("Height", grid.height)}) {
        if (document.Find(region, path) != NoElement) {
            SetSize(document, region, path, size);
        }
    }
}

void RefuseIfUsed(const Document& document, const std::vector<std::string>& names) {
    if (names.empty()) {
        return;
    }
    if (const auto use = UseOf(document, names)) {
        throw EditError("What would be deleted is still used: " + WithoutControls(CutText(use->text, 80)));
    }
}

bool IsInGroup(const Document& document, ElementId region, Axis axis, std::size_t track) {
    try {
        if (document.Name(region) == "Table") {
            return axis == Axis::Rows && IsInTableGroup(document, region, track);
        }
        const TablixShape shape(document, region);
        return shape.GroupAround(axis, shape.LeafOf(axis, track)) != NoIndex;
    } catch (const EditError&) {
        return false;
    }
}

std::size_t AddTrack(Document& document, ElementId region, Axis axis, std::size_t track, Side side,
                     GroupSide groupSide, const std::string& step) {
    const StepGroup group(document, StepOr(step, "Add", axis));
    CheckTrack(document, region, axis, track, 1);
    std::size_t added = 0;
    if (document.Name(region) == "Table") {
        added = axis == Axis::Columns
                    ? AddTableColumn(document, region, track + (side == Side::After ? 1 : 0))
                    : AddTableRow(document, region, track, side, groupSide);
    } else if (document.Name(region) == "Matrix") {
        if (groupSide == GroupSide::Outside) {
            throw EditError(std::string("A ") + Word(axis) + " of a Matrix is within all of its groups");
        }
        added = AddMatrixTrack(document, region, axis, track, side);
    } else {
        added = AddTablixTrack(document, region, axis, track, side, groupSide);
    }
    FollowSize(document, region);
    return added;
}

void DeleteTracks(Document& document, ElementId region, Axis axis, std::size_t first, std::size_t count,
                  const std::string& step) {
    const StepGroup group(document, StepOr(step, "Delete", axis));
    CheckTrack(document, region, axis, first, count);
    const TablixGrid grid = GridOf(document, region);
    if (count == (axis == Axis::Columns ? grid.columns.size() : grid.rows.size())) {
        throw EditError(std::string("The table has no other ") + Word(axis) + "; delete the table itself");
    }
    std::vector<std::string> names = ScopesIn(document, region);
    if (document.Name(region) == "Table") {
        axis == Axis::Columns ? DeleteTableColumns(document, region, first, count)
                              : DeleteTableRows(document, region, first, count);
    } else if (document.Name(region) == "Matrix") {
        DeleteMatrixTracks(document, region, axis, first, count);
    } else {
        DeleteTablixTracks(document, region, axis, first, count);
    }
    const std::vector<std::string> left = ScopesIn(document, region);
    std::erase_if(names, [&left](const std::string& name) {
        return std::find(left.begin(), left.end(), name) != left.end();
    });
    RefuseIfUsed(document, names);
    FollowSize(document, region);
}

void MoveTrack(Document& document, ElementId region, Axis axis, std::size_t from, std::size_t to,
               const std::string& step) {
    const StepGroup group(document, StepOr(step, "Move", axis));
    CheckTrack(document, region, axis, std::max(from, to), 1);
    if (from == to) {
        return;
    }
    if (document.Name(region) == "Table") {
        axis == Axis::Columns ? MoveTableColumn(document, region, from, to)
                              : MoveTableRow(document, region, from, to);
    } else if (document.Name(region) == "Matrix") {
        MoveMatrixTrack(document, region, axis, from, to);
    } else {
        MoveTablixTrack(document, region, axis, from, to);
    }
}

void SetTrackSize(Document& document, ElementId region, Axis axis, std::size_t track, double points,
                  const std::string& step) {
    const StepGroup group(document, StepOr(step, "Resize", axis));
    CheckTrack(document, region, axis, track, 1);
    const TablixGrid grid = GridOf(document, region);
    const GridTrack& one = axis == Axis::Columns ? grid.columns[track] : grid.rows[track];
    SetSize(document, one.element, axis == Axis::Columns ? "Width" : "Height", points);
    FollowSize(document, region);
}

}  // namespace designer
