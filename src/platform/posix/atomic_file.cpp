// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/posix/atomic_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <system_error>
#include <utility>

#include "platform/contracts/runtime.h"
#include "platform/contracts/system_error.h"
#include "platform/posix/file_access.h"
#include "platform/posix/held_name.h"

namespace {

namespace fs = std::filesystem;

std::int32_t NumberOf(int code) {
    switch (code) {
        case ENOENT:
        case ENOTDIR:
            return err::PathNotFound;
        case EEXIST:
            return err::FileExists;
        default:
            return NumberOfSystemError(code, err::PathFileAccess);
    }
}

[[noreturn]] void RaiseFor(std::int32_t number, const fs::path& path, int code) {
    const bool isTold = number != err::PathFileAccess && number != err::TooManyFiles;
    throw RuntimeError(number, RuntimeError(number).Description() + ": \"" + path.string() + "\"" +
                                   (isTold || code == 0 ? "" : ", " + SystemErrorText(code)));
}

fs::path FolderOf(const fs::path& file) {
    return file.has_parent_path() ? file.parent_path() : fs::path(".");
}

// Returns the handle of the folder, or -1 and sets errno. O_PATH: files can be made in a folder that may be
// written but not read.
int OpenFolder(const fs::path& folder) {
    constexpr int Flags = O_DIRECTORY | O_CLOEXEC;
    const int handle = open(folder.c_str(), O_RDONLY | Flags);
    return handle < 0 && errno == EACCES ? open(folder.c_str(), O_PATH | Flags) : handle;
}

// Held by every process that makes or replaces a database in the folder: no process mistakes another one's
// log for an old one.
class FolderLock {
 public:
    explicit FolderLock(const fs::path& folder) : m_handle(OpenFolder(folder)) {
        // A database can also be made on a file system without locks.
        WaitForLock(m_handle, std::chrono::seconds(10));
    }
    ~FolderLock() { close(m_handle); }
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;

 private:
    int m_handle;
};

class OpenSource {
 public:
    explicit OpenSource(const fs::path& path)
        : m_path(path), m_file(open(path.c_str(), O_RDONLY | O_CLOEXEC)) {
        if (m_file < 0) {
            const int code = errno;
            RaiseFor(code == ENOENT || code == ENOTDIR ? err::FileNotFound
                                                       : NumberOfSystemError(code, err::PathFileAccess),
                     path, code);
        }
    }
    ~OpenSource() { close(m_file); }
    OpenSource(const OpenSource&) = delete;
    OpenSource& operator=(const OpenSource&) = delete;

    // Returns an empty text at the end of the file.
    std::string_view Read() {
        ssize_t count = 0;
        do {
            count = read(m_file, m_buffer.data(), m_buffer.size());
        } while (count < 0 && errno == EINTR);
        if (count < 0) {
            RaiseFor(err::PathFileAccess, m_path, errno);
        }
        return {m_buffer.data(), static_cast<std::size_t>(count)};
    }

 private:
    fs::path m_path;
    int m_file;
    std::array<char, 65536> m_buffer{};
};

// A database's write-ahead log beside the target belongs to the former file. It must be removed before the
// copy appears: the database would apply the old rows to the new file.
void RemoveLogsOfFormerDatabase(const fs::path& target) {
    std::error_code ignored;
    fs::remove(target.string() + "-wal", ignored);
    fs::remove(target.string() + "-shm", ignored);
}

constexpr std::string_view TemporaryMark = ".oxc-part-";

fs::path BehindLinks(fs::path target) {
    std::error_code error;
    if (fs::is_symlink(target, error)) {
        fs::path real = fs::weakly_canonical(target, error);
        return error ? target : real;
    }
    return target;
}

// Returns true for a target that is neither a file nor a folder: its name must stay what it is.
bool IsDeviceOrPipe(const fs::path& target) {
    std::error_code error;
    const fs::file_status status = fs::status(target, error);
    return !error && fs::exists(status) && !fs::is_regular_file(status) && !fs::is_directory(status);
}

}  // namespace

AtomicFile::AtomicFile(fs::path target, IfThere ifThere, Readers readers, Lasting lasting)
    : m_target(std::move(target)), m_ifThere(ifThere), m_readers(readers), m_lasting(lasting) {
    if (!IsDeviceOrPipe(m_target)) {
        MakeTemporary();
    } else if (m_ifThere == IfThere::Fail) {
        Raise(EEXIST);
    } else {
        m_file = open(m_target.c_str(), O_WRONLY | O_CLOEXEC);
        if (m_file < 0) {
            Raise(errno);
        }
    }
}

AtomicFile::AtomicFile(std::filesystem::path target, UniqueFd file)
    : m_target(std::move(target)),
      m_ifThere(IfThere::Replace),
      m_readers(Readers::Mask),
      m_lasting(Lasting::Brief),
      m_file(file.Release()) {}

void AtomicFile::MakeTemporary() {
    m_target = BehindLinks(std::move(m_target));
    const fs::path folder = FolderOf(m_target);
    RemoveLeftovers(folder, TemporaryMark);
    m_folder = OpenFolder(folder);
    if (m_folder < 0) {
        Raise(errno);
    }
    // From the first byte on the new file is no more readable than the file that it replaces.
    std::error_code ignored;
    const bool isForAll = m_readers == Readers::Mask && !fs::exists(m_target, ignored);
    const HeldName held = MakeHeldFile(m_folder, TemporaryMark, isForAll ? 0666 : 0600);
    if (held.handle < 0) {
        close(m_folder);
        Raise(held.code);
    }
    m_temporary = held.name;
    m_file = held.handle;
}

AtomicFile::~AtomicFile() {
    if (m_file >= 0 && !m_temporary.empty()) {
        unlinkat(m_folder, m_temporary.c_str(), 0);
    }
    for (const int handle : {m_file, m_folder}) {
        if (handle >= 0) {
            close(handle);
        }
    }
}

void AtomicFile::Raise(int code) const {
    RaiseFor(NumberOf(code), m_target, code);
}

void AtomicFile::Write(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = write(m_file, bytes.data(), bytes.size());
        if (count < 0 && errno != EINTR) {
            Raise(errno);
        }
        bytes.remove_prefix(count < 0 ? 0 : static_cast<std::size_t>(count));
    }
}

// Returns 0, or -1 and sets errno.
int AtomicFile::GiveName() const {
    const char* const temporary = m_temporary.c_str();
    if (m_ifThere == IfThere::Replace) {
        return renameat(m_folder, temporary, AT_FDCWD, m_target.c_str());
    }
    const int result = renameat2(m_folder, temporary, AT_FDCWD, m_target.c_str(), RENAME_NOREPLACE);
    if (result == 0 || (errno != EINVAL && errno != ENOSYS)) {
        return result;
    }
    // Some network file systems need two steps.
    return linkat(m_folder, temporary, AT_FDCWD, m_target.c_str(), 0) == 0 ? unlinkat(m_folder, temporary, 0)
                                                                           : -1;
}

void AtomicFile::Commit() {
    if (!m_temporary.empty()) {
        if (m_ifThere == IfThere::Replace) {
            TakeAccessOver(m_file, m_target, m_readers == Readers::Owner);
        }
        const bool waits = m_lasting == Lasting::OnDisk;
        if ((waits && fsync(m_file) != 0) || GiveName() != 0) {
            Raise(errno);
        }
        if (waits) {
            fsync(m_folder);  // a power failure can undo a rename until its folder is on the disk
        }
    }
    close(m_file);
    m_file = -1;
}

void CopyFileWhole(const fs::path& source, const fs::path& target, AtomicFile::IfThere ifThere) {
    std::error_code ignored;
    if (fs::equivalent(source, target, ignored) || fs::is_directory(source, ignored)) {
        RaiseFor(err::PathFileAccess, target, 0);
    }
    OpenSource from(source);
    AtomicFile copy(target, ifThere);
    constexpr std::string_view DatabaseMark = "SQLite format 3";
    bool isDatabase = false;
    bool isStart = true;
    for (std::string_view bytes = from.Read(); !bytes.empty(); bytes = from.Read()) {
        isDatabase = isStart ? bytes.substr(0, DatabaseMark.size()) == DatabaseMark : isDatabase;
        isStart = false;
        copy.Write(bytes);
    }
    if (!isDatabase) {
        return copy.Commit();
    }
    const fs::path place = BehindLinks(target);
    const FolderLock lock(FolderOf(place));
    if (!fs::exists(place, ignored)) {
        RemoveLogsOfFormerDatabase(place);
    }
    copy.Commit();
}
