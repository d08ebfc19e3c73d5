// SPDX-License-Identifier: GPL-3.0-or-later
// Passes the access rights of a file on to the file that replaces it.
#pragma once

#include <filesystem>

// Gives the open file the rights of `former`, if that is a regular file: owner and group as far as permitted,
// and access list or mode. If the group cannot be kept, the group gets the rights of others. `isPrivate`: if
// others could read `former`, only owner and group are passed on, and the new file stays private to its
// owner. Never fails: what the file system does not support is left out.
void TakeAccessOver(int file, const std::filesystem::path& former, bool isPrivate);
