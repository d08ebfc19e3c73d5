// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/formats.h"

#include <algorithm>
#include <array>

namespace rdl::writers {
namespace {

// Word opens RTF content under its own extension.
constexpr std::array Writers = {
    FormatWriter{DocumentFormat::Pdf, true, WritePdf},
    FormatWriter{DocumentFormat::Rtf, false, WriteRtf},
    FormatWriter{DocumentFormat::Excel, false, WriteXls},
    FormatWriter{DocumentFormat::Html, false, WriteHtml},
    FormatWriter{DocumentFormat::Word, false, WriteRtf},
    FormatWriter{DocumentFormat::Csv, true, WriteCsv},
    FormatWriter{DocumentFormat::Xlsx, false, WriteXlsx},
    FormatWriter{DocumentFormat::Png, true, WritePng},
    FormatWriter{DocumentFormat::Docx, false, WriteDocx},
};

// Every format has one writer.
static_assert(std::all_of(FormatTable.begin(), FormatTable.end(), [](const FormatRow& row) {
    return std::count_if(Writers.begin(), Writers.end(),
                         [&row](const FormatWriter& writer) { return writer.format == row.format; }) == 1;
}));

}  // namespace

const FormatWriter& WriterOf(DocumentFormat format) {
    return *std::find_if(Writers.begin(), Writers.end(),
                         [format](const FormatWriter& writer) { return writer.format == format; });
}

}  // namespace rdl::writers
