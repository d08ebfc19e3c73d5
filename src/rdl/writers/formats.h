// SPDX-License-Identifier: GPL-3.0-or-later
// The table of document formats.
#pragma once

#include "rdl/api/report.h"
#include "rdl/writers/common/writers.h"

namespace rdl::writers {

struct Format {
    DocumentFormat id;
    const char* renderName;  // Globals!RenderFormat.Name
    bool hasVectors;         // else charts and gauges become images
    void (*write)(layout::ReportInstance&, Output&, const Options&);
};

const Format& FormatOf(DocumentFormat id);

}  // namespace rdl::writers
