// SPDX-License-Identifier: GPL-3.0-or-later
// Every report of the project: those of the fuzzers, the samples, and those of all kinds that a script
// writes.
#pragma once

#include <filesystem>
#include <vector>

// Returns their files, sorted; the first call makes them. To these come the reports of the folder that the
// variable OXC_MORE_REPORTS names, for a run by hand.
const std::vector<std::filesystem::path>& AllReports();
