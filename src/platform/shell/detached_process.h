// SPDX-License-Identifier: GPL-3.0-or-later
// Starts programs that outlive this process.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

// Starts a program in a session of its own, so that it neither ends with this process nor becomes a zombie.
// It gets this process's environment and /dev/null as standard streams; no other file of this process is open
// in it. `folder` becomes its current folder unless it is empty; `variables`, each NAME=VALUE, are added to
// the environment. Waits until the program runs or has failed to start. Returns 0, or the errno of the
// failure (ENOEXEC: the file is not a program).
int StartDetached(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                  const std::filesystem::path& folder, const std::vector<std::string>& variables = {});
