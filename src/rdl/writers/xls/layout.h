// Puts the items of a report into the cells of sheets: columns begin at the edges of items, rows follow the
// bands that items form, a table's rows become rows one after another.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "rdl/layout/model/instance.h"
#include "rdl/layout/pages/text_layout.h"
#include "rdl/writers/common/edges.h"
#include "rdl/writers/xls/book.h"

namespace rdl::writers {

class XlsLayout {
 public:
    XlsLayout(XlsBook& book, std::string language) : m_book(book), m_language(std::move(language)) {}

    // Header above the first section, footer below the last.
    void Section(layout::SectionInstance& section, bool first, bool last);

 private:
    using Items = std::vector<const layout::Instance*>;
    struct Columns {
        std::uint16_t first, last;
    };

    void Gather(const layout::Instance& item, double x, int depth);
    void GatherTable(layout::TableInstance& table, double x, int depth);
    void SettleColumns();
    Columns ColumnsAt(double from, double to) const;

    void BeginSheet();
    // Each places from `row` on and returns the row behind. At the top of the report tables stream.
    std::uint32_t Place(const std::vector<layout::Instance>& items, double x, std::uint32_t row, bool top);
    std::uint32_t PlaceBand(const Items& band, double x, std::uint32_t row);
    std::uint32_t PlaceOne(const layout::Instance& item, double x, std::uint32_t row, bool top);
    std::uint32_t PlaceTable(const layout::Instance& item, double x, std::uint32_t row, bool top);
    std::uint32_t PlaceRow(const layout::TableInstance& table, const layout::TableRow& tableRow, double x,
                           std::uint32_t row);
    std::uint32_t BreakSheet(layout::TableInstance& table, std::size_t index, double x);
    void PlaceText(const layout::Instance& item, XlsRange range);
    void Mark(const layout::Instance& item, std::uint32_t row, std::uint16_t column);
    void PlaceLine(const layout::Instance& item, double x, std::uint32_t row);
    std::uint32_t PlaceImage(const layout::Instance& item, double x, std::uint32_t row);
    void Grow(const layout::Instance& item, const XlsRange& range);
    XlsCell CellOf(const layout::Instance& item);
    bool TypedCell(const layout::Instance& item, const std::string& shown, XlsCell& cell,
                   std::uint16_t& format);

    // A cell that spans rows of a table, while its rows are made.
    struct OpenSpan {
        std::uint32_t firstRow;
        int rowsLeft;
        Columns columns;
        std::uint16_t xf;
    };
    void ContinueSpans(const std::vector<OpenSpan>& spans, std::uint32_t from, std::uint32_t to);
    void CloseSpans(const std::vector<OpenSpan>& spans, std::uint32_t row);

    XlsBook& m_book;
    std::string m_language;
    const layout::PageSetup* m_page = nullptr;
    Edges m_columns{1.0};
    std::vector<double> m_widths;
    XlsSheet* m_sheet = nullptr;
    std::vector<OpenSpan>* m_spans = nullptr;  // of the table whose row is placed
    bool m_breakPending = false;
    bool m_rightToLeft = false;  // of the section's sheets, for its tables
    std::string m_pageName;
    layout::TextLayout m_textLayout;
    layout::LaidText m_laid;
    int m_depth = 0;
};

}  // namespace rdl::writers
