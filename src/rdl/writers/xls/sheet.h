// SPDX-License-Identifier: GPL-3.0-or-later
// A sheet of a workbook under construction (MS-XLS, 2.1.7.20.5 Worksheet Substream). Complete rows are moved
// to the spool.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "rdl/spool/spool.h"
#include "rdl/writers/xls/bookmarks.h"
#include "rdl/writers/xls/record.h"
#include "rdl/writers/xls/styles.h"
#include "rdl/writers/xls/worksheet.h"

namespace rdl::writers {

inline constexpr std::uint32_t XlsMostRows = 65536;
inline constexpr std::size_t XlsMostColumns = 256;
inline constexpr XlsBounds XlsSheetBounds{XlsMostRows, XlsMostColumns, "65,536", "256"};

class XlsSheet final : public XlsWorksheet {
 public:
    XlsSheet(Spool& spool, XlsStyles& styles, std::vector<double> columnWidths,
             const layout::PageSetup& page);

    void Merge(const XlsRange& range) override { m_merges.push_back(range); }
    void Link(const XlsRange& range, const std::string& link) override;
    // Ends the sheet after its last row; `drawing` has the records of its images.
    void Finish(bool selected, const std::string& drawing);
    // Writes the links, once every bookmark is placed.
    void Seal(const XlsBookmarks& bookmarks);
    std::size_t Length() const { return m_head.bytes().size() + m_length + m_tail.bytes().size(); }
    void Write(const Spool::Take& take);

 private:
    void WriteRow(std::uint32_t index, Row& row) override;
    std::uint16_t Framed(std::uint16_t xf, const layout::BoxStyle& box, unsigned sides) override {
        return m_styles.Framed(xf, box, sides);
    }
    std::uint16_t PlainStyle() const override { return XlsStyles::DefaultCell; }
    void WriteCell(std::uint32_t row, const XlsCell& cell);
    void FlushBlock();
    void WriteHead();
    void WriteSetup();
    void WriteView(bool selected);
    void WriteMerges();
    void BeginLink(const XlsRange& range, unsigned what);

    Spool& m_spool;
    XlsStyles& m_styles;
    XlsRecords m_blockRows, m_blockCells, m_head, m_tail, m_links;
    unsigned m_blockCount = 0;
    std::size_t m_begin = 0, m_length = 0;  // range in the spool
    std::vector<XlsRange> m_merges;
};

}  // namespace rdl::writers
