// SPDX-License-Identifier: GPL-3.0-or-later
// The bookmarks of a workbook as defined names of cells (MS-XLS, 2.4.150 Lbl): links may refer to names whose
// cell is not known yet.
#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "rdl/writers/xls/record.h"

namespace rdl::writers {

class XlsBookmarks {
 public:
    // Maximum number of sheets that names can refer to.
    static constexpr std::size_t MostSheets = 1300;

    // Returns the defined name of a bookmark, which may be placed later.
    std::string NameOf(const std::string& bookmark);
    // Sets the cell of a bookmark; the first one counts.
    void Place(const std::string& bookmark, std::size_t sheet, std::uint32_t row, std::uint16_t column);
    bool IsPlaced(const std::string& name) const { return m_places.count(name) != 0; }
    struct Cell {
        std::size_t sheet;
        std::uint32_t row;
        std::uint16_t column;
    };
    const std::map<std::string, Cell>& places() const { return m_places; }  // by name
    bool IsEmpty() const { return m_places.empty(); }
    void Write(XlsRecords& records) const;

 private:
    std::map<std::string, std::string> m_names;  // by bookmark
    std::map<std::string, Cell> m_places;        // by name
};

}  // namespace rdl::writers
