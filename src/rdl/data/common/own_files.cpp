// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/data/common/own_files.h"

#include <linux/magic.h>
#include <sys/vfs.h>

#include <algorithm>
#include <array>
#include <string>
#include <system_error>
#include <vector>

#include "rdl/api/host.h"
#include "rdl/data/common/message.h"
#include "rdl/values/error.h"

namespace rdl::data {
namespace {

namespace fs = std::filesystem;

// Links followed as far as the path exists; as it is when that fails.
fs::path Canonical(const fs::path& path) {
    std::error_code error;
    fs::path known = fs::weakly_canonical(path, error);
    return error ? path : known;
}

bool IsSame(const fs::path& left, const fs::path& right) {
    std::error_code error;
    return left == right || fs::equivalent(left, right, error);
}

bool IsWithin(const fs::path& path, const fs::path& folder) {
    const auto [end, ignored] = std::mismatch(folder.begin(), folder.end(), path.begin(), path.end());
    return end == folder.end();
}

// A second name (hard link) of a file in the folder. Most files have one name, which needs no look.
bool IsAnyIn(const fs::path& path, const fs::path& folder) {
    std::error_code error;
    if (fs::hard_link_count(path, error) == 1 && !error) {
        return false;
    }
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        if (IsSame(path, entry->path())) {
            return true;
        }
    }
    return false;
}

bool IsDatabase(const fs::path& path, const fs::path& database) {
    constexpr std::array Suffixes{"", "-wal", "-shm", "-journal"};
    return std::any_of(Suffixes.begin(), Suffixes.end(),
                       [&](const char* suffix) { return IsSame(path, database.string() + suffix); });
}

bool IsProtected(const fs::path& path) {
    const fs::path wanted = Canonical(path);
    const std::vector<fs::path> all = TheHost().OwnFiles();
    return std::any_of(all.begin(), all.end(), [&](const fs::path& own) {
        const fs::path known = Canonical(own);
        std::error_code error;
        return fs::is_directory(known, error) ? IsWithin(wanted, known) || IsAnyIn(wanted, known)
                                              : IsDatabase(wanted, own) || IsDatabase(wanted, known);
    });
}

bool IsMadeUp(const fs::path& path) {
    struct statfs system {};
    return statfs(path.c_str(), &system) == 0 &&
           (system.f_type == PROC_SUPER_MAGIC || system.f_type == SYSFS_MAGIC);
}

}  // namespace

void CheckReadable(const fs::path& path) {
    if (IsProtected(path)) {
        throw Error("the file \"" + CleanText(path.string()) +
                    "\" belongs to the program, and no report may read it");
    }
    if (IsMadeUp(path)) {
        throw Error("\"" + CleanText(path.string()) + "\" is no file on a disk");
    }
}

}  // namespace rdl::data
