// SPDX-License-Identifier: GPL-3.0-or-later
// The folders of the database.
#pragma once

#include <string>
#include <vector>

namespace Global {

struct StoredFolder {
    std::string id, name;
};

// The folders directly inside the folder of that id, in the order of the table; "0" is the root. Errors of
// the database pass to the caller.
std::vector<StoredFolder> FoldersBelow(const std::string& parentID);

}  // namespace Global
