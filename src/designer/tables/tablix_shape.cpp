// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/tables/tablix_shape.h"

#include <algorithm>

#include "designer/document/constants.h"
#include "designer/document/names.h"

namespace designer {
namespace {

constexpr std::size_t MostTracks = 10'000;  // columns, and rows, as the grid has
constexpr std::size_t MostCells = 200'000;

std::string NameOfRegion(const Document& document, ElementId region) {
    return document.Attribute(region, "Name").value_or(document.Name(region));
}

}  // namespace

std::vector<ElementId> ChildrenNamed(const Document& document, ElementId owner, std::string_view path,
                                     std::string_view name) {
    std::vector<ElementId> found;
    const ElementId parent = owner == NoElement ? NoElement : document.Find(owner, path);
    if (parent == NoElement) {
        return found;
    }
    const SourceTree& tree = document.Tree();
    for (const int child : tree.Children(document.IndexOf(parent))) {
        if (tree.IsOfReport(child) && tree.LocalName(child) == name) {
            found.push_back(document.IdAt(child));
        }
    }
    return found;
}

std::size_t SpanOf(const Document& document, ElementId cell, Axis axis) {
    const char* const path = axis == Axis::Columns ? "CellContents/ColSpan" : "CellContents/RowSpan";
    return static_cast<std::size_t>(NumberAt(document, cell, path, 1, 1, static_cast<int>(MostTracks)));
}

ElementId ItemInCell(const Document& document, ElementId cell) {
    for (const std::string_view holder : {"CellContents", "ReportItems"}) {
        const ElementId contents = document.Find(cell, holder);
        for (const ElementId child :
             contents == NoElement ? std::vector<ElementId>{} : document.Children(contents)) {
            if (IsReportItem(document.Name(child))) {
                return child;
            }
        }
    }
    return NoElement;
}

TablixShape::TablixShape(const Document& document, ElementId region) : m_region(region) {
    const std::string name = NameOfRegion(document, region);
    if (document.Name(region) != "Tablix") {
        throw EditError(name + " is a " + document.Name(region) +
                        " of an older schema, which does not have this");
    }
    ReadBody(document);
    for (const Axis axis : {Axis::Columns, Axis::Rows}) {
        ReadMembers(
            document, axis,
            document.Find(region, axis == Axis::Columns ? "TablixColumnHierarchy" : "TablixRowHierarchy"),
            NoIndex);
        if (CountLeaves(axis) != Count(axis)) {
            throw EditError(name + " cannot be changed: its body has " + std::to_string(Count(axis)) +
                            (axis == Axis::Columns ? " columns" : " rows") + ", its members ask for " +
                            std::to_string(CountLeaves(axis)));
        }
    }
}

void TablixShape::ReadBody(const Document& document) {
    m_tracks[0] = ChildrenNamed(document, m_region, "TablixBody/TablixColumns", "TablixColumn");
    m_tracks[1] = ChildrenNamed(document, m_region, "TablixBody/TablixRows", "TablixRow");
    const std::size_t columns = m_tracks[0].size(), rows = m_tracks[1].size();
    if (columns > MostTracks || rows > MostTracks || columns * rows > MostCells) {
        throw EditError(NameOfRegion(document, m_region) + " has too many cells to be changed here");
    }
    for (const ElementId row : m_tracks[1]) {
        m_cells.push_back(ChildrenNamed(document, row, "TablixCells", "TablixCell"));
        if (m_cells.back().size() != columns) {
            throw EditError(NameOfRegion(document, m_region) + " cannot be changed: a row has " +
                            std::to_string(m_cells.back().size()) + " cells for " + std::to_string(columns) +
                            " columns");
        }
    }
}

// The depth of elements is bounded, and so is this recursion.
void TablixShape::ReadMembers(const Document& document, Axis axis, ElementId owner, int parent) {
    std::vector<TablixMemberNode>& members = m_members[Index(axis)];
    for (const ElementId id : ChildrenNamed(document, owner, "TablixMembers", "TablixMember")) {
        const auto index = members.size();
        TablixMemberNode node;
        node.id = id;
        node.parent = parent;
        node.group = document.Find(id, "Group");
        node.header = document.Find(id, "TablixHeader");
        node.isDetails = node.group != NoElement &&
                         ChildrenNamed(document, node.group, "GroupExpressions", "GroupExpression").empty();
        node.first = CountLeaves(axis);
        members.push_back(node);
        ReadMembers(document, axis, id, static_cast<int>(index));
        members[index].isLeaf = members.size() == index + 1;
        members[index].count = members[index].isLeaf ? 1 : CountLeaves(axis) - members[index].first;
    }
}

std::size_t TablixShape::CountLeaves(Axis axis) const {
    // The last member has the last track, whether it is complete or has none yet.
    const auto& members = Members(axis);
    return members.empty() ? 0 : members.back().first + members.back().count;
}

int TablixShape::LeafOf(Axis axis, std::size_t track) const {
    const auto& members = Members(axis);
    const auto found = std::find_if(members.begin(), members.end(), [track](const TablixMemberNode& member) {
        return member.isLeaf && member.first == track;
    });
    if (found == members.end()) {
        throw EditError(axis == Axis::Columns ? "The table has no such column" : "The table has no such row");
    }
    return static_cast<int>(found - members.begin());
}

int TablixShape::IndexOf(Axis axis, ElementId member) const {
    const auto& members = Members(axis);
    const auto found = std::find_if(members.begin(), members.end(),
                                    [member](const TablixMemberNode& node) { return node.id == member; });
    return found == members.end() ? NoIndex : static_cast<int>(found - members.begin());
}

int TablixShape::GroupAround(Axis axis, int member) const {
    const auto& members = Members(axis);
    while (member != NoIndex && members[static_cast<std::size_t>(member)].group == NoElement) {
        member = members[static_cast<std::size_t>(member)].parent;
    }
    return member;
}

std::vector<int> TablixShape::ChildrenOf(Axis axis, int member) const {
    std::vector<int> children;
    const auto& members = Members(axis);
    for (std::size_t index = 0; index < members.size(); ++index) {
        if (members[index].parent == member) {
            children.push_back(static_cast<int>(index));
        }
    }
    return children;
}

std::vector<int> TablixShape::PathTo(Axis axis, int member) const {
    std::vector<int> path;
    for (; member != NoIndex; member = Members(axis)[static_cast<std::size_t>(member)].parent) {
        path.insert(path.begin(), member);
    }
    return path;
}

std::size_t TablixShape::HeaderLevels(Axis axis) const {
    std::size_t most = 0;
    std::vector<std::size_t> levels;  // of each member, with its own
    for (const TablixMemberNode& member : Members(axis)) {
        const std::size_t outer =
            member.parent == NoIndex ? 0 : levels[static_cast<std::size_t>(member.parent)];
        levels.push_back(outer + (member.header != NoElement ? 1 : 0));
        most = std::max(most, levels.back());
    }
    return most;
}

}  // namespace designer
