// Upkeep of the database: what keeps it short and its folder names apart.
#pragma once

#include <string>

namespace Global {

// Deletes history rows that are 31 calendar days old or more. Errors pass to the caller.
void PurgeOldHistory();

// Whether a folder may have this name: no folder anywhere has it, and it is not the root's.
bool FolderNameFree(const std::string& name);

}  // namespace Global
