// The rows of a data region, made into rows of a document's table one after another.
#pragma once

#include <cstddef>
#include <vector>

#include "rdl/layout/model/instance.h"
#include "rdl/writers/rtf/row.h"

namespace rdl::writers {

class RtfTablix {
 public:
    // The region lies at `x`. Both outlive this.
    RtfTablix(const layout::Instance& item, double x);
    std::size_t RowCount() const { return m_count; }
    // So many rows at the beginning stand again on each page.
    // The row that Make makes next. Rows follow each other in their order.
    const layout::TableRow& Fetch(std::size_t index);
    // The result points into what was fetched. Behind a page break cells over several rows begin anew.
    RtfRow Make(bool behindBreak);

 private:
    struct Span {  // a cell that goes on below
        std::size_t column, endColumn;
        int rowsLeft;
        RtfCell look;
    };
    void CountHeadings();
    void Continue(Span& span, bool anew);
    void Place(const layout::TableCell& cell);
    void Fill(std::size_t column);
    void EdgesOfTable();
    bool IsExact() const;

    const layout::Instance& m_item;
    layout::TableInstance& m_table;
    std::size_t m_count = 0, m_headings = 0;
    std::vector<double> m_lefts;  // of the columns, and the right edge
    std::size_t m_reached = 0;    // columns of the row that have their cell
    std::vector<Span> m_spans, m_next;
    std::size_t m_index = 0;
    layout::TableRow m_source;  // of that row
    RtfRow m_row;
};

}  // namespace rdl::writers
