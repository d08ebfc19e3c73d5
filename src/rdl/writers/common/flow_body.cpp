// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/common/flow_body.h"

#include <algorithm>
#include <utility>

#include "rdl/values/error.h"
#include "rdl/writers/common/content.h"
#include "rdl/writers/common/flow_grid.h"
#include "rdl/writers/common/flow_tablix.h"

namespace rdl::writers {
namespace {

using layout::Instance;
using layout::InstanceKind;

constexpr double Near = 1.0;  // points: items so close to each other touch
constexpr std::size_t MostJoined = 200;
constexpr double Separator = 1.0;  // the height of a paragraph that only keeps tables apart

}  // namespace

FlowBody::Backdrop::Backdrop(const layout::BoxStylePtr& style, double backdropWidth, double backdropHeight)
    : color(style ? style->background : layout::Transparent), width(backdropWidth), height(backdropHeight) {}

void FlowBody::Body(const std::vector<Instance>& items, const Backdrop& backdrop) {
    m_backdrop = backdrop;
    m_breaks = true;
    m_hasContent = m_breakPending = false;
    m_last = Last::Nothing;
    const double end = Block(items, {});
    m_breaks = false;
    if (IsFilled({}) && backdrop.height - end > Near) {
        Blank(backdrop.height - end, Alone({}));
    }
    EndOfSection(Separator);
}

void FlowBody::Margin(const std::vector<Instance>& items, double height, const Backdrop& backdrop) {
    m_backdrop = backdrop;
    m_last = Last::Nothing;
    const double end = Block(items, {});
    Blank(std::max(height - end, Separator), Alone({}));
    m_last = Last::Nothing;
}

FlowPlace FlowBody::Alone(const Place& place) const {
    FlowPlace alone{place.level};
    alone.background = IsFilled(place) ? m_backdrop.color : layout::Transparent;
    return alone;
}

// Bands are what lies beside each other; they follow one below the other.
double FlowBody::Block(const std::vector<Instance>& items, const Place& place) {
    if (items.empty()) {
        return 0;
    }
    if (++m_depth > MaxNesting) {
        throw Error("Item \"" + items.front().name + "\" is nested too deeply");
    }
    Items sorted;
    for (const Instance& item : items) {
        sorted.push_back(&item);
    }
    std::stable_sort(sorted.begin(), sorted.end(), [](const Instance* a, const Instance* b) {
        return FlowExtent(*a).top < FlowExtent(*b).top;
    });
    const std::vector<BandOf> bands = Bands(sorted, place);
    double end = 0;
    for (const BandOf& band : bands) {
        const Items& members = band.items;
        const bool breaks =
            m_breakPending || std::any_of(members.begin(), members.end(),
                                          [](const Instance* item) { return item->breakBefore; });
        if (breaks && Breaks(place)) {
            Break();
            end = band.top;
        }
        const bool table = members.size() == 1 && HoldsTable(*members.front());
        const double late = Gap(band.top - end, table, place);
        end = Band(band, place) + late;
        if (place.level == 0) {
            m_breakPending =
                m_breakPending || std::any_of(members.begin(), members.end(),
                                              [](const Instance* item) { return item->breakAfter; });
        }
    }
    --m_depth;
    return end;
}

// Some readers take tables that touch for one, and stretch its rows to one width: each gets the edges of all.
std::vector<FlowBody::BandOf> FlowBody::Bands(const Items& sorted, const Place& place) const {
    std::vector<BandOf> bands;
    for (std::size_t i = 0; i < sorted.size();) {
        const FlowExtent first(*sorted[i], place.x);
        BandOf band{{sorted[i]}, first.top, first.bottom, first.left, first.right, false};
        while (++i < sorted.size() && (FlowExtent(*sorted[i]).top < band.bottom - Near ||
                                       Joins(band.items, band.bottom, *sorted[i]))) {
            const FlowExtent next(*sorted[i], place.x);
            band.items.push_back(sorted[i]);
            band.bottom = std::max(band.bottom, next.bottom);
            band.left = std::min(band.left, next.left);
            band.right = std::max(band.right, next.right);
        }
        if (IsFilled(place)) {  // across the whole body
            band.left = std::min(band.left, 0.0);
            band.right = std::max(band.right, m_backdrop.width);
            band.touches = true;
        }
        bands.push_back(std::move(band));
    }
    if (SharesColumns()) {
        return bands;
    }
    const auto touch = [](const BandOf& above, const BandOf& below) {
        const auto isGrid = [](const BandOf& band) {
            return band.items.size() > 1 || !HoldsTable(*band.items.front());
        };
        return below.top - above.bottom < Near && isGrid(above) && isGrid(below);
    };
    const auto widen = [&touch](BandOf& band, const BandOf& beside, const BandOf& above,
                                const BandOf& below) {
        if (touch(above, below)) {
            band.left = std::min(band.left, beside.left);
            band.right = std::max(band.right, beside.right);
            band.touches = true;
        }
    };
    for (std::size_t i = 1; i < bands.size(); ++i) {
        widen(bands[i], bands[i - 1], bands[i - 1], bands[i]);
    }
    for (std::size_t i = bands.size(); i-- > 1;) {
        widen(bands[i - 1], bands[i], bands[i - 1], bands[i]);
    }
    return bands;
}

// Whether an item below a band shares its table.
bool FlowBody::Joins(const Items& band, double bottom, const Instance& next) const {
    const auto isPlain = [](const Instance& item) {
        const bool isKept =
            item.keepTogether && item.kind == InstanceKind::Container;  // rows of others are whole
        return !HoldsTable(item) && !isKept && !item.breakAfter;
    };
    return SharesColumns() && band.size() < MostJoined && FlowExtent(next).top < bottom + Near &&
           isPlain(next) && !next.breakBefore &&
           std::all_of(band.begin(), band.end(), [&isPlain](const Instance* item) { return isPlain(*item); });
}

double FlowBody::Band(const BandOf& band, const Place& place) {
    const Instance& first = *band.items.front();
    const Place inner{place.level, FlowExtent(first, place.x).left};
    if (band.items.size() == 1 && first.kind == InstanceKind::Table) {
        Mark(first);
        Table(first, inner);
        return band.bottom;
    }
    if (band.items.size() == 1 && HoldsTable(first) && !HasLook(first)) {
        Mark(first);
        return FlowExtent(first).top + Block(first.children, inner);
    }
    Grid(band, place);
    return band.bottom;
}

void FlowBody::Grid(const BandOf& band, const Place& place) {
    const FlowGrid grid(band.items, place.x, band.touches ? band.left : 0, band.touches ? band.right : 0);
    for (const Instance* item : grid.MarksBefore()) {
        Mark(*item);
    }
    BeginTable(grid.ColumnLines(), false);
    for (std::size_t i = 0; i < grid.RowCount(); ++i) {
        Row(Filled(grid.Row(i), place), place);
    }
    EndTable();
    m_last = Last::Grid;
}

// Returns by how much it is higher than asked for.
double FlowBody::Gap(double height, bool table, const Place& place) {
    const bool apart = m_last == Last::Table || (m_last == Last::Grid && (table || SharesColumns()));
    if (height < Near && !apart) {
        return 0;
    }
    const double actual = std::max(height, Separator);
    Blank(actual, Alone(place));
    m_last = Last::Paragraph;
    return actual - std::max(height, 0.0);
}

void FlowBody::Break() {
    BreakPage();
    m_last = Last::Paragraph;
    m_breakPending = false;
}

void FlowBody::Row(const FlowRow& row, const Place& place) {
    if (row.cells.empty()) {
        return;
    }
    if (row.cells.size() > FlowMostCells) {
        throw Error("Item \"" + row.item + "\" makes a row of " + std::to_string(row.cells.size()) +
                    " cells, and a table of a text document has 63 side by side at most");
    }
    const int level = place.level + 1;
    m_hasContent = true;
    BeginRow(row, level);
    bool nested = false;
    for (const FlowCell& cell : row.cells) {
        Cell(cell, row, level, nested);
    }
    EndRow(level, nested);
    PieceWritten();
}

// A body has no fill of its own in a text document: its cells have it.
FlowRow FlowBody::Filled(FlowRow row, const Place& place) const {
    for (FlowCell& cell : row.cells) {
        if (IsFilled(place) && !layout::IsVisible(cell.background)) {
            cell.background = m_backdrop.color;
        }
    }
    return row;
}

void FlowBody::Cell(const FlowCell& cell, const FlowRow& row, int level, bool& nested) {
    const FlowPlace place{level, row.keepNext, row.rightToLeft};
    BeginCell(cell);
    for (const Instance* item : cell.marks) {
        Mark(*item);
    }
    bool ends = false;  // with a paragraph
    for (const Instance* item : cell.content) {
        ends = item->kind == InstanceKind::Text || item->kind == InstanceKind::Image;
        if (item->kind == InstanceKind::Text) {
            TextBox(*item, place);
        } else if (item->kind == InstanceKind::Image) {
            Picture(*item, place);
        } else {
            Nested(*item, level);
            nested = true;
        }
        PieceWritten();
    }
    if (!ends) {
        Blank(Separator, place);
    }
    EndCell(level);
}

void FlowBody::Nested(const Instance& item, int level) {
    const Last outer = std::exchange(m_last, Last::Nothing);
    Mark(item);
    if (item.kind == InstanceKind::Container) {
        Block(item.children, {level, 0});
    } else if (item.kind == InstanceKind::Table) {
        Table(item, {level, 0});
    } else {
        throw Error("Drawing \"" + item.name + "\" cannot be shown in a text document");
    }
    m_last = outer;
}

// A region with more columns than a table can have continues in further tables below.
void FlowBody::Table(const Instance& item, const Place& place) {
    if (!item.table) {
        return;
    }
    if (!item.table->noRowsMessage.empty()) {
        Message(*item.table, Alone(place));
        m_last = Last::Paragraph;
        m_hasContent = true;
        return;
    }
    if (++m_depth > MaxNesting) {
        throw Error("Item \"" + item.name + "\" is nested too deeply");
    }
    std::size_t first = 0;
    FlowTablix::Growing growing;
    do {
        const FlowTablix::Columns columns = FlowTablix::Fit(item, place.x, first);
        FlowTablix rows(item, place.x, columns, growing);
        if (first > 0) {
            Gap(0, true, place);
        }
        BeginTable(rows.ColumnLines(), item.table->rightToLeft);
        for (std::size_t i = 0; i < rows.RowCount(); ++i) {
            TableRow(item, rows, i, place);
        }
        EndTable();
        first = columns.end;
    } while (first < item.table->columnWidths.size());
    --m_depth;
}

void FlowBody::TableRow(const Instance& item, FlowTablix& rows, std::size_t index, const Place& place) {
    const layout::TableRow& source = rows.Fetch(index);
    const bool breakAfter = source.breakAfter && place.level == 0;
    const bool breaks = (source.breakBefore || m_breakPending) && Breaks(place);
    if (breaks) {
        EndTable();
        Break();
        BeginTable(rows.ColumnLines(), item.table->rightToLeft);
        RepeatRows(item, rows, index, place);
    }
    const FlowRow row =
        Filled(rows.Make(breaks ? FlowTablix::Before::PageBreak : FlowTablix::Before::Row), place);
    for (std::size_t i = 0; i < source.labels.size() && rows.ShownColumns().first == 0; ++i) {
        Label(source.labels[i], row);
    }
    Row(row, place);
    m_last = Last::Table;
    m_breakPending = m_breakPending || breakAfter;
}

// After a page break readers see a separate table with its own headings.
void FlowBody::RepeatRows(const Instance& item, FlowTablix& rows, std::size_t index, const Place& place) {
    const std::vector<std::size_t> repeated = item.table->RepeatedRows(index);
    if (repeated.empty()) {
        return;
    }
    FlowTablix heading(item, place.x, rows.ShownColumns(), rows.GrowingRows());
    for (const std::size_t i : repeated) {
        heading.Fetch(i);
        Row(Filled(heading.Make(FlowTablix::Before::Row), place), place);
    }
}

}  // namespace rdl::writers
