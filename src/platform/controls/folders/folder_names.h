// SPDX-License-Identifier: GPL-3.0-or-later
// The contents of a folder for the lists of the forms: sorted by name without regard to case, without hidden
// entries.
#pragma once

#include <QStringList>
#include <filesystem>
#include <string>

// Returns the machine's folder for a path of the system, without a slash at its end. Raises 76 "Path not
// found" if it is missing or cannot be read.
std::filesystem::path FolderAt(const std::string& path);

enum class FolderContent { Folders, Files };
// Returns the names. Raises 76 if the folder is missing.
QStringList NamesIn(const std::filesystem::path& folder, FolderContent wanted);
