// SPDX-License-Identifier: GPL-3.0-or-later
// A sheet of an Office Open XML workbook (ECMA-376 Part 1, 18.3). Complete rows leave the memory.
#pragma once

#include <xlsxwriter.h>

#include <string>
#include <utility>
#include <vector>

#include "rdl/writers/xls/worksheet.h"

namespace rdl::writers {

class XlsxBook;

inline constexpr XlsBounds XlsxBounds{1'048'576, 16'384, "1,048,576", "16,384"};

class XlsxSheet final : public XlsWorksheet {
 public:
    // The library owns `sheet`; the book outlives this.
    XlsxSheet(XlsxBook& book, lxw_worksheet& sheet, std::vector<double> columnWidths,
              const layout::PageSetup& page);

    void Merge(const XlsRange& range) override;
    void Link(const XlsRange& range, const std::string& link) override { m_links.emplace_back(range, link); }
    // Ends the sheet after its last row.
    void Finish();
    // Adds name, links, images and views, once every bookmark is placed.
    void Seal(const std::string& sheetName);
    lxw_worksheet& library() const { return m_sheet; }

 private:
    void WriteRow(std::uint32_t index, Row& row) override;
    std::uint16_t Framed(std::uint16_t xf, const layout::BoxStyle& box, unsigned sides) override;
    std::uint16_t PlainStyle() const override;
    double HeightOf(const Row& row) const;
    void RowsAreWritten() override;
    void SetUpPage();
    void AddLinks();
    void AddPictures();

    XlsxBook& m_book;
    lxw_worksheet& m_sheet;
    std::vector<std::pair<XlsRange, std::string>> m_links;
};

}  // namespace rdl::writers
