// SPDX-License-Identifier: GPL-3.0-or-later
// Makes a data file a link, and a link a data file again.
#pragma once

#include <filesystem>

#include "platform/postgresql/link.h"

namespace tools {

// What happens while a scheduler runs in the file's folder: it would go on with the former store, and mail
// again what has been mailed there.
enum class IfRunning { Refuse, Continue };

// Writes the link to the file, readable by its owner only, after the store has been opened once. A database
// in its place is renamed to <file>.embedded. Raises an error if that name is taken, if another program has
// the database open or if a scheduler runs; then nothing has changed.
void LinkStore(const std::filesystem::path& file, const Link& link, IfRunning ifRunning);

// Removes the link and gives <file>.embedded its name again, if it is there. Raises an error if the file is
// no link or if a scheduler runs.
void UnlinkStore(const std::filesystem::path& file, IfRunning ifRunning);

}  // namespace tools
