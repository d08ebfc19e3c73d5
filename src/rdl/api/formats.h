// SPDX-License-Identifier: GPL-3.0-or-later
// The table of document formats. A new format is one row here and its writer in rdl/writers/formats.cpp;
// command lines, dialogs, tests and the check of the guide take their lists from this table.
#pragma once

#include <algorithm>
#include <array>
#include <string_view>

namespace rdl {

// The numbers are the codes by which programs choose a format; they never change.
enum class DocumentFormat {
    Word = 14,
    Excel = 27,
    Pdf = 31,
    Html = 32,
    Rtf = 35,
    Csv = 36,
    Xlsx = 37,
    Png = 38,
    Docx = 39
};

struct FormatRow {
    DocumentFormat format;
    std::string_view word;        // on a command line; also the extension of a file that a user saves
    std::string_view extension;   // of a file that a program names, without the dot
    std::string_view renderName;  // Globals!RenderFormat.Name
    std::string_view title;       // in a list of file types

    constexpr int Code() const { return static_cast<int>(format); }
};

inline constexpr std::array FormatTable = {
    FormatRow{DocumentFormat::Pdf, "pdf", "pdf", "PDF", "PDF document"},
    FormatRow{DocumentFormat::Rtf, "rtf", "rtf", "RTF", "Rich text"},
    FormatRow{DocumentFormat::Excel, "xls", "xls", "EXCEL", "Excel workbook"},
    FormatRow{DocumentFormat::Html, "html", "htm", "HTML", "Web page"},
    FormatRow{DocumentFormat::Word, "doc", "doc", "WORD", "Word document"},
    FormatRow{DocumentFormat::Docx, "docx", "docx", "WORDOPENXML", "Word document, Office Open XML"},
    FormatRow{DocumentFormat::Csv, "csv", "csv", "CSV", "Comma-separated values"},
    FormatRow{DocumentFormat::Xlsx, "xlsx", "xlsx", "EXCELOPENXML", "Excel workbook, Office Open XML"},
    FormatRow{DocumentFormat::Png, "png", "png", "IMAGE", "Picture of the first page"},
};

// Each returns null if no row matches.
constexpr const FormatRow* FindFormat(int code) {
    const auto* const row = std::find_if(FormatTable.begin(), FormatTable.end(),
                                         [code](const FormatRow& one) { return one.Code() == code; });
    return row == FormatTable.end() ? nullptr : &*row;
}
constexpr const FormatRow* FindFormat(std::string_view word) {
    const auto* const row = std::find_if(FormatTable.begin(), FormatTable.end(),
                                         [word](const FormatRow& one) { return one.word == word; });
    return row == FormatTable.end() ? nullptr : &*row;
}

// Every format has its row.
constexpr const FormatRow& RowOf(DocumentFormat format) {
    return *FindFormat(static_cast<int>(format));
}

// A second row for a code, a word or a name would never be found.
static_assert(std::all_of(FormatTable.begin(), FormatTable.end(), [](const FormatRow& row) {
    return std::count_if(FormatTable.begin(), FormatTable.end(), [&row](const FormatRow& other) {
               return other.format == row.format || other.word == row.word ||
                      other.renderName == row.renderName || other.title == row.title;
           }) == 1;
}));

}  // namespace rdl
