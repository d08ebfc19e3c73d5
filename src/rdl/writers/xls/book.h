// SPDX-License-Identifier: GPL-3.0-or-later
// A workbook (MS-XLS, 2.1.7.20 Workbook Stream): its sheets, the shared records, and the compound file around
// them.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "rdl/api/output.h"
#include "rdl/spool/spool.h"
#include "rdl/writers/common/image_numbers.h"
#include "rdl/writers/xls/bookmarks.h"
#include "rdl/writers/xls/sheet.h"
#include "rdl/writers/xls/strings.h"
#include "rdl/writers/xls/styles.h"
#include "rdl/writers/xls/workbook.h"

namespace rdl::writers {

class XlsBook final : public XlsWorkbook {
 public:
    explicit XlsBook(const std::string& title) : m_title(title) {}

    const XlsBounds& Bounds() const override { return XlsSheetBounds; }
    XlsSheet& AddSheet(const std::vector<double>& columnWidths, const layout::PageSetup& page) override;
    std::size_t SheetCount() const override { return m_sheets.size(); }
    // A GIF, which these workbooks do not support, becomes a PNG.
    std::size_t Image(const std::shared_ptr<const std::string>& bytes, image::Type type,
                      const std::string& item) override;
    std::uint16_t Style(const layout::BoxStylePtr& box, const layout::CharStylePtr& text,
                        layout::HAlign align, std::uint16_t format, bool wrap) override {
        return m_styles.Cell(box, text, align, format, wrap);
    }
    std::uint16_t Format(const std::string& excelFormat) override { return m_styles.Format(excelFormat); }
    std::uint32_t Text(std::string_view text) override { return m_strings.Index(text); }
    // Writes the file. The book has at least one sheet.
    void Write(Output& output);

 private:
    void NameSheets();
    std::string Globals(const std::vector<std::size_t>& offsets) const;
    void WriteNames(XlsRecords& records) const;
    void WritePrintTitles(XlsRecords& records, unsigned sheets) const;
    std::string GlobalsAt(std::size_t sheetsBegin) const;

    struct StoredImage {
        std::shared_ptr<const std::string> stored;
        image::Type type;
        unsigned uses;
    };
    std::string DrawingGroup() const;
    std::string SheetDrawing(std::size_t sheet);

    std::string m_title;
    XlsStyles m_styles;
    XlsStrings m_strings;
    Spool m_spool;
    std::vector<std::unique_ptr<XlsSheet>> m_sheets;
    std::vector<StoredImage> m_images;
    ImageNumbers m_imageNumbers;
};

}  // namespace rdl::writers
