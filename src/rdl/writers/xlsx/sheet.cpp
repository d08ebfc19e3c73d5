// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/xlsx/sheet.h"

#include <algorithm>
#include <cmath>

#include "rdl/api/size_units.h"
#include "rdl/writers/xlsx/book.h"
#include "rdl/writers/xlsx/library.h"

namespace rdl::writers {
namespace {

constexpr double PixelsPerInch = 96;

lxw_col_t ColumnOf(std::size_t column) {
    return static_cast<lxw_col_t>(column);
}

}  // namespace

XlsxSheet::XlsxSheet(XlsxBook& book, lxw_worksheet& sheet, std::vector<double> widths,
                     const layout::PageSetup& page)
    : XlsWorksheet(XlsxBounds, std::move(widths), page), m_book(book), m_sheet(sheet) {
    constexpr double MostPixels = 1790;  // 255 digits of the default font
    for (std::size_t i = 0; i < columnWidths().size(); ++i) {
        const double pixels = std::clamp(columnWidths()[i] * PixelsPerInch / PointsPerInch, 1.0, MostPixels);
        worksheet_set_column_pixels(&m_sheet, ColumnOf(i), ColumnOf(i),
                                    static_cast<std::uint32_t>(std::lround(pixels)), nullptr);
    }
    worksheet_set_default_row(&m_sheet, XlsDefaultRowHeight, LXW_FALSE);
    SetUpPage();
}

void XlsxSheet::SetUpPage() {
    worksheet_set_paper(&m_sheet, static_cast<std::uint8_t>(XlsPaperOf(page())));
    page().height >= page().width ? worksheet_set_portrait(&m_sheet) : worksheet_set_landscape(&m_sheet);
    worksheet_set_margins(&m_sheet, page().marginLeft / PointsPerInch, page().marginRight / PointsPerInch,
                          page().marginTop / PointsPerInch, page().marginBottom / PointsPerInch);
    worksheet_fit_to_pages(&m_sheet, 1, 0);  // fitted to the page's width in print
    worksheet_gridlines(&m_sheet, LXW_HIDE_ALL_GRIDLINES);
}

// The library fixes the height of every row: one that may grow has room for its tallest line.
double XlsxSheet::HeightOf(const Row& row) const {
    double height = row.height;
    for (const XlsCell& cell : row.cells) {
        if (!row.fixed && !cell.spansRows && cell.kind != XlsCell::Blank) {
            height = std::max(height, m_book.LineHeight(cell.xf));
        }
    }
    return std::min(height, XlsTallestRow);
}

void XlsxSheet::WriteRow(std::uint32_t index, Row& row) {
    row.height = HeightOf(row);
    worksheet_set_row(&m_sheet, index, row.height, nullptr);
    for (const XlsCell& cell : row.cells) {
        const lxw_col_t column = ColumnOf(cell.column);
        lxw_format* const format = m_book.StyleAt(cell.xf);
        switch (cell.kind) {
            case XlsCell::Blank:
                worksheet_write_blank(&m_sheet, index, column, format);
                break;
            case XlsCell::Number:
                worksheet_write_number(&m_sheet, index, column, cell.number, format);
                break;
            case XlsCell::Boolean:
                worksheet_write_boolean(&m_sheet, index, column, cell.number != 0 ? 1 : 0, format);
                break;
            case XlsCell::Text:
                worksheet_write_string(&m_sheet, index, column, m_book.TextAt(cell.text).c_str(), format);
                break;
        }
    }
}

void XlsxSheet::Finish() {
    CompleteAll();
    CloseRows(m_sheet);
}

void XlsxSheet::RowsAreWritten() {
    m_book.ForgetTexts();
}

void XlsxSheet::Merge(const XlsRange& range) {
    MergeWritten(m_sheet, range);
}

void XlsxSheet::Seal(const std::string& sheetName) {
    Rename(m_sheet, sheetName);
    if (rightToLeft) {
        worksheet_right_to_left(&m_sheet);
    }
    if (HasHeading()) {
        worksheet_repeat_rows(&m_sheet, HeadingBegin(), HeadingEnd() - 1);
    }
    if (IsFrozen()) {
        worksheet_freeze_panes(&m_sheet, HeadingEnd(), 0);
    }
    const OpenRows open(m_sheet);
    AddPictures();
    AddLinks();
}

// The text of a link is that of its cell, which is written already.
void XlsxSheet::AddLinks() {
    const auto add = [this](const XlsRange& range, const std::string& link) {
        worksheet_write_url_opt(&m_sheet, range.firstRow, ColumnOf(range.firstColumn), link.c_str(), nullptr,
                                "", nullptr);
    };
    for (const auto& [range, link] : m_links) {
        add(range, link);
    }
    for (const auto& [range, target] : nameLinks()) {
        if (m_book.bookmarks.IsPlaced(target)) {
            add(range, "internal:" + target);
        }
    }
}

// The library finds where an image ends by the heights of the rows that it knows.
void XlsxSheet::AddPictures() {
    for (const XlsPicture& picture : pictures()) {
        double left = picture.height;
        for (std::uint32_t row = picture.row; left > 0 && row < XlsxBounds.rows; ++row) {
            worksheet_set_row(&m_sheet, row, RowHeight(row), nullptr);
            left -= RowHeight(row);
        }
    }
    lxw_object_properties* image = nullptr;
    for (const XlsPicture& picture : pictures()) {
        const std::string bytes = m_book.ImageOf(picture);
        lxw_image_options options{};
        options.object_position = LXW_OBJECT_MOVE_DONT_SIZE;
        options.decorative = LXW_TRUE;
        const lxw_error error = worksheet_insert_image_buffer_opt(
            &m_sheet, picture.row, ColumnOf(picture.column),
            reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size(), &options);
        m_book.Check(error);
        image = NextImage(m_sheet, image);
        Resize(*image, picture.width, picture.height);
    }
}

std::uint16_t XlsxSheet::Framed(std::uint16_t xf, const layout::BoxStyle& box, unsigned sides) {
    return m_book.Framed(xf, box, sides);
}

std::uint16_t XlsxSheet::PlainStyle() const {
    return m_book.PlainStyle();
}

}  // namespace rdl::writers
