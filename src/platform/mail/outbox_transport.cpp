#include "platform/mail/outbox_transport.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <map>
#include <string>

#include "platform/mail/message_writer.h"
#include "platform/mail/unique_fd.h"
#include "platform/runtime.h"

namespace mailer {
namespace {

namespace fs = std::filesystem;

constexpr const char* UnfinishedPrefix = ".oxc-";
constexpr const char* UnfinishedSuffix = ".part";

[[noreturn]] void Raise(const fs::path& folder, int code) {
    const bool full = code == ENOSPC || code == EDQUOT || code == EFBIG;
    throw RuntimeError(full ? err::MailboxFull : err::PathFileAccess,
                       (full ? "The outbox \"" + folder.string() + "\" is full: "
                             : "The outbox \"" + folder.string() + "\" cannot be written: ") +
                           std::strerror(code));
}

void MakeFolder(const fs::path& folder) {
    std::error_code error;
    if (folder.empty() || fs::is_directory(folder, error)) {
        return;
    }
    if (folder.has_relative_path()) {
        MakeFolder(folder.parent_path());
    }
    if (mkdir(folder.c_str(), S_IRWXU) != 0 && errno != EEXIST) {
        Raise(folder, errno);
    }
}

UniqueFd OpenFolder(const fs::path& path) {
    MakeFolder(path);
    UniqueFd folder(open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.Get() < 0) {
        Raise(path, errno);
    }
    return folder;
}

// Time first, so that names sort as messages were made; chance last, so that no two processes meet.
std::string UniqueStem() {
    using namespace std::chrono;
    static std::int64_t last = 0;
    std::int64_t now = duration_cast<microseconds>(system_clock::now().time_since_epoch()).count();
    now = now > last ? now : last + 1;
    last = now;
    constexpr std::int64_t Million = 1000000;
    const std::time_t seconds = now / Million;
    std::tm parts{};
    gmtime_r(&seconds, &parts);
    std::uint32_t chance = 0;
    if (getrandom(&chance, sizeof chance, 0) != sizeof chance) {
        chance = static_cast<std::uint32_t>(getpid());
    }
    std::array<char, 80> text{};
    std::snprintf(text.data(), text.size(), "%04d%02d%02dT%02d%02d%02d.%06dZ-%08x", parts.tm_year + 1900,
                  parts.tm_mon + 1, parts.tm_mday, parts.tm_hour, parts.tm_min, parts.tm_sec,
                  static_cast<int>(now % Million), chance);
    return text.data();
}

// A writer holds a lock on its unfinished file until it has its final name, so a free one has no writer.
void RemoveUnfinished(int folder, const fs::path& path) {
    std::error_code error;
    for (fs::directory_iterator entry(path, error), end; !error && entry != end; entry.increment(error)) {
        const std::string name = entry->path().filename();
        if (!name.starts_with(UnfinishedPrefix) || !name.ends_with(UnfinishedSuffix)) {
            continue;
        }
        const UniqueFd file(openat(folder, name.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
        if (file.Get() >= 0 && flock(file.Get(), LOCK_EX | LOCK_NB) == 0) {
            unlinkat(folder, name.c_str(), 0);
        }
    }
}

// Leftovers are rare and folders may be large: each is searched at its first message, and then now and then.
bool IsSearchDue(const fs::path& folder) {
    using namespace std::chrono;
    static std::map<fs::path, steady_clock::time_point> searched;
    constexpr hours Pause{6};
    const auto [place, isNew] = searched.try_emplace(folder, steady_clock::now());
    if (isNew || steady_clock::now() - place->second < Pause) {
        return isNew;
    }
    place->second = steady_clock::now();
    return true;
}

// The file of a message that is being written; removed unless it is published.
class UnfinishedFile {
 public:
    UnfinishedFile(int folder, const std::string& stem)
        : m_folder(folder), m_name(UnfinishedPrefix + stem + UnfinishedSuffix) {
        // Between making and locking it another process may take it for a left one: then it is made anew.
        struct stat status {};
        do {
            m_file = UniqueFd(openat(folder, m_name.c_str(),
                                     O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR));
        } while (m_file.Get() >= 0 && flock(m_file.Get(), LOCK_EX) == 0 &&
                 fstat(m_file.Get(), &status) == 0 && status.st_nlink == 0);
        m_code = m_file.Get() < 0 ? errno : 0;
    }
    ~UnfinishedFile() {
        if (!m_name.empty()) {
            unlinkat(m_folder, m_name.c_str(), 0);
        }
    }
    UnfinishedFile(const UnfinishedFile&) = delete;
    UnfinishedFile& operator=(const UnfinishedFile&) = delete;

    int Code() const { return m_code; }
    int Get() const { return m_file.Get(); }

    // 0, or the machine's error code.
    int Publish(const std::string& name) {
        if (fsync(m_file.Get()) != 0 || renameat(m_folder, m_name.c_str(), m_folder, name.c_str()) != 0) {
            return errno;
        }
        m_name.clear();
        if (fsync(m_folder) != 0 && errno != EINVAL) {
            // Nobody can tell whether the name is on the disk: the message is taken back, as it is not sent.
            const int code = errno;
            unlinkat(m_folder, name.c_str(), 0);
            return code;
        }
        return 0;
    }

 private:
    int m_folder;
    std::string m_name;
    UniqueFd m_file;
    int m_code = 0;
};

}  // namespace

void OutboxTransport::CheckWritable() const {
    const UniqueFd folder = OpenFolder(m_folder);
    const UnfinishedFile file(folder.Get(), UniqueStem());
    if (file.Code() != 0) {
        Raise(m_folder, file.Code());
    }
}

Refusals OutboxTransport::Deliver(const OutgoingMail& mail) {
    const UniqueFd folder = OpenFolder(m_folder);
    if (IsSearchDue(m_folder)) {
        RemoveUnfinished(folder.Get(), m_folder);
    }
    const std::string stem = UniqueStem();
    UnfinishedFile file(folder.Get(), stem);
    int code = file.Code();
    if (code == 0) {
        code = WriteMessage(mail, file.Get(), LineEnds::CrLf);
    }
    if (code == 0) {
        code = file.Publish(stem + ".eml");
    }
    if (code != 0) {
        Raise(m_folder, code);
    }
    return {};
}

}  // namespace mailer
