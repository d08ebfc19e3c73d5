// SPDX-License-Identifier: GPL-3.0-or-later
// Members of XlsLayout: tables.
#include <algorithm>
#include <utility>

#include "rdl/values/error.h"
#include "rdl/writers/xls/layout.h"

namespace rdl::writers {
namespace {

using layout::Instance;
using layout::InstanceKind;
using layout::TableCell;
using layout::TableInstance;
using layout::TableRow;

// Rows are kept back for what one table row may need in a sheet that is nearly full.
constexpr std::uint32_t RowsKeptBack = 64;

// `edges` are those of XlsLayout::EdgesOf.
double LeftOf(const std::vector<double>& edges, int column) {
    return edges[std::min(static_cast<std::size_t>(std::max(column, 0)), edges.size() - 1)];
}

}  // namespace

std::uint32_t XlsLayout::PlaceTable(const Instance& item, double x, std::uint32_t row, Level level) {
    TableInstance& table = *item.table;
    if (!table.noRowsMessage.empty()) {
        const Columns columns = ColumnsAt(x, x + item.width);
        const std::uint16_t xf =
            m_book.Style(Filled(item.box), table.noRowsStyle, layout::HAlign::General, 0, false);
        m_sheet->Put(row, {XlsCell::Text, columns.first, xf, 0, m_book.Text(table.noRowsMessage)});
        return row + 1;
    }
    if (++m_depth > MaxNesting) {
        throw Error("Item \"" + item.name + "\" is nested too deeply");
    }
    std::vector<OpenSpan> spans;
    std::vector<OpenSpan>* const outer = std::exchange(m_spans, &spans);
    const std::vector<double> edges = EdgesOf(table, x);
    const std::size_t count = table.RowCount();
    TableRow tableRow;
    for (std::size_t i = 0; i < count; ++i) {
        table.Row(i, tableRow);
        const std::string name = tableRow.pageName;
        const bool breaks = tableRow.breakBefore || m_breakPending;
        if (level == Level::Top &&
            ((breaks && !m_sheet->IsEmpty() && i > 0) || row >= m_book.Bounds().rows - RowsKeptBack)) {
            CloseSpans(spans, row);
            m_pageName = name.empty() ? m_pageName : name;
            row = BreakSheet(table, i, edges);
        } else if (level == Level::Top && !name.empty() && m_sheet->name.empty()) {
            m_pageName = m_sheet->name = name;
        }
        if (level == Level::Top && tableRow.columnHeader) {
            m_sheet->Heading(row);
        }
        row = PlaceRow(tableRow, edges, row);
        if (level == Level::Top) {
            m_sheet->Complete(row);
            m_breakPending = tableRow.breakAfter;
        }
    }
    CloseSpans(spans, row);
    m_spans = outer;
    --m_depth;
    return row;
}

std::uint32_t XlsLayout::BreakSheet(TableInstance& table, std::size_t index,
                                    const std::vector<double>& edges) {
    BeginSheet();
    std::uint32_t row = 0;
    TableRow repeated;
    std::vector<OpenSpan> none;
    std::vector<OpenSpan>* const open = std::exchange(m_spans, &none);
    for (const std::size_t i : table.RepeatedRows(index)) {
        table.Row(i, repeated);
        m_sheet->Heading(row);
        row = PlaceRow(repeated, edges, row);
    }
    CloseSpans(none, row);
    m_spans = open;
    for (OpenSpan& span : *open) {
        span.firstRow = row;  // continues here
    }
    return row;
}

// What lies in cells other than text comes first: it says how many rows the row needs.
std::uint32_t XlsLayout::PlaceRow(const TableRow& tableRow, const std::vector<double>& edges,
                                  std::uint32_t row) {
    std::uint32_t end = row + 1;
    std::vector<OpenSpan>* const spans = m_spans;
    std::vector<Around> boxes;
    for (const TableCell& cell : tableRow.cells) {
        if (cell.content.kind == InstanceKind::Text) {
            continue;
        }
        m_around = {};
        end = std::max(end, PlaceOne(cell.content, LeftOf(edges, cell.column), row, Level::Inner));
        if (cell.content.kind != InstanceKind::Table && cell.rowSpan <= 1) {
            boxes.push_back(m_around);
        }
    }
    for (const Around& box : boxes) {  // rectangles and images are as high as their row
        EndAround(box, end);
    }
    if (end == row + 1) {
        m_sheet->Height(
            row, tableRow.height,
            tableRow.canGrow ? XlsWorksheet::HeightKind::ByText : XlsWorksheet::HeightKind::Fixed);
    }
    ContinueSpans(*spans, row, end);
    for (const TableCell& cell : tableRow.cells) {
        if (cell.content.kind != InstanceKind::Text) {
            continue;
        }
        const Columns columns =
            ColumnsAt(LeftOf(edges, cell.column), LeftOf(edges, cell.column + std::max(cell.columnSpan, 1)));
        if (cell.rowSpan <= 1) {
            PlaceText(cell.content, {row, end - 1, columns.first, columns.last});
            continue;
        }
        XlsCell first = CellOf(cell.content);
        first.column = columns.first;
        first.spansRows = true;
        m_sheet->Put(row, first);
        spans->push_back({row, cell.rowSpan, columns, first.xf});
        std::vector<OpenSpan> fresh{spans->back()};
        fresh[0].rowsLeft = 2;  // filler after the cell itself
        ContinueSpans(fresh, row, end);
    }
    for (OpenSpan& span : *spans) {
        --span.rowsLeft;
    }
    const auto ended =
        std::stable_partition(spans->begin(), spans->end(), [](const OpenSpan& s) { return s.rowsLeft > 0; });
    std::vector<OpenSpan> closing(ended, spans->end());
    spans->erase(ended, spans->end());
    CloseSpans(closing, end);
    return end;
}

// Covered cells show the border and fill of the one that covers them.
void XlsLayout::ContinueSpans(const std::vector<OpenSpan>& spans, std::uint32_t from, std::uint32_t to) {
    for (const OpenSpan& span : spans) {
        for (std::uint32_t row = from; row < to; ++row) {
            for (std::uint16_t column = span.columns.first; column <= span.columns.last; ++column) {
                if (row != span.firstRow || column != span.columns.first) {
                    m_sheet->Put(row, {XlsCell::Blank, column, span.xf});
                }
            }
        }
    }
}

void XlsLayout::CloseSpans(const std::vector<OpenSpan>& spans, std::uint32_t row) {
    for (const OpenSpan& span : spans) {
        if (row > span.firstRow && (row - span.firstRow > 1 || span.columns.last > span.columns.first)) {
            m_sheet->Merge({span.firstRow, row - 1, span.columns.first, span.columns.last});
        }
    }
}

}  // namespace rdl::writers
