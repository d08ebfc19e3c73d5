// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/xls/worksheet.h"

#include <algorithm>

#include "rdl/values/error.h"

namespace rdl::writers {

XlsWorksheet::XlsWorksheet(const XlsBounds& bounds, std::vector<double> columnWidths,
                           const layout::PageSetup& page)
    : m_bounds(bounds), m_columnWidths(std::move(columnWidths)) {
    m_page = {page.width, page.height, page.marginLeft, page.marginRight, page.marginTop, page.marginBottom};
}

void XlsWorksheet::CheckRow(std::uint32_t row) const {
    if (row >= m_bounds.rows) {
        throw Error("A sheet of an Excel workbook has " + std::string(m_bounds.rowsText) +
                    " rows, and the report needs more side by side");
    }
}

void XlsWorksheet::Put(std::uint32_t row, const XlsCell& cell) {
    CheckRow(row);
    m_rows[row].cells.push_back(cell);
}

bool XlsWorksheet::IsFree(const XlsRange& range) const {
    for (auto row = m_rows.lower_bound(range.firstRow); row != m_rows.end() && row->first <= range.lastRow;
         ++row) {
        for (const XlsCell& cell : row->second.cells) {
            if (cell.column >= range.firstColumn && cell.column <= range.lastColumn) {
                return false;
            }
        }
    }
    return true;
}

void XlsWorksheet::Height(std::uint32_t row, double points, bool fixed) {
    CheckRow(row);
    Row& wanted = m_rows[row];
    wanted.height = std::max(wanted.height, std::min(points, XlsTallestRow));
    wanted.fixed = wanted.fixed || fixed;
}

void XlsWorksheet::Heading(std::uint32_t row) {
    if (!HasHeading()) {
        m_headingBegin = row;
        m_headingEnd = row + 1;
    } else if (row == m_headingEnd) {
        ++m_headingEnd;
    }
}

std::size_t XlsWorksheet::BeginFill(std::uint32_t row, std::uint16_t firstColumn, std::uint16_t lastColumn,
                                    std::uint16_t xf) {
    m_fills.push_back({m_nextFill, {row, m_bounds.rows, firstColumn, lastColumn}, xf});
    return m_nextFill++;
}

void XlsWorksheet::EndFill(std::size_t fill, std::uint32_t row) {
    for (Fill& open : m_fills) {
        if (open.number == fill) {
            open.area.lastRow = row == 0 ? 0 : row - 1;
        }
    }
}

void XlsWorksheet::AddFills(std::uint32_t index, Row& row) const {
    for (auto fill = m_fills.rbegin(); fill != m_fills.rend(); ++fill) {
        if (index >= fill->area.firstRow && index <= fill->area.lastRow) {
            for (std::uint16_t column = fill->area.firstColumn; column <= fill->area.lastColumn; ++column) {
                row.cells.push_back({XlsCell::Blank, column, fill->xf});
            }
        }
    }
}

void XlsWorksheet::Complete(std::uint32_t row) {
    while (!m_rows.empty() && m_rows.begin()->first < row) {
        AddFills(m_rows.begin()->first, m_rows.begin()->second);
        FinishRow(m_rows.begin()->first, m_rows.begin()->second);
        m_rows.erase(m_rows.begin());
    }
    if (m_rows.empty()) {
        RowsAreWritten();
    }
    std::erase_if(m_fills, [row](const Fill& fill) { return fill.area.lastRow + 1 <= row; });
}

void XlsWorksheet::FinishRow(std::uint32_t index, Row& row) {
    // By column; stable, so the same bytes every time. Of two at one place the first stays.
    std::stable_sort(row.cells.begin(), row.cells.end(),
                     [](const XlsCell& a, const XlsCell& b) { return a.column < b.column; });
    row.cells.erase(std::unique(row.cells.begin(), row.cells.end(),
                                [](const XlsCell& a, const XlsCell& b) { return a.column == b.column; }),
                    row.cells.end());
    row.height = row.height > 0 ? row.height : XlsDefaultRowHeight;
    WriteRow(index, row);
    m_heights.resize(index + 1, static_cast<float>(XlsDefaultRowHeight));
    m_heights[index] = static_cast<float>(row.height);
    m_usedRows = std::max(m_usedRows, index + 1);
}

}  // namespace rdl::writers
