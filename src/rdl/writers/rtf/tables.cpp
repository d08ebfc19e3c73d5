// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/values/error.h"
#include "rdl/writers/common/content.h"
#include "rdl/writers/rtf/body.h"
#include "rdl/writers/rtf/tablix.h"

namespace rdl::writers {

using layout::Instance;

void RtfBody::Table(const Instance& item, const Place& place) {
    if (!item.table) {
        return;
    }
    if (!item.table->noRowsMessage.empty()) {
        m_paragraphs.Message(*item.table, {place.level, false}, m_out);
        m_out += "\\par\n";
        m_last = Last::Paragraph;
        m_hasContent = true;
        return;
    }
    if (++m_depth > MaxNesting) {
        throw Error("Item \"" + item.name + "\" is nested too deeply");
    }
    RtfTablix rows(item, place.x);
    for (std::size_t i = 0; i < rows.RowCount(); ++i) {
        TableRow(item, rows, i, place);
    }
    --m_depth;
}

void RtfBody::TableRow(const Instance& item, RtfTablix& rows, std::size_t index, const Place& place) {
    const layout::TableRow& source = rows.Fetch(index);
    const bool breakAfter = source.breakAfter && place.level == 0;
    const bool breaks = (source.breakBefore || m_breakPending) && Breaks(place);
    if (breaks) {
        BreakPage();
        RepeatRows(item, index, place);
    }
    Row(rows.Make(breaks), place);
    m_last = Last::Table;
    m_breakPending = m_breakPending || breakAfter;
}

// After a page break readers see a separate table with its own headings.
void RtfBody::RepeatRows(const Instance& item, std::size_t index, const Place& place) {
    const std::vector<std::size_t> repeated = item.table->RepeatedRows(index);
    if (repeated.empty()) {
        return;
    }
    RtfTablix rows(item, place.x);
    for (const std::size_t i : repeated) {
        rows.Fetch(i);
        Row(rows.Make(false), place);
    }
}

}  // namespace rdl::writers
