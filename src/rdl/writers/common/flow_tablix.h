// SPDX-License-Identifier: GPL-3.0-or-later
// Converts the rows of a data region to rows of a text document, one after another.
#pragma once

#include <cstddef>
#include <vector>

#include "rdl/layout/model/instance.h"
#include "rdl/writers/common/flow_row.h"

namespace rdl::writers {

class FlowTablix {
 public:
    using Columns = layout::TableColumns;  // those that one table shows
    // Of each row of the region, whether one of its cells may grow. The table with the first columns finds
    // out; those below need it for rows of which they build some cells only.
    using Growing = std::vector<bool>;

    // Returns the columns of the table that begins with column `first`: as many as a row and the widest paper
    // can have, at least one. The row headers are repeated if the region asks for it and they fit.
    static Columns Fit(const layout::Instance& item, double x, std::size_t first);

    // `x` is the region's left edge in points. `item` and `growing` must outlive this. The first table of a
    // region must have made all rows before the next ones make any.
    FlowTablix(const layout::Instance& item, double x, const Columns& columns, Growing& growing);
    std::size_t RowCount() const { return m_count; }
    const Columns& ShownColumns() const { return m_columns; }
    Growing& GrowingRows() const { return m_growing; }
    // Returns the left edges of the columns and the right edge, in points.
    const std::vector<double>& ColumnLines() const { return m_lefts; }
    // Fetches the row for the next Make. Rows are fetched in order; the reference is valid until the next
    // call.
    const layout::TableRow& Fetch(std::size_t index);
    enum class Before { Row, PageBreak };  // what is before a row
    // Returns the fetched row; the result refers to it. After a page break cells over several rows start
    // again.
    FlowRow Make(Before before);

 private:
    struct Span {  // a cell that continues in the rows below
        std::size_t column, endColumn;
        int rowsLeft;
        FlowCell look;
    };
    void CountHeadings();
    // Returns the number of shown columns before a column of the region.
    std::size_t Shown(std::size_t column) const;
    void Continue(Span& span, bool startsAgain);
    void Place(const layout::TableCell& cell);
    void Fill(std::size_t column);
    void EdgesOfTable();
    bool Grows();

    const layout::Instance& m_item;
    layout::TableInstance& m_table;
    Columns m_columns;
    Growing& m_growing;
    std::size_t m_count = 0, m_headings = 0;
    std::vector<double> m_lefts;  // left edges of the columns, and the right edge
    std::size_t m_reached = 0;    // columns of the row that have a cell
    std::vector<Span> m_spans, m_next;
    std::size_t m_index = 0;
    layout::TableRow m_source;  // the fetched row
    FlowRow m_row;
};

}  // namespace rdl::writers
