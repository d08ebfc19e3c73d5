// SPDX-License-Identifier: GPL-3.0-or-later
// Members of TablixTable for formats that carry data without a look.
#include <algorithm>

#include "rdl/layout/items/tablix_table.h"

namespace rdl::layout {
namespace {

void AddColumns(const TablixPlan& plan, std::vector<DataColumn>& columns);

void AddColumns(const ItemPlan* item, std::vector<DataColumn>& columns) {
    if (!item || item->definition->dataOutput == ReportItem::DataOutput::NoOutput) {
        return;
    }
    if (!item->column.empty()) {
        columns.push_back({item->definition->name, item->column});
    }
    for (const std::unique_ptr<ItemPlan>& child : item->children) {
        AddColumns(child.get(), columns);
    }
    if (item->tablix) {
        AddColumns(*item->tablix, columns);
    }
}

void AddColumns(const HierarchyPlan& hierarchy, std::vector<DataColumn>& columns) {
    for (const MemberPlan& member : hierarchy.members) {
        AddColumns(member.header.get(), columns);
    }
}

void AddColumns(const std::vector<std::vector<CellPlan>>& rows, std::vector<DataColumn>& columns) {
    for (const std::vector<CellPlan>& row : rows) {
        for (const CellPlan& cell : row) {
            AddColumns(cell.item.get(), columns);
        }
    }
}

void AddColumns(const TablixPlan& plan, std::vector<DataColumn>& columns) {
    AddColumns(plan.corner, columns);
    AddColumns(plan.rows, columns);
    AddColumns(plan.columns, columns);
    AddColumns(plan.cells, columns);
}

// Whether neither the item nor what lies in it has rows of its own.
bool HasNoRows(const ItemPlan* item) {
    if (!item) {
        return true;
    }
    switch (item->definition->kind) {
        case ItemKind::Textbox:
        case ItemKind::Image:
        case ItemKind::Line:
            return true;
        case ItemKind::Rectangle:
            return std::all_of(item->children.begin(), item->children.end(),
                               [](const std::unique_ptr<ItemPlan>& child) { return HasNoRows(child.get()); });
        default:
            return false;
    }
}

bool HasNoRows(const HierarchyPlan& hierarchy) {
    return std::all_of(hierarchy.members.begin(), hierarchy.members.end(),
                       [](const MemberPlan& member) { return HasNoRows(member.header.get()); });
}

bool HaveNoRows(const std::vector<std::vector<CellPlan>>& rows) {
    return std::all_of(rows.begin(), rows.end(), [](const std::vector<CellPlan>& row) {
        return std::all_of(row.begin(), row.end(),
                           [](const CellPlan& cell) { return HasNoRows(cell.item.get()); });
    });
}

}  // namespace

std::vector<DataColumn> TablixTable::DataColumns() const {
    std::vector<DataColumn> columns;
    AddColumns(m_plan, columns);
    return columns;
}

bool TablixTable::IsFlat() const {
    const bool hasTotals = std::any_of(m_rows.begin(), m_rows.end(),
                                       [](const PlannedRow& row) { return (row.flags & GroupFooter) != 0; });
    return !hasTotals && HaveNoRows(m_plan.corner) && HaveNoRows(m_plan.cells) && HasNoRows(m_plan.rows) &&
           HasNoRows(m_plan.columns);
}

std::vector<std::uint64_t> TablixTable::GroupsAround(std::size_t index) const {
    const PlannedRow& row = m_rows[index];
    std::vector<std::uint64_t> groups;
    const int innermost = row.leaf < 0            ? -1
                          : row.flags & Collapsed ? CollapsedGroup(index)
                                                  : m_rowGroupOfLeaf[static_cast<std::size_t>(row.leaf)];
    for (int group = innermost; group >= 0;
         group = m_plan.rows.groups[static_cast<std::size_t>(group)].parent) {
        const std::uint32_t instance =
            group == innermost ? row.instance
                               : m_region->Ancestor(TableAxis::Rows, innermost, row.instance, group);
        groups.push_back(static_cast<std::uint64_t>(group) << 32 | instance);
    }
    std::reverse(groups.begin(), groups.end());
    return groups;
}

}  // namespace rdl::layout
