// SPDX-License-Identifier: GPL-3.0-or-later
// What a caller chooses about a document beside its format.
#pragma once

#include <string>

namespace rdl {

struct ExportOptions {
    // Pdf: for archives, by PDF/A-2b (ISO 19005-2).
    bool forArchive = false;
    // Pdf: with the logical structure: headings, tables, texts of pictures.
    bool tagged = false;
    // Csv: values as programs read them: numbers with a point, dates by ISO 8601; else as the report shows
    // them.
    bool unformatted = false;
    // Csv: the rows of this data set, unformatted, instead of the report's tables; empty: the tables.
    std::string dataSet;
    // Png: the page, from 1, and its resolution, more than 0.
    int page = 1;
    double dotsPerInch = 96;
};

}  // namespace rdl
