// SPDX-License-Identifier: GPL-3.0-or-later
// What the library for workbooks has no function for. All of it is declared in its headers; the library's
// own memory holds what is added here.
#pragma once

#include <xlsxwriter.h>

#include <cstdint>
#include <string>

#include "rdl/writers/xls/worksheet.h"

namespace rdl::writers {

// Merges cells that are written already. The library's own function writes the cells once more, which it
// cannot in rows that have left the memory.
void MergeWritten(lxw_worksheet& sheet, const XlsRange& range);

// Makes Arial of 10 points the font by whose digits programs measure columns, as in the older workbooks.
void SetDefaultFont(lxw_workbook& book);

// Gives a sheet another name than the one that it was added with. The name is not checked: it has 1 to 31
// characters, none of []:*?/\\, no apostrophe at its ends, and no other sheet has it.
void Rename(lxw_worksheet& sheet, const std::string& name);

// Writes the last row and frees the sheet's room for the cells of a row, an eighth of a megabyte. No rows may
// be added after that.
void CloseRows(lxw_worksheet& sheet);

// Closes the file of the sheet's rows, if it is open.
void CloseFile(lxw_worksheet& sheet);

// Returns the image that was inserted after `before`, the first one after null; the library owns it.
lxw_object_properties* NextImage(const lxw_worksheet& sheet, const lxw_object_properties* before);
// Sets the size in points.
void Resize(lxw_object_properties& image, double width, double height);

// While it exists, the sheet accepts cells in any row and writes no row. Images and links need this: they
// refer to rows that are already written.
class OpenRows {
 public:
    explicit OpenRows(lxw_worksheet& sheet) : m_sheet(sheet) { m_sheet.optimize = 0; }
    ~OpenRows() { m_sheet.optimize = 1; }
    OpenRows(const OpenRows&) = delete;
    OpenRows& operator=(const OpenRows&) = delete;

 private:
    lxw_worksheet& m_sheet;
};

}  // namespace rdl::writers
