// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/xls/sheet.h"

#include <algorithm>
#include <cmath>

#include "rdl/api/size_units.h"

namespace rdl::writers {
namespace {

constexpr std::uint16_t Dimensions = 0x0200, RowRecord = 0x0208, BlankRecord = 0x0201, NumberRecord = 0x0203,
                        LabelSst = 0x00FD, BoolErr = 0x0205, Rk = 0x027E, ColInfo = 0x007D,
                        DefaultRowHeight = 0x0225, WsBool = 0x0081, Setup = 0x00A1, Window2 = 0x023E,
                        Pane = 0x0041, Selection = 0x001D, MergeCells = 0x00E5, HLink = 0x01B8,
                        MarginLeft = 0x0026, MarginRight = 0x0027, MarginTop = 0x0028, MarginBottom = 0x0029;
constexpr unsigned RowsInBlock = 32;
constexpr double PointsPerWidthUnit = 7 * PointsPerInch / 96;  // of the default font's digit
constexpr std::size_t MergesInRecord = 1026, LongestLink = 2000;

}  // namespace

XlsSheet::XlsSheet(Spool& spool, XlsStyles& styles, std::vector<double> columnWidths,
                   const layout::PageSetup& page)
    : XlsWorksheet(XlsSheetBounds, std::move(columnWidths), page),
      m_spool(spool),
      m_styles(styles),
      m_begin(spool.size()) {}

void XlsSheet::WriteRow(std::uint32_t index, Row& row) {
    m_blockRows.Begin(RowRecord);
    m_blockRows.U16(index);
    m_blockRows.U16(row.cells.empty() ? 0 : row.cells.front().column);
    m_blockRows.U16(row.cells.empty() ? 0 : row.cells.back().column + 1u);
    m_blockRows.U16(static_cast<unsigned>(std::lround(row.height * 20)));
    m_blockRows.U32(0);
    m_blockRows.U32(0x000F0100u | (row.fixed ? 0x40u : 0u));
    m_blockRows.End();
    for (const XlsCell& cell : row.cells) {
        WriteCell(index, cell);
    }
    if (++m_blockCount == RowsInBlock) {
        FlushBlock();
    }
}

void XlsSheet::WriteCell(std::uint32_t row, const XlsCell& cell) {
    const bool whole = cell.kind == XlsCell::Number && std::fabs(cell.number) < 0x1FFFFFFF &&
                       std::trunc(cell.number) == cell.number;
    static constexpr std::uint16_t Types[] = {BlankRecord, NumberRecord, LabelSst, BoolErr};
    m_blockCells.Begin(whole ? Rk : Types[cell.kind]);
    m_blockCells.U16(row);
    m_blockCells.U16(cell.column);
    m_blockCells.U16(cell.xf);
    if (whole) {
        m_blockCells.U32(static_cast<std::uint32_t>(static_cast<std::int32_t>(cell.number)) << 2 | 2);
    } else if (cell.kind == XlsCell::Number) {
        m_blockCells.Double(cell.number);
    } else if (cell.kind == XlsCell::Text) {
        m_blockCells.U32(cell.text);
    } else if (cell.kind == XlsCell::Boolean) {
        m_blockCells.U16(cell.number != 0 ? 1 : 0);
    }
    m_blockCells.End();
}

void XlsSheet::FlushBlock() {
    for (XlsRecords* records : {&m_blockRows, &m_blockCells}) {
        m_spool.Append(records->bytes());
        m_length += records->bytes().size();
        records->bytes().clear();
    }
    m_blockCount = 0;
}

void XlsSheet::BeginLink(const XlsRange& range, unsigned what) {
    m_links.Begin(HLink);
    m_links.U16(range.firstRow);
    m_links.U16(range.lastRow);
    m_links.U16(range.firstColumn);
    m_links.U16(range.lastColumn);
    m_links.Bytes(std::string_view("\xD0\xC9\xEA\x79\xF9\xBA\xCE\x11\x8C\x82\x00\xAA\x00\x4B\xA9\x0B", 16));
    m_links.U32(2);
    m_links.U32(what);
}

// A web address by the moniker that stands for one.
void XlsSheet::Link(const XlsRange& range, const std::string& link) {
    const std::u16string address = ToUtf16(link, LongestLink + 1);
    if (address.size() > LongestLink || address.empty()) {
        return;
    }
    constexpr unsigned WebAddressFollows = 3;
    BeginLink(range, WebAddressFollows);
    m_links.Bytes(std::string_view("\xE0\xC9\xEA\x79\xF9\xBA\xCE\x11\x8C\x82\x00\xAA\x00\x4B\xA9\x0B", 16));
    m_links.U32(static_cast<std::uint32_t>((address.size() + 1) * 2));
    for (const char16_t c : address) {
        m_links.U16(c);
    }
    m_links.U16(0);
    m_links.End();
}

void XlsSheet::WriteHead() {
    m_head.Begin(XlsBof);
    m_head.U16(0x0600);
    m_head.U16(0x0010);
    m_head.U16(0x0DBB);
    m_head.U16(0x07CC);
    m_head.U32(0x41);
    m_head.U32(0x06);
    m_head.End();
    m_head.Begin(DefaultRowHeight);
    m_head.U16(0);
    m_head.U16(255);
    m_head.End();
    m_head.Begin(WsBool);
    m_head.U16(0x05C1);  // fitted to the page's width in print
    m_head.End();
    WriteSetup();
    for (std::size_t i = 0; i < columnWidths().size(); ++i) {
        m_head.Begin(ColInfo);
        m_head.U16(static_cast<unsigned>(i));
        m_head.U16(static_cast<unsigned>(i));
        m_head.U16(
            static_cast<unsigned>(std::clamp(columnWidths()[i] / PointsPerWidthUnit * 256, 1.0, 65280.0)));
        m_head.U16(15);
        m_head.U32(0x2);  // a width of its own
        m_head.End();
    }
    m_head.Begin(Dimensions);
    m_head.U32(0);
    m_head.U32(UsedRows());
    m_head.U16(0);
    m_head.U16(static_cast<unsigned>(columnWidths().size()));
    m_head.U16(0);
    m_head.End();
}

void XlsSheet::WriteSetup() {
    const std::pair<std::uint16_t, double> margins[] = {{MarginLeft, page().marginLeft},
                                                        {MarginRight, page().marginRight},
                                                        {MarginTop, page().marginTop},
                                                        {MarginBottom, page().marginBottom}};
    for (const auto& [type, margin] : margins) {
        m_head.Begin(type);
        m_head.Double(margin / PointsPerInch);
        m_head.End();
    }
    const bool portrait = page().height >= page().width;
    m_head.Begin(Setup);
    m_head.U16(static_cast<unsigned>(XlsPaperOf(page())));
    m_head.U16(100);
    m_head.U16(1);
    m_head.U16(1);
    m_head.U16(0);
    m_head.U16(portrait ? 0x2 : 0x0);
    m_head.U16(600);
    m_head.U16(600);
    m_head.Double(0.3);
    m_head.Double(0.3);
    m_head.U16(1);
    m_head.End();
}

void XlsSheet::WriteView(bool selected) {
    const bool frozen = IsFrozen();
    m_tail.Begin(Window2);
    m_tail.U16(0x00B4u | (selected ? 0x600u : 0u) | (frozen ? 0x108u : 0u) | (rightToLeft ? 0x40u : 0u));
    m_tail.U16(0);
    m_tail.U16(0);
    m_tail.U32(0x40);
    m_tail.U16(0);
    m_tail.U16(0);
    m_tail.U32(0);
    m_tail.End();
    if (frozen) {
        m_tail.Begin(Pane);
        m_tail.U16(0);
        m_tail.U16(HeadingEnd());
        m_tail.U16(HeadingEnd());
        m_tail.U16(0);
        m_tail.U16(2);
        m_tail.End();
    }
    m_tail.Begin(Selection);
    m_tail.U8(frozen ? 2 : 3);
    m_tail.U16(0);
    m_tail.U16(0);
    m_tail.U16(0);
    m_tail.U16(1);
    m_tail.U32(0);
    m_tail.U16(0);
    m_tail.End();
}

void XlsSheet::WriteMerges() {
    for (std::size_t i = 0; i < m_merges.size(); i += MergesInRecord) {
        const std::size_t count = std::min(MergesInRecord, m_merges.size() - i);
        m_tail.Begin(MergeCells);
        m_tail.U16(static_cast<unsigned>(count));
        for (std::size_t k = i; k < i + count; ++k) {
            m_tail.U16(m_merges[k].firstRow);
            m_tail.U16(m_merges[k].lastRow);
            m_tail.U16(m_merges[k].firstColumn);
            m_tail.U16(m_merges[k].lastColumn);
        }
        m_tail.End();
    }
}

void XlsSheet::Finish(bool selected, const std::string& drawing) {
    CompleteAll();
    FlushBlock();
    WriteHead();
    m_tail.Bytes(drawing);
    WriteView(selected);
    WriteMerges();
}

void XlsSheet::Seal(const XlsBookmarks& bookmarks) {
    constexpr unsigned PlaceFollows = 8;
    for (const auto& [range, target] : nameLinks()) {
        if (bookmarks.IsPlaced(target)) {
            BeginLink(range, PlaceFollows);
            m_links.U32(static_cast<std::uint32_t>(target.size() + 1));
            for (const char c : target) {
                m_links.U16(static_cast<unsigned char>(c));
            }
            m_links.U16(0);
            m_links.End();
        }
    }
    m_tail.Bytes(m_links.bytes());
    m_tail.Begin(XlsEof);
    m_tail.End();
}

void XlsSheet::Write(const Spool::Take& take) {
    take(m_head.bytes());
    m_spool.Read(m_begin, m_length, take);
    take(m_tail.bytes());
}

}  // namespace rdl::writers
