// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/formats.h"

#include <algorithm>
#include <iterator>

namespace rdl::writers {
namespace {

// In the order of DocumentFormat. Word opens RTF content under its own extension.
constexpr Format Formats[] = {
    {DocumentFormat::Pdf, "PDF", true, WritePdf},      {DocumentFormat::Rtf, "RTF", false, WriteRtf},
    {DocumentFormat::Excel, "EXCEL", false, WriteXls}, {DocumentFormat::Html, "HTML", false, WriteHtml},
    {DocumentFormat::Word, "WORD", false, WriteRtf},
};

}  // namespace

const Format& FormatOf(DocumentFormat id) {
    return *std::find_if(std::begin(Formats), std::end(Formats),
                         [id](const Format& format) { return format.id == id; });
}

}  // namespace rdl::writers
