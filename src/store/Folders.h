// SPDX-License-Identifier: GPL-3.0-or-later
// The folders of the database.
#pragma once

#include <string>
#include <vector>

#include "platform/contracts/adodb.h"

namespace Global {

// The message on a new name that is not free has the name between marks before these words.
inline constexpr const char* NameIsTaken = " already exists in the system. Please specify a new name.";

struct StoredFolder {
    std::string id, name;
};

// The folders directly inside the folder of that id, in the order of the table; "0" is the root. Errors of
// the database pass to the caller.
std::vector<StoredFolder> FoldersBelow(const std::string& parentID);

// Each escapes nothing and starts no transaction; without a connection of the caller it uses one of its own.
// Errors pass to the caller. The caller has made sure that a new name is free (FolderNameFree in
// store/Upkeep.h).
void InsertFolder(const std::string& name, const std::string& parentID);
void InsertFolder(ADODB::Connection& connection, const std::string& name, const std::string& parentID);
// The schedules of the folder get its new name.
void RenameFolder(const std::string& oldName, const std::string& newName);
void RenameFolder(ADODB::Connection& connection, const std::string& oldName, const std::string& newName);
// Deletes a folder and the folders directly inside it. The folder's own row is deleted first, so that the
// second statement finds no name and deletes no row (sic): the schedules of the folder stay and continue to
// run. "0" would delete the folders of the first level.
void DeleteFolder(const std::string& id);
void DeleteFolder(ADODB::Connection& connection, const std::string& id);

}  // namespace Global
