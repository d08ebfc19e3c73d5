// SPDX-License-Identifier: GPL-3.0-or-later
// Where the file of a subreport is.
#pragma once

#include <filesystem>
#include <string>

namespace rdl {

// Returns the file that a run of the report `parent` takes for a subreport of this name: the name as it
// stands, else with the extension of the report or the usual one, else its last piece beside the report; all
// without regard to case. The report need not exist; empty: it is in the current folder. Raises Failure
// (Stage::Open) if there is no such file, or if no file can have the name.
std::filesystem::path SubreportFile(const std::string& reportName, const std::filesystem::path& parent);

}  // namespace rdl
