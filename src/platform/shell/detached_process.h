// Programs that live on their own once they are started.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

// Starts a program in a session of its own, so that it neither ends with this process nor is left as a
// zombie. It gets this process's environment and, as standard streams, /dev/null; no other file of this
// process is open in it. `folder` becomes its current folder, an empty one changes nothing. Waits until the
// program runs or has failed to: 0, or the errno of what failed (ENOEXEC: the file is no program).
int StartDetached(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                  const std::filesystem::path& folder);
