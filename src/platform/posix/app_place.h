// SPDX-License-Identifier: GPL-3.0-or-later
// Where the application's folder is, for programs that only read in it.
#pragma once

#include <filesystem>

// Returns the folder of AppPath (platform/base/paths.h) as a machine path. Makes nothing: the folder need not
// exist.
std::filesystem::path AppPlace();
