// SPDX-License-Identifier: GPL-3.0-or-later
// The formats of Report::SetExportFormat. The table of the engine is the one list of them.
#pragma once

#include "rdl/api/formats.h"

namespace report {

using rdl::DocumentFormat;
using rdl::FindFormat;
using rdl::FormatRow;
using rdl::FormatTable;
using rdl::RowOf;

constexpr int CodeOf(DocumentFormat format) {
    return static_cast<int>(format);
}

}  // namespace report
