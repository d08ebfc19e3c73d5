// SPDX-License-Identifier: GPL-3.0-or-later
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "platform/base/environment.h"
#include "platform/contracts/runtime.h"
#include "platform/contracts/system_error.h"
#include "platform/posix/atomic_file.h"
#include "platform/posix/held_name.h"

namespace {

namespace fs = std::filesystem;

// Returns 0, or the machine's error code.
int CodeOfWriting(const fs::path& folder) {
    struct stat facts {};
    if (stat(folder.c_str(), &facts) != 0) {
        return errno;
    }
    if (!S_ISDIR(facts.st_mode)) {
        return ENOTDIR;
    }
    return faccessat(AT_FDCWD, folder.c_str(), W_OK | X_OK, AT_EACCESS) == 0 ? 0 : errno;
}

[[noreturn]] void RaiseFor(const fs::path& folder, int code, const std::string& more = {}) {
    throw RuntimeError(
        NumberOfSystemError(code, err::PathFileAccess),
        "No temporary file can be made in \"" + folder.string() + "\": " + SystemErrorText(code) + more);
}

}  // namespace

fs::path TemporaryPlace() {
    const fs::path chosen = EnvironmentText("TMPDIR");
    if (chosen.is_absolute() && CodeOfWriting(chosen) == 0) {
        return chosen;
    }
    const fs::path usual = "/tmp";
    const int code = CodeOfWriting(usual);
    if (code != 0) {
        RaiseFor(usual, code, chosen.empty() ? "" : ", nor in \"" + chosen.string() + "\" (TMPDIR)");
    }
    return usual;
}

int OpenTemporaryFile() {
    const fs::path place = TemporaryPlace();
    int file = open(place.c_str(), O_TMPFILE | O_RDWR | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
    // Some file systems cannot make files without a name.
    if (file < 0 && (errno == EOPNOTSUPP || errno == EISDIR || errno == ENOENT || errno == EINVAL)) {
        std::string name = (place / ".oxc-XXXXXX").string();
        file = mkostemp(name.data(), O_CLOEXEC);
        if (file >= 0) {
            unlink(name.c_str());
        }
    }
    if (file < 0) {
        RaiseFor(place, errno);
    }
    return file;
}

HeldFolder::HeldFolder(std::string_view prefix) {
    const fs::path place = TemporaryPlace();
    RemoveLeftovers(place, prefix);
    const int parent = open(place.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC);
    if (parent < 0) {
        RaiseFor(place, errno);
    }
    const HeldName held = MakeHeldFolder(parent, prefix);
    close(parent);
    if (held.handle < 0) {
        RaiseFor(place, held.code);
    }
    m_path = place / held.name;
    m_handle = held.handle;
}

HeldFolder::~HeldFolder() {
    std::error_code ignored;
    fs::remove_all(m_path, ignored);
    close(m_handle);
}
