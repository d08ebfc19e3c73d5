// SPDX-License-Identifier: GPL-3.0-or-later
// Landlock: a process gives up access to files permanently (landlock(7)).
#pragma once

#include <filesystem>
#include <vector>

namespace reports::worker {

// From now on the calling thread, and each thread that it starts, writes and makes files below TemporaryPlace
// only and executes none. With `readable` it reads only below these folders, the application's folder but for
// the databases, the temporary place, and the folders of the system that libraries, fonts and drivers need.
// Open files keep working. Returns false if the kernel has no Landlock.
bool RestrictFiles(const std::vector<std::filesystem::path>& readable);

}  // namespace reports::worker
