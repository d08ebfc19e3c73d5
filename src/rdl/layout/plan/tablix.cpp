// SPDX-License-Identifier: GPL-3.0-or-later
// Members of Planner: tables, their groups and cells.
#include <algorithm>
#include <cmath>
#include <utility>

#include "rdl/layout/plan/plan.h"
#include "rdl/values/error.h"

namespace rdl::layout {
namespace {

constexpr double SameEdge = 0.05;  // points: header cells that end within this end together

// The edges between header columns (or rows): where any header cell begins or ends.
std::vector<double> Edges(const std::vector<double>& begins, const HierarchyPlan& plan) {
    std::vector<double> all{0};
    for (std::size_t i = 0; i < plan.members.size(); ++i) {
        if (plan.members[i].definition->header) {
            all.push_back(begins[i]);
            all.push_back(begins[i] + plan.members[i].definition->headerSize);
        }
    }
    std::sort(all.begin(), all.end());
    std::vector<double> edges;
    for (const double edge : all) {
        if (edges.empty() || edge - edges.back() > SameEdge) {
            edges.push_back(edge);
        }
    }
    return edges;
}

int EdgeAt(const std::vector<double>& edges, double place) {
    const auto found = std::lower_bound(edges.begin(), edges.end(), place - SameEdge);
    return static_cast<int>(found - edges.begin());
}

void PlaceHeaders(const std::vector<double>& begins, HierarchyPlan& plan) {
    const std::vector<double> edges = Edges(begins, plan);
    for (std::size_t i = 0; i + 1 < edges.size(); ++i) {
        plan.headerSizes.push_back(edges[i + 1] - edges[i]);
    }
    for (std::size_t i = 0; i < plan.members.size(); ++i) {
        MemberPlan& member = plan.members[i];
        if (member.definition->header) {
            member.headerBegin = EdgeAt(edges, begins[i]);
            member.headerSpan =
                std::max(0, EdgeAt(edges, begins[i] + member.definition->headerSize) - member.headerBegin);
        }
    }
}

}  // namespace

GroupPlan Planner::GroupOf(const TablixMember& member, int parent, const HierarchyPlan& plan) const {
    const Group& group = *member.group;
    GroupPlan made;
    made.definition = &group;
    made.parent = parent;
    made.level = parent < 0 ? 0 : plan.groups[static_cast<std::size_t>(parent)].level + 1;
    for (const Expr& key : group.expressions) {
        made.keys.push_back(Of(key));
    }
    made.filters = Filters(group.filters);
    made.sorts = Sorts(member.sorts);
    for (const Variable& variable : group.variables) {
        made.variables.push_back(Of(variable.value));
    }
    made.parentKey = Of(group.parent);
    made.documentMapLabel = Of(group.documentMapLabel);
    made.pageBreak = Break(group.pageBreak);
    return made;
}

std::vector<int> Planner::Members(const std::vector<TablixMember>& members, TableAxis axis, int group,
                                  double begin, std::vector<double>& begins, HierarchyPlan& plan) {
    int& here = axis == TableAxis::Rows ? m_rowGroup : m_columnGroup;
    std::vector<int> indexes;
    for (const TablixMember& member : members) {
        const auto index = plan.members.size();
        indexes.push_back(static_cast<int>(index));
        plan.members.emplace_back();
        begins.push_back(begin);
        int own = group;
        if (member.group) {
            own = static_cast<int>(plan.groups.size());
            plan.groups.push_back(GroupOf(member, group, plan));
            plan.members[index].group = own;
        }
        here = own;
        plan.members[index].definition = &member;
        plan.members[index].scopeGroup = own;
        plan.members[index].hidden = Of(member.visibility.hidden);
        if (member.header) {
            plan.members[index].header = Item(*member.header);
        }
        if (member.members.empty()) {
            plan.members[index].leaf = plan.leafCount++;
        } else {
            const double inner = begin + (member.header ? member.headerSize : 0);
            auto children = Members(member.members, axis, own, inner, begins, plan);
            plan.members[index].children = std::move(children);
        }
        here = group;
    }
    return indexes;
}

void Planner::Hierarchy(const std::vector<TablixMember>& members, TableAxis axis, HierarchyPlan& plan) {
    std::vector<double> begins;
    plan.roots = Members(members, axis, -1, 0, begins, plan);
    PlaceHeaders(begins, plan);
}

void Planner::Cells(const Tablix& tablix, TablixPlan& plan) {
    const auto scopeGroups = [](const HierarchyPlan& hierarchy) {
        std::vector<int> groups(static_cast<std::size_t>(hierarchy.leafCount), -1);
        for (const MemberPlan& member : hierarchy.members) {
            if (member.leaf >= 0) {
                groups[static_cast<std::size_t>(member.leaf)] = member.scopeGroup;
            }
        }
        return groups;
    };
    const std::vector<int> rowGroups = scopeGroups(plan.rows);
    const std::vector<int> columnGroups = scopeGroups(plan.columns);
    for (std::size_t r = 0; r < tablix.rows.size(); ++r) {
        auto& row = plan.cells.emplace_back();
        const auto& cells = tablix.rows[r].cells;
        for (std::size_t c = 0; c < cells.size() && c < columnGroups.size(); ++c) {
            m_rowGroup = rowGroups[r];
            m_columnGroup = columnGroups[c];
            CellPlan& cell = row.emplace_back();
            cell.columnSpan = std::max(1, cells[c].colSpan);
            cell.rowSpan = std::max(1, cells[c].rowSpan);
            if (cells[c].item) {
                cell.item = Item(*cells[c].item);
            }
        }
        row.resize(columnGroups.size());
    }
    m_rowGroup = m_columnGroup = -1;
    for (const auto& cells : tablix.corner) {
        auto& row = plan.corner.emplace_back();
        for (const TablixCell& cell : cells) {
            CellPlan& made = row.emplace_back();
            made.columnSpan = std::max(1, cell.colSpan);
            made.rowSpan = std::max(1, cell.rowSpan);
            if (cell.item) {
                made.item = Item(*cell.item);
            }
        }
    }
}

std::unique_ptr<TablixPlan> Planner::Region(const Tablix& tablix) {
    auto plan = std::make_unique<TablixPlan>();
    plan->definition = &tablix;
    plan->dataSet = m_programs.DataSetOf(tablix);
    plan->filters = Filters(tablix.filters);
    plan->sorts = Sorts(tablix.sorts);
    plan->noRowsMessage = Of(tablix.noRowsMessage);
    plan->messageStyle.Compile({&tablix.style}, m_programs);

    const TablixPlan* const outerRegion = m_region;
    const int outerRow = m_rowGroup;
    const int outerColumn = m_columnGroup;
    const bool outerHides = std::exchange(m_hidesDuplicates, false);
    m_region = plan.get();
    m_rowGroup = m_columnGroup = -1;
    Hierarchy(tablix.rowMembers, TableAxis::Rows, plan->rows);
    Hierarchy(tablix.columnMembers, TableAxis::Columns, plan->columns);
    if (static_cast<std::size_t>(plan->rows.leafCount) != tablix.rows.size()) {
        throw Error("Tablix \"" + tablix.name + "\" has " + std::to_string(tablix.rows.size()) +
                    " rows, but its row members have " + std::to_string(plan->rows.leafCount));
    }
    if (static_cast<std::size_t>(plan->columns.leafCount) != tablix.columnWidths.size()) {
        throw Error("Tablix \"" + tablix.name + "\" has " + std::to_string(tablix.columnWidths.size()) +
                    " columns, but its column members have " + std::to_string(plan->columns.leafCount));
    }
    Cells(tablix, *plan);
    m_region = outerRegion;
    m_rowGroup = outerRow;
    m_columnGroup = outerColumn;
    plan->hidesDuplicates = std::exchange(m_hidesDuplicates, outerHides);
    return plan;
}

}  // namespace rdl::layout
