// The report engine of the system for RDL files: the engine's own interface (rdl/api) behind the contract.
#pragma once

#include <memory>
#include <string>

#include "platform/contracts/report_engine.h"

namespace reports {

class RdlReport;

// For report::SetEngineFactory.
std::shared_ptr<report::Engine> CreateRdlEngine();

// What OpenReport of that engine does, for programs that need more of a report than the contract has.
std::shared_ptr<RdlReport> OpenRdlReport(const std::string& path);

}  // namespace reports
