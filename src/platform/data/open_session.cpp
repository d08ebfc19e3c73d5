// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/data/open_session.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

#include "platform/base/paths.h"
#include "platform/base/text.h"
#include "platform/contracts/adodb.h"
#include "platform/contracts/shared_store.h"
#include "platform/data_provider/connection_string.h"
#include "platform/postgresql/link.h"
#include "platform/postgresql/postgresql_session.h"
#include "platform/sqlite/sqlite_session.h"

namespace {

using SteadyClock = std::chrono::steady_clock;

constexpr auto AnswerHolds = std::chrono::seconds(2);

std::function<bool(const RuntimeError&)>& Question() {
    static std::function<bool(const RuntimeError&)> question;
    return question;
}

// What a file is as long as it exists: another file of its name or number differs.
struct FileIdentity {
    std::uint64_t device = 0, number = 0;
    std::int64_t born = 0;
    std::uint32_t bornNanoseconds = 0;
    bool operator==(const FileIdentity&) const = default;
};

std::optional<FileIdentity> IdentityOf(const std::filesystem::path& file) {
    struct statx status {};
    if (statx(AT_FDCWD, file.c_str(), 0, STATX_INO | STATX_BTIME, &status) != 0) {
        return std::nullopt;
    }
    return FileIdentity{std::uint64_t{status.stx_dev_major} << 32 | status.stx_dev_minor, status.stx_ino,
                        status.stx_btime.tv_sec, status.stx_btime.tv_nsec};
}

// The files that were found to be databases. They must not be looked into again: the kernel drops all of a
// process's locks on a file when the process closes any descriptor of it, and other processes would then take
// the log of an open database away (How To Corrupt An SQLite Database File, section 2.2).
class KnownDatabases {
 public:
    bool Holds(const FileIdentity& file) {
        const std::lock_guard guard(m_mutex);
        return std::find(m_files.begin(), m_files.end(), file) != m_files.end();
    }
    void Add(const FileIdentity& file) {
        const std::lock_guard guard(m_mutex);
        m_files.push_back(file);
    }

 private:
    std::mutex m_mutex;
    std::vector<FileIdentity> m_files;
};

KnownDatabases& Known() {
    static KnownDatabases known;
    return known;
}

// Returns nullopt for a file that is no link. A path that cannot be used is the other provider's to report.
std::optional<Link> LinkIn(const std::string& file) {
    std::filesystem::path path;
    try {
        path = paths::ToMachine(file);
    } catch (const RuntimeError&) {
        return std::nullopt;
    }
    const std::optional<FileIdentity> identity = IdentityOf(path);
    if (!identity || Known().Holds(*identity)) {
        return std::nullopt;
    }
    std::optional<Link> link = ReadLink(path);
    if (!link) {
        Known().Add(*identity);
    }
    return link;
}

SteadyClock::time_point& EndOfAnswer() {
    static SteadyClock::time_point end;
    return end;
}

// Asks, unless the user has just given up, or another question is on the screen. `begun` is when the attempt
// began that failed with `error`.
bool IsTriedAgain(const RuntimeError& error, SteadyClock::time_point begun) {
    static bool isAsking = false;
    if (isAsking || begun < EndOfAnswer()) {
        return false;
    }
    isAsking = true;
    const bool again = Question()(error);
    isAsking = false;
    if (!again) {
        EndOfAnswer() = SteadyClock::now() + AnswerHolds;
    }
    return again;
}

std::unique_ptr<DataSession> OpenOnce(const std::string& connectionString) {
    const std::string file = ConnectionValue(connectionString, "Data Source");
    if (file.empty()) {
        throw RuntimeError(err::DataUnavailable, "The connection string names no data file (Data Source)");
    }
    if (std::optional<Link> link = LinkIn(file)) {
        return std::make_unique<PostgresqlSession>(std::move(*link));
    }
    const bool onlyReads = SameText(ConnectionValue(connectionString, "Mode"), "Read");
    return std::make_unique<SqliteSession>(file, onlyReads ? Database::Use::ToRead : Database::Use::ToWrite);
}

}  // namespace

bool IsShared(const std::string& connectionString) {
    return LinkIn(ConnectionValue(connectionString, "Data Source")).has_value();
}

std::string ADODB::StoreIdentity(const std::string& connectionString) {
    const std::optional<Link> link = LinkIn(ConnectionValue(connectionString, "Data Source"));
    return link ? link->host + ":" + link->port + "/" + link->database : connectionString;
}

bool IsSharedStore(const std::string& connectionString) {
    try {
        return IsShared(connectionString);
    } catch (const RuntimeError&) {  // only links have faults of their own
        return true;
    }
}

void AskWhenStoreIsAway(std::function<bool(const RuntimeError&)> question) {
    Question() = std::move(question);
    EndOfAnswer() = {};
}

std::unique_ptr<DataSession> OpenDataSession(const std::string& connectionString, IfAway ifAway) {
    for (;;) {
        const auto begun = SteadyClock::now();
        try {
            return OpenOnce(connectionString);
        } catch (const RuntimeError& error) {
            if (ifAway == IfAway::Raise || error.Number() != err::DataUnavailable || !Question() ||
                !IsSharedStore(connectionString)) {
                throw;
            }
            if (!IsTriedAgain(error, begun)) {
                throw StoreGivenUp(error);
            }
        }
    }
}
