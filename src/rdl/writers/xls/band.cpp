// SPDX-License-Identifier: GPL-3.0-or-later
// Members of XlsLayout: items beside each other.
#include <algorithm>
#include <numeric>
#include <utility>

#include "rdl/values/error.h"
#include "rdl/writers/common/content.h"
#include "rdl/writers/xls/extent.h"
#include "rdl/writers/xls/layout.h"

namespace rdl::writers {

using layout::Instance;
using layout::InstanceKind;

// What is in a rectangle lies beside the others too: it shares their rows.
void XlsLayout::Spread(const Instance& item, double x, double y, int inside, int depth,
                       std::vector<BandItem>& band) {
    if (depth > MaxNesting) {
        throw Error("Item \"" + item.name + "\" is nested too deeply");
    }
    const auto own = static_cast<int>(band.size());
    band.push_back({&item, x, y + Top(item), y + Bottom(item), inside});
    if (item.kind == InstanceKind::Container) {
        for (const Instance& child : item.children) {
            Spread(child, x + item.x, y + item.y, own, depth + 1, band);
        }
    }
}

// Runs `place` over the fill of the rectangles around an item.
template <typename Work>
void XlsLayout::OverFills(const std::vector<BandItem>& band, const BandItem& item, Work place) {
    int around = item.inside;
    while (around >= 0) {
        const BandItem& container = band[static_cast<std::size_t>(around)];
        if (IsFilled(*container.item)) {
            m_fills.push_back({container.item->box->background, {}, 0});
            break;
        }
        around = container.inside;
    }
    place();
    if (around >= 0) {
        m_fills.pop_back();
    }
}

// Returns what is around the content of a rectangle or an image that begins at a row, for as long as its
// other items are placed. `after` becomes the row after it.
XlsLayout::Around XlsLayout::PlaceInBand(const BandItem& placed, std::uint32_t row, bool overRows,
                                         std::uint32_t& after) {
    const Instance& item = *placed.item;
    m_around = {};
    after = row + 1;
    if (item.kind == InstanceKind::Container) {
        Mark(item, row, ColumnsAt(placed.x + Left(item), placed.x + Right(item)).first);
        m_around = BeginAround(item, placed.x, row);
        LeaveAround(m_around);
    } else if (item.kind == InstanceKind::Image && overRows) {  // over rows of the items beside it
        Mark(item, row, ColumnsAt(placed.x + Left(item), placed.x + Right(item)).first);
        PlaceFilled(item, placed.x, row, Level::Inner, ImageRows::OfOthers);
        after = row;
    } else if (item.kind == InstanceKind::Line && overRows) {  // in the rows that the others make
        after = row;
    } else {
        const std::uint32_t end = PlaceOne(item, placed.x, row, Level::Inner);
        after = item.kind == InstanceKind::Image ? row + 1 : end;
        m_around = item.kind == InstanceKind::Table ? Around() : m_around;
    }
    return std::exchange(m_around, {});
}

// Rows are at all upper and lower edges, more where a table needs them.
std::uint32_t XlsLayout::PlaceBand(const Items& items, double x, std::uint32_t row) {
    std::vector<BandItem> band;
    for (const Instance* item : items) {
        Spread(*item, x, 0, -1, 0, band);
    }
    std::vector<std::size_t> order(band.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(),
                     [&band](std::size_t a, std::size_t b) { return band[a].top < band[b].top; });
    Edges lines(Near);
    for (const BandItem& item : band) {
        lines.Add(item.top);
        lines.Add(item.bottom);
    }
    lines.Settle();
    std::vector<std::uint32_t> rows(lines.lines().size(), row);
    std::vector<std::pair<Around, std::size_t>> boxes;  // and the line where each ends
    std::size_t next = 0;
    for (std::size_t line = 0; line < rows.size(); ++line) {
        if (line > 0) {
            rows[line] = std::max(rows[line], rows[line - 1] + 1);
            m_sheet->Height(rows[line - 1], rows[line] - rows[line - 1] == 1 ? lines.Track(line - 1) : 0,
                            XlsWorksheet::HeightKind::ByText);
        }
        for (; next < order.size() && lines.Line(band[order[next]].top) <= line; ++next) {
            const BandItem& item = band[order[next]];
            if (IsText(*item.item)) {
                continue;
            }
            const std::size_t end = std::min(std::max(lines.Line(item.bottom), line + 1), rows.size() - 1);
            std::uint32_t after = 0;
            OverFills(band, item,
                      [&] { boxes.emplace_back(PlaceInBand(item, rows[line], end > line + 1, after), end); });
            rows[end] = std::max(rows[end], after);
        }
    }
    for (const auto& [around, end] : boxes) {  // as high as what is beside them
        EndAround(around, rows[end]);
    }
    PlaceOverRows(band, lines, rows);
    return std::max(rows.back(), row + 1);
}

// Texts, and lines that run along several rows, take the rows that there are.
void XlsLayout::PlaceOverRows(const std::vector<BandItem>& band, const Edges& lines,
                              const std::vector<std::uint32_t>& rows) {
    for (const bool texts : {true, false}) {
        for (const BandItem& placed : band) {
            const Instance& item = *placed.item;
            const std::size_t line = lines.Line(placed.top);
            const std::size_t end = std::min(lines.Line(placed.bottom), rows.size() - 1);
            const std::uint32_t first = rows[line], last = std::max(rows[end], first + 1) - 1;
            if (texts && IsText(item)) {
                const Columns columns = ColumnsAt(placed.x + Left(item), placed.x + Right(item));
                OverFills(band, placed, [&] { PlaceText(item, {first, last, columns.first, columns.last}); });
            } else if (!texts && item.kind == InstanceKind::Line && end > line + 1) {
                Mark(item, first, ColumnsAt(placed.x + Left(item), placed.x + Right(item)).first);
                OverFills(band, placed, [&] { PlaceLine(item, placed.x, first, last); });
            }
        }
    }
}

}  // namespace rdl::writers
