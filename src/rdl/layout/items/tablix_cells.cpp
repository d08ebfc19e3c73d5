// SPDX-License-Identifier: GPL-3.0-or-later
// Members of TablixTable: the cells of a table's rows.
#include <algorithm>
#include <numeric>

#include "rdl/values/index.h"

#include "rdl/layout/items/tablix_table.h"

namespace rdl::layout {
namespace {}  // namespace

void TablixTable::Row(std::size_t index, TableRow& row) {
    Build(index, nullptr, row);
}

void TablixTable::RowWithin(std::size_t index, const TableColumns& columns, TableRow& row) {
    const bool areEqual = m_rows[index].leaf < 0 || m_plan.hidesDuplicates || m_columnsBefore > 0;
    Build(index, areEqual ? nullptr : &columns, row);
}

// `wanted` null: all columns.
void TablixTable::Build(std::size_t index, const TableColumns* wanted, TableRow& row) {
    m_builder.Place().CheckBounds();
    const PlannedRow& planned = m_rows[index];
    const Evaluator::Stay stay(m_builder.Place());
    row.columnHeader = (planned.flags & ColumnHeader) != 0;
    row.groupHeader = (planned.flags & GroupHeader) != 0;
    row.groupFooter = (planned.flags & GroupFooter) != 0;
    row.breakBefore = (planned.flags & BreakBefore) != 0;
    row.breakAfter = (planned.flags & BreakAfter) != 0;
    row.keepWithNext = (planned.flags & KeepWithNext) != 0;
    row.keepWithPrevious = (planned.flags & KeepWithPrevious) != 0;
    row.resetPageNumber = (planned.flags & ResetPageNumber) != 0;
    row.canGrow = true;
    row.pageName.clear();
    row.labels.clear();
    if (planned.leaf < 0) {
        FillHeaderRow(-1 - planned.leaf, row);
        SortCells(row);
        return;
    }
    row.height = m_plan.definition->rows[At(planned.leaf)].height;
    if (planned.flags & StartsGroup) {
        FillGroupStart(index, row);
    }
    std::size_t used = 0;
    FillRowHeaders(index, row, used);
    FillBody(planned, index, wanted, row, used);
    row.cells.resize(used);
    SortCells(row);
}

void TablixTable::RowOnTop(std::size_t index, TableRow& row) {
    m_builder.ShowDuplicates(true);
    Row(index, row);
    m_builder.ShowDuplicates(false);
}

// They are made with the row headers first, wherever those stand.
void TablixTable::SortCells(TableRow& row) const {
    if (m_columnsBefore > 0) {
        std::sort(row.cells.begin(), row.cells.end(),
                  [](const TableCell& left, const TableCell& right) { return left.column < right.column; });
    }
}

bool TablixTable::AddCell(ItemPlan& item, const Scope& scope, int column, int columnSpan, int rowSpan,
                          TableRow& row, std::size_t& used) {
    if (used == row.cells.size()) {
        row.cells.emplace_back();
    }
    TableCell& cell = row.cells[used];
    Enter(scope);
    if (!FillCell(item, cell.content)) {
        return false;
    }
    ++used;
    cell.column = PlaceOf(column);
    cell.columnSpan = columnSpan;
    cell.rowSpan = rowSpan;
    Instance& content = cell.content;
    content.x = content.y = 0;
    content.width = 0;
    for (int i = 0; i < columnSpan; ++i) {
        content.width += columnWidths[At(cell.column + i)];
    }
    if (content.kind != InstanceKind::Line) {
        content.height = row.height;
    }
    return true;
}

// Most cells of a large matrix have no rows. What their text box asks for is then the same in all of them,
// unless it asks for more than its rows; it is made once for each cell of the row that is being reused.
bool TablixTable::FillCell(ItemPlan& item, Instance& content) {
    Evaluator& place = m_builder.Place();
    if (place.HasRow() || !m_builder.RepeatsWithoutRows(item)) {
        return m_builder.Fill(item, content);
    }
    const SameText same(m_region->id, &item);
    if (content.same.IsSameAs(same)) {
        return true;
    }
    place.ForgetQuestions();
    if (!m_builder.Fill(item, content)) {
        return false;
    }
    if (!place.HasAskedBeyondRows()) {
        content.same = same;
    }
    return true;
}

void TablixTable::FillGroupStart(std::size_t index, TableRow& row) {
    auto start =
        std::lower_bound(m_starts.begin(), m_starts.end(), index,
                         [](const GroupStart& known, std::size_t wanted) { return known.row < wanted; });
    for (; start != m_starts.end() && start->row == index; ++start) {
        const GroupPlan& group = m_plan.rows.groups[At(start->group)];
        Enter(Scope::Of(m_region.get(), TableAxis::Rows, start->group, start->instance));
        if (group.pageBreak.pageName.isSet) {
            const std::string name = m_builder.Text(group.pageBreak.pageName);
            row.pageName = name.empty() ? row.pageName : name;
        }
        const std::string label = m_builder.Text(group.documentMapLabel);
        if (!label.empty()) {
            row.labels.push_back({label, group.level});
        }
    }
}

void TablixTable::FillHeaderRow(int header, TableRow& row) {
    std::size_t used = 0;
    row.height = m_plan.columns.headerSizes[At(header)];
    if (At(header) < m_plan.corner.size()) {
        auto& cells = m_plan.corner[At(header)];
        for (int column = 0; column < m_headerCount && At(column) < cells.size(); ++column) {
            CellPlan& cell = cells[At(column)];
            if (cell.item) {
                AddCell(*cell.item, Scope{m_region.get()}, column,
                        std::min(cell.columnSpan, m_headerCount - column), cell.rowSpan, row, used);
            }
        }
    }
    for (const ColumnHeaderCell& cell : m_columnHeaders) {
        const MemberPlan& member = m_plan.columns.members[At(cell.member)];
        if (member.headerBegin == header && cell.span > 0 && member.headerSpan > 0) {
            const Column& below = m_columns[At(cell.column - m_headerCount)];
            const bool reachesDown = below.collapsed && below.group == member.scopeGroup;
            const int rows = reachesDown ? static_cast<int>(m_plan.columns.headerSizes.size()) - header
                                         : member.headerSpan;
            AddCell(*member.header,
                    Scope::Of(m_region.get(), TableAxis::Columns, member.scopeGroup, cell.instance),
                    cell.column, cell.span, rows, row, used);
        }
    }
    row.cells.resize(used);
}

void TablixTable::FillRowHeaders(std::size_t index, TableRow& row, std::size_t& used) {
    if (m_headers.empty()) {
        return;
    }
    auto header =
        std::lower_bound(m_headers.begin(), m_headers.end(), index,
                         [](const RowHeader& known, std::size_t wanted) { return known.row < wanted; });
    const int collapsed = (m_rows[index].flags & Collapsed) ? CollapsedGroup(index) : -1;
    for (; header != m_headers.end() && header->row == index; ++header) {
        const MemberPlan& member = m_plan.rows.members[At(header->member)];
        const bool reachesOver = collapsed >= 0 && member.scopeGroup == collapsed;
        AddCell(*member.header,
                Scope::Of(m_region.get(), TableAxis::Rows, member.scopeGroup, header->instance),
                member.headerBegin, reachesOver ? m_headerCount - member.headerBegin : member.headerSpan,
                static_cast<int>(header->span), row, used);
    }
}

int TablixTable::CollapsedGroup(std::size_t index) const {
    return std::lower_bound(m_collapsed.begin(), m_collapsed.end(), index,
                            [](const CollapsedRow& known, std::size_t wanted) { return known.row < wanted; })
        ->group;
}

// How many of the columns that a cell spans in the definition there are.
int TablixTable::BodyColumnSpan(std::size_t column, int defined) const {
    const std::int32_t leaf = m_columns[column].leaf;
    int span = 1;
    for (std::size_t next = column + 1; span < defined && next < m_columns.size(); ++next, ++span) {
        if (m_columns[next].leaf <= m_columns[next - 1].leaf || m_columns[next].leaf >= leaf + defined) {
            break;
        }
    }
    return span;
}

int TablixTable::BodyRowSpan(std::size_t index, int defined) const {
    const std::int32_t leaf = m_rows[index].leaf;
    int span = 1;
    for (std::size_t next = index + 1; span < defined && next < m_rows.size(); ++next, ++span) {
        if (m_rows[next].leaf <= m_rows[next - 1].leaf || m_rows[next].leaf >= leaf + defined) {
            break;
        }
    }
    return span;
}

void TablixTable::FillBody(const PlannedRow& planned, std::size_t index, const TableColumns* wanted,
                           TableRow& row, std::size_t& used) {
    auto& cells = m_plan.cells[At(planned.leaf)];
    const int rowGroup =
        (planned.flags & Collapsed) ? CollapsedGroup(index) : m_rowGroupOfLeaf[At(planned.leaf)];
    const bool inPart = wanted && std::all_of(cells.begin(), cells.end(), [this](const CellPlan& cell) {
                            return !cell.item || (cell.columnSpan == 1 && m_builder.MayBeLeftOut(*cell.item));
                        });
    const std::size_t headers = At(m_headerCount);
    const std::size_t repeated = inPart ? std::max(wanted->headers, headers) - headers : 0;
    const std::size_t first = inPart ? std::max(wanted->first, headers) - headers : 0;
    const std::size_t end = inPart ? std::max(wanted->end, headers) - headers : m_columns.size();
    for (std::size_t i = 0; i < std::min(end, m_columns.size());) {
        if (inPart && i >= repeated && i < first) {
            i = first;
            continue;
        }
        const Column& column = m_columns[i];
        CellPlan& cell = cells[At(column.leaf)];
        if (!cell.item) {
            ++i;
            continue;
        }
        const int span = cell.columnSpan == 1 ? 1 : BodyColumnSpan(i, cell.columnSpan);
        const Scope scope{m_region.get(), rowGroup, column.group, planned.instance,
                          column.group < 0 ? 0 : column.instance};
        AddCell(*cell.item, scope, m_headerCount + static_cast<int>(i), span,
                cell.rowSpan == 1 ? 1 : BodyRowSpan(index, cell.rowSpan), row, used);
        i += At(span);
    }
}

}  // namespace rdl::layout
