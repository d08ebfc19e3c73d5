// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/xls/layout.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "rdl/values/error.h"
#include "rdl/writers/xls/extent.h"

namespace rdl::writers {
namespace {

using layout::Instance;
using layout::InstanceKind;
using layout::TableCell;
using layout::TableInstance;
using layout::TableRow;

constexpr std::size_t RowsLookedAt = 256;  // of a table, for edges within its cells

bool HasBorder(const layout::BoxStyle& box) {
    const auto isDrawn = [](const layout::Border& line) { return line.style != layout::LineStyle::None; };
    return isDrawn(box.left) || isDrawn(box.top) || isDrawn(box.right) || isDrawn(box.bottom);
}

}  // namespace

void XlsLayout::Gather(const Instance& item, double x, int depth) {
    if (depth > MaxNesting) {
        throw Error("Item \"" + item.name + "\" is nested too deeply");
    }
    m_columns.Add(x + Left(item));
    m_columns.Add(x + Right(item));
    for (const Instance& child : item.children) {
        Gather(child, x + item.x, depth + 1);
    }
    if (item.kind == InstanceKind::Table && item.table) {
        GatherTable(*item.table, x + item.x, depth + 1);
    }
}

std::vector<double> XlsLayout::EdgesOf(const TableInstance& table, double x) {
    std::vector<double> edges{x};
    for (const double width : table.columnWidths) {
        edges.push_back(edges.back() + width);
    }
    return edges;
}

void XlsLayout::GatherTable(TableInstance& table, double x, int depth) {
    const std::vector<double> edges = EdgesOf(table, x);
    for (std::size_t i = 1; i < edges.size(); ++i) {
        m_columns.Add(edges[i]);
    }
    TableRow row;
    const std::size_t count = std::min(table.RowCount(), RowsLookedAt);
    for (std::size_t i = 0; i < count; ++i) {
        table.Row(i, row);
        for (const TableCell& cell : row.cells) {
            if (!IsText(cell.content) && cell.column >= 0 &&
                static_cast<std::size_t>(cell.column) < edges.size()) {
                Gather(cell.content, edges[static_cast<std::size_t>(cell.column)], depth);
            }
        }
    }
}

void XlsLayout::SettleColumns() {
    m_columns.Settle();
    if (m_columns.TrackCount() > m_book.Bounds().columns) {
        throw Error("The report needs " + std::to_string(m_columns.TrackCount()) +
                    " columns, and a sheet of an Excel workbook has " + m_book.Bounds().columnsText);
    }
    m_widths.clear();
    for (std::size_t i = 0; i < m_columns.TrackCount(); ++i) {
        m_widths.push_back(m_columns.Track(i));
    }
}

XlsLayout::Columns XlsLayout::ColumnsAt(double from, double to) const {
    const std::size_t last = std::max<std::size_t>(m_columns.TrackCount(), 1) - 1;
    const std::size_t first = std::min(m_columns.Line(from), last);
    const std::size_t end = std::max(m_columns.Line(to), first + 1);
    return {static_cast<std::uint16_t>(first), static_cast<std::uint16_t>(std::min(end - 1, last))};
}

void XlsLayout::BeginSheet() {
    m_sheet = &m_book.AddSheet(m_widths, *m_page);
    m_sheet->name = m_pageName;
    m_sheet->rightToLeft = m_rightToLeft;
    m_breakPending = false;
    std::vector<Fill> goOn;
    goOn.swap(m_fills);
    for (const Fill& fill : goOn) {
        BeginFill(fill.color, fill.columns, 0);
    }
    std::vector<Frame> framesGoOn;
    framesGoOn.swap(m_frames);
    for (const Frame& frame : framesGoOn) {
        BeginFrame(frame.box, frame.columns, 0, XlsWorksheet::FrameTop::Omitted);
    }
}

void XlsLayout::BeginFrame(const layout::BoxStylePtr& box, Columns columns, std::uint32_t row,
                           XlsWorksheet::FrameTop top) {
    m_frames.push_back({box, columns, 0});
    m_frames.back().number = m_sheet->BeginFrame(row, columns.first, columns.last, box, top);
}

XlsLayout::Around XlsLayout::BeginAround(const Instance& item, double x, std::uint32_t row) {
    Around around;
    if (!item.box) {
        return around;
    }
    const Columns columns = ColumnsAt(x + Left(item), x + Right(item));
    if (layout::IsVisible(item.box->background)) {
        BeginFill(item.box->background, columns, row);
        around.fill = m_fills.back().number;
    }
    if (HasBorder(*item.box)) {
        BeginFrame(item.box, columns, row, XlsWorksheet::FrameTop::Shown);
        around.frame = m_frames.back().number;
    }
    return around;
}

void XlsLayout::LeaveAround(const Around& around) {
    if (around.fill) {
        m_fills.pop_back();
    }
    if (around.frame) {
        m_frames.pop_back();
    }
}

void XlsLayout::EndAround(const Around& around, std::uint32_t row) {
    if (around.fill) {
        m_sheet->EndFill(*around.fill, row);
    }
    if (around.frame) {
        m_sheet->EndFrame(*around.frame, row);
    }
}

void XlsLayout::BeginFill(layout::Color color, Columns columns, std::uint32_t row) {
    m_fills.push_back({color, columns, 0});
    const std::uint16_t xf = m_book.Style(Filled(nullptr), nullptr, layout::HAlign::General, 0, false);
    m_fills.back().number = m_sheet->BeginFill(row, columns.first, columns.last, xf);
}

void XlsLayout::EndFill(std::uint32_t row) {
    m_sheet->EndFill(m_fills.back().number, row);
    m_fills.pop_back();
}

// The style of a cell within the fills around it.
layout::BoxStylePtr XlsLayout::Filled(const layout::BoxStylePtr& box) {
    if (m_fills.empty() || (box && box->HasBackground())) {
        return box;
    }
    constexpr std::size_t MostKnown = 8192;  // styles that depend on data are new ones in each row
    if (m_filled.size() >= MostKnown) {
        m_filled.clear();
    }
    const layout::Color color = m_fills.back().color;
    FilledBox& known = m_filled[{box.get(), color}];
    if (!known.filled) {
        layout::BoxStyle style = box ? *box : layout::BoxStyle();
        style.background = color;
        known = {box, std::make_shared<const layout::BoxStyle>(style)};
    }
    return known.filled;
}

void XlsLayout::Section(layout::SectionInstance& section, bool isFirst, bool isLast) {
    m_page = &section.page;
    m_columns = Edges(Near);
    m_columns.Add(0);
    m_columns.Add(std::max(section.bodyWidth, 1.0));
    const auto header =
        isFirst && section.page.headerHeight > 0 ? section.Header({}) : std::vector<Instance>();
    const auto footer =
        isLast && section.page.footerHeight > 0 ? section.Footer({}) : std::vector<Instance>();
    for (const std::vector<Instance>* items : {&header, &std::as_const(section.items), &footer}) {
        for (const Instance& item : *items) {
            Gather(item, 0, 0);
        }
    }
    m_rightToLeft = std::any_of(section.items.begin(), section.items.end(),
                                [](const Instance& item) { return item.table && item.table->rightToLeft; });
    SettleColumns();
    m_pageName.clear();
    BeginSheet();
    const Columns all = ColumnsAt(0, std::max(section.bodyWidth, 1.0));
    const auto part = [&](const std::vector<Instance>& items, const layout::BoxStylePtr& style,
                          std::uint32_t row, Level level) {
        const bool fills = !items.empty() && style && layout::IsVisible(style->background);
        if (fills) {
            BeginFill(style->background, all, row);
        }
        const std::uint32_t end = Place(items, 0, row, level);
        if (fills) {
            EndFill(end);
        }
        return end;
    };
    std::uint32_t row = part(header, section.page.headerStyle, 0, Level::Inner);
    row = part(section.items, section.bodyStyle, row, Level::Top);
    m_breakPending = false;
    part(footer, section.page.footerStyle, row, Level::Inner);
}

void XlsLayout::Report(layout::ReportInstance& report) {
    for (std::size_t i = 0; i < report.sections.size(); ++i) {
        Section(*report.sections[i], i == 0, i + 1 == report.sections.size());
    }
    if (report.sections.empty()) {
        m_book.AddSheet({}, layout::PageSetup());
    }
}

std::uint32_t XlsLayout::Place(const std::vector<Instance>& items, double x, std::uint32_t row, Level level) {
    if (items.empty()) {
        return row;
    }
    if (++m_depth > MaxNesting) {
        throw Error("Item \"" + items.front().name + "\" is nested too deeply");
    }
    Items sorted;
    for (const Instance& item : items) {
        sorted.push_back(&item);
    }
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const Instance* a, const Instance* b) { return Top(*a) < Top(*b); });
    double end = 0;
    for (std::size_t i = 0; i < sorted.size();) {
        Items band{sorted[i]};
        const double begin = Top(*sorted[i]);
        double bottom = Bottom(*sorted[i]);
        while (++i < sorted.size() && Top(*sorted[i]) < bottom - Near) {
            band.push_back(sorted[i]);
            bottom = std::max(bottom, Bottom(*sorted[i]));
        }
        const bool breaks =
            level == Level::Top && (m_breakPending || band.front()->breakBefore) && !m_sheet->IsEmpty();
        const std::string& name = band.front()->pageName;
        if (level == Level::Top && !name.empty() && (breaks || m_sheet->name.empty())) {
            m_pageName = name;
            m_sheet->name = breaks ? m_sheet->name : name;
        }
        if (breaks) {
            BeginSheet();
            row = 0;
        } else if (begin - end > Near) {
            m_sheet->Height(row++, begin - end, XlsWorksheet::HeightKind::Fixed);
        }
        row = band.size() == 1 ? PlaceOne(*band.front(), x, row, level) : PlaceBand(band, x, row);
        if (level == Level::Top) {
            m_sheet->Complete(row);
            m_breakPending = m_breakPending || band.back()->breakAfter;
        }
        end = bottom;
    }
    --m_depth;
    return row;
}

std::uint32_t XlsLayout::PlaceOne(const Instance& item, double x, std::uint32_t row, Level level) {
    if (!IsText(item)) {
        Mark(item, row, ColumnsAt(x + Left(item), x + Right(item)).first);
    }
    switch (item.kind) {
        case InstanceKind::Text: {
            const Columns columns = ColumnsAt(x + item.x, x + item.x + item.width);
            m_sheet->Height(
                row, item.height,
                item.canGrow ? XlsWorksheet::HeightKind::ByText : XlsWorksheet::HeightKind::Fixed);
            PlaceText(item, {row, row, columns.first, columns.last});
            return row + 1;
        }
        case InstanceKind::Line:
            m_sheet->Height(row, std::max(std::fabs(item.height), 3.0), XlsWorksheet::HeightKind::Fixed);
            PlaceLine(item, x, row, row);
            return row + 1;
        case InstanceKind::Image:
        case InstanceKind::Container:
        case InstanceKind::Table:
            return PlaceFilled(item, x, row, level);
        case InstanceKind::Drawing:
            break;
    }
    throw Error("Drawing \"" + item.name + "\" cannot be shown in Excel");
}

// Images, containers and tables, over the fill that they have themselves.
std::uint32_t XlsLayout::PlaceFilled(const Instance& item, double x, std::uint32_t row, Level level,
                                     ImageRows imageRows) {
    const Around around = BeginAround(item, x, row);
    std::uint32_t end = row;
    if (item.kind == InstanceKind::Container) {
        end = std::max(Place(item.children, x + item.x, row, level), row + 1);
    } else if (item.kind == InstanceKind::Image && imageRows == ImageRows::OfOthers) {
        PutImage(item, x, row);
    } else if (item.kind == InstanceKind::Image) {
        end = PlaceImage(item, x, row);
    } else if (item.table) {
        end = PlaceTable(item, x + item.x, row, level);
    }
    LeaveAround(around);
    EndAround(around, end);
    m_around = around;
    return end;
}

// A line is the upper border of the cells below it, an upright one the left border of those beside it.
void XlsLayout::PlaceLine(const Instance& item, double x, std::uint32_t firstRow, std::uint32_t lastRow) {
    layout::BoxStyle style;
    const bool upright = std::fabs(item.width) <= Near;
    if (item.box) {
        (upright ? style.left : style.top) = item.box->top;
    }
    const Columns columns = ColumnsAt(x + Left(item), x + Right(item));
    if (!m_fills.empty()) {
        style.background = m_fills.back().color;
    }
    const std::uint16_t xf = m_book.Style(std::make_shared<const layout::BoxStyle>(style), nullptr,
                                          layout::HAlign::General, 0, false);
    for (std::uint32_t row = firstRow; row <= (upright ? lastRow : firstRow); ++row) {
        for (std::uint16_t column = columns.first; column <= columns.last; ++column) {
            if (m_sheet->IsFree({row, row, column, column})) {
                m_sheet->Put(row, {XlsCell::Blank, column, xf});
            }
        }
    }
}

std::uint32_t XlsLayout::PlaceImage(const Instance& item, double x, std::uint32_t row) {
    PutImage(item, x, row);
    double left = item.height;
    do {  // a row is not as high as any image
        m_sheet->Height(row++, left, XlsWorksheet::HeightKind::Fixed);
        left -= XlsTallestRow;
    } while (left > 0);
    return row;
}

void XlsLayout::PutImage(const Instance& item, double x, std::uint32_t row) {
    if (!item.imageBytes || item.imageBytes->empty()) {
        return;
    }
    const image::Type type = TypeOfImage(item);
    const Columns columns = ColumnsAt(x + item.x, x + item.x + item.width);
    try {
        const layout::ImageSize shown = ShownSize(item, layout::SizeOfImage(*item.imageBytes));
        const bool clip = item.sizing == Instance::Sizing::Clip;
        const double width = clip ? std::min(shown.width, item.width) : shown.width;
        const double height = clip ? std::min(shown.height, item.height) : shown.height;
        m_sheet->Picture({row, columns.first, std::max(width, 1.0), std::max(height, 1.0),
                          m_book.Image(item.imageBytes, type, item.name), 1 - width / shown.width,
                          1 - height / shown.height});
    } catch (const Error& error) {
        throw Error("Image \"" + item.name + "\": " + error.what());
    }
}

}  // namespace rdl::writers
