// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/tables/groups.h"

#include <algorithm>

#include "designer/document/editing.h"
#include "designer/document/item_size.h"
#include "designer/document/tablix_grid.h"
#include "designer/document/xml_text.h"
#include "designer/tables/fields.h"
#include "designer/tables/header_levels.h"
#include "designer/tables/older_matrix.h"
#include "designer/tables/older_tables.h"
#include "platform/base/ascii.h"

namespace designer {
namespace {

constexpr double UsualHeaderWidth = 72, UsualHeaderHeight = 18;  // points
constexpr const char* FirstExpression = "GroupExpressions/GroupExpression";

RegionGroup Described(const Document& document, ElementId member, ElementId group, int depth) {
    RegionGroup one;
    one.member = member;
    one.group = group;
    one.depth = depth;
    if (group != NoElement) {
        one.name = document.Attribute(group, "Name").value_or("");
        one.expression = document.TextAt(group, FirstExpression).value_or("");
    }
    return one;
}

std::vector<RegionGroup> TablixGroups(const Document& document, ElementId region, Axis axis) {
    std::vector<RegionGroup> groups;
    const TablixShape shape(document, region);
    const auto& members = shape.Members(axis);
    std::vector<int> depths;  // of groups around each member, with its own
    for (const TablixMemberNode& member : members) {
        const int outer = member.parent == NoIndex ? 0 : depths[static_cast<std::size_t>(member.parent)];
        const bool isGroup = member.group != NoElement;
        depths.push_back(outer + (isGroup ? 1 : 0));
        if (isGroup) {
            groups.push_back(Described(document, member.id, member.group, outer));
            groups.back().first = member.first;
            groups.back().count = member.count;
        }
    }
    return groups;
}

std::size_t RowsOf(const Document& document, ElementId owner, const char* band) {
    return ChildrenNamed(document, owner, std::string(band) + "/TableRows", "TableRow").size();
}

// The groups stand beside each other in the file; each is around the next one, and the last one around the
// details.
std::vector<RegionGroup> TableGroups(const Document& document, ElementId table) {
    std::vector<RegionGroup> groups;
    const std::size_t rows = GridOf(document, table).rows.size();
    std::vector<ElementId> members = ChildrenNamed(document, table, "TableGroups", "TableGroup");
    if (const ElementId details = document.Find(table, "Details"); details != NoElement) {
        members.push_back(details);
    }
    std::size_t before = RowsOf(document, table, "Header"), after = RowsOf(document, table, "Footer");
    for (const ElementId member : members) {
        groups.push_back(
            Described(document, member, document.Find(member, "Grouping"), static_cast<int>(groups.size())));
        groups.back().first = before;
        groups.back().count = rows - std::min(rows, before + after);
        before += RowsOf(document, member, "Header");
        after += RowsOf(document, member, "Footer");
    }
    return groups;
}

// All cells of a matrix are in all of its groups.
std::vector<RegionGroup> MatrixGroups(const Document& document, ElementId matrix, Axis axis) {
    std::vector<RegionGroup> groups;
    const bool isColumns = axis == Axis::Columns;
    const TablixGrid grid = GridOf(document, matrix);
    const std::size_t tracks = isColumns ? grid.columns.size() : grid.rows.size();
    for (const ElementId level :
         ChildrenNamed(document, matrix, isColumns ? "ColumnGroupings" : "RowGroupings",
                       isColumns ? "ColumnGrouping" : "RowGrouping")) {
        const ElementId member = document.Find(level, isColumns ? "DynamicColumns" : "DynamicRows");
        if (member != NoElement) {
            groups.push_back(Described(document, member, document.Find(member, "Grouping"),
                                       static_cast<int>(groups.size())));
            groups.back().count = tracks;
        }
    }
    return groups;
}

// Group and sort of a new member.
std::string GroupXml(NewNames& names, const NewGroup& group) {
    const std::string field = FieldOfValue(group.expression);
    const std::string expression = EscapedText(group.expression, "\n");
    return "<Group Name=\"" + names.Take(field.empty() ? "Group1" : field + "Group") +
           "\"><GroupExpressions><GroupExpression>" + expression +
           "</GroupExpression></GroupExpressions></Group><SortExpressions><SortExpression><Value>" +
           expression + "</Value></SortExpression></SortExpressions>";
}

class TablixGrouper {
 public:
    TablixGrouper(Document& document, ElementId region, Axis axis, const NewGroup& group)
        : m_document(document), m_shape(document, region), m_axis(axis), m_group(group) {}

    // Puts the group around members that follow each other, and returns its member.
    ElementId Wrap(const std::vector<int>& siblings) {
        const TablixMemberNode first = Node(siblings.front()), last = Node(siblings.back());
        const bool isRows = m_axis == Axis::Rows;
        const bool hasLevel = !isRows || !m_group.hasHeader || m_shape.HeaderLevels(m_axis) > 0;
        const std::size_t level = LevelsAround(siblings.front());
        const double size = HeaderSize();
        NewNames names(m_document);
        std::string xml = "<TablixMember>" + GroupXml(names, m_group);
        if (hasLevel) {
            xml += HeaderXml(m_document, size,
                             BoxXml(m_document, names.Take("Textbox1"), m_group.expression,
                                    {OuterHeader(siblings.front()), false, false}));
        }
        xml += "<TablixMembers>";
        if (m_group.hasHeader) {
            xml += StaticMemberXml(m_document, m_shape, m_axis, siblings.front(), {}, Keep("After"), names);
        }
        if (m_group.hasFooter) {
            xml += StaticMemberXml(m_document, m_shape, m_axis, siblings.front(), {}, Keep("Before"), names);
        }
        const ElementId around = InsertXml(m_document, m_document.Parent(first.id),
                                           xml + "</TablixMembers></TablixMember>", first.id);
        const ElementId inner = m_document.Find(around, "TablixMembers");
        const std::vector<ElementId> made = m_document.Children(inner);
        for (const int sibling : siblings) {
            Move(m_document, Node(sibling).id, inner, m_group.hasFooter ? made.back() : NoElement);
        }
        if (m_group.hasFooter) {
            AddTrackOfGroup(last.first + last.count, last.first, {});
        }
        if (m_group.hasHeader) {
            AddTrackOfGroup(first.first, first.first, hasLevel ? std::string() : m_group.expression);
        }
        if (hasLevel) {
            InsertHeaderLevel(m_document, m_shape.Region(), m_axis, level, size, around);
        }
        return around;
    }

    ElementId AddChild(int member) {
        const TablixMemberNode node = Node(member);
        if (node.isDetails) {
            throw EditError("The details have one row for each row of data and hold no group");
        }
        std::vector<int> children = m_shape.ChildrenOf(m_axis, member);
        std::vector<int> inner;
        std::copy_if(children.begin(), children.end(), std::back_inserter(inner),
                     [this](int child) { return HoldsGroup(child); });
        if (inner.size() > 1) {
            throw EditError("The group holds several groups; add the new one as the parent of one of them");
        }
        if (children.empty()) {
            InsertXml(m_document, node.id, "<TablixMembers><TablixMember/></TablixMembers>");
            TablixGrouper again(m_document, m_shape.Region(), m_axis, m_group);
            return again.Wrap(again.m_shape.ChildrenOf(m_axis, member));
        }
        return Wrap(inner.empty() ? children : inner);
    }

    ElementId AddBeside(int member, Side side) {
        if (m_group.hasHeader || m_group.hasFooter) {
            throw EditError("A group beside another one has one track only: no header and no footer");
        }
        const TablixMemberNode node = Node(member);
        NewNames names(m_document);
        std::string xml =
            StaticMemberXml(m_document, m_shape, m_axis, member, {m_group.expression, {}}, {}, names);
        const bool hasHeader = xml.find("<TablixHeader>") != std::string::npos;
        const std::size_t begin = std::string("<TablixMember>").size();
        xml.insert(begin, GroupXml(names, m_group));
        const ElementId next = m_document.IdAt(m_document.Tree()[m_document.IndexOf(node.id)].nextSibling);
        const ElementId parent = m_document.Parent(node.id);
        const ElementId added = InsertXml(m_document, parent, xml, side == Side::Before ? node.id : next);
        AddTrackOfGroup(side == Side::Before ? node.first : node.first + node.count, node.first,
                        hasHeader ? std::string() : m_group.expression);
        return added;
    }

    int IndexOf(ElementId member) const {
        const int index = m_shape.IndexOf(m_axis, member);
        if (index == NoIndex) {
            throw EditError("The table has no such group");
        }
        return index;
    }

 private:
    const TablixMemberNode& Node(int member) const {
        return m_shape.Members(m_axis)[static_cast<std::size_t>(member)];
    }

    std::string Keep(const char* where) const {
        return m_axis == Axis::Columns ? std::string()
                                       : "<KeepWithGroup>" + std::string(where) + "</KeepWithGroup>";
    }

    bool HoldsGroup(int member) const {
        const auto& members = m_shape.Members(m_axis);
        for (std::size_t index = 0; index < members.size(); ++index) {
            const std::vector<int> path = m_shape.PathTo(m_axis, static_cast<int>(index));
            if (members[index].group != NoElement &&
                std::find(path.begin(), path.end(), member) != path.end()) {
                return true;
            }
        }
        return false;
    }

    std::size_t LevelsAround(int member) const {
        std::size_t levels = 0;
        for (const int outer : m_shape.PathTo(m_axis, member)) {
            levels += outer != member && Node(outer).header != NoElement ? 1 : 0;
        }
        return levels;
    }

    // The text box of a header that the new one looks like.
    ElementId OuterHeader(int member) const {
        return Node(member).header == NoElement ? NoElement : ItemInCell(m_document, Node(member).header);
    }

    double HeaderSize() const {
        for (const TablixMemberNode& member : m_shape.Members(m_axis)) {
            if (member.header != NoElement) {
                return PointsOf(m_document.TextAt(member.header, "Size").value_or(""))
                    .value_or(UsualHeaderWidth);
            }
        }
        return m_axis == Axis::Rows ? UsualHeaderWidth : UsualHeaderHeight;
    }

    void AddTrackOfGroup(std::size_t at, std::size_t like, const std::string& value) {
        InsertBodyTrack(m_document, m_shape, m_axis, at, like, [&](std::size_t across) {
            const ElementId item = ItemInCell(m_document, m_shape.Cell(m_axis, like, across));
            return NewCell{across == 0 ? value : std::string(), {item, false, !value.empty()}};
        });
    }

    Document& m_document;
    const TablixShape m_shape;  // as it was before
    const Axis m_axis;
    const NewGroup m_group;
};

void CheckExpression(const NewGroup& group) {
    if (!Trim(group.expression).starts_with('=') || Trim(group.expression).size() < 2) {
        throw EditError("A group needs an expression: =Fields!Region.Value");
    }
}

// Grouping and sort of a group in the schemas before 2008.
std::string GroupingXml(const Document& document, const NewGroup& group) {
    NewNames names(document);
    std::string xml = GroupXml(names, group);
    for (const auto& [newer, older] :
         {std::pair("<Group ", "<Grouping "), std::pair("</Group>", "</Grouping>"),
          std::pair("<SortExpressions>", "<Sorting>"), std::pair("</SortExpressions>", "</Sorting>"),
          std::pair("<SortExpression>", "<SortBy>"), std::pair("</SortExpression>", "</SortBy>"),
          std::pair("<Value>", "<SortExpression>"), std::pair("</Value>", "</SortExpression>")}) {
        xml.replace(xml.find(newer), std::string_view(newer).size(), older);
    }
    return xml;
}

// A header and a footer of a TableGroup have one row like the first of the details.
ElementId AddTableGroup(Document& document, ElementId table, ElementId member, GroupPlace place,
                        const NewGroup& group) {
    const bool isDetails = document.Name(member) == "Details";
    if (place == GroupPlace::Before || place == GroupPlace::After) {
        throw EditError("A Table of an older schema cannot have groups beside each other");
    }
    if (place == GroupPlace::Child && isDetails) {
        throw EditError("The details have one row for each row of data and hold no group");
    }
    const std::string xml = GroupingXml(document, group);
    const ElementId groups = EnsureChild(document, table, "TableGroups");
    const ElementId next = isDetails ? NoElement
                           : place == GroupPlace::Parent
                               ? member
                               : document.IdAt(document.Tree()[document.IndexOf(member)].nextSibling);
    const ElementId added = InsertXml(document, groups, "<TableGroup>" + xml + "</TableGroup>", next);
    AddTableBands(document, table, added, group.hasHeader, group.hasFooter);
    if (group.hasHeader) {
        const auto cells =
            ChildrenNamed(document, added, "Header/TableRows/TableRow/TableCells", "TableCell");
        if (!cells.empty()) {
            SetTextOfBox(document, ItemInCell(document, cells.front()), group.expression);
        }
    }
    return added;
}

}  // namespace

std::vector<RegionGroup> GroupsOf(const Document& document, ElementId region, Axis axis) {
    const std::string kind = document.Name(region);
    if (kind == "Table") {
        return axis == Axis::Rows ? TableGroups(document, region) : std::vector<RegionGroup>{};
    }
    return kind == "Matrix" ? MatrixGroups(document, region, axis) : TablixGroups(document, region, axis);
}

ElementId AddGroup(Document& document, ElementId region, Axis axis, ElementId member, GroupPlace place,
                   const NewGroup& group) {
    const StepGroup step(document, "Add group");
    CheckExpression(group);
    ElementId added = NoElement;
    if (document.Name(region) == "Table") {
        added = AddTableGroup(document, region, member, place, group);
    } else if (document.Name(region) == "Matrix") {
        added = AddMatrixGroup(document, member, place, group, GroupingXml(document, group));
    } else {
        TablixGrouper grouper(document, region, axis, group);
        const int index = grouper.IndexOf(member);
        added = place == GroupPlace::Parent ? grouper.Wrap({index})
                : place == GroupPlace::Child
                    ? grouper.AddChild(index)
                    : grouper.AddBeside(index, place == GroupPlace::Before ? Side::Before : Side::After);
    }
    FollowSize(document, region);
    return added;
}

void DeleteGroup(Document& document, ElementId region, Axis axis, ElementId member, OwnTracks tracks) {
    const StepGroup step(document, "Delete group");
    const std::vector<RegionGroup> groups = GroupsOf(document, region, axis);
    const auto found = std::find_if(groups.begin(), groups.end(),
                                    [member](const RegionGroup& one) { return one.member == member; });
    if (found == groups.end()) {
        throw EditError("The table has no such group");
    }
    if (document.Name(region) == "Matrix") {
        DeleteMatrixGroup(document, member);
        RefuseIfUsed(document, {found->name});
    } else if (document.Name(region) == "Table") {
        if (document.Name(member) == "Details") {
            throw EditError("The details of a Table are deleted by their rows");
        }
        const std::size_t own = RowsOf(document, member, "Header") + RowsOf(document, member, "Footer");
        if (tracks == OwnTracks::Stay && own > 0) {
            throw EditError("The header and the footer of a TableGroup cannot stay without it");
        }
        if (own > 0 && own == GridOf(document, region).rows.size()) {
            throw EditError("The table has no other rows; delete the table itself");
        }
        const std::vector<std::string> names = ScopesIn(document, member);
        Remove(document, member);
        RefuseIfUsed(document, names);
    } else if (tracks == OwnTracks::Go) {
        DeleteTracks(document, region, axis, found->first, found->count);
    } else {
        for (const char* name : {"Group", "SortExpressions"}) {
            RemoveAt(document, member, name);
        }
        RefuseIfUsed(document, {found->name});
    }
    FollowSize(document, region);
}

}  // namespace designer
