#include "platform/posix/atomic_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <system_error>

#include "platform/runtime.h"

namespace {

namespace fs = std::filesystem;

std::int32_t NumberOf(int code) {
    switch (code) {
        case ENOENT:
        case ENOTDIR:
            return err::PathNotFound;
        case ENOSPC:
        case EDQUOT:
        case EFBIG:
            return err::DiskFull;
        case EEXIST:
            return err::FileExists;
        default:
            return err::PathFileAccess;
    }
}

[[noreturn]] void RaiseFor(std::int32_t number, const fs::path& path, int code) {
    std::string text = RuntimeError(number).Description() + ": \"" + path.string() + "\"";
    if (number == err::PathFileAccess && code != 0) {
        text += ", " + std::generic_category().message(code);
    }
    throw RuntimeError(number, text);
}

// A rename is lost in a power cut until its folder is on the disk too.
void SyncFolder(const fs::path& folder) {
    const int handle = open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle >= 0) {
        fsync(handle);
        close(handle);
    }
}

class OpenSource {
 public:
    explicit OpenSource(const fs::path& path)
        : m_path(path), m_file(open(path.c_str(), O_RDONLY | O_CLOEXEC)) {
        if (m_file < 0) {
            RaiseFor(errno == ENOENT || errno == ENOTDIR ? err::FileNotFound : err::PathFileAccess, path,
                     errno);
        }
    }
    ~OpenSource() { close(m_file); }
    OpenSource(const OpenSource&) = delete;
    OpenSource& operator=(const OpenSource&) = delete;

    // Empty at the end of the file.
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

// A database's write-ahead log that lies beside the target belongs to the file that was there before. The
// copy must not meet it: the database would replay the old rows over the new file.
void RemoveLogsOfFormerDatabase(const fs::path& target) {
    std::error_code ignored;
    fs::remove(target.string() + "-wal", ignored);
    fs::remove(target.string() + "-shm", ignored);
}

// Temporary names: the mark, the process and some letters. They are short, so that any name that the file
// system takes can be made, and tell who is writing.
constexpr std::string_view TemporaryMark = ".oxc-part-";

bool IsOfDeadProcess(const std::string& name) {
    if (name.compare(0, TemporaryMark.size(), TemporaryMark) != 0) {
        return false;
    }
    pid_t process = 0;
    const char* const begin = name.data() + TemporaryMark.size();
    const auto read = std::from_chars(begin, name.data() + name.size(), process);
    return read.ec == std::errc() && process > 0 && kill(process, 0) != 0 && errno == ESRCH;
}

void RemoveLeftovers(const fs::path& folder) {
    std::error_code ignored;
    for (fs::directory_iterator entry(folder.empty() ? "." : folder, ignored), end; !ignored && entry != end;
         entry.increment(ignored)) {
        if (IsOfDeadProcess(entry->path().filename().string())) {
            fs::remove(entry->path(), ignored);
        }
    }
}

fs::path BehindLinks(fs::path target) {
    std::error_code error;
    if (fs::is_symlink(target, error)) {
        fs::path real = fs::weakly_canonical(target, error);
        return error ? target : real;
    }
    return target;
}

// Something that is no file and no folder: its name must stay what it is.
bool IsDeviceOrPipe(const fs::path& target) {
    std::error_code error;
    const fs::file_status status = fs::status(target, error);
    return !error && fs::exists(status) && !fs::is_regular_file(status) && !fs::is_directory(status);
}

}  // namespace

AtomicFile::AtomicFile(fs::path target, IfThere ifThere) : m_target(std::move(target)), m_ifThere(ifThere) {
    if (IsDeviceOrPipe(m_target)) {
        m_file = open(m_target.c_str(), O_WRONLY | O_CLOEXEC);
    } else {
        m_target = BehindLinks(std::move(m_target));
        const fs::path folder = m_target.parent_path();
        RemoveLeftovers(folder);
        m_temporary = (folder / (std::string(TemporaryMark) + std::to_string(getpid()) + "-XXXXXX")).string();
        m_file = mkostemp(m_temporary.data(), O_CLOEXEC);
    }
    if (m_file < 0) {
        Raise(errno);
    }
}

AtomicFile::~AtomicFile() {
    if (m_file >= 0) {
        close(m_file);
        if (!m_temporary.empty()) {
            unlink(m_temporary.c_str());
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

void AtomicFile::Commit() {
    if (!m_temporary.empty()) {
        const unsigned flags = m_ifThere == IfThere::Fail ? RENAME_NOREPLACE : 0;
        if (fsync(m_file) != 0 ||
            renameat2(AT_FDCWD, m_temporary.c_str(), AT_FDCWD, m_target.c_str(), flags) != 0) {
            Raise(errno);
        }
        SyncFolder(m_target.parent_path());
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
    if (isDatabase && !fs::exists(target, ignored)) {
        RemoveLogsOfFormerDatabase(target);
    }
    copy.Commit();
}
