// Rows out of a text file with separated values.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "rdl/data/common/cursor.h"

namespace rdl::data {

struct CsvForm {
    char separator = '\0';  // NUL: that of a line sep=; else the most frequent of , ; tab | in the first line
    bool header = true;     // the first line names the columns; else they are Column1, Column2 ...
    bool latin1 = false;    // else UTF-8, UTF-16 with a byte order mark or, when it is neither, Windows-1252
};

// Values in quotes may hold separators, line ends and doubled quotes. A column whose values are all plain
// numbers (no leading zeros: those are codes) gives numbers; an empty value is Null. Raises rdl::Error, also
// for a line with more values than columns and for quotes that are not closed.
std::unique_ptr<Cursor> OpenCsv(std::string_view bytes, const CsvForm& form);

// The file that a query asks for: a bare name, or SELECT * FROM name; empty when it names none.
std::string CsvFileOfQuery(std::string_view query);

}  // namespace rdl::data
