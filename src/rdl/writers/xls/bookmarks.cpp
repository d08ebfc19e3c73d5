// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/xls/bookmarks.h"

namespace rdl::writers {

std::string XlsBookmarks::NameOf(const std::string& bookmark) {
    // A bookmark may contain any characters, a defined name may not.
    return m_names.try_emplace(bookmark, "Bookmark_" + std::to_string(m_names.size() + 1)).first->second;
}

void XlsBookmarks::Place(const std::string& bookmark, std::size_t sheet, std::uint32_t row,
                         std::uint16_t column) {
    if (sheet < MostSheets) {
        m_places.try_emplace(NameOf(bookmark), Cell{sheet, row, column});
    }
}

void XlsBookmarks::Write(XlsRecords& records) const {
    constexpr std::uint16_t Name = 0x0018;
    for (const auto& [name, cell] : m_places) {
        records.Begin(Name);
        records.U16(0);
        records.U8(0);
        records.U8(static_cast<unsigned>(name.size()));
        records.U16(7);
        records.U16(0);
        records.U16(0);  // of the whole workbook
        records.U32(0);
        records.U8(0);
        records.Bytes(name);
        records.U8(0x3A);  // a cell of a sheet
        records.U16(static_cast<unsigned>(cell.sheet));
        records.U16(cell.row);
        records.U16(cell.column);
        records.End();
    }
}

}  // namespace rdl::writers
