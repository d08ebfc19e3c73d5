// SPDX-License-Identifier: GPL-3.0-or-later
// A Tablix as its edits see it: the tracks and cells of its body, and the members that its tracks belong to
// (MS-RDL, Tablix). A track is a column or a row; the same code edits both.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "designer/document/document.h"

namespace designer {

enum class Axis { Columns, Rows };

constexpr Axis Other(Axis axis) {
    return axis == Axis::Columns ? Axis::Rows : Axis::Columns;
}

// A member of a hierarchy. Indexes are those of TablixShape::Members.
struct TablixMemberNode {
    ElementId id = NoElement;
    ElementId group = NoElement;   // its Group element
    ElementId header = NoElement;  // its TablixHeader
    int parent = NoIndex;
    std::size_t first = 0, count = 0;  // its tracks in the body
    bool isLeaf = true;
    bool isDetails = false;  // a group without expressions: one instance for each row of data
};

class TablixShape {
 public:
    // Raises EditError if the region is no Tablix, or one whose members do not fit its body.
    TablixShape(const Document& document, ElementId region);

    ElementId Region() const { return m_region; }
    // The TablixColumn or TablixRow elements.
    const std::vector<ElementId>& Tracks(Axis axis) const { return m_tracks[Index(axis)]; }
    std::size_t Count(Axis axis) const { return Tracks(axis).size(); }
    // The TablixCell of a track and of a track across it.
    ElementId Cell(Axis axis, std::size_t track, std::size_t across) const {
        return axis == Axis::Columns ? m_cells[across][track] : m_cells[track][across];
    }
    // In the order of the file: a member comes before those in it.
    const std::vector<TablixMemberNode>& Members(Axis axis) const { return m_members[Index(axis)]; }
    // Returns the index of the member of a track.
    int LeafOf(Axis axis, std::size_t track) const;
    // Returns NoIndex if no member of the side has this element.
    int IndexOf(Axis axis, ElementId member) const;
    // Returns the innermost member with a group that the member is, or is in; NoIndex if there is none.
    int GroupAround(Axis axis, int member) const;
    std::vector<int> ChildrenOf(Axis axis, int member) const;
    // The members from the outermost one to this one.
    std::vector<int> PathTo(Axis axis, int member) const;
    // Returns how many levels of headers the side has.
    std::size_t HeaderLevels(Axis axis) const;

 private:
    static std::size_t Index(Axis axis) { return axis == Axis::Columns ? 0 : 1; }
    void ReadMembers(const Document& document, Axis axis, ElementId owner, int parent);
    void ReadBody(const Document& document);
    std::size_t CountLeaves(Axis axis) const;

    ElementId m_region;
    std::array<std::vector<ElementId>, 2> m_tracks;
    std::array<std::vector<TablixMemberNode>, 2> m_members;
    std::vector<std::vector<ElementId>> m_cells;  // by rows
};

// Returns the children of this name of the element at the path.
std::vector<ElementId> ChildrenNamed(const Document& document, ElementId owner, std::string_view path,
                                     std::string_view name);
// Returns how many columns, or rows, a TablixCell spans: 1 if it does not say.
std::size_t SpanOf(const Document& document, ElementId cell, Axis axis);
// Returns the report item in a cell or header of any schema; NoElement if it is empty.
ElementId ItemInCell(const Document& document, ElementId cell);

}  // namespace designer
