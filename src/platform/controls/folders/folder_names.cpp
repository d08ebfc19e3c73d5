// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/folders/folder_names.h"

#include <unistd.h>

#include <algorithm>
#include <system_error>

#include "platform/base/paths.h"
#include "platform/contracts/runtime.h"

namespace {

namespace fs = std::filesystem;

[[noreturn]] void RaiseNotFound(const std::string& path) {
    throw RuntimeError(err::PathNotFound,
                       RuntimeError(err::PathNotFound).Description() + ": \"" + paths::ForUser(path) + "\"");
}

bool Earlier(const QString& left, const QString& right) {
    const int order = left.compare(right, Qt::CaseInsensitive);
    return order != 0 ? order < 0 : left < right;
}

}  // namespace

fs::path FolderAt(const std::string& path) {
    std::error_code error;
    fs::path folder = fs::absolute(paths::ToMachine(path), error).lexically_normal();
    if (!folder.has_filename() && folder.has_relative_path()) {
        folder = folder.parent_path();
    }
    if (error || !fs::is_directory(folder, error) || access(folder.c_str(), R_OK | X_OK) != 0) {
        RaiseNotFound(path);
    }
    return folder;
}

QStringList NamesIn(const fs::path& folder, FolderContent wanted) {
    QStringList names;
    std::error_code error;
    fs::directory_iterator entry(folder, error);
    if (error) {
        RaiseNotFound(paths::FromMachine(folder));
    }
    for (const fs::directory_iterator end; !error && entry != end; entry.increment(error)) {
        std::error_code unknown;
        const bool fits =
            wanted == FolderContent::Folders ? entry->is_directory(unknown) : entry->is_regular_file(unknown);
        const QString name = QString::fromStdString(entry->path().filename().string());
        if (fits && !name.startsWith('.')) {
            names << name;
        }
    }
    std::sort(names.begin(), names.end(), Earlier);
    return names;
}
