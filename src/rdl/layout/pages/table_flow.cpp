// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/pages/table_flow.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "rdl/layout/pages/tolerance.h"
#include "rdl/values/index.h"

namespace rdl::layout {
namespace {

constexpr std::size_t MaxBlock = 200;  // rows kept together: more are a table's own affair

}  // namespace

TableFlow::TableFlow(const Instance& item, FlowContext& context)
    : Flow(context), m_item(item), m_table(*item.table) {
    if (!m_table.noRowsMessage.empty()) {
        m_messageItem = std::make_unique<Instance>();
        m_messageItem->width = item.width;
        m_messageItem->height = item.height;
        m_messageItem->box = item.box;
        m_messageItem->name = item.name;
        m_messageItem->canGrow = true;
        m_messageItem->paragraphs.resize(1);
        m_messageItem->paragraphs.front().runs.push_back({m_table.noRowsMessage, m_table.noRowsStyle, {}});
        m_message = MakeFlow(*m_messageItem, context);
    }
}

double TableFlow::TotalWidth() const {
    return std::accumulate(m_table.columnWidths.begin(), m_table.columnWidths.end(), 0.0);
}

// Whether a column that begins at `at` is the first one on its page; the column before it ends at `previous`.
bool TableFlow::BeginsPage(double at, double previous) const {
    if (!std::isfinite(m_context.pageWidth)) {
        return false;
    }
    const auto pageOf = [this](double x) {
        return std::floor((x - m_context.left + Tolerance) / m_context.pageWidth);
    };
    return pageOf(at) > pageOf(previous - 3 * Tolerance);
}

// Computes column positions: a column that a page's right edge would cut starts the next page, after the row
// headers.
void TableFlow::PlaceColumns(double x) {
    if (m_columnsFor == x && !m_columnX.empty()) {
        return;
    }
    m_columnsFor = x;
    m_columnX.clear();
    m_furtherPages.clear();
    m_parts.assign(1, {x, x + TotalWidth(), 0});
    if (m_table.rightToLeft) {
        double right = x + TotalWidth();
        for (const double width : m_table.columnWidths) {
            right -= width;
            m_columnX.push_back(right);
        }
        return;
    }
    double headers = 0;
    double at = x;
    for (std::size_t i = 0; i < m_table.columnWidths.size(); ++i) {
        const double width = m_table.columnWidths[i];
        const bool isHeader = static_cast<int>(i) < m_table.headerColumns;
        const double clear =
            isHeader || headers + width > m_context.pageWidth ? at : ClearOfPageEdges(m_context, at, width);
        if (!isHeader && i > 0 && BeginsPage(clear, at)) {
            m_parts.back().right = at;
            m_parts.push_back({clear, clear, i});
            at = clear;
            if (m_table.repeatRowHeaders && headers + width <= m_context.pageWidth) {
                m_furtherPages.push_back(clear - x);
                at += headers;
            }
        }
        m_columnX.push_back(at);
        at += width;
        headers += isHeader ? width : 0;
    }
    m_parts.back().right = at;
}

Rect TableFlow::CellArea(int column, int columns, double y, double height) const {
    if (At(column) >= m_columnX.size()) {
        return {m_columnX.empty() ? 0 : m_columnX.back(), y, 0, height};
    }
    const std::size_t end = std::min(At(column + columns), m_columnX.size());
    if (m_table.rightToLeft) {
        const double left = m_columnX[end - 1];
        return {left, y, m_columnX[At(column)] + m_table.columnWidths[At(column)] - left, height};
    }
    const double x = m_columnX[At(column)];
    double right = x;
    for (std::size_t i = At(column); i < end; ++i) {
        if (m_columnX[i] > right + Tolerance) {
            break;  // the rest stands on a further page
        }
        right = m_columnX[i] + m_table.columnWidths[i];
    }
    return {x, y, right - x, height};
}

std::unique_ptr<TableFlow::Prepared> TableFlow::Make(std::size_t index) {
    std::unique_ptr<Prepared> prepared;
    if (m_spare.empty()) {
        prepared = std::make_unique<Prepared>();
    } else {
        prepared = std::move(m_spare.back());
        m_spare.pop_back();
    }
    prepared->index = index;
    prepared->begun = prepared->flows = false;
    m_table.Row(index, prepared->row);
    Prepare(*prepared);
    return prepared;
}

void TableFlow::Prepare(Prepared& prepared) {
    TableRow& row = prepared.row;
    if (prepared.cells.size() < row.cells.size()) {
        prepared.cells.resize(row.cells.size());
    }
    // Their texts are gone.
    for (std::size_t i = row.cells.size(); i < prepared.cells.size(); ++i) {
        prepared.cells[i].laidText = {};
    }
    double height = 0;
    bool mayShrink = !row.cells.empty();
    for (std::size_t i = 0; i < row.cells.size(); ++i) {
        Instance& content = row.cells[i].content;
        Cell& cell = prepared.cells[i];
        cell.nextLine = 0;
        cell.flow.reset();
        cell.tags = {};
        cell.isBlank = cell.isBlank && cell.laidText.IsSameAs(content.same);
        if (content.kind == InstanceKind::Text) {
            const double width = LineWidth(content, content.width, row.height);
            if (!cell.laidText.IsSameAs(content.same) || cell.laidWidth != width) {
                m_context.painter.Layout().Lay(content, width, cell.laid);
                cell.laidText = content.same;
                cell.laidWidth = width;
                cell.isBlank = content.same.IsSet() && !IsTurned(content) &&
                               m_context.painter.AddsNothing(content, cell.laid);
            }
            if (row.cells[i].rowSpan == 1) {
                height = std::max(height, GrownHeight(content, cell.laid));
            }
            mayShrink = mayShrink && content.canShrink;
            continue;
        }
        cell.laid.Clear();
        cell.laidText = {};
        mayShrink = false;
        if (Flows(content)) {
            cell.flow = MakeFlow(content, m_context);
            // What is beside several rows needs room in the first of them only if it may need several pages.
            if (row.cells[i].rowSpan > 1 &&
                cell.flow->Measure(m_context.pageHeight) <= m_context.pageHeight / 2) {
                cell.flow.reset();
            }
            prepared.flows = prepared.flows || cell.flow;
        } else if (content.kind == InstanceKind::Image && content.sizing == Instance::Sizing::AutoSize) {
            height = std::max(height, BlockFlow(content, m_context).Measure(0));
        }
    }
    prepared.height = mayShrink ? height : std::max(height, row.height);
}

TableFlow::Prepared& TableFlow::Ahead(std::size_t offset) {
    while (m_queue.size() <= offset) {
        m_queue.push_back(Make(m_next + m_queue.size()));
    }
    return *m_queue[offset];
}

void TableFlow::DropFirst() {
    for (Cell& cell : m_queue.front()->cells) {
        EndItem(m_context.painter.Elements(), cell.tags);
    }
    m_spare.push_back(std::move(m_queue.front()));
    m_queue.pop_front();
    ++m_next;
}

// The height of the next row with those that must not be parted from it.
double TableFlow::BlockHeight() {
    double height = Ahead(0).height;
    for (std::size_t i = 0; i < MaxBlock && m_next + i + 1 < m_table.RowCount(); ++i) {
        const Prepared& row = Ahead(i);
        const bool keepsNext = row.row.keepWithNext && !row.row.breakAfter;
        const Prepared& next = Ahead(i + 1);
        if ((!keepsNext && !next.row.keepWithPrevious) || next.row.breakBefore) {
            break;
        }
        height += next.height;
        if (height > m_context.pageHeight) {
            break;
        }
    }
    return height;
}

// A cell over several rows that needs more than they have makes the last of them higher.
double TableFlow::RowHeight(const Prepared& prepared, double y) const {
    double height = prepared.height;
    for (const auto& span : m_spans) {
        if (span->lastRow == prepared.index) {
            height = std::max(height, span->top + span->needed - y);
        }
    }
    return height;
}

bool TableFlow::EndsPageBefore(const Prepared& prepared, double y, double bottom) {
    const bool hasAbove = m_rowsOnPage > 0 || m_waitsForRoom;
    if (prepared.begun) {
        return false;
    }
    if (prepared.row.breakBefore && (m_rowsOnPage > 0 || m_contentBefore) &&
        m_brokenBefore != prepared.index) {
        m_brokenBefore = prepared.index;
        return true;
    }
    if (!hasAbove) {
        return false;
    }
    const double height = RowHeight(prepared, y);
    if (y + height > bottom + Tolerance) {
        return !prepared.flows || y + prepared.row.height > bottom + Tolerance;
    }
    const double block = BlockHeight();
    return y + block > bottom + Tolerance && block <= m_context.pageHeight + Tolerance;
}

// Places a part of a text that is higher than the space for it. Returns true if no line is left.
bool TableFlow::SplitText(const Instance& content, Cell& cell, const Rect& area) {
    const auto& lines = cell.laid.lines;
    if (cell.nextLine >= lines.size()) {
        return true;
    }
    const double padding = content.box ? static_cast<double>(content.box->paddingTop) +
                                             static_cast<double>(content.box->paddingBottom)
                                       : 0;
    const double room = lines[cell.nextLine].top + area.height - padding + Tolerance;
    std::size_t last = cell.nextLine + 1;
    while (last < lines.size() && lines[last].top + lines[last].height <= room) {
        ++last;
    }
    const Tags::Within within(m_context.painter.Elements(), cell.tags.Content());
    m_context.painter.Text(area, content, cell.laid, cell.nextLine, content.canGrow ? last : lines.size());
    cell.nextLine = content.canGrow ? last : lines.size();
    return cell.nextLine >= lines.size();
}

// Rectangles with a frame or a colour are as high as their row.
void TableFlow::StretchBoxes(Prepared& prepared, double y) {
    const std::vector<TableCell>& cells = prepared.row.cells;
    const auto hasBox = [](const TableCell& cell) {
        return cell.content.kind == InstanceKind::Container && cell.content.box;
    };
    if (prepared.begun || cells.size() < 2 || std::none_of(cells.begin(), cells.end(), hasBox)) {
        return;
    }
    double height = RowHeight(prepared, y);
    for (std::size_t i = 0; i < cells.size(); ++i) {
        if (prepared.cells[i].flow) {
            height = std::max(height, prepared.cells[i].flow->Measure(m_context.pageHeight));
        }
    }
    for (std::size_t i = 0; i < cells.size(); ++i) {
        if (prepared.cells[i].flow && cells[i].rowSpan == 1) {
            prepared.cells[i].flow->Stretch(height);
        }
    }
}

// Places as much as fits of a row that is higher than a page, or whose items may be split.
bool TableFlow::PlaceSplit(Prepared& prepared, double y, double bottom, double& used) {
    const double available = bottom - y;
    bool done = true;
    used = prepared.begun ? 0 : std::min(prepared.row.height, available);
    StretchBoxes(prepared, y);
    for (std::size_t i = 0; i < prepared.row.cells.size(); ++i) {
        Cell& cell = prepared.cells[i];
        if (!cell.flow) {
            continue;
        }
        const TableCell& where = prepared.row.cells[i];
        const Rect area = CellArea(where.column, where.columnSpan, y, available);
        const Tags::Within within(m_context.painter.Elements(), cell.tags.Content());
        const Outcome outcome = cell.flow->Place(area.x, y, available);
        used = std::max(used, outcome.used);
        if (outcome.done) {
            cell.flow.reset();
        } else {
            used = std::max(used, available);
            done = false;
        }
    }
    if (!prepared.begun) {
        used = std::max(used, std::min(RowHeight(prepared, y), available));
    }
    const bool textFits = !prepared.begun && RowHeight(prepared, y) <= available + Tolerance;
    if (textFits) {
        PlaceRow(prepared, y, used);
        for (Cell& cell : prepared.cells) {
            cell.nextLine = cell.laid.lines.size();
        }
    } else {
        DrawBoxes(prepared, y, used);
        for (std::size_t i = 0; i < prepared.row.cells.size(); ++i) {
            const TableCell& where = prepared.row.cells[i];
            if (where.content.kind == InstanceKind::Text && where.rowSpan == 1) {
                const Rect area = CellArea(where.column, where.columnSpan, y, available);
                done = SplitText(where.content, prepared.cells[i], area) && done;
            }
        }
    }
    prepared.begun = true;
    return done;
}

// The row that begins a page says again what the last one on the page before said.
void TableFlow::ShowDuplicatesOnTop() {
    if (!m_begun || !m_table.hidesDuplicates || m_next >= m_table.RowCount() || Ahead(0).begun) {
        return;
    }
    Prepared& first = Ahead(0);
    m_table.RowOnTop(first.index, first.row);
    first.flows = false;
    Prepare(first);
}

double TableFlow::PlaceRepeated(double y) {
    if (m_next == 0 || m_next >= m_table.RowCount()) {
        return y;
    }
    const Tags::Decoration again(m_context.painter.Elements());
    for (const std::size_t index : m_table.RepeatedRows(m_next)) {
        auto prepared = Make(index);
        // Headers that fill half of a page leave no room for what they head.
        if (prepared->height < m_context.pageHeight / 2) {
            BeginSpans(*prepared, y);
            const double height = RowHeight(*prepared, y);
            if (prepared->flows) {
                double used = 0;
                PlaceSplit(*prepared, y, y + m_context.pageHeight / 2, used);
                y += used;
            } else {
                PlaceRow(*prepared, y, height);
                y += height;
            }
            EndSpans(index, y);
        }
        m_spare.push_back(std::move(prepared));
    }
    return y;
}

// Places rows until the page is full. Returns true if no row is left.
bool TableFlow::PlaceRows(double& y, double bottom, bool& breakAfter) {
    while (m_next < m_table.RowCount()) {
        Prepared& row = Ahead(0);
        if (EndsPageBefore(row, y, bottom)) {
            return false;
        }
        if (row.row.resetPageNumber && m_rowsOnPage == 0) {
            m_context.painter.resetPageNumber = true;
        }
        if (!row.row.pageName.empty() && (m_rowsOnPage == 0 || !m_context.painter.isPageNamed)) {
            m_context.painter.SetPageName(row.row.pageName);
        }
        if (!row.begun) {
            DescribeRow(row);
            BeginSpans(row, y);
        }
        double used = RowHeight(row, y);
        const bool isSplit = row.flows || row.begun || y + used > bottom + Tolerance;
        if (isSplit && !PlaceSplit(row, y, bottom, used)) {
            y += used;
            ++m_rowsOnPage;
            return false;
        }
        if (!isSplit) {
            PlaceRow(row, y, used);
        }
        y += used;
        ++m_rowsOnPage;
        const bool breaks = row.row.breakAfter;
        EndSpans(row.index, y);
        DropFirst();
        if (breaks) {
            breakAfter = true;
            return m_next >= m_table.RowCount();
        }
    }
    return true;
}

unsigned TableFlow::PartSides(std::size_t part, unsigned sides) const {
    if (m_item.omitBorder && part > 0) {
        sides &= ~static_cast<unsigned>(Painter::Left);
    }
    if (m_item.omitBorder && part + 1 < m_parts.size()) {
        sides &= ~static_cast<unsigned>(Painter::Right);
    }
    return sides;
}

Flow::Outcome TableFlow::Place(double x, double y, double available) {
    if (m_message) {
        return m_message->Place(x, y, available);
    }
    if (!m_begun && m_table.keepTogether && MayWait(y)) {
        const double height = Measure(m_context.pageHeight);
        if (height > available + Tolerance && height <= m_context.pageHeight + Tolerance) {
            return {0, false};
        }
    }
    PlaceColumns(x);
    Tags& tags = m_context.painter.Elements();
    if (m_element == 0) {
        m_element = tags.Begin(Role::Table);
    }
    const Tags::Within within(tags, m_element);
    m_bottoms.clear();
    m_rowsOnPage = 0;
    // Asked before headers are repeated: those are no reason to wait for another page, which has them too.
    m_waitsForRoom = MayWait(y);
    m_contentBefore = m_context.painter.HasContent();
    if (!m_begun) {
        m_context.painter.Marks({x, y, m_item.width, 0}, m_item);
    }
    std::vector<std::size_t> backgrounds(m_item.box ? m_parts.size() : 0);
    for (std::size_t& background : backgrounds) {
        background = m_context.painter.ReserveFill();
    }
    double at = m_begun ? PlaceRepeated(y) : y;
    ShowDuplicatesOnTop();
    for (const auto& span : m_spans) {
        span->top = at;
    }
    bool breakAfter = false;
    const bool wasBegun = m_begun;
    const bool nothingBegun = m_next == 0 && !m_begun;
    const bool done = PlaceRows(at, y + available, breakAfter);
    DrawEdges(m_bottoms, at, Painter::Bottom);
    for (const auto& span : m_spans) {
        if (at > span->top + Tolerance) {
            DrawSpan(*span, at);
        }
    }
    if (!done && nothingBegun && m_rowsOnPage == 0) {
        return {0, false};
    }
    m_begun = true;
    // From the last to the first: a background may take more than the place that is kept for it.
    for (std::size_t part = backgrounds.size(); part-- > 0;) {
        const Rect area{m_parts[part].left, y, m_parts[part].right - m_parts[part].left, at - y};
        m_context.painter.FillReserved(backgrounds[part], area, *m_item.box);
        m_context.painter.Borders(area, *m_item.box, PartSides(part, SidesOf(m_item, wasBegun, !done)));
    }
    if (done) {
        tags.End(m_rowGroup);
        tags.End(m_element);
    }
    return {at - y, done, done && breakAfter};
}

double TableFlow::Measure(double limit) {
    if (m_message) {
        return m_message->Measure(limit);
    }
    double height = 0;
    for (std::size_t i = 0; i < m_table.RowCount() && height <= limit; ++i) {
        auto prepared = Make(i);
        double row = prepared->height;
        for (Cell& cell : prepared->cells) {
            row = std::max(row, cell.flow ? cell.flow->Measure(limit - height) : 0);
            cell.flow.reset();
        }
        height += row;
        m_spare.push_back(std::move(prepared));
    }
    return height;
}

}  // namespace rdl::layout
