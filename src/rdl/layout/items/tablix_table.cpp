// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/items/tablix_table.h"

#include <algorithm>
#include <numeric>

#include "rdl/layout/region/grouping.h"
#include "rdl/values/error.h"
#include "rdl/values/index.h"
#include "rdl/values/reserve.h"

namespace rdl::layout {
namespace {

constexpr std::size_t MaxColumns = 10'000;
constexpr std::size_t MaxRows = 50'000'000;

std::vector<int> GroupsOfLeaves(const HierarchyPlan& plan) {
    std::vector<int> groups(At(plan.leafCount), -1);
    for (const MemberPlan& member : plan.members) {
        if (member.leaf >= 0) {
            groups[At(member.leaf)] = member.scopeGroup;
        }
    }
    return groups;
}

// A group whose members are hidden until it is toggled shows its own header and totals instead; without that
// nothing of it would be left to toggle. Members that are merely hidden take their group with them.
bool Collapses(const HierarchyPlan& plan, const MemberPlan& member) {
    return member.group >= 0 && member.header &&
           std::any_of(member.children.begin(), member.children.end(), [&plan](int child) {
               return !plan.members[At(child)].definition->visibility.toggleItem.empty();
           });
}

// Whether its first row has a page name or a label.
bool HasStart(const GroupPlan& group) {
    return group.pageBreak.pageName.isSet || group.documentMapLabel.isSet;
}

int FirstLeaf(const HierarchyPlan& plan, const MemberPlan& member) {
    const MemberPlan* at = &member;
    while (at->leaf < 0) {
        at = &plan.members[At(at->children.front())];
    }
    return at->leaf;
}

}  // namespace

TablixTable::TablixTable(TablixPlan& plan, std::shared_ptr<Region> region, ItemBuilder& builder)
    : m_plan(plan),
      m_region(std::move(region)),
      m_builder(builder),
      m_rowGroupOfLeaf(GroupsOfLeaves(plan.rows)) {
    const Tablix& tablix = *plan.definition;
    rightToLeft = tablix.rightToLeft;
    repeatColumnHeaders = tablix.repeatColumnHeaders;
    keepTogether = tablix.keepTogether;
    repeatRowHeaders = tablix.repeatRowHeaders;
    hidesDuplicates = plan.hidesDuplicates;
    headerColumns = m_headerCount = static_cast<int>(plan.rows.headerSizes.size());
    columnWidths = plan.rows.headerSizes;
    const Evaluator::Stay stay(builder.Place());
    Enter(Scope{m_region.get()});
    if (m_region->rows.empty() && plan.noRowsMessage.isSet) {
        noRowsMessage = builder.Text(plan.noRowsMessage);
        noRowsStyle = plan.messageStyle.Get(builder.Place());
        if (!noRowsMessage.empty()) {
            return;
        }
    }
    ExpandColumns(plan.columns.roots, 0);
    for (const Column& column : m_columns) {
        columnWidths.push_back(tablix.columnWidths[At(column.leaf)]);
    }
    MoveHeadersInside();
    for (std::size_t i = 0; i < plan.columns.headerSizes.size(); ++i) {
        m_rows.push_back({-1 - static_cast<std::int32_t>(i), 0, ColumnHeader | KeepWithNext});
    }
    ExpandRows(plan.rows.roots, 0);
    if (repeatColumnHeaders) {
        for (std::uint32_t i = 0; i < plan.columns.headerSizes.size(); ++i) {
            m_repeats.push_back({i, static_cast<std::uint32_t>(m_rows.size()), -1});
        }
    }
    LinkRepeats();
}

void TablixTable::Enter(const Scope& scope) {
    if (!(m_builder.Place().Current() == scope)) {
        m_builder.Place().Enter(scope);
    }
}

bool TablixTable::IsHidden(const MemberPlan& member, TableAxis axis, std::uint32_t instance) {
    if (member.definition->hideIfNoRows && m_region->rows.empty()) {
        return true;
    }
    if (!member.hidden.isSet) {
        return false;
    }
    Enter(Scope::Of(m_region.get(), axis, member.scopeGroup, instance));
    return m_builder.IsTrue(member.hidden);
}

void TablixTable::ExpandColumns(const std::vector<int>& members, std::uint32_t instance) {
    for (const int index : members) {
        const MemberPlan& member = m_plan.columns.members[At(index)];
        if (member.group < 0) {
            ExpandColumn(index, instance);
            continue;
        }
        const auto& instances = m_region->columnGroups[At(member.group)].instances;
        const int parent = m_plan.columns.groups[At(member.group)].parent;
        for (std::uint32_t i = m_region->FirstWithin(TableAxis::Columns, member.group, parent, instance);
             i < instances.size() && instances[i].parent == instance; ++i) {
            ExpandColumn(index, i);
        }
    }
}

// GroupsBeforeRowHeaders is the number of instances of the first member before the row headers.
void TablixTable::MoveHeadersInside() {
    const int wanted = m_plan.definition->groupsBeforeRowHeaders;
    const HierarchyPlan& columns = m_plan.columns;
    const int first = columns.roots.empty() ? -1 : columns.roots.front();
    if (wanted <= 0 || first < 0 || m_headerCount == 0 || columns.members[At(first)].group < 0) {
        return;
    }
    const int group = columns.members[At(first)].group;
    std::size_t before = 0;
    for (; before < m_columns.size(); ++before) {
        const Column& column = m_columns[before];
        const int own = column.group;
        if (own < 0 || !m_region->IsAround(TableAxis::Columns, group, own) ||
            m_region->Ancestor(TableAxis::Columns, own, column.instance, group) >=
                static_cast<std::uint32_t>(wanted)) {
            break;
        }
    }
    m_columnsBefore = static_cast<int>(before);
    if (before > 0) {
        const auto begin = columnWidths.begin();
        std::rotate(begin, begin + m_headerCount, begin + m_headerCount + m_columnsBefore);
        headerColumns = 0;
    }
}

// Returns the place of a column that is counted from the row headers on.
int TablixTable::PlaceOf(int column) const {
    if (column < m_headerCount) {
        return column + m_columnsBefore;
    }
    return column - m_headerCount < m_columnsBefore ? column - m_headerCount : column;
}

void TablixTable::ExpandColumn(int index, std::uint32_t instance) {
    const MemberPlan& member = m_plan.columns.members[At(index)];
    if (IsHidden(member, TableAxis::Columns, instance)) {
        return;
    }
    if (m_columns.size() >= MaxColumns) {
        throw Error("Tablix \"" + m_plan.definition->name + "\" has more than " + std::to_string(MaxColumns) +
                    " columns");
    }
    const std::size_t begin = m_columns.size();
    const std::size_t slot = m_columnHeaders.size();
    if (member.header) {
        m_columnHeaders.push_back({index, instance, m_headerCount + static_cast<int>(begin), 0});
    }
    if (member.leaf >= 0) {
        m_columns.push_back({member.leaf, instance, member.scopeGroup, false});
    } else {
        ExpandColumns(member.children, instance);
        if (m_columns.size() == begin && Collapses(m_plan.columns, member)) {
            m_columns.push_back({FirstLeaf(m_plan.columns, member), instance, member.scopeGroup, true});
        }
    }
    if (member.header) {
        m_columnHeaders[slot].span = static_cast<int>(m_columns.size() - begin);
    }
}

void TablixTable::ExpandRows(const std::vector<int>& members, std::uint32_t instance) {
    std::vector<std::size_t> ends;
    const std::size_t begin = m_rows.size();
    for (std::size_t i = 0; i < members.size(); ++i) {
        const MemberPlan& member = m_plan.rows.members[At(members[i])];
        if (member.group >= 0) {
            ExpandInstances(members[i], instance);
        } else {
            const std::size_t first = m_rows.size();
            ExpandRow(members[i], instance);
            const auto isGroup = [this](int other) { return m_plan.rows.members[At(other)].group >= 0; };
            const auto here = members.begin() + static_cast<std::ptrdiff_t>(i);
            MarkStatic(member, first, std::any_of(here, members.end(), isGroup),
                       std::any_of(members.begin(), here, isGroup));
        }
        ends.push_back(m_rows.size());
    }
    NoteRepeats(members, ends, begin);
}

void TablixTable::ExpandInstances(int index, std::uint32_t parent) {
    const MemberPlan& member = m_plan.rows.members[At(index)];
    const GroupPlan& group = m_plan.rows.groups[At(member.group)];
    const auto& instances = m_region->rowGroups[At(member.group)].instances;
    const std::uint32_t first = m_region->FirstWithin(TableAxis::Rows, member.group, group.parent, parent);
    if (member.leaf >= 0 && !member.hidden.isSet && group.parent < 0) {
        ReserveMore(m_rows, std::min(instances.size(), MaxRows));  // one each
    }
    for (std::uint32_t i = first; i < instances.size() && instances[i].parent == parent; ++i) {
        const std::size_t begin = m_rows.size(), slot = m_starts.size();
        if (HasStart(group)) {  // before those of the groups in it
            m_starts.push_back({static_cast<std::uint32_t>(begin), member.group, i});
        }
        ExpandRow(index, i);
        if (m_rows.size() == begin) {
            m_starts.resize(slot);
        } else {
            // A header is kept with rows of its own group only: details may be hidden, and then the next row
            // is another group's.
            m_rows[begin].flags &= static_cast<std::uint16_t>(~KeepWithPrevious);
            m_rows.back().flags &= static_cast<std::uint16_t>(~KeepWithNext);
            MarkBreaks(group, member.group, i, first, begin);
        }
    }
}

void TablixTable::ExpandRow(int index, std::uint32_t instance) {
    const MemberPlan& member = m_plan.rows.members[At(index)];
    if (IsHidden(member, TableAxis::Rows, instance)) {
        return;
    }
    if (m_rows.size() >= MaxRows) {
        throw Error("Tablix \"" + m_plan.definition->name + "\" has too many rows");
    }
    const std::size_t begin = m_rows.size();
    const std::size_t slot = m_headers.size();
    if (member.header && member.headerSpan > 0) {
        m_headers.push_back({static_cast<std::uint32_t>(begin), 0, index, instance});
    }
    if (member.leaf >= 0) {
        m_rows.push_back({member.leaf, instance, 0});
    } else {
        ExpandRows(member.children, instance);
        if (m_rows.size() == begin && Collapses(m_plan.rows, member)) {
            m_collapsed.push_back({static_cast<std::uint32_t>(begin), member.scopeGroup});
            m_rows.push_back({FirstLeaf(m_plan.rows, member), instance, Collapsed});
        }
    }
    const std::size_t count = m_rows.size() - begin;
    if (member.header && member.headerSpan > 0) {
        if (count == 0) {
            m_headers.resize(slot);
        } else {
            m_headers[slot].span = static_cast<std::uint32_t>(count);
        }
    }
    if (member.definition->keepTogether) {
        for (std::size_t i = begin; i + 1 < m_rows.size(); ++i) {
            m_rows[i].flags |= KeepWithNext;
        }
    }
}

void TablixTable::MarkStatic(const MemberPlan& member, std::size_t begin, bool beforeGroup, bool afterGroup) {
    using Keep = TablixMember::KeepWithGroup;
    const TablixMember& definition = *member.definition;
    for (std::size_t i = begin; i < m_rows.size(); ++i) {
        std::uint16_t& flags = m_rows[i].flags;
        if (beforeGroup) {
            flags |= GroupHeader;
        } else if (afterGroup) {
            flags |= GroupFooter;
        }
        if (beforeGroup && definition.repeatOnNewPage && member.scopeGroup < 0) {
            flags |= ColumnHeader;
        }
        if (definition.keepWithGroup == Keep::After) {
            flags |= KeepWithNext;
        } else if (definition.keepWithGroup == Keep::Before) {
            flags |= KeepWithPrevious;
        }
    }
}

// The first of the headings right above a group: a page of headings alone would say nothing. Headings of an
// outer group stay where they are if a page's name begins with the group: it belongs to its first row.
std::size_t TablixTable::FirstHeading(std::size_t begin, const PageBreakPlan& rule) const {
    std::size_t row = begin;
    while (row > 0 && (m_rows[row - 1].flags & (ColumnHeader | GroupHeader)) != 0 &&
           (m_rows[row - 1].flags & BreakAfter) == 0) {
        --row;
    }
    return row > 0 && rule.pageName.isSet ? begin : row;
}

void TablixTable::MarkBreaks(const GroupPlan& group, int groupIndex, std::uint32_t instance,
                             std::uint32_t first, std::size_t begin) {
    using Location = PageBreak::Location;
    const PageBreakPlan& rule = group.pageBreak;
    if (HasStart(group)) {
        m_rows[begin].flags |= StartsGroup;
    }
    if (rule.location == Location::None) {
        return;
    }
    Enter(Scope::Of(m_region.get(), TableAxis::Rows, groupIndex, instance));
    if (m_builder.IsTrue(rule.disabled)) {
        return;
    }
    // Each of them separates the instances; only Start and End also break at the ends of the whole.
    if (rule.AtStart() || instance != first) {
        PlannedRow& row = m_rows[instance == first ? FirstHeading(begin, rule) : begin];
        row.flags |= BreakBefore;
        if (m_builder.IsTrue(rule.resetPageNumber)) {
            row.flags |= ResetPageNumber;
        }
    }
    if (rule.AtEnd()) {
        m_rows.back().flags |= BreakAfter;
    }
}

// A repeating static row repeats on the pages on which the groups after it continue.
void TablixTable::NoteRepeats(const std::vector<int>& members, const std::vector<std::size_t>& ends,
                              std::size_t begin) {
    for (std::size_t i = 0; i < members.size(); ++i) {
        const MemberPlan& member = m_plan.rows.members[At(members[i])];
        const std::size_t first = i == 0 ? begin : ends[i - 1];
        if (member.group >= 0 || !member.definition->repeatOnNewPage || first == ends[i]) {
            continue;
        }
        std::size_t end = ends[i];
        for (std::size_t j = i + 1; j < members.size(); ++j) {
            if (m_plan.rows.members[At(members[j])].group >= 0) {
                end = ends[j];
            }
        }
        for (std::size_t row = first; row < ends[i] && end > ends[i]; ++row) {
            m_repeats.push_back({static_cast<std::uint32_t>(row), static_cast<std::uint32_t>(end), -1});
        }
    }
}

void TablixTable::LinkRepeats() {
    std::sort(m_repeats.begin(), m_repeats.end(),
              [](const Repeat& a, const Repeat& b) { return a.row < b.row; });
    std::vector<std::int32_t> open;
    for (std::size_t i = 0; i < m_repeats.size(); ++i) {
        while (!open.empty() && m_repeats[At(open.back())].end <= m_repeats[i].row) {
            open.pop_back();
        }
        m_repeats[i].outer = open.empty() ? -1 : open.back();
        open.push_back(static_cast<std::int32_t>(i));
    }
}

std::vector<std::size_t> TablixTable::RepeatedRows(std::size_t index) {
    std::vector<std::size_t> rows;
    const auto after =
        std::lower_bound(m_repeats.begin(), m_repeats.end(), index,
                         [](const Repeat& repeat, std::size_t row) { return repeat.row < row; });
    auto at = static_cast<std::int32_t>(after - m_repeats.begin()) - 1;
    while (at >= 0) {
        const Repeat& repeat = m_repeats[At(at)];
        if (index < repeat.end) {
            rows.push_back(repeat.row);
        }
        at = repeat.outer;
    }
    std::reverse(rows.begin(), rows.end());
    return rows;
}

std::shared_ptr<TableInstance> MakeTable(TablixPlan& plan, const Scope& outer, ItemBuilder& builder,
                                         Instance& owner) {
    auto region = BuildRegion(plan, outer, builder.Place());
    auto table = std::make_shared<TablixTable>(plan, std::move(region), builder);
    const Tablix& tablix = *plan.definition;
    double height = std::accumulate(plan.columns.headerSizes.begin(), plan.columns.headerSizes.end(), 0.0);
    for (const TablixRow& row : tablix.rows) {
        height += row.height;
    }
    owner.height = std::max(owner.height, height);
    const double width = std::accumulate(table->columnWidths.begin(), table->columnWidths.end(), 0.0);
    owner.width = table->noRowsMessage.empty() ? width : std::max(owner.width, width);
    owner.keepTogether = tablix.keepTogether;
    return table;
}

}  // namespace rdl::layout
