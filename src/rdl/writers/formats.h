// SPDX-License-Identifier: GPL-3.0-or-later
// The writer of each document format.
#pragma once

#include "rdl/api/formats.h"
#include "rdl/writers/common/writers.h"

namespace rdl::writers {

struct FormatWriter {
    DocumentFormat format;
    bool hasVectors;  // else charts, gauges and maps become images
    void (*write)(layout::ReportInstance&, Output&, const Options&);
};

const FormatWriter& WriterOf(DocumentFormat format);

}  // namespace rdl::writers
