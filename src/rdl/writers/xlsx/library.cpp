// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/xlsx/library.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>
#include <utility>

#include "rdl/api/size_units.h"

namespace rdl::writers {

void MergeWritten(lxw_worksheet& sheet, const XlsRange& range) {
    auto* const merged = static_cast<lxw_merged_range*>(std::calloc(1, sizeof(lxw_merged_range)));
    if (!merged) {
        throw std::bad_alloc();
    }
    merged->first_row = range.firstRow;
    merged->last_row = range.lastRow;
    merged->first_col = range.firstColumn;
    merged->last_col = range.lastColumn;
    STAILQ_INSERT_TAIL(sheet.merged_ranges, merged, list_pointers);
    // The number only informs readers, and its type is short; 0 would omit all of them.
    if (sheet.merged_range_count < std::numeric_limits<std::uint16_t>::max()) {
        ++sheet.merged_range_count;
    }
}

void SetDefaultFont(lxw_workbook& book) {
    if (lxw_format* const format = STAILQ_FIRST(book.formats)) {
        format_set_font_name(format, "Arial");
        format_set_font_size(format, 10);
    }
}

void Rename(lxw_worksheet& sheet, const std::string& name) {
    char* const copy = strdup(name.c_str());
    char* const quoted = lxw_quote_sheetname(name.c_str());
    if (!copy || !quoted) {
        throw std::bad_alloc();
    }
    std::free(sheet.name);
    std::free(sheet.quoted_name);
    sheet.name = copy;
    sheet.quoted_name = quoted;
}

void CloseRows(lxw_worksheet& sheet) {
    lxw_worksheet_write_single_row(&sheet);
    std::free(sheet.array);  // the cells were freed with their row
    sheet.array = nullptr;
}

void CloseFile(lxw_worksheet& sheet) {
    if (std::FILE* const file = std::exchange(sheet.optimize_tmpfile, nullptr)) {
        sheet.file = nullptr;
        std::fclose(file);
    }
}

lxw_object_properties* NextImage(const lxw_worksheet& sheet, const lxw_object_properties* before) {
    return before ? STAILQ_NEXT(before, list_pointers) : STAILQ_FIRST(sheet.image_props);
}

void Resize(lxw_object_properties& image, double width, double height) {
    image.x_scale = width / PointsPerInch * image.x_dpi / std::max(image.width, 1.0);
    image.y_scale = height / PointsPerInch * image.y_dpi / std::max(image.height, 1.0);
}

}  // namespace rdl::writers
