// SPDX-License-Identifier: GPL-3.0-or-later
// A workbook under construction, of either format.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "rdl/layout/model/style.h"
#include "rdl/writers/common/content.h"
#include "rdl/writers/xls/bookmarks.h"
#include "rdl/writers/xls/worksheet.h"

namespace rdl::writers {

class XlsWorkbook {
 public:
    virtual ~XlsWorkbook() = default;

    virtual const XlsBounds& Bounds() const = 0;
    // Adds a sheet, which completes the previous one. Column widths are points. The book owns the sheet.
    virtual XlsWorksheet& AddSheet(const std::vector<double>& columnWidths,
                                   const layout::PageSetup& page) = 0;
    virtual std::size_t SheetCount() const = 0;
    // Returns the index of an image; equal bytes share one. Raises rdl::Error naming `item` if it cannot be
    // read.
    virtual std::size_t Image(const std::shared_ptr<const std::string>& bytes, image::Type type,
                              const std::string& item) = 0;
    // Returns the index of the cell format of a box, its text style, and a number format by its index from
    // Format().
    virtual std::uint16_t Style(const layout::BoxStylePtr& box, const layout::CharStylePtr& text,
                                layout::HAlign align, std::uint16_t format, bool wrap) = 0;
    virtual std::uint16_t Format(const std::string& excelFormat) = 0;
    // Returns the index of a text, for a cell of a row that is not complete.
    virtual std::uint32_t Text(std::string_view text) = 0;

    XlsBookmarks bookmarks;
};

}  // namespace rdl::writers
