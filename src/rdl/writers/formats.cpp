// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/formats.h"

#include <algorithm>
#include <array>

namespace rdl::writers {
namespace {

using layout::Drawings;

// Word opens RTF content under its own extension.
constexpr std::array Writers = {
    FormatWriter{DocumentFormat::Pdf, Drawings::Vectors, WritePdf},
    FormatWriter{DocumentFormat::Rtf, Drawings::Pictures, WriteRtf},
    FormatWriter{DocumentFormat::Excel, Drawings::Pictures, WriteXls},
    FormatWriter{DocumentFormat::Html, Drawings::Vectors, WriteHtml},
    FormatWriter{DocumentFormat::Word, Drawings::Pictures, WriteRtf},
    FormatWriter{DocumentFormat::Csv, Drawings::Data, WriteCsv},
    FormatWriter{DocumentFormat::Xlsx, Drawings::Pictures, WriteXlsx},
    FormatWriter{DocumentFormat::Png, Drawings::Vectors, WritePng},
    FormatWriter{DocumentFormat::Docx, Drawings::Pictures, WriteDocx},
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
