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

// Reads and checks everything except whether folders exist. Opens the reports.
ImportedItems ReadImport(const std::string& text);

}  // namespace tools
