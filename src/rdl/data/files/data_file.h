// SPDX-License-Identifier: GPL-3.0-or-later
// Data files of a report: found in the folders of a run and read whole, up to a size limit.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace rdl::data {

// Returns the machine path of a file or folder named in a report: it accepts backslashes and drive Z:;
// |DataDirectory| and relative names refer to the first folder that has the file (to the first folder if none
// has it), without regard to case. Raises rdl::Error for a web address, an empty name, another drive and the
// application's own files (own_files.h).
std::string ResolveDataPath(std::string_view name, const std::vector<std::string>& folders);

// Returns the bytes of a file. Raises rdl::Error that says whether the file is missing, unreadable or too
// large.
std::string ReadDataFile(const std::string& path);

}  // namespace rdl::data
