// SPDX-License-Identifier: GPL-3.0-or-later
// oxc-report new: makes a report file from a query.
#pragma once

#include <filesystem>
#include <string>

#include "tools/new_report_arguments.h"

namespace tools {

// Runs the query and writes the report. `password` belongs to `user`, who may be empty; neither is written.
// Raises RuntimeError 58 if the file exists and --force is not given, 5 for a name that the query has not,
// and the engine's and AtomicFile's errors; a file that exists does not change then.
void MakeReport(const NewReportArguments& arguments, const std::filesystem::path& output,
                const std::string& user, const std::string& password);

}  // namespace tools
