// Files that a report's data comes from: found by the folders of a run, read whole, never larger than
// allowed.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace rdl::data {

// The machine path of a file or folder as a report names it: backslashes and drive Z: as everywhere in the
// system, |DataDirectory| and relative names from the first of the folders that has it (from the first of all
// when none has), found without regard to case. Raises rdl::Error for a web address, an empty name,
// another drive and the program's own files (own_files.h).
std::string ResolveDataPath(std::string_view name, const std::vector<std::string>& folders);

// The bytes of a file. Raises rdl::Error, telling apart that it is missing, unreadable or too large.
std::string ReadDataFile(const std::string& path);

}  // namespace rdl::data
