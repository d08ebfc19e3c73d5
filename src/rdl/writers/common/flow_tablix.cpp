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

constexpr double WidestPaper = 1584;  // points: 22 inches

double WidthOf(double column) {
    return std::isfinite(column) ? std::max(column, 0.0) : 0;
}

}  // namespace

FlowTablix::Columns FlowTablix::Fit(const Instance& item, double x, std::size_t first) {
    const layout::TableInstance& table = *item.table;
    const std::vector<double>& widths = table.columnWidths;
    const auto widthOf = [&widths](std::size_t from, std::size_t to) {
        double width = 0;
        for (std::size_t i = from; i < to; ++i) {
            width += WidthOf(widths[i]);
        }
        return width;
    };
    const double room = WidestPaper - std::clamp(x, 0.0, WidestPaper / 2);
    Columns columns{0, first, first};
    const auto headers = static_cast<std::size_t>(std::max(table.headerColumns, 0));
    if (table.repeatRowHeaders && first > 0 && headers <= first && headers * 2 < FlowMostCells &&
        widthOf(0, headers) * 2 < room) {
        columns.headers = headers;
    }
    double width = widthOf(0, columns.headers);
    while (columns.end < widths.size() && columns.headers + columns.end - first < FlowMostCells &&
           (columns.end == first || width + WidthOf(widths[columns.end]) <= room)) {
        width += WidthOf(widths[columns.end++]);
    }
    return columns;
}

FlowTablix::FlowTablix(const Instance& item, double x, const Columns& columns, Growing& growing)
    : m_item(item),
      m_table(*item.table),
      m_columns(columns),
      m_growing(growing),
      m_count(item.table->RowCount()),
      m_lefts{x} {
    m_growing.resize(m_count);
    for (std::size_t i = 0; i < m_table.columnWidths.size(); ++i) {
        if (i < columns.headers || (i >= columns.first && i < columns.end)) {
            m_lefts.push_back(m_lefts.back() + WidthOf(m_table.columnWidths[i]));
        }
    }
    CountHeadings();
}

std::size_t FlowTablix::Shown(std::size_t column) const {
    const std::size_t within = std::clamp(column, m_columns.first, m_columns.end) - m_columns.first;
    return std::min(column, m_columns.headers) + within;
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
    if (m_columns.first == 0) {
        m_table.Row(index, m_source);
    } else {
        m_table.RowWithin(index, m_columns, m_source);
    }
    return m_source;
}

FlowRow FlowTablix::Make(Before before) {
    const bool afterBreak = before == Before::PageBreak;
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
        const std::size_t column = Shown(static_cast<std::size_t>(std::max(cell.column, 0)));
        for (; next < m_spans.size() && m_spans[next].column <= column; ++next) {
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
    m_row.exact = !Grows();
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
    const auto source = static_cast<std::size_t>(std::max(cell.column, 0));
    const std::size_t column = Shown(source);
    const std::size_t end =
        std::min(Shown(source + static_cast<std::size_t>(std::max(cell.columnSpan, 1))), last);
    if (column < m_reached || column >= end) {
        return;
    }
    Fill(column);
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
        cell.background = layout::IsVisible(cell.background) ? cell.background : box.background;
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

bool FlowTablix::Grows() {
    if (m_columns.first == 0) {
        m_growing[m_index] = std::any_of(m_source.cells.begin(), m_source.cells.end(),
                                         [](const TableCell& cell) { return MayGrow(cell.content); });
    }
    return m_growing[m_index];
}

}  // namespace rdl::writers
