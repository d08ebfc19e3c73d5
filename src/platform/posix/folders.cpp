// SPDX-License-Identifier: GPL-3.0-or-later
// The application's folders.
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "platform/base/database_files.h"
#include "platform/base/environment.h"
#include "platform/base/paths.h"
#include "platform/contracts/runtime.h"
#include "platform/posix/app_place.h"
#include "platform/posix/atomic_file.h"

namespace {

namespace fs = std::filesystem;

constexpr const char* FolderName = "oxbow-courier";

fs::path Home() {
    const std::string home = EnvironmentText("HOME");
    if (!home.empty()) {
        return home;
    }
    const passwd* user = getpwuid(getuid());
    return user != nullptr && user->pw_dir != nullptr ? user->pw_dir : "/";
}

// Returns an XDG base folder; a relative path in the variable is ignored.
fs::path BaseFolder(const char* variable, const char* belowHome) {
    const fs::path given = EnvironmentText(variable);
    return given.is_absolute() ? given : Home() / belowHome;
}

bool IsFile(const fs::path& path) {
    std::error_code error;
    return fs::is_regular_file(path, error);
}

// Makes the folder and its missing parents. The folder itself is for its owner only, because it will hold
// passwords.
void MakePrivateFolder(const fs::path& folder) {
    std::error_code error;
    if (fs::is_directory(folder, error)) {
        return;
    }
    fs::create_directories(folder.parent_path(), error);
    if (!error && mkdir(folder.c_str(), S_IRWXU) != 0 && errno != EEXIST) {
        error.assign(errno, std::generic_category());
    }
    if (error) {
        throw RuntimeError(err::PathFileAccess,
                           "The folder \"" + folder.string() + "\" cannot be made: " + error.message());
    }
}

fs::path InstalledShare() {
    for (const fs::path& root : {ProgramFolder().parent_path(), fs::path("/usr/local"), fs::path("/usr")}) {
        fs::path share = root / "share" / FolderName;
        if (IsFile(share / BlankDatabaseFile)) {
            return share;
        }
    }
    return {};
}

// Copies the blank database last: a folder that holds it is complete, even if an earlier start was
// interrupted.
void Furnish(const fs::path& folder) {
    MakePrivateFolder(folder);
    for (const char* name : {"Cache", "output"}) {
        MakePrivateFolder(folder / name);
    }
    const fs::path share = InstalledShare();
    if (share.empty()) {
        return;
    }
    for (fs::recursive_directory_iterator entry(share), end; entry != end; ++entry) {
        const fs::path target = folder / fs::relative(entry->path(), share);
        if (entry->is_directory()) {
            MakePrivateFolder(target);
        } else if (entry->is_regular_file() && target.filename() != BlankDatabaseFile && !IsFile(target)) {
            CopyFileWhole(entry->path(), target);
        }
    }
    CopyFileWhole(share / BlankDatabaseFile, folder / BlankDatabaseFile);
}

std::string FindAppPath() {
    const fs::path place = AppPlace();
    if (place == DataHome() / FolderName && !IsFile(place / BlankDatabaseFile) &&
        EnvironmentText("OXC_HOME").empty()) {
        Furnish(place);
    }
    return paths::FromMachine(place);
}

std::string WithoutLastBackslash(std::string path) {
    while (!path.empty() && path.back() == '\\') {
        path.pop_back();
    }
    return path;
}

std::string& ChosenAppPath() {
    static std::string path;
    return path;
}

}  // namespace

fs::path AppPlace() {
    const std::string given = EnvironmentText("OXC_HOME");
    if (!given.empty()) {
        return paths::ToMachine(given);
    }
    const fs::path program = ProgramFolder();
    return IsFile(program / BlankDatabaseFile) ? program : DataHome() / FolderName;
}

fs::path ProgramFolder() {
    std::error_code error;
    return fs::read_symlink("/proc/self/exe", error).parent_path();
}

const std::string& AppPath() {
    if (ChosenAppPath().empty()) {
        ChosenAppPath() = WithoutLastBackslash(FindAppPath());
    }
    return ChosenAppPath();
}

void SetAppPath(const std::string& path) {
    ChosenAppPath() = WithoutLastBackslash(path);
}

fs::path DataHome() {
    return BaseFolder("XDG_DATA_HOME", ".local/share");
}

fs::path ConfigPlace() {
    return BaseFolder("XDG_CONFIG_HOME", ".config") / FolderName;
}

fs::path ConfigFolder() {
    fs::path folder = ConfigPlace();
    MakePrivateFolder(folder);
    return folder;
}
