// SPDX-License-Identifier: GPL-3.0-or-later
// Members of TableFlow: boxes, contents and cells over several rows, drawn where the flow has put their rows.
#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

#include "rdl/values/index.h"

#include "rdl/layout/pages/table_flow.h"
#include "rdl/layout/pages/tolerance.h"

namespace rdl::layout {
namespace {

// Returns the first cell for which the test holds and that is no heading yet; `row.cells.size()` if there is
// none.
template <typename Test>
std::size_t FirstCell(const TableRow& row, const std::vector<int>& levels, const Test& test) {
    std::size_t i = 0;
    while (i < row.cells.size() && (levels[i] >= 0 || !test(row.cells[i].content.PlainText()))) {
        ++i;
    }
    return i;
}

// The level of the heading that each cell is; -1: none. A group's label in the document map makes a heading
// of the cell that says it, else of the first text that is left.
std::vector<int> HeadingsOf(const TableRow& row) {
    std::vector<int> levels(row.cells.size(), -1);
    std::vector<MapLabel> unsaid;
    for (const MapLabel& label : row.labels) {
        const std::size_t cell =
            FirstCell(row, levels, [&label](const std::string& text) { return text == label.text; });
        if (cell < levels.size()) {
            levels[cell] = label.level;
        } else {
            unsaid.push_back(label);
        }
    }
    for (const MapLabel& label : unsaid) {
        const std::size_t cell =
            FirstCell(row, levels, [](const std::string& text) { return !text.empty(); });
        if (cell < levels.size()) {
            levels[cell] = label.level;
        }
    }
    return levels;
}

}  // namespace

// A table that begins with column headers has a head and a body.
void TableFlow::DescribeGroup(const TableRow& row, std::size_t index) {
    Tags& tags = m_context.painter.Elements();
    if (index == 0 && row.columnHeader) {
        m_rowGroup = tags.Begin(Role::TableHead);
        m_isInHead = true;
    } else if (m_isInHead && !row.columnHeader) {
        tags.End(m_rowGroup);
        m_rowGroup = tags.Begin(Role::TableBody);
        m_isInHead = false;
    }
}

void TableFlow::DescribeRow(Prepared& prepared) {
    Tags& tags = m_context.painter.Elements();
    if (!tags.IsWanted()) {
        return;
    }
    const TableRow& row = prepared.row;
    DescribeGroup(row, prepared.index);
    const Tags::Within inGroup(tags, m_rowGroup ? m_rowGroup : m_element);
    ElementId element = tags.Begin(Role::Row);
    const Tags::Within within(tags, element);
    const std::vector<int> headings = HeadingsOf(row);
    for (std::size_t i = 0; i < row.cells.size(); ++i) {
        const TableCell& cell = row.cells[i];
        Element described;
        described.role = row.columnHeader                      ? Role::ColumnHeader
                         : cell.column < m_table.headerColumns ? Role::RowHeader
                                                               : Role::Cell;
        described.level = std::max(headings[i], 0);
        described.columnSpan = cell.columnSpan;
        described.rowSpan = cell.rowSpan;
        prepared.cells[i].tags = BeginCell(tags, described, cell.content, headings[i] >= 0);
    }
    tags.End(element);
}

void TableFlow::AddEdge(std::vector<Edge>& edges, double x1, double x2, const Border& border) {
    if (border.style == LineStyle::None) {
        return;
    }
    if (!edges.empty() && edges.back().border == border && std::abs(edges.back().x2 - x1) < Tolerance) {
        edges.back().x2 = x2;
    } else {
        edges.push_back({x1, x2, border});
    }
}

void TableFlow::DrawEdges(const std::vector<Edge>& edges, double y, Painter::Sides side) {
    for (const Edge& edge : edges) {
        m_context.painter.Edge(side, edge.x1, y, edge.x2, y, edge.border);
    }
}

void TableFlow::DrawBoxes(const Prepared& prepared, double y, double height) {
    m_tops.clear();
    m_newBottoms.clear();
    for (const TableCell& cell : prepared.row.cells) {
        if (cell.rowSpan > 1 || !cell.content.box || cell.content.kind == InstanceKind::Container ||
            cell.content.kind == InstanceKind::Line) {
            continue;
        }
        const BoxStyle& box = *cell.content.box;
        if (!box.HasBackground() && box.top.style == LineStyle::None && box.bottom.style == LineStyle::None) {
            continue;
        }
        const Rect area = CellArea(cell.column, cell.columnSpan, y, height);
        m_context.painter.Fill(area, box);
        AddEdge(m_tops, area.x, area.Right(), box.top);
        AddEdge(m_newBottoms, area.x, area.Right(), box.bottom);
    }
    if (m_bottoms != m_tops) {
        DrawEdges(m_bottoms, y, Painter::Bottom);
    }
    DrawEdges(m_tops, y, Painter::Top);
    m_bottoms.swap(m_newBottoms);
    DrawVerticals(prepared, y, height);
}

bool TableFlow::BeginsPart(int column) const {
    return m_parts.size() > 1 &&
           std::binary_search(m_parts.begin(), m_parts.end(), Part{0, 0, At(column)},
                              [](const Part& a, const Part& b) { return a.firstColumn < b.firstColumn; });
}

void TableFlow::DrawVerticals(const Prepared& prepared, double y, double height) {
    double lastRight = -1;
    const Border* lastBorder = nullptr;
    Painter& painter = m_context.painter;
    for (const TableCell& cell : prepared.row.cells) {
        if (cell.rowSpan > 1 || !cell.content.box || cell.content.kind == InstanceKind::Container ||
            cell.content.kind == InstanceKind::Line) {
            continue;
        }
        const BoxStyle& box = *cell.content.box;
        if (box.left.style == LineStyle::None && box.right.style == LineStyle::None) {
            lastBorder = nullptr;
            continue;
        }
        const Rect area = CellArea(cell.column, cell.columnSpan, y, height);
        if (!lastBorder || std::abs(lastRight - area.x) > Tolerance || !(*lastBorder == box.left) ||
            BeginsPart(cell.column)) {
            painter.Edge(Painter::Left, area.x, y, area.x, y + height, box.left);
        }
        painter.Edge(Painter::Right, area.Right(), y, area.Right(), y + height, box.right);
        lastRight = area.Right();
        lastBorder = &box.right;
    }
}

void TableFlow::DrawContent(const Instance& content, Cell& cell, const Rect& area) {
    Painter& painter = m_context.painter;
    const Tags::Within within(painter.Elements(), cell.tags.Content());
    switch (content.kind) {
        case InstanceKind::Text:
            if (IsTurned(content)) {  // only now the length of its lines is known
                painter.Layout().Lay(content, LineWidth(content, area.width, area.height), cell.laid);
                cell.laidText = {};
            }
            painter.Text(area, content, cell.laid, 0, cell.laid.lines.size());
            painter.Collect(content);
            break;
        case InstanceKind::Image:
            painter.Image(area, content);
            if (content.box) {  // the picture covers the half of its border that is inside
                painter.Borders(area, *content.box);
            }
            break;
        case InstanceKind::Drawing:
            painter.Drawing(area, *content.drawing);
            break;
        case InstanceKind::Line:
            if (content.box) {
                painter.Line(area.x, area.y, area.x + content.width, area.y + content.height,
                             content.box->top);
            }
            break;
        default:
            if (cell.flow) {
                cell.flow->Place(area.x, area.y, area.height);
            }
            return;
    }
    painter.Marks(area, content);
}

void TableFlow::DrawContents(Prepared& prepared, double y, double height) {
    for (std::size_t i = 0; i < prepared.row.cells.size(); ++i) {
        const TableCell& cell = prepared.row.cells[i];
        if (prepared.cells[i].isBlank && cell.column >= m_table.headerColumns) {
            continue;
        }
        if (cell.rowSpan > 1 || prepared.cells[i].flow) {
            continue;
        }
        Rect area = CellArea(cell.column, cell.columnSpan, y, height);
        DrawContent(cell.content, prepared.cells[i], area);
        if (cell.column < m_table.headerColumns) {
            const double x = area.x;
            const Tags::Decoration again(m_context.painter.Elements());
            for (const double distance : m_furtherPages) {
                area.x = x + distance;
                if (cell.content.box) {
                    m_context.painter.Fill(area, *cell.content.box);
                }
                DrawContent(cell.content, prepared.cells[i], area);
                if (cell.content.box) {
                    m_context.painter.Borders(area, *cell.content.box);
                }
            }
        }
    }
}

void TableFlow::BeginSpans(Prepared& prepared, double y) {
    for (std::size_t i = 0; i < prepared.row.cells.size(); ++i) {
        TableCell& cell = prepared.row.cells[i];
        if (cell.rowSpan <= 1 || prepared.cells[i].flow) {
            continue;
        }
        // Laid texts point into their instance, so it must not move any more.
        Span& span = *m_spans.emplace_back(std::make_unique<Span>());
        span.content = cell.content;
        span.tags = std::exchange(prepared.cells[i].tags, {});
        span.column = cell.column;
        span.columns = cell.columnSpan;
        span.lastRow = prepared.index + At(cell.rowSpan) - 1;
        span.top = y;
        if (Flows(span.content)) {
            span.needed = MakeFlow(span.content, m_context)->Measure(m_context.pageHeight);
            continue;
        }
        m_context.painter.Layout().Lay(
            span.content, LineWidth(span.content, span.content.width, span.content.height), span.laid);
        span.needed = span.content.kind == InstanceKind::Text ? GrownHeight(span.content, span.laid) : 0;
    }
}

// A rectangle is as high as the rows beside it. On each page it begins again, unless it continues.
void TableFlow::DrawFlowingSpan(Span& span, const Rect& area) {
    if (!span.flow) {
        span.flow = MakeFlow(span.content, m_context);
        span.placed = 0;
    }
    const Tags::Within within(m_context.painter.Elements(), span.tags.Content());
    span.flow->Stretch(span.placed + area.height);
    if (span.flow->Place(area.x, area.y, area.height).done) {
        span.flow.reset();
    }
    span.placed += area.height;
    if (span.column >= m_table.headerColumns) {
        return;
    }
    const Tags::Decoration again(m_context.painter.Elements());
    for (const double distance : m_furtherPages) {
        const auto flow = MakeFlow(span.content, m_context);
        flow->Stretch(area.height);
        flow->Place(area.x + distance, area.y, area.height);
    }
}

void TableFlow::DrawSpan(Span& span, double bottom) {
    Rect area = CellArea(span.column, span.columns, span.top, bottom - span.top);
    if (Flows(span.content)) {
        DrawFlowingSpan(span, area);
        return;
    }
    Painter& painter = m_context.painter;
    Cell cell;
    cell.laid = span.laid;
    cell.tags = span.tags;
    std::vector<double> places{0};
    if (span.column < m_table.headerColumns) {
        places.insert(places.end(), m_furtherPages.begin(), m_furtherPages.end());
    }
    const double x = area.x;
    for (const double distance : places) {
        area.x = x + distance;
        if (span.content.box) {
            painter.Fill(area, *span.content.box);
        }
        std::optional<Tags::Decoration> again;
        if (distance > 0 || std::exchange(span.isDrawn, true)) {
            again.emplace(painter.Elements());
        }
        DrawContent(span.content, cell, area);
        if (span.content.box) {
            painter.Borders(area, *span.content.box);
        }
    }
}

void TableFlow::EndSpans(std::size_t row, double bottom) {
    std::erase_if(m_spans, [&](const std::unique_ptr<Span>& span) {
        if (span->lastRow == row) {
            DrawSpan(*span, bottom);
            EndItem(m_context.painter.Elements(), span->tags);
        }
        return span->lastRow == row;
    });
}

void TableFlow::PlaceRow(Prepared& prepared, double y, double height) {
    DrawBoxes(prepared, y, height);
    DrawContents(prepared, y, height);
    for (const MapLabel& label : prepared.row.labels) {
        m_context.painter.Label(m_columnX.empty() ? 0 : m_columnX.front(), y, label);
    }
    m_context.painter.SetContent();
}

}  // namespace rdl::layout
