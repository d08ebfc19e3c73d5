// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/mail/transport/outbox.h"

#include <fcntl.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <string>
#include <utility>

#include "platform/contracts/runtime.h"
#include "platform/contracts/system_error.h"
#include "platform/mail/message/message_writer.h"
#include "platform/posix/held_name.h"
#include "platform/posix/unique_fd.h"

namespace mailer {
namespace {

namespace fs = std::filesystem;

constexpr const char* UnfinishedPrefix = ".oxc-";

[[noreturn]] void Raise(const fs::path& folder, int code) {
    const bool full = IsDiskFull(code);
    throw RuntimeError(full ? err::MailboxFull : NumberOfSystemError(code, err::PathFileAccess),
                       (full ? "The outbox \"" + folder.string() + "\" is full: "
                             : "The outbox \"" + folder.string() + "\" cannot be written: ") +
                           SystemErrorText(code));
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

// Begins with the time, so that names sort by it, and ends with random characters, so that names of two
// processes differ.
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

// The file of a message that is being written. The destructor deletes it unless it was published.
class UnfinishedFile {
 public:
    explicit UnfinishedFile(int folder) : m_folder(folder) {
        HeldName held = MakeHeldFile(folder, UnfinishedPrefix, S_IRUSR | S_IWUSR);
        m_file = UniqueFd(held.handle);
        m_code = held.code;
        if (m_code == 0) {
            m_name = std::move(held.name);
        }
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

    // Returns 0, or the machine's error code.
    int Publish(const std::string& name) {
        if (fsync(m_file.Get()) != 0 || renameat(m_folder, m_name.c_str(), m_folder, name.c_str()) != 0) {
            return errno;
        }
        m_name.clear();
        if (fsync(m_folder) != 0 && errno != EINVAL) {
            // Whether the name is on the disk is unknown: the message is removed and counts as not sent.
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
    const UnfinishedFile file(folder.Get());
    if (file.Code() != 0) {
        Raise(m_folder, file.Code());
    }
}

Refusals OutboxTransport::Deliver(const OutgoingMail& mail) {
    const UniqueFd folder = OpenFolder(m_folder);
    RemoveLeftovers(m_folder, UnfinishedPrefix);
    UnfinishedFile file(folder.Get());
    int code = file.Code();
    if (code == 0) {
        code = WriteMessage(mail, file.Get(), LineEnds::CrLf);
    }
    if (code == 0) {
        code = file.Publish(UniqueStem() + ".eml");
    }
    if (code != 0) {
        Raise(m_folder, code);
    }
    return {};
}

std::optional<std::size_t> CountOutbox() {
    try {
        const MailProfile profile = ReadMailProfile(MailProfilePath());
        if (profile.transport != TransportKind::Outbox) {
            return std::nullopt;
        }
        std::size_t messages = 0;
        std::error_code failed;
        for (fs::directory_iterator at(profile.outboxFolder, failed), end; !failed && at != end;
             at.increment(failed)) {
            messages += at->path().extension() == ".eml" ? 1 : 0;
        }
        return messages;
    } catch (const RuntimeError&) {
        return std::nullopt;
    }
}

}  // namespace mailer
