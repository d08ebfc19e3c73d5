// SPDX-License-Identifier: GPL-3.0-or-later
// A report file that another program hands to the editor that it starts. Any argument would make the editor a
// scheduler, so the file is named by a variable of the environment.
#pragma once

#include <filesystem>

inline constexpr const char* HandedReportVariable = "OXC_SCHEDULE_REPORT";

// Returns the file that was handed to this process; empty if there is none, or none with a whole path.
// Removes the variable: it is not meant for programs that this process starts, and a second call returns an
// empty path.
std::filesystem::path TakeHandedReport();
