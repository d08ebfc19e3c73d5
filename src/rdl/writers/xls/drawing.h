// SPDX-License-Identifier: GPL-3.0-or-later
// Images of a workbook: the bytes once (MS-XLS, 2.4.171 MsoDrawingGroup), positions in each sheet (2.4.170
// MsoDrawing). Both contain MS-ODRAW records.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "rdl/image/type.h"
#include "rdl/writers/xls/sheet.h"

namespace rdl::writers {

class XlsDrawingGroup {
 public:
    // Call this in the order of the indexes.
    void AddImage(std::string_view bytes, image::Type type, unsigned uses);
    // Call this for every sheet in order, also for those without images.
    void AddSheet(std::uint32_t pictures) { m_sheets.push_back(pictures); }
    // Returns the record with its Continue records.
    std::string Records() const;

 private:
    std::string m_store;
    std::uint32_t m_imageCount = 0;
    std::vector<std::uint32_t> m_sheets;
};

// Returns the records that place a sheet's images; `drawing` is the number of the sheet from 1. Empty if
// there are no images.
std::string XlsPictures(const XlsSheet& sheet, std::uint32_t drawing);

}  // namespace rdl::writers
