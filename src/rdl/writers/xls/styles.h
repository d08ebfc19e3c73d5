// SPDX-License-Identifier: GPL-3.0-or-later
// Fonts, number formats, colours and cell formats of a workbook without duplicates (MS-XLS, 2.4.122 Font,
// 2.4.126 Format, 2.4.188 Palette, 2.4.353 XF).
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "rdl/layout/model/style.h"
#include "rdl/writers/common/style_cache.h"
#include "rdl/writers/xls/record.h"

namespace rdl::writers {

class XlsStyles {
 public:
    static constexpr std::uint16_t DefaultCell = 15;

    XlsStyles();
    // Returns the index of the cell format (XF) of a box, its text style, and a number format by its index
    // from Format().
    std::uint16_t Cell(const layout::BoxStylePtr& box, const layout::CharStylePtr& text, layout::HAlign align,
                       std::uint16_t format, bool wrap);
    std::uint16_t Format(const std::string& excelFormat);
    // Returns the index of a cell format with the box's borders at these sides (XlsWorksheet::Side), where it
    // has none itself.
    std::uint16_t Framed(std::uint16_t xf, const layout::BoxStyle& box, unsigned sides);
    // Writes Font, Format, XF, Style and Palette records in this order.
    void Write(XlsRecords& records) const;

 private:
    std::uint16_t Font(const layout::CharStyle& style);
    unsigned ColorIndex(layout::Color color);
    std::uint16_t Record(const std::string& data, std::size_t most);
    std::string CellRecord(const layout::BoxStyle& box, std::uint16_t font, layout::HAlign align,
                           std::uint16_t format, bool wrap);

    std::vector<std::string> m_fonts, m_xfs;  // record data
    std::map<std::string, std::uint16_t> m_fontIndexes, m_xfIndexes, m_formats;
    std::vector<layout::Color> m_palette;
    StyleCache m_known;
};

}  // namespace rdl::writers
