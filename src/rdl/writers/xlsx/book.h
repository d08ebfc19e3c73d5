// SPDX-License-Identifier: GPL-3.0-or-later
// An Office Open XML workbook (ECMA-376 Part 1, 18.2). Its rows leave the memory as they are written.
#pragma once

#include <xlsxwriter.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "rdl/api/output.h"
#include "rdl/writers/common/image_numbers.h"
#include "rdl/writers/common/temporary_file.h"
#include "rdl/writers/common/writers.h"
#include "rdl/writers/xls/workbook.h"
#include "rdl/writers/xlsx/kept_rows.h"
#include "rdl/writers/xlsx/sheet.h"
#include "rdl/writers/xlsx/styles.h"

namespace rdl::writers {

class XlsxBook final : public XlsWorkbook {
 public:
    // `title` names sheets that have no name of their own. Raises errors of Host::OpenTemporaryFile.
    XlsxBook(std::string title, const DocumentInfo& info, std::int64_t nowTicks);
    ~XlsxBook() override;

    const XlsBounds& Bounds() const override { return XlsxBounds; }
    XlsxSheet& AddSheet(const std::vector<double>& columnWidths, const layout::PageSetup& page) override;
    std::size_t SheetCount() const override { return m_sheets.size(); }
    // A GIF or BMP becomes a PNG.
    std::size_t Image(const std::shared_ptr<const std::string>& bytes, image::Type type,
                      const std::string& item) override;
    std::uint16_t Style(const layout::BoxStylePtr& box, const layout::CharStylePtr& text,
                        layout::HAlign align, std::uint16_t format, bool wrap) override {
        return m_styles.Cell(box, text, align, format, wrap);
    }
    std::uint16_t Format(const std::string& excelFormat) override { return m_styles.Format(excelFormat); }
    std::uint32_t Text(std::string_view text) override;

    std::uint16_t Framed(std::uint16_t style, const layout::BoxStyle& frame, unsigned sides) {
        return m_styles.Framed(style, frame, sides);
    }
    std::uint16_t PlainStyle() { return m_styles.Plain(); }
    // Returns the height in points that a line of text in this style needs.
    double LineHeight(std::uint16_t style) const { return m_styles.LineHeight(style); }
    lxw_format* StyleAt(std::uint16_t style) const { return m_styles.At(style); }
    // Returns the text of an index that Text has returned. The book owns it, until ForgetTexts.
    const std::string& TextAt(std::uint32_t text) const { return m_texts[text]; }
    void ForgetTexts() { m_texts.clear(); }
    // Returns the image's file, cut to what is shown of it.
    std::string ImageOf(const XlsPicture& picture) const;
    // Raises rdl::Error for an error of the library.
    static void Check(lxw_error error);
    // Writes the file. The book has at least one sheet. Call this once.
    void Write(Output& output);

 private:
    struct StoredImage {
        std::shared_ptr<const std::string> stored;
        std::string item;
    };
    void SetProperties(const DocumentInfo& info, std::int64_t nowTicks);

    std::string m_title;
    TemporaryFile m_file;
    KeptRows m_rows;       // of all sheets but the last one
    lxw_workbook* m_book;  // null once it is written
    XlsxStyles m_styles;
    std::vector<std::unique_ptr<XlsxSheet>> m_sheets;
    std::vector<StoredImage> m_images;
    ImageNumbers m_imageNumbers;
    std::vector<std::string> m_texts;  // of rows that are not complete
};

}  // namespace rdl::writers
