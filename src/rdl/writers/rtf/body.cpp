// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/rtf/body.h"

#include <algorithm>
#include <utility>

#include "rdl/values/error.h"
#include "rdl/writers/common/content.h"
#include "rdl/writers/rtf/grid.h"

namespace rdl::writers {
namespace {

using layout::Instance;
using layout::InstanceKind;

constexpr double Near = 1.0;       // points: items so close to each other touch
constexpr double Separator = 1.0;  // the height of a paragraph that only keeps tables apart
constexpr std::size_t PieceSize = 64u << 10;

}  // namespace

void RtfBody::Flush() {
    m_spool.Append(m_out);
    m_out.clear();
}

void RtfBody::FlushWhenLarge() {
    if (m_out.size() > PieceSize) {
        Flush();
    }
}

void RtfBody::Body(const std::vector<Instance>& items) {
    m_breaks = true;
    m_hasContent = m_breakPending = false;
    m_last = Last::Nothing;
    Block(items, {});
    m_breaks = false;
    RtfParagraphs::Blank(Separator, {}, m_out);  // a document ends with a paragraph, not with a table
}

void RtfBody::Margin(const std::vector<Instance>& items, double height) {
    m_last = Last::Nothing;
    const double end = Block(items, {});
    RtfParagraphs::Blank(std::max(height - end, Separator), {}, m_out);
    m_out += "\\par";
    m_last = Last::Nothing;
}

// Bands are what lies beside each other; they follow one below the other.
double RtfBody::Block(const std::vector<Instance>& items, const Place& place) {
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
        return RtfExtent(*a).top < RtfExtent(*b).top;
    });
    double end = 0;
    for (std::size_t i = 0; i < sorted.size();) {
        Items band{sorted[i]};
        const double begin = RtfExtent(*sorted[i]).top;
        double bottom = RtfExtent(*sorted[i]).bottom;
        while (++i < sorted.size() && RtfExtent(*sorted[i]).top < bottom - Near) {
            band.push_back(sorted[i]);
            bottom = std::max(bottom, RtfExtent(*sorted[i]).bottom);
        }
        const bool breaks = m_breakPending || std::any_of(band.begin(), band.end(), [](const Instance* item) {
                                return item->breakBefore;
                            });
        if (breaks && Breaks(place)) {
            BreakPage();
            end = begin;
        }
        const bool table = band.size() == 1 && HoldsTable(*band.front());
        const double late = Gap(begin - end, table, place);
        end = Band(band, place, bottom) + late;
        if (place.level == 0) {
            m_breakPending =
                m_breakPending ||
                std::any_of(band.begin(), band.end(), [](const Instance* item) { return item->breakAfter; });
        }
    }
    --m_depth;
    return end;
}

double RtfBody::Band(const Items& band, const Place& place, double bottom) {
    const Instance& first = *band.front();
    const Place inner{place.level, RtfExtent(first, place.x).left};
    for (const Instance* item : band) {
        if (item->kind == InstanceKind::Container || item->kind == InstanceKind::Table) {
            m_paragraphs.Bookmark(*item, m_out);
        }
    }
    if (band.size() == 1 && first.kind == InstanceKind::Table) {
        Table(first, inner);
        return bottom;
    }
    if (band.size() == 1 && HoldsTable(first) && !HasLook(first)) {
        return RtfExtent(first).top + Block(first.children, inner);
    }
    Grid(band, place);
    return bottom;
}

void RtfBody::Grid(const Items& band, const Place& place) {
    const RtfGrid grid(band, place.x);
    for (std::size_t i = 0; i < grid.RowCount(); ++i) {
        Row(grid.Row(i), place);
        m_last = Last::Grid;
    }
}

// Returns by how much it is higher than asked for.
double RtfBody::Gap(double height, bool table, const Place& place) {
    const bool apart = m_last == Last::Table || (table && m_last == Last::Grid);
    if (height < Near && !apart) {
        return 0;
    }
    const double actual = std::max(height, Separator);
    RtfParagraphs::Blank(actual, {place.level, false}, m_out);
    m_out += "\\par\n";
    m_last = Last::Paragraph;
    return actual - std::max(height, 0.0);
}

void RtfBody::BreakPage() {
    m_out += "\\pard\\plain\\pagebb\\fs2\\sl-20\\slmult0\\par\n";
    m_last = Last::Paragraph;
    m_breakPending = false;
}

// The row definition precedes the content. It repeats after nested tables, which have their own.
void RtfBody::Row(const RtfRow& row, const Place& place) {
    if (row.cells.empty()) {
        return;
    }
    const int level = place.level + 1;
    m_hasContent = true;
    std::string definition;
    AppendRowDefinition(row, m_styles, definition);
    if (level == 1) {
        m_out += definition;
    }
    bool nested = false;
    for (const RtfCell& cell : row.cells) {
        Cell(cell, row, level, nested);
    }
    if (level == 1) {
        m_out += (nested ? definition : "") + "\\row\n";
    } else {
        m_out += "{\\*\\nesttableprops" + definition + "\\nestrow}{\\nonesttables\\par}\n";
    }
    FlushWhenLarge();
}

void RtfBody::Cell(const RtfCell& cell, const RtfRow& row, int level, bool& nested) {
    const RtfParagraphs::Place place{level, row.keepNext, row.rightToLeft};
    bool open = false;  // a paragraph is not ended yet
    for (const Instance* item : cell.content) {
        m_out += open ? "\\par\n" : "";
        open = item->kind == InstanceKind::Text || item->kind == InstanceKind::Image;
        if (item->kind == InstanceKind::Text) {
            m_paragraphs.Box(*item, place, m_out);
        } else if (item->kind == InstanceKind::Image) {
            m_paragraphs.Picture(*item, place, m_out);
        } else {
            Nested(*item, level);
            nested = true;
        }
        FlushWhenLarge();
    }
    if (!open) {
        RtfParagraphs::Blank(Separator, place, m_out);
    }
    m_out += level == 1 ? "\\cell\n" : "\\nestcell\n";
}

void RtfBody::Nested(const Instance& item, int level) {
    const Last outer = std::exchange(m_last, Last::Nothing);
    m_paragraphs.Bookmark(item, m_out);
    if (item.kind == InstanceKind::Container) {
        Block(item.children, {level, 0});
    } else if (item.kind == InstanceKind::Table) {
        Table(item, {level, 0});
    } else {
        throw Error("Drawing \"" + item.name + "\" cannot be shown in a text document");
    }
    m_last = outer;
}

}  // namespace rdl::writers
