// The report engine for RDL files.
#pragma once

#include <memory>

#include "platform/report_engine.h"

namespace rdl::engine {

class RdlReport;

// For report::SetEngineFactory.
std::shared_ptr<report::Engine> CreateRdlEngine();

// What OpenReport of that engine does, for those who need more of a report than the system asks for.
std::shared_ptr<RdlReport> OpenRdlReport(const std::string& path);

}  // namespace rdl::engine
