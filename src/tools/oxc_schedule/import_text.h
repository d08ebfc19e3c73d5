// SPDX-License-Identifier: GPL-3.0-or-later
// Reads the text of an export. Every field is checked as the commands check their options; an error names the
// item and the cause.
#pragma once

#include <string>
#include <vector>

#include "tools/oxc_schedule/records.h"

namespace tools {

struct ImportedItems {
    std::vector<StoredFolder> folders;      // without keys
    std::vector<StoredSchedule> schedules;  // without keys, path of the copy, and next run
    std::vector<StoredPackage> packages;    // without keys and next run
};

// What is stored already. An item with the same values is not checked: it stays as it is.
struct FormerItems {
    std::vector<StoredSchedule> schedules = ReadSchedules();
    std::vector<StoredPackage> packages = ReadPackages();
};

// Reads and checks everything except whether folders exist. Opens the reports of the items that are not
// stored. A schedule without a password takes that of the stored schedule of its name and user.
ImportedItems ReadImport(const std::string& text, const FormerItems& former);

}  // namespace tools
