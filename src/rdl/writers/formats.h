// SPDX-License-Identifier: GPL-3.0-or-later
// The writer of each document format.
#pragma once

#include "rdl/api/formats.h"
#include "rdl/layout/model/report_input.h"
#include "rdl/writers/common/writers.h"

namespace rdl::writers {

struct FormatWriter {
    DocumentFormat format;
    layout::Drawings drawings;
    void (*write)(layout::ReportInstance&, Output&, const Options&);
};

const FormatWriter& WriterOf(DocumentFormat format);

}  // namespace rdl::writers
