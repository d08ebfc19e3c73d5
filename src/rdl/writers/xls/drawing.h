// Pictures of a workbook: the bytes once for all sheets, the places for each.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "rdl/writers/common/content.h"
#include "rdl/writers/xls/sheet.h"

namespace rdl::writers {

class XlsDrawingGroup {
 public:
    // In the order of their indexes.
    void AddImage(std::string_view bytes, image::Type type, unsigned uses);
    // In the order of the sheets, those without pictures too.
    void AddSheet(std::uint32_t pictures) { m_sheets.push_back(pictures); }
    // The record with what continues it.
    std::string Records() const;

 private:
    std::string m_store;
    std::uint32_t m_imageCount = 0;
    std::vector<std::uint32_t> m_sheets;
};

// The records that place a sheet's pictures; `drawing` counts the sheets from 1. Empty when there are none.
std::string XlsPictures(const XlsSheet& sheet, std::uint32_t drawing);

}  // namespace rdl::writers
