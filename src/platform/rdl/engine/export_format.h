// The export formats by the system's codes.
#pragma once

#include "platform/rdl/writers/writers.h"

namespace rdl::engine {

struct ExportFormat {
    int code;
    const char* extension;   // of a file that the engine names itself
    const char* renderName;  // Globals!RenderFormat.Name
    bool hasVectors;         // else charts are pictures
    void (*write)(layout::ReportInstance&, writers::Output&, const writers::Options&);
};

// Raises 5 for a code that there is no format for.
const ExportFormat& FindFormat(int code);

}  // namespace rdl::engine
