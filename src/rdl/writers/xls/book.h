// SPDX-License-Identifier: GPL-3.0-or-later
// A workbook (MS-XLS, 2.1.7.20 Workbook Stream): its sheets, the shared records, and the compound file around
// them.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "rdl/writers/common/content.h"
#include "rdl/writers/common/spool.h"
#include "rdl/writers/common/writers.h"
#include "rdl/writers/xls/bookmarks.h"
#include "rdl/writers/xls/sheet.h"
#include "rdl/writers/xls/strings.h"
#include "rdl/writers/xls/styles.h"

namespace rdl::writers {

class XlsBook {
 public:
    explicit XlsBook(const std::string& title) : m_title(title) {}

    // Adds a sheet, which completes the previous one. Column widths are points. The book owns the sheet.
    XlsSheet& AddSheet(const std::vector<double>& columnWidths, const layout::PageSetup& page);
    // Returns the index of an image; equal bytes share one. A GIF, which workbooks do not support, becomes a
    // PNG; raises rdl::Error naming `item` if it cannot be read.
    std::size_t Image(const std::shared_ptr<const std::string>& bytes, image::Type type,
                      const std::string& item);
    std::size_t SheetCount() const { return m_sheets.size(); }
    // Writes the file. The book has at least one sheet.
    void Write(Output& output);

    XlsStyles styles;
    XlsStrings strings;
    XlsBookmarks bookmarks;

 private:
    void NameSheets();
    std::string Globals(const std::vector<std::size_t>& offsets) const;
    void WriteNames(XlsRecords& records) const;
    void WritePrintTitles(XlsRecords& records, unsigned sheets) const;
    std::string GlobalsAt(std::size_t sheetsBegin) const;

    struct StoredImage {
        std::shared_ptr<const std::string> bytes;  // as in the report, for finding them again
        std::shared_ptr<const std::string> stored;
        image::Type type;
        unsigned uses;
    };
    std::string DrawingGroup() const;
    std::string SheetDrawing(std::size_t sheet);

    std::string m_title;
    Spool m_spool;
    std::vector<std::unique_ptr<XlsSheet>> m_sheets;
    std::vector<StoredImage> m_images;
    std::set<std::u16string> m_usedNames;
    std::map<std::u16string, int> m_lastNumbers;  // of sheets that want the same name
};

}  // namespace rdl::writers
