// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/posix/file_access.h"

#include <pwd.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <string>

namespace {

namespace fs = std::filesystem;

constexpr const char* AccessList = "system.posix_acl_access";

// Returns an empty list if the mode says everything.
std::string AccessListOf(const fs::path& path) {
    const ssize_t size = getxattr(path.c_str(), AccessList, nullptr, 0);
    if (size <= 0) {
        return {};
    }
    std::string list(static_cast<std::size_t>(size), '\0');
    return getxattr(path.c_str(), AccessList, list.data(), list.size()) == size ? list : std::string();
}

// Returns true if the file has the group of the former one.
bool TakeOwnership(int file, const struct stat& former) {
    if (fchown(file, former.st_uid, former.st_gid) == 0) {
        return true;
    }
    struct stat own {};
    return (fstat(file, &own) == 0 && own.st_gid == former.st_gid) ||
           fchown(file, static_cast<uid_t>(-1), former.st_gid) == 0;
}

// Ignores errors: some file systems have no modes.
void SetMode(int file, mode_t mode) {
    [[maybe_unused]] const int result = fchmod(file, mode);
}

}  // namespace

void TakeAccessOver(int file, const fs::path& former, bool isPrivate) {
    struct stat facts {};
    if (stat(former.c_str(), &facts) != 0 || !S_ISREG(facts.st_mode)) {
        return;
    }
    const mode_t mode = facts.st_mode & (S_IRWXU | S_IRWXG | S_IRWXO);
    const bool isGroupKept = TakeOwnership(file, facts);
    if (isPrivate && (mode & S_IRWXO) != 0) {
        return SetMode(file, S_IRUSR | S_IWUSR);
    }
    const std::string list = AccessListOf(former);
    if (list.empty()) {
        // The folder may have given the file an access list.
        fremovexattr(file, AccessList);
        return SetMode(file, isGroupKept ? mode : (mode & ~S_IRWXG) | ((mode & S_IRWXO) << 3));
    }
    if (!isGroupKept || fsetxattr(file, AccessList, list.data(), list.size(), 0) != 0) {
        fremovexattr(file, AccessList);
        SetMode(file, mode & ~S_IRWXG);
    }
}

std::string NameOfUser(uid_t user) {
    const passwd* const found = getpwuid(user);
    return found != nullptr ? found->pw_name : std::to_string(user);
}

std::string ForeignOwner(int file) {
    struct stat status {};
    const bool isForeign = fstat(file, &status) == 0 && status.st_uid != geteuid() && status.st_uid != 0;
    return isForeign ? NameOfUser(status.st_uid) : "";
}
