// SPDX-License-Identifier: GPL-3.0-or-later
// Writes the items of a report as RTF paragraphs and tables (RTF 1.9.1, Paragraph Text and Table
// Definitions), from top to bottom.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "rdl/layout/model/instance.h"
#include "rdl/spool/spool.h"
#include "rdl/writers/rtf/paragraphs.h"
#include "rdl/writers/rtf/row.h"
#include "rdl/writers/rtf/styles.h"

namespace rdl::writers {

class RtfTablix;

class RtfBody {
 public:
    RtfBody(RtfStyles& styles, Spool& spool) : m_styles(styles), m_paragraphs(styles), m_spool(spool) {}

    // Appends trusted control words.
    void Raw(std::string_view rtf) { m_out += rtf; }
    // Writes the body of a section with its page breaks. Raises rdl::Error naming an item that cannot be
    // shown.
    void Body(const std::vector<layout::Instance>& items);
    // Writes a header or footer of `height` points.
    void Margin(const std::vector<layout::Instance>& items, double height);
    // Moves pending output to the spool.
    void Flush();

 private:
    using Items = std::vector<const layout::Instance*>;
    // The position of items: nesting level of cells, and offset from the cell's left edge in points.
    struct Place {
        int level = 0;
        double x = 0;
    };
    // What was written last at the current level: readers join adjacent tables.
    enum class Last { Nothing, Paragraph, Grid, Table };

    // Returns the bottom of the last item, in points.
    double Block(const std::vector<layout::Instance>& items, const Place& place);
    double Band(const Items& band, const Place& place, double bottom);
    void Grid(const Items& band, const Place& place);
    double Gap(double height, bool table, const Place& place);
    void BreakPage();
    bool Breaks(const Place& place) const { return place.level == 0 && m_breaks && m_hasContent; }

    void Table(const layout::Instance& item, const Place& place);
    void TableRow(const layout::Instance& item, RtfTablix& rows, std::size_t index, const Place& place);
    void RepeatRows(const layout::Instance& item, std::size_t index, const Place& place);
    void Row(const RtfRow& row, const Place& place);
    void Cell(const RtfCell& cell, const RtfRow& row, int level, bool& nested);
    void Nested(const layout::Instance& item, int level);
    void FlushWhenLarge();

    RtfStyles& m_styles;
    RtfParagraphs m_paragraphs;
    Spool& m_spool;
    std::string m_out;
    Last m_last = Last::Nothing;
    bool m_breaks = false;      // page breaks apply here
    bool m_hasContent = false;  // there is content before a page break
    bool m_breakPending = false;
    int m_depth = 0;
};

}  // namespace rdl::writers
