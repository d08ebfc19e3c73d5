// SPDX-License-Identifier: GPL-3.0-or-later
// Who may do what with a file: rights that pass on to the file that replaces it, and owners.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>

// Gives the open file the rights of `former`, if that is a regular file: owner and group as far as permitted,
// and access list or mode. If the group cannot be kept, the group gets the rights of others. `isPrivate`: if
// others could read `former`, only owner and group are passed on, and the new file stays private to its
// owner. Never fails: what the file system does not support is left out.
void TakeAccessOver(int file, const std::filesystem::path& former, bool isPrivate);

// Returns the user's name, or the number of a user without one.
std::string NameOfUser(uid_t user);

// Returns the name of the open file's owner if that is neither the user of this process nor root, else an
// empty text. What such a file says must not run with the rights of this process.
std::string ForeignOwner(int file);
