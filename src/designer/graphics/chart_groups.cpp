// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/graphics/chart_groups.h"

#include <algorithm>

#include "designer/document/editing.h"
#include "designer/document/placeholder_text.h"
#include "designer/document/xml_text.h"
#include "designer/graphics/part_text.h"
#include "designer/tables/fields.h"
#include "designer/tables/tablix_shape.h"

namespace designer {
namespace {

constexpr std::string_view MembersName = "ChartMembers";
constexpr const char* GroupPath = "Group/GroupExpressions";
constexpr int MostLevels = 50;
constexpr std::size_t MostGroups = 500;

std::vector<ElementId> MembersOf(const Document& document, ElementId owner) {
    return ChildrenNamed(document, owner, MembersName, "ChartMember");
}

bool IsStaticLeaf(const Document& document, ElementId member) {
    return document.Find(member, "Group") == NoElement && MembersOf(document, member).empty();
}

bool IsGroup(const Document& document, ElementId member) {
    return ChildrenNamed(document, member, GroupPath, "GroupExpression").size() == 1;
}

std::string TextOfMember(const Document& document, ElementId member) {
    return document.Find(member, "Group") == NoElement
               ? TrimmedTextAt(document, member, "Label")
               : TrimmedTextAt(document, member, std::string(GroupPath) + "/GroupExpression");
}

class TreeReader {
 public:
    TreeReader(const Document& document, bool isOfSeries) : m_document(document), m_isOfSeries(isOfSeries) {}

    ChartTree Read(ElementId chart) {
        const ElementId hierarchy =
            m_document.Find(chart, m_isOfSeries ? "ChartSeriesHierarchy" : "ChartCategoryHierarchy");
        if (hierarchy == NoElement) {
            m_tree.leaves = {NoElement};
            m_tree.labels = {{}};
            return std::move(m_tree);
        }
        const std::vector<ElementId> members = MembersOf(m_document, hierarchy);
        if (!m_isOfSeries && members.size() == 1 && IsStaticLeaf(m_document, members.front())) {
            AddLeaf(hierarchy, {});  // the one category of a chart without groups
        } else {
            ReadMembers(hierarchy, 1);
        }
        return std::move(m_tree);
    }

 private:
    void AddLeaf(ElementId leaf, std::vector<ElementId> labels) {
        m_tree.leaves.push_back(leaf);
        m_tree.labels.push_back(std::move(labels));
    }

    void ReadMembers(ElementId owner, int level) {
        const std::vector<ElementId> members = MembersOf(m_document, owner);
        const bool areLabels = std::all_of(members.begin(), members.end(),
                                           [this](ElementId id) { return IsStaticLeaf(m_document, id); });
        if (members.empty() || (m_isOfSeries && areLabels)) {
            AddLeaf(owner, members);
            return;
        }
        for (const ElementId member : members) {
            const std::string text = TextOfMember(m_document, member);
            const bool isStatic = m_document.Find(member, "Group") == NoElement;
            const bool isKnown = isStatic ? !m_isOfSeries && !text.empty() && !IsExpression(text)
                                          : IsGroup(m_document, member);
            m_tree.isKnown = m_tree.isKnown && isKnown && level < MostLevels;
            if (level >= MostLevels || m_tree.groups.size() >= MostGroups) {
                m_tree.isKnown = false;
                return;
            }
            m_tree.groups.push_back({member, text, level});
            ReadMembers(member, level + 1);
        }
    }

    const Document& m_document;
    const bool m_isOfSeries;
    ChartTree m_tree;
};

std::string NewMember(const std::string& expression, NewNames& names, const std::string& inner) {
    if (!IsExpression(expression)) {
        return ElementXml("ChartMember", inner + LeafOf("Label", expression));
    }
    const std::string field = FieldOfValue(expression);
    return ElementXml(
        "ChartMember",
        "<Group Name=\"" + names.Take((field.empty() ? "Chart" : field) + "Group") + "\">" +
            ElementXml("GroupExpressions", LeafOf("GroupExpression", expression)) + "</Group>" +
            ElementXml("SortExpressions", ElementXml("SortExpression", LeafOf("Value", expression))) + inner +
            LeafOf("Label", expression));
}

// The member as it is, with other members within it.
std::string KeptMember(const Document& document, ElementId member, const std::string& inner) {
    std::string before, after;
    for (const ElementId child : document.Children(member)) {
        const std::string name = document.Name(child);
        if (name != MembersName) {
            (name == "Group" || name == "SortExpressions" ? before : after) += XmlOf(document, child);
        }
    }
    return ElementXml("ChartMember", before + inner + after);
}

bool IsLeaf(const std::vector<ChartGroup>& groups, std::size_t at) {
    return at + 1 == groups.size() || groups[at + 1].level <= groups[at].level;
}

// Returns the members of a level from `at` on, which is then after them.
std::string LevelXml(const Document& document, const std::vector<ChartGroup>& groups, std::size_t& at,
                     const std::string& inner, NewNames& names) {
    const int level = groups[at].level;
    std::string members;
    while (at < groups.size() && groups[at].level >= level) {
        const ChartGroup& group = groups[at];
        const bool isLeaf = IsLeaf(groups, at);
        ++at;
        const std::string within = isLeaf ? inner : LevelXml(document, groups, at, inner, names);
        const bool stays =
            group.member != NoElement && TextOfMember(document, group.member) == group.expression;
        members +=
            stays ? KeptMember(document, group.member, within) : NewMember(group.expression, names, within);
    }
    return ElementXml(MembersName, members);
}

}  // namespace

ChartTree ReadCategories(const Document& document, ElementId chart) {
    return TreeReader(document, false).Read(chart);
}

ChartTree ReadSeriesGroups(const Document& document, ElementId chart) {
    return TreeReader(document, true).Read(chart);
}

void FitLevels(std::vector<ChartGroup>& groups) {
    int before = 0;
    for (ChartGroup& group : groups) {
        group.level = std::clamp(group.level, 1, before + 1);
        before = group.level;
    }
}

std::vector<std::size_t> OldLeaves(const std::vector<ChartGroup>& wanted, const std::vector<ElementId>& old) {
    if (wanted.empty()) {
        return {0};
    }
    std::vector<std::size_t> leaves;
    std::vector<std::size_t> around;  // by levels: the old leaf that the group is or is within
    for (std::size_t at = 0; at < wanted.size(); ++at) {
        const auto found =
            wanted[at].member == NoElement ? old.end() : std::find(old.begin(), old.end(), wanted[at].member);
        const auto level = static_cast<std::size_t>(wanted[at].level);
        around.resize(level, 0);
        around[level - 1] = found != old.end() ? static_cast<std::size_t>(found - old.begin())
                            : level > 1        ? around[level - 2]
                                               : 0;
        if (IsLeaf(wanted, at)) {
            leaves.push_back(around[level - 1]);
        }
    }
    return leaves;
}

std::string ChartMembersXml(const Document& document, const std::vector<ChartGroup>& groups,
                            const std::string& inner, NewNames& names) {
    if (groups.empty()) {
        return inner.empty() ? ElementXml(MembersName, "<ChartMember />") : inner;
    }
    std::size_t at = 0;
    return LevelXml(document, groups, at, inner, names);
}

std::vector<ElementId> ChartPointsOf(const Document& document, ElementId series) {
    return ChildrenNamed(document, series, "ChartDataPoints", "ChartDataPoint");
}

void PutChartPoints(Document& document, ElementId series, const std::vector<std::size_t>& old,
                    std::size_t oldCount) {
    const std::vector<ElementId> points = ChartPointsOf(document, series);
    // A series that has one point only has it for all.
    if (points.empty() || (points.size() != 1 && points.size() != oldCount)) {
        return;
    }
    const auto placeOf = [&](std::size_t leaf) { return points.size() == 1 ? 0 : old[leaf]; };
    bool isSame = points.size() == old.size();
    for (std::size_t leaf = 0; leaf < old.size(); ++leaf) {
        isSame = isSame && placeOf(leaf) == leaf;
    }
    if (isSame) {
        return;
    }
    std::vector<std::string> made;
    for (std::size_t leaf = 0; leaf < old.size(); ++leaf) {
        made.push_back(XmlOf(document, points[placeOf(leaf)]));
    }
    const ElementId parent = document.Parent(points.front());
    for (const std::string& xml : made) {
        InsertXml(document, parent, xml, points.front());
    }
    RemoveAll(document, points, {});
}

}  // namespace designer
