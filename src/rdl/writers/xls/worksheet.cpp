// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/xls/worksheet.h"

#include <algorithm>
#include <cmath>

#include "rdl/values/error.h"

namespace rdl::writers {

XlsPaper XlsPaperOf(const XlsPage& page) {
    constexpr double A4Height = 842, Tolerance = 4;  // points
    return std::fabs(std::max(page.width, page.height) - A4Height) < Tolerance ? XlsPaper::A4
                                                                               : XlsPaper::Letter;
}

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
    Row& kept = m_rows[row];
    kept.cells.push_back(cell);
    if (cell.column >= kept.taken.size()) {
        kept.taken.resize(std::max<std::size_t>(cell.column + 1, m_columnWidths.size()));
    }
    kept.taken[cell.column] = true;
}

bool XlsWorksheet::IsFree(const XlsRange& range) const {
    for (auto row = m_rows.lower_bound(range.firstRow); row != m_rows.end() && row->first <= range.lastRow;
         ++row) {
        const std::vector<bool>& taken = row->second.taken;
        for (std::size_t column = range.firstColumn; column <= range.lastColumn && column < taken.size();
             ++column) {
            if (taken[column]) {
                return false;
            }
        }
    }
    return true;
}

void XlsWorksheet::Height(std::uint32_t row, double points, HeightKind kind) {
    CheckRow(row);
    Row& wanted = m_rows[row];
    wanted.height = std::max(wanted.height, std::min(points, XlsTallestRow));
    wanted.fixed = wanted.fixed || kind == HeightKind::Fixed;
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

std::size_t XlsWorksheet::BeginFrame(std::uint32_t row, std::uint16_t firstColumn, std::uint16_t lastColumn,
                                     const layout::BoxStylePtr& box, FrameTop top) {
    m_frames.push_back(
        {m_nextFrame, {row, m_bounds.rows, firstColumn, lastColumn}, box, top == FrameTop::Shown, false});
    return m_nextFrame++;
}

void XlsWorksheet::EndFrame(std::size_t frame, std::uint32_t row) {
    for (Frame& open : m_frames) {
        if (open.number != frame || row == 0) {
            continue;
        }
        open.area.lastRow = row - 1;
        open.ends = true;
        if (row <= m_usedRows && row < m_bounds.rows) {
            // The last row is written: the line is above the next one.
            auto below = std::make_shared<layout::BoxStyle>();
            below->top = open.box->bottom;
            m_rows.try_emplace(row);
            open.area.firstRow = open.area.lastRow = row;
            open.box = std::move(below);
            open.begins = true;
        }
    }
}

void XlsWorksheet::AddFrames(std::uint32_t index, Row& row) {
    for (auto frame = m_frames.rbegin(); frame != m_frames.rend(); ++frame) {
        const XlsRange& area = frame->area;
        if (index < area.firstRow || index > area.lastRow) {
            continue;
        }
        const unsigned level = (index == area.firstRow && frame->begins ? Top : 0u) |
                               (index == area.lastRow && frame->ends ? Bottom : 0u);
        for (std::uint16_t column = area.firstColumn; column <= area.lastColumn; ++column) {
            const unsigned sides =
                level | (column == area.firstColumn ? Left : 0u) | (column == area.lastColumn ? Right : 0u);
            if (sides == 0) {
                continue;
            }
            auto cell = std::lower_bound(row.cells.begin(), row.cells.end(), column,
                                         [](const XlsCell& c, std::uint16_t at) { return c.column < at; });
            if (cell == row.cells.end() || cell->column != column) {
                cell = row.cells.insert(cell, {XlsCell::Blank, column, PlainStyle()});
            }
            cell->xf = Framed(cell->xf, *frame->box, sides);
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
    std::erase_if(m_frames, [row](const Frame& frame) { return frame.area.lastRow + 1 <= row; });
}

void XlsWorksheet::FinishRow(std::uint32_t index, Row& row) {
    // By column; stable, so the same bytes every time. Of two at one place the first stays.
    std::stable_sort(row.cells.begin(), row.cells.end(),
                     [](const XlsCell& a, const XlsCell& b) { return a.column < b.column; });
    row.cells.erase(std::unique(row.cells.begin(), row.cells.end(),
                                [](const XlsCell& a, const XlsCell& b) { return a.column == b.column; }),
                    row.cells.end());
    AddFrames(index, row);
    row.height = row.height > 0 ? row.height : XlsDefaultRowHeight;
    WriteRow(index, row);
    m_heights.resize(index + 1, static_cast<float>(XlsDefaultRowHeight));
    m_heights[index] = static_cast<float>(row.height);
    m_usedRows = std::max(m_usedRows, index + 1);
}

}  // namespace rdl::writers
