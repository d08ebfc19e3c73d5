// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/xls/layout.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "rdl/values/error.h"

namespace rdl::writers {
namespace {

using layout::Instance;
using layout::InstanceKind;
using layout::TableCell;
using layout::TableInstance;
using layout::TableRow;

constexpr double Near = 1.0;               // points
constexpr std::size_t RowsLookedAt = 256;  // of a table, for edges within its cells

double Top(const Instance& item) {
    return item.height < 0 ? item.y + item.height : item.y;
}
double Bottom(const Instance& item) {
    return item.height < 0 ? item.y : item.y + item.height;
}
double Left(const Instance& item) {
    return std::min(item.x, item.x + item.width);
}
double Right(const Instance& item) {
    return std::max(item.x, item.x + item.width);
}

bool HasBorder(const layout::BoxStyle& box) {
    const auto isDrawn = [](const layout::Border& line) { return line.style != layout::LineStyle::None; };
    return isDrawn(box.left) || isDrawn(box.top) || isDrawn(box.right) || isDrawn(box.bottom);
}

bool IsText(const Instance& item) {
    return item.kind == InstanceKind::Text;
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

void XlsLayout::GatherTable(TableInstance& table, double x, int depth) {
    std::vector<double> lefts{x};
    for (const double width : table.columnWidths) {
        lefts.push_back(lefts.back() + width);
        m_columns.Add(lefts.back());
    }
    TableRow row;
    const std::size_t count = std::min(table.RowCount(), RowsLookedAt);
    for (std::size_t i = 0; i < count; ++i) {
        table.Row(i, row);
        for (const TableCell& cell : row.cells) {
            if (!IsText(cell.content) && cell.column >= 0 &&
                static_cast<std::size_t>(cell.column) < lefts.size()) {
                Gather(cell.content, lefts[static_cast<std::size_t>(cell.column)], depth);
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
        BeginFrame(frame.box, frame.columns, 0, false);
    }
}

void XlsLayout::BeginFrame(const layout::BoxStylePtr& box, Columns columns, std::uint32_t row, bool begins) {
    m_frames.push_back({box, columns, 0});
    m_frames.back().number = m_sheet->BeginFrame(row, columns.first, columns.last, box, begins);
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
                          std::uint32_t row, bool top) {
        const bool fills = !items.empty() && style && style->background >> 24;
        if (fills) {
            BeginFill(style->background, all, row);
        }
        const std::uint32_t end = Place(items, 0, row, top);
        if (fills) {
            EndFill(end);
        }
        return end;
    };
    std::uint32_t row = part(header, section.page.headerStyle, 0, false);
    row = part(section.items, section.bodyStyle, row, true);
    m_breakPending = false;
    part(footer, section.page.footerStyle, row, false);
}

void XlsLayout::Report(layout::ReportInstance& report) {
    for (std::size_t i = 0; i < report.sections.size(); ++i) {
        Section(*report.sections[i], i == 0, i + 1 == report.sections.size());
    }
    if (report.sections.empty()) {
        m_book.AddSheet({}, layout::PageSetup());
    }
}

std::uint32_t XlsLayout::Place(const std::vector<Instance>& items, double x, std::uint32_t row,
                               bool isTopLevel) {
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
            isTopLevel && (m_breakPending || band.front()->breakBefore) && !m_sheet->IsEmpty();
        const std::string& name = band.front()->pageName;
        if (isTopLevel && !name.empty() && (breaks || m_sheet->name.empty())) {
            m_pageName = name;
            m_sheet->name = breaks ? m_sheet->name : name;
        }
        if (breaks) {
            BeginSheet();
            row = 0;
        } else if (begin - end > Near) {
            m_sheet->Height(row++, begin - end, true);
        }
        row = band.size() == 1 ? PlaceOne(*band.front(), x, row, isTopLevel) : PlaceBand(band, x, row);
        if (isTopLevel) {
            m_sheet->Complete(row);
            m_breakPending = m_breakPending || band.back()->breakAfter;
        }
        end = bottom;
    }
    --m_depth;
    return row;
}

// Items beside each other: rows at all their upper and lower edges, more where a table needs them.
std::uint32_t XlsLayout::PlaceBand(const Items& band, double x, std::uint32_t row) {
    Edges lines(Near);
    for (const Instance* item : band) {
        lines.Add(Top(*item));
        lines.Add(Bottom(*item));
    }
    lines.Settle();
    std::vector<std::uint32_t> rows(lines.lines().size(), row);
    std::vector<std::pair<Around, std::size_t>> boxes;  // and the line where each ends
    std::size_t next = 0;
    for (std::size_t line = 0; line < rows.size(); ++line) {
        if (line > 0) {
            rows[line] = std::max(rows[line], rows[line - 1] + 1);
            m_sheet->Height(rows[line - 1], rows[line] - rows[line - 1] == 1 ? lines.Track(line - 1) : 0,
                            false);
        }
        for (; next < band.size() && lines.Line(Top(*band[next])) <= line; ++next) {
            const Instance& item = *band[next];
            if (IsText(item)) {
                continue;
            }
            const std::size_t end = std::min(std::max(lines.Line(Bottom(item)), line + 1), rows.size() - 1);
            if (item.kind == InstanceKind::Image && end > line + 1) {  // over rows of the items beside it
                m_around = {};
                PlaceFilled(item, x, rows[line], false, false);
                boxes.push_back({m_around, end});
                continue;
            }
            m_around = {};
            const std::uint32_t after = PlaceOne(item, x, rows[line], false);
            rows[end] = std::max(rows[end], item.kind == InstanceKind::Image ? rows[line] + 1 : after);
            if (item.kind != InstanceKind::Table) {
                boxes.push_back({m_around, end});
            }
        }
    }
    for (const auto& [around, end] : boxes) {  // as high as what is beside them
        EndAround(around, rows[end]);
    }
    m_around = {};
    for (const Instance* item : band) {
        if (IsText(*item)) {
            const std::uint32_t first = rows[lines.Line(Top(*item))];
            const std::uint32_t after = rows[std::min(lines.Line(Bottom(*item)), rows.size() - 1)];
            const Columns columns = ColumnsAt(x + item->x, x + item->x + item->width);
            PlaceText(*item, {first, std::max(after, first + 1) - 1, columns.first, columns.last});
        }
    }
    return std::max(rows.back(), row + 1);
}

std::uint32_t XlsLayout::PlaceOne(const Instance& item, double x, std::uint32_t row, bool isTopLevel) {
    if (!IsText(item)) {
        Mark(item, row, ColumnsAt(x + Left(item), x + Right(item)).first);
    }
    switch (item.kind) {
        case InstanceKind::Text: {
            const Columns columns = ColumnsAt(x + item.x, x + item.x + item.width);
            m_sheet->Height(row, item.height, !item.canGrow);
            PlaceText(item, {row, row, columns.first, columns.last});
            return row + 1;
        }
        case InstanceKind::Line:
            PlaceLine(item, x, row);
            return row + 1;
        case InstanceKind::Image:
        case InstanceKind::Container:
        case InstanceKind::Table:
            return PlaceFilled(item, x, row, isTopLevel);
        case InstanceKind::Drawing:
            break;
    }
    throw Error("Drawing \"" + item.name + "\" cannot be shown in Excel");
}

// Images, containers and tables, over the fill that they have themselves.
std::uint32_t XlsLayout::PlaceFilled(const Instance& item, double x, std::uint32_t row, bool isTopLevel,
                                     bool hasOwnRows) {
    const bool fills = item.box && item.box->background >> 24;
    const bool frames = item.box && HasBorder(*item.box);
    const Columns columns = ColumnsAt(x + Left(item), x + Right(item));
    if (fills) {
        BeginFill(item.box->background, columns, row);
    }
    if (frames) {
        BeginFrame(item.box, columns, row, true);
    }
    std::uint32_t end = row;
    if (item.kind == InstanceKind::Container) {
        end = std::max(Place(item.children, x + item.x, row, isTopLevel), row + 1);
    } else if (item.kind == InstanceKind::Image && !hasOwnRows) {
        PutImage(item, x, row);
    } else if (item.kind == InstanceKind::Image) {
        end = PlaceImage(item, x, row);
    } else if (item.table) {
        end = PlaceTable(item, x + item.x, row, isTopLevel);
    }
    Around around;
    if (fills) {
        around.fill = m_fills.back().number;
        m_fills.pop_back();
    }
    if (frames) {
        around.frame = m_frames.back().number;
        m_frames.pop_back();
    }
    EndAround(around, end);
    m_around = around;
    return end;
}

// A line is the upper border of the cells below it.
void XlsLayout::PlaceLine(const Instance& item, double x, std::uint32_t row) {
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
    m_sheet->Height(row, std::max(std::fabs(item.height), 3.0), true);
    for (std::uint16_t column = columns.first; column <= columns.last; ++column) {
        if (m_sheet->IsFree({row, row, column, column})) {
            m_sheet->Put(row, {XlsCell::Blank, column, xf});
        }
    }
}

std::uint32_t XlsLayout::PlaceImage(const Instance& item, double x, std::uint32_t row) {
    PutImage(item, x, row);
    double left = item.height;
    do {  // a row is not as high as any image
        m_sheet->Height(row++, left, true);
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
