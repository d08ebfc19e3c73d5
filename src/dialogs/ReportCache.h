// The report cache: the system runs copies of the users' report files, so that a user's own file may move or
// change without touching a schedule.
#pragma once

#include <string>

namespace Global {

// Copies a report file into the folder Cache of the application and returns the copy's path. The cache is
// flat and goes by the bare file name, what follows the last backslash: a file of the same name from another
// folder replaces the copy. Errors pass to the caller: 53 when the file is gone, 76 when there is no Cache.
std::string CopyToCache(const std::string& filePath);

}  // namespace Global
