// Files of the program itself, which hold passwords and what is meant for other people: no report reads them.
#pragma once

#include <filesystem>
#include <vector>

namespace rdl::data {

// The files, and the folders with all that is in them, that no report may open: machine paths, absolute. A
// SQLite file stands for its log and journal as well. Replaces what was given before; at first there are
// none.
void ProtectFiles(std::vector<std::filesystem::path> paths);

// Raises rdl::Error when `path`, by whatever name or link, is one of them, or is a file that the system makes
// up as it is read (/proc, /sys). A path that does not exist passes.
void CheckReadable(const std::filesystem::path& path);

}  // namespace rdl::data
