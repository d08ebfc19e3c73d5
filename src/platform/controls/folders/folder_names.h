// What stands in a folder, as the lists of the forms show it: by name without regard to case, and nothing
// that is hidden.
#pragma once

#include <QStringList>
#include <filesystem>
#include <string>

// The machine's folder for a path of the system, without a slash at its end. 76 "Path not found" when there
// is none, or none that may be read.
std::filesystem::path FolderAt(const std::string& path);

enum class FolderContent { Folders, Files };
// 76 when the folder is gone.
QStringList NamesIn(const std::filesystem::path& folder, FolderContent wanted);
