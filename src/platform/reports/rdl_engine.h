// SPDX-License-Identifier: GPL-3.0-or-later
// Adapts the report engine (rdl/api) to the contract report::Engine, for RDL files.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include "platform/contracts/report_engine.h"

namespace reports {

class RdlReport;

// Makes the engine, for report::SetEngineFactory.
std::shared_ptr<report::Engine> CreateRdlEngine();

// Opens a report as that engine does, for programs that need more than the contract offers. Raises as
// report::Engine::OpenReport.
std::shared_ptr<RdlReport> OpenRdlReport(const std::string& path);

// Opens these bytes as if the file had them, which need not exist. `file` is a path of the machine.
std::shared_ptr<RdlReport> OpenRdlText(std::string_view bytes, const std::filesystem::path& file);

}  // namespace reports
