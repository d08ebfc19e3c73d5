// SPDX-License-Identifier: GPL-3.0-or-later
// Finds the application that the desktop associates with a kind of file or address, by the desktop's own
// rules (the MIME database, mimeapps.list and the .desktop files), and starts it.
#pragma once

#include <filesystem>
#include <string>

namespace associations {

enum class Outcome { Started, NoApplication, Unrunnable, NoPermission, NoMemory };

// Opens an existing file or folder with its default application, which starts in `folder` unless that is
// empty.
Outcome OpenFile(const std::filesystem::path& file, const std::filesystem::path& folder);

// Opens an address with the application for its scheme (http, mailto).
Outcome OpenAddress(const std::string& address);

}  // namespace associations
