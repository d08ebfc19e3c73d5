// SPDX-License-Identifier: GPL-3.0-or-later
// Upkeep of the database: deletes old history and keeps folder names unique.
#pragma once

#include <string>

namespace Global {

// Deletes history rows that are 31 calendar days old or older. Errors pass to the caller.
void PurgeOldHistory();

// Returns true if no folder at any level has this name and it is not the name of the root.
bool FolderNameFree(const std::string& name);

}  // namespace Global
