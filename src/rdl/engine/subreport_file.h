// SPDX-License-Identifier: GPL-3.0-or-later
// The file of a subreport in the folders of a run.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace rdl::engine {

// Returns the first file of these folders that SubreportFile (rdl/api/subreport_file.h) would take. Raises
// Error if none of them has one.
std::filesystem::path FindSubreport(const std::string& reportName, const std::filesystem::path& parent,
                                    const std::vector<std::string>& folders);

}  // namespace rdl::engine
