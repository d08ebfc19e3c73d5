// SPDX-License-Identifier: GPL-3.0-or-later
// The report cache. The system runs copies of the users' report files, so that a user can move or change a
// file without an effect on its schedules.
#pragma once

#include <string>

namespace Global {

// Copies a report file into the folder Cache of the application and returns the path of the copy. The cache
// has no subfolders; the copy's name is the text after the last backslash, so a file of the same name from
// another folder replaces the copy. Errors pass to the caller: 53 if the file is missing, 76 if there is no
// folder Cache. A store that several machines share gets the bytes, too.
std::string CopyToCache(const std::string& filePath);

// Returns the path of the copy that CopyToCache makes of the file.
std::string CachedPath(const std::string& filePath);

}  // namespace Global
