// SPDX-License-Identifier: GPL-3.0-or-later
// Places the items of a report in the cells of sheets: columns start at edges of items, rows follow the
// horizontal bands of items, table rows become rows. A sheet holds 65,536 rows of 256
// columns (MS-XLS, 2.1.7.20.5 Worksheet Substream).
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "rdl/layout/model/instance.h"
#include "rdl/layout/pages/text_layout.h"
#include "rdl/writers/common/edges.h"
#include "rdl/writers/xls/workbook.h"

namespace rdl::writers {

class XlsLayout {
 public:
    XlsLayout(XlsWorkbook& book, std::string language) : m_book(book), m_language(std::move(language)) {}

    // Places a section; the header goes above the first one, the footer below the last. Raises rdl::Error
    // naming an item that cannot be placed.
    void Section(layout::SectionInstance& section, bool isFirst, bool isLast);
    // Places all sections of the report; an empty one has an empty sheet.
    void Report(layout::ReportInstance& report);

 private:
    using Items = std::vector<const layout::Instance*>;
    struct Columns {
        std::uint16_t first, last;
    };

    void Gather(const layout::Instance& item, double x, int depth);
    void GatherTable(layout::TableInstance& table, double x, int depth);
    // Returns the left edges of a table's columns and the right one. A table has thousands of columns, so
    // they are added up once.
    static std::vector<double> EdgesOf(const layout::TableInstance& table, double x);
    void SettleColumns();
    Columns ColumnsAt(double from, double to) const;

    // The background of an item around others: it is seen wherever they have none of their own.
    struct Fill {
        layout::Color color;
        Columns columns;
        std::size_t number;  // in the sheet
    };
    void BeginFill(layout::Color color, Columns columns, std::uint32_t row);
    void EndFill(std::uint32_t row);
    // The border of an item around others.
    struct Frame {
        layout::BoxStylePtr box;
        Columns columns;
        std::size_t number;  // in the sheet
    };
    void BeginFrame(const layout::BoxStylePtr& box, Columns columns, std::uint32_t row,
                    XlsWorksheet::FrameTop top);
    // What the item that was placed last has in the sheet around its content.
    struct Around {
        std::optional<std::size_t> fill, frame;
    };
    // Begins the fill and the frame of an item; LeaveAround ends their effect on what is placed next.
    Around BeginAround(const layout::Instance& item, double x, std::uint32_t row);
    void LeaveAround(const Around& around);
    void EndAround(const Around& around, std::uint32_t row);
    void BeginSheet();
    // Top: no table is around the items. Tables are then streamed and may start new sheets.
    enum class Level { Top, Inner };
    // Each function places items from `row` on and returns the row after them.
    std::uint32_t Place(const std::vector<layout::Instance>& items, double x, std::uint32_t row, Level level);
    std::uint32_t PlaceBand(const Items& items, double x, std::uint32_t row);
    // An item beside others; top and bottom are in the container of the band.
    struct BandItem {
        const layout::Instance* item;
        double x;  // the left edge of its container
        double top, bottom;
        int inside;  // the rectangle around it, in the band; -1: none
    };
    static void Spread(const layout::Instance& item, double x, double y, int inside, int depth,
                       std::vector<BandItem>& band);
    template <typename Work>
    void OverFills(const std::vector<BandItem>& band, const BandItem& item, Work place);
    void PlaceOverRows(const std::vector<BandItem>& band, const Edges& lines,
                       const std::vector<std::uint32_t>& rows);
    Around PlaceInBand(const BandItem& placed, std::uint32_t row, bool overRows, std::uint32_t& after);
    std::uint32_t PlaceOne(const layout::Instance& item, double x, std::uint32_t row, Level level);
    std::uint32_t PlaceTable(const layout::Instance& item, double x, std::uint32_t row, Level level);
    std::uint32_t PlaceRow(const layout::TableRow& tableRow, const std::vector<double>& edges,
                           std::uint32_t row);
    std::uint32_t BreakSheet(layout::TableInstance& table, std::size_t index,
                             const std::vector<double>& edges);
    // An image in rows OfOthers lies over those of the items beside it.
    enum class ImageRows { Own, OfOthers };
    std::uint32_t PlaceFilled(const layout::Instance& item, double x, std::uint32_t row, Level level,
                              ImageRows imageRows = ImageRows::Own);
    XlsRange RightOfOthers(const XlsRange& range) const;
    void PlaceText(const layout::Instance& item, XlsRange range);
    layout::BoxStylePtr Filled(const layout::BoxStylePtr& box);
    double WidthOf(const XlsRange& range) const;
    bool IsTooNarrow(const layout::Instance& item, const XlsRange& range) const;
    void Mark(const layout::Instance& item, std::uint32_t row, std::uint16_t column);
    void PlaceLine(const layout::Instance& item, double x, std::uint32_t firstRow, std::uint32_t lastRow);
    std::uint32_t PlaceImage(const layout::Instance& item, double x, std::uint32_t row);
    // The image alone, without rows of its height.
    void PutImage(const layout::Instance& item, double x, std::uint32_t row);
    void Grow(const layout::Instance& item, const XlsRange& range);
    enum class Wrapping { AsItem, Never };
    XlsCell CellOf(const layout::Instance& item, Wrapping wrapping = Wrapping::AsItem);
    bool TypedCell(const layout::Instance& item, const std::string& shown, XlsCell& cell,
                   std::uint16_t& format);

    // A table cell that spans rows not yet placed.
    struct OpenSpan {
        std::uint32_t firstRow;
        int rowsLeft;
        Columns columns;
        std::uint16_t xf;
    };
    void ContinueSpans(const std::vector<OpenSpan>& spans, std::uint32_t from, std::uint32_t to);
    void CloseSpans(const std::vector<OpenSpan>& spans, std::uint32_t row);

    XlsWorkbook& m_book;
    std::string m_language;
    const layout::PageSetup* m_page = nullptr;
    Edges m_columns{1.0};
    std::vector<double> m_widths;
    XlsWorksheet* m_sheet = nullptr;
    std::vector<OpenSpan>* m_spans = nullptr;  // spans of the table being placed
    std::vector<Fill> m_fills;                 // innermost last
    std::vector<Frame> m_frames;               // innermost last
    Around m_around;
    struct FilledBox {
        layout::BoxStylePtr own, filled;  // `own` is kept alive, as its address is the key
    };
    std::map<std::pair<const void*, layout::Color>, FilledBox> m_filled;
    bool m_breakPending = false;
    bool m_rightToLeft = false;  // direction of the section's sheets, set by its tables
    std::string m_pageName;
    layout::TextLayout m_textLayout;
    layout::LaidText m_laid;
    int m_depth = 0;
};

}  // namespace rdl::writers
