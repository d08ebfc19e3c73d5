// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/window/file_claim.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <map>
#include <optional>
#include <string>
#include <system_error>
#include <utility>

#include "designer/window/recovery.h"
#include "platform/base/digest.h"
#include "platform/posix/lock_attempt.h"
#include "platform/posix/unique_fd.h"

namespace designer {
namespace {

namespace fs = std::filesystem;

constexpr int MostTries = 20;

// Links lead to the name of the file that they stand for.
fs::path NameOfLock(const fs::path& file) {
    std::error_code failure;
    const fs::path whole = fs::weakly_canonical(file, failure);
    return RecoveryFolder() / (Sha256((failure ? file : whole).string()) + ".open");
}

// Returns nullopt if another process has the lock; a handle of -1 if nothing can be locked. Who releases a
// lock removes its file: one that was opened before that is no lock any more.
std::optional<UniqueFd> OpenLocked(const fs::path& name) {
    std::error_code ignored;
    fs::create_directories(RecoveryFolder(), ignored);
    fs::permissions(RecoveryFolder(), fs::perms::owner_all, ignored);
    for (int tries = 0; tries < MostTries; ++tries) {
        UniqueFd handle(open(name.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR));
        if (handle.Get() < 0) {
            return handle;
        }
        const LockAttempt lock = TryLock(handle.Get());
        if (lock != LockAttempt::Taken) {
            return lock == LockAttempt::Refused ? std::nullopt : std::optional(std::move(handle));
        }
        if (StandsFor(AT_FDCWD, name.string(), handle.Get())) {
            return handle;
        }
    }
    return std::nullopt;
}

}  // namespace

struct FileClaim::Lock {
    Lock(fs::path wanted, UniqueFd opened) : name(std::move(wanted)), handle(std::move(opened)) {}
    ~Lock() {
        std::error_code ignored;
        fs::remove(name, ignored);
    }
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;

    const fs::path name;
    const UniqueFd handle;
};

// Returns the lock that a window of this process has, or a new one; null if another process has it.
std::shared_ptr<FileClaim::Lock> FileClaim::Find(const fs::path& name) {
    static std::map<fs::path, std::weak_ptr<Lock>> locks;
    std::erase_if(locks, [](const auto& entry) { return entry.second.expired(); });
    std::shared_ptr<Lock> lock = locks[name].lock();
    if (!lock) {
        if (auto handle = OpenLocked(name)) {
            lock = std::make_shared<Lock>(name, std::move(*handle));
        }
    }
    locks[name] = lock;
    return lock;
}

bool FileClaim::Take(const fs::path& file) {
    m_lock = Find(NameOfLock(file));
    return m_lock != nullptr;
}

// One that nobody else has is free again when it goes here.
bool FileClaim::IsTaken(const fs::path& file) {
    const std::shared_ptr<Lock> lock = Find(NameOfLock(file));
    return !lock || lock.use_count() > 1;
}

}  // namespace designer
