// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/common/flow_tablix.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "rdl/writers/common/flow_grid.h"

namespace rdl::writers {
namespace {

using layout::Instance;
using layout::InstanceKind;
using layout::LineStyle;
using layout::TableCell;

FlowCell LookOf(const Instance& item) {
    FlowCell cell;
    if (item.kind == InstanceKind::Line) {
        cell.topBorder = item.box ? item.box->top : layout::Border();
    } else if (item.box) {
        cell.Take(*item.box);
    }
    return cell;
}

}  // namespace

FlowTablix::FlowTablix(const Instance& item, double x)
    : m_item(item), m_table(*item.table), m_count(item.table->RowCount()), m_lefts{x} {
    for (const double width : m_table.columnWidths) {
        m_lefts.push_back(m_lefts.back() + (std::isfinite(width) ? std::max(width, 0.0) : 0.0));
    }
    CountHeadings();
}

void FlowTablix::CountHeadings() {
    std::size_t leading = 0;
    for (; leading < m_count; ++leading) {
        m_table.Row(leading, m_source);
        if (!m_source.columnHeader) {
            break;
        }
    }
    if (leading == m_count) {
        return;
    }
    const std::vector<std::size_t> repeated = m_table.RepeatedRows(leading);
    while (m_headings < leading &&
           std::find(repeated.begin(), repeated.end(), m_headings) != repeated.end()) {
        ++m_headings;
    }
}

const layout::TableRow& FlowTablix::Fetch(std::size_t index) {
    m_index = index;
    m_table.Row(index, m_source);
    return m_source;
}

FlowRow FlowTablix::Make(bool afterBreak) {
    m_row = FlowRow();
    m_row.item = m_item.name;
    m_row.height = m_source.height;
    m_row.heading = m_index < m_headings;
    m_row.keepNext = m_source.keepWithNext && m_index + 1 < m_count;
    m_row.rightToLeft = m_table.rightToLeft;
    m_reached = 0;
    m_next.clear();
    std::size_t next = 0;
    for (const TableCell& cell : m_source.cells) {
        for (; next < m_spans.size() && std::cmp_less_equal(m_spans[next].column, cell.column); ++next) {
            Continue(m_spans[next], afterBreak);
        }
        Place(cell);
    }
    for (; next < m_spans.size(); ++next) {
        Continue(m_spans[next], afterBreak);
    }
    Fill(m_lefts.size() - 1);
    std::swap(m_spans, m_next);
    EdgesOfTable();
    m_row.exact = IsExact();
    return std::move(m_row);
}

// What no cell covers is empty.
void FlowTablix::Fill(std::size_t column) {
    if (column > m_reached) {
        FlowCell& cell = m_row.cells.emplace_back();
        cell.left = m_lefts[m_reached];
        cell.right = m_lefts[column];
        cell.firstColumn = m_reached;
        cell.endColumn = column;
        m_reached = column;
    }
}

void FlowTablix::Continue(Span& span, bool startsAgain) {
    if (span.column < m_reached) {
        return;
    }
    Fill(span.column);
    FlowCell& cell = m_row.cells.emplace_back(span.look);
    cell.merge = startsAgain ? FlowCell::Merge::First : FlowCell::Merge::Continued;
    m_reached = span.endColumn;
    if (--span.rowsLeft > 0) {
        m_next.push_back(span);
    }
}

void FlowTablix::Place(const TableCell& cell) {
    const std::size_t last = m_lefts.size() - 1;
    const auto column = static_cast<std::size_t>(std::max(cell.column, 0));
    if (column < m_reached || column >= last) {
        return;
    }
    Fill(column);
    const std::size_t end = std::min(column + static_cast<std::size_t>(std::max(cell.columnSpan, 1)), last);
    FlowCell placed = LookOf(cell.content);
    placed.left = m_lefts[column];
    placed.right = m_lefts[end];
    placed.firstColumn = column;
    placed.endColumn = end;
    m_reached = end;
    if (cell.rowSpan > 1) {
        placed.merge = FlowCell::Merge::First;
        m_next.push_back({column, end, cell.rowSpan - 1, placed});
    }
    if (cell.content.kind != InstanceKind::Line) {
        placed.content.push_back(&cell.content);
        m_row.keep = m_row.keep && !HoldsTable(cell.content);
    }
    m_row.cells.push_back(std::move(placed));
}

// The region's box encloses its cells and gives their background.
void FlowTablix::EdgesOfTable() {
    if (!HasLook(m_item) || m_row.cells.empty()) {
        return;
    }
    const auto fill = [](layout::Border& own, const layout::Border& other) {
        if (own.style == LineStyle::None) {
            own = other;
        }
    };
    const layout::BoxStyle& box = *m_item.box;
    for (FlowCell& cell : m_row.cells) {
        cell.background = cell.background >> 24 ? cell.background : box.background;
        if (m_index == 0) {
            fill(cell.topBorder, box.top);
        }
        if (m_index + 1 == m_count) {
            fill(cell.bottomBorder, box.bottom);
        }
    }
    fill(m_row.cells.front().leftBorder, box.left);
    fill(m_row.cells.back().rightBorder, box.right);
}

bool FlowTablix::IsExact() const {
    return std::none_of(m_source.cells.begin(), m_source.cells.end(),
                        [](const TableCell& cell) { return MayGrow(cell.content); });
}

}  // namespace rdl::writers
