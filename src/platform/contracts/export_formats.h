// SPDX-License-Identifier: GPL-3.0-or-later
// The formats of Report::SetExportFormat. The table of the engine is the one list of them.
#pragma once

#include "rdl/api/formats.h"

namespace report {

using rdl::DocumentFormat;
using rdl::FindFormat;
using rdl::FormatRow;
using rdl::FormatTable;

constexpr int CodeOf(DocumentFormat format) {
    return static_cast<int>(format);
}

// The codes by name.
inline constexpr int FormatWord = CodeOf(DocumentFormat::Word);
inline constexpr int FormatExcel = CodeOf(DocumentFormat::Excel);
inline constexpr int FormatPdf = CodeOf(DocumentFormat::Pdf);
inline constexpr int FormatHtml = CodeOf(DocumentFormat::Html);
inline constexpr int FormatRtf = CodeOf(DocumentFormat::Rtf);

}  // namespace report
