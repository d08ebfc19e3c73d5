// SPDX-License-Identifier: GPL-3.0-or-later
// Rows of a file of separated values (RFC 4180, with the variants below).
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "rdl/data/common/cursor.h"

namespace rdl::data {

struct CsvForm {
    char separator = '\0';  // NUL: from a line sep=, else the most frequent of , ; tab | in the first line
    bool header = true;     // the first line names the columns; else they are Column1, Column2 ...
    bool latin1 = false;    // else UTF-8, UTF-16 with a byte order mark, or Windows-1252 if it is neither
    std::vector<std::string> texts;  // columns that stay as the file has them, without regard to case
};

// Quoted values may contain separators, line ends and doubled quotes. A column of plain numbers (without
// leading zeros, which mark codes) gives numbers unless the form names it; an empty value is Null. Raises
// rdl::Error also for a line with more values than columns and for an unclosed quote.
std::unique_ptr<Cursor> OpenCsv(std::string_view bytes, const CsvForm& form);

// Returns the file that a query names, alone or in SELECT * FROM name; empty if it names none.
std::string CsvFileOfQuery(std::string_view query);

}  // namespace rdl::data
