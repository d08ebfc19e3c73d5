// SPDX-License-Identifier: GPL-3.0-or-later
// The cell formats of a workbook without duplicates (ECMA-376 Part 1, 18.8).
#pragma once

#include <xlsxwriter.h>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "rdl/layout/model/style.h"
#include "rdl/writers/common/style_cache.h"

namespace rdl::writers {

class XlsxStyles {
 public:
    explicit XlsxStyles(lxw_workbook& book) : m_book(book) {}
    // As XlsWorkbook::Style and Format.
    std::uint16_t Cell(const layout::BoxStylePtr& box, const layout::CharStylePtr& text, layout::HAlign align,
                       std::uint16_t format, bool wrap);
    std::uint16_t Format(const std::string& excelFormat);
    // Returns the index of a style with the box's borders at these sides (XlsWorksheet::Side), where it has
    // none itself.
    std::uint16_t Framed(std::uint16_t style, const layout::BoxStyle& frame, unsigned sides);
    std::uint16_t Plain();  // of a cell without box and text style
    // The library owns the format.
    lxw_format* At(std::uint16_t style) const { return m_styles[style]; }
    // Returns the height in points that a line of text needs.
    double LineHeight(std::uint16_t style) const {
        constexpr double ToFontSize = 1.275;
        return m_styles[style]->font_size * ToFontSize;
    }

 private:
    std::uint16_t Find(const layout::BoxStyle& box, const layout::CharStyle& text, layout::HAlign align,
                       std::uint16_t format, bool wrap, std::size_t most);

    struct Look {
        layout::BoxStylePtr box;
        layout::CharStylePtr text;
        layout::HAlign align;
        std::uint16_t format;
        bool wrap;
    };

    lxw_workbook& m_book;
    std::vector<lxw_format*> m_styles;
    std::vector<Look> m_looks;                       // by style
    std::map<std::string, std::uint16_t> m_indexes;  // by all that a style says
    std::vector<std::string> m_formats{"General"};
    std::map<std::string, std::uint16_t> m_formatIndexes{{"General", 0}};
    StyleCache m_known;
};

}  // namespace rdl::writers
