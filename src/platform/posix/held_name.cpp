// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/posix/held_name.h"

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <ctime>
#include <map>
#include <mutex>
#include <system_error>
#include <thread>

#include "platform/posix/lock_attempt.h"

namespace {

namespace fs = std::filesystem;
using SteadyClock = std::chrono::steady_clock;

std::string WithChance(std::string_view prefix) {
    std::uint64_t chance = 0;
    if (getrandom(&chance, sizeof chance, 0) != sizeof chance) {
        chance = (static_cast<std::uint64_t>(getpid()) << 32) ^
                 static_cast<std::uint64_t>(SteadyClock::now().time_since_epoch().count());
    }
    // Without decimal digits: earlier versions read a number in such a name as a process number and removed
    // files of dead processes.
    constexpr std::string_view Digits = "abcdefghijklmnop";
    std::string name(prefix);
    for (int digit = 0; digit < 16; ++digit) {
        name += Digits[(chance >> (4 * digit)) & 0xF];
    }
    return name;
}

// Makes names until it holds one. Between the making and the locking another process may take the name for a
// leftover and remove it; then the next name is tried.
template <typename Make, typename Remove>
HeldName MakeHeld(int folder, std::string_view prefix, Make make, Remove remove) {
    constexpr int MostTries = 100;
    HeldName held;
    for (int tries = 0; tries < MostTries; ++tries) {
        held.name = WithChance(prefix);
        held.handle = make(held.name.c_str());
        if (held.handle < 0) {
            held.code = errno;
            if (held.code == EEXIST || held.code == ENOENT) {
                continue;
            }
            return held;
        }
        const LockAttempt lock = TryLock(held.handle);
        if (lock == LockAttempt::Unknown ||
            (lock == LockAttempt::Taken && StandsFor(folder, held.name, held.handle))) {
            held.code = 0;
            return held;
        }
        remove(held.name.c_str());
        close(held.handle);
        held.handle = -1;
        held.code = EBUSY;
    }
    return held;
}

// Several machines may write there. Whether they see each other's locks depends on how the file system was
// mounted.
bool IsOfSeveralMachines(int handle) {
    constexpr std::int64_t Cifs = 0xFF534D42;
    constexpr std::int64_t Ceph = 0x00C36400;
    constexpr std::int64_t Lustre = 0x0BD00BD0;
    constexpr std::int64_t VirtualBox = 0x786F4256;
    constexpr std::array<std::int64_t, 10> Shared{NFS_SUPER_MAGIC,
                                                  SMB_SUPER_MAGIC,
                                                  SMB2_SUPER_MAGIC,
                                                  FUSE_SUPER_MAGIC,
                                                  V9FS_MAGIC,
                                                  AFS_SUPER_MAGIC,
                                                  Cifs,
                                                  Ceph,
                                                  Lustre,
                                                  VirtualBox};
    struct statfs facts {};
    return fstatfs(handle, &facts) != 0 ||
           std::find(Shared.begin(), Shared.end(), static_cast<std::int64_t>(facts.f_type)) != Shared.end();
}

// No process writes for a whole day without adding a byte.
bool IsOld(const struct stat& facts) {
    constexpr std::time_t Day = 86400;
    return std::time(nullptr) - facts.st_mtime > Day;
}

void RemoveIfLeft(int folder, const fs::path& path) {
    const std::string name = path.filename().string();
    struct stat facts {};
    if (fstatat(folder, name.c_str(), &facts, AT_SYMLINK_NOFOLLOW) != 0) {
        return;
    }
    const bool isFolder = S_ISDIR(facts.st_mode);
    if (isFolder ? facts.st_uid != geteuid() : !S_ISREG(facts.st_mode)) {
        return;
    }
    const int access = isFolder ? O_RDONLY | O_DIRECTORY : O_RDWR | O_NONBLOCK;
    const int handle = openat(folder, name.c_str(), access | O_CLOEXEC | O_NOFOLLOW);
    if (handle < 0) {
        return;
    }
    const bool isLeft = (!IsOfSeveralMachines(handle) || IsOld(facts)) &&
                        TryLock(handle) == LockAttempt::Taken && StandsFor(folder, name, handle);
    if (isLeft && isFolder) {
        std::error_code ignored;
        fs::remove_all(path, ignored);
    } else if (isLeft) {
        unlinkat(folder, name.c_str(), 0);
    }
    close(handle);
}

// Folders with many files are not read for every new file.
bool IsTimeToLook(const fs::path& folder, std::string_view prefix) {
    static std::mutex mutex;
    static std::map<std::string, SteadyClock::time_point> looked;
    const std::lock_guard guard(mutex);
    const auto now = SteadyClock::now();
    const auto [place, isNew] = looked.emplace(folder.string() + "/" + std::string(prefix), now);
    if (!isNew && now - place->second < std::chrono::hours(1)) {
        return false;
    }
    place->second = now;
    return true;
}

}  // namespace

HeldName MakeHeldFile(int folder, std::string_view prefix, mode_t mode) {
    return MakeHeld(
        folder, prefix,
        [&](const char* name) {
            return openat(folder, name, O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, mode);
        },
        [&](const char* name) { unlinkat(folder, name, 0); });
}

HeldName MakeHeldFolder(int folder, std::string_view prefix) {
    return MakeHeld(
        folder, prefix,
        [&](const char* name) {
            return mkdirat(folder, name, S_IRWXU) == 0
                       ? openat(folder, name, O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NOFOLLOW)
                       : -1;
        },
        [&](const char* name) { unlinkat(folder, name, AT_REMOVEDIR); });
}

void RemoveLeftovers(const fs::path& folder, std::string_view prefix) {
    const fs::path listed = folder.empty() ? fs::path(".") : folder;
    if (!IsTimeToLook(listed, prefix)) {
        return;
    }
    const int handle = open(listed.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle < 0) {
        return;
    }
    std::error_code failure;
    for (fs::directory_iterator entry(listed, failure), end; !failure && entry != end;
         entry.increment(failure)) {
        if (entry->path().filename().string().starts_with(prefix)) {
            RemoveIfLeft(handle, entry->path());
        }
    }
    close(handle);
}

bool WaitForLock(int handle, std::chrono::milliseconds longest) {
    constexpr std::chrono::milliseconds Turn(2);
    const auto deadline = SteadyClock::now() + longest;
    LockAttempt lock = TryLock(handle);
    while (lock == LockAttempt::Refused && SteadyClock::now() < deadline) {
        std::this_thread::sleep_for(Turn);
        lock = TryLock(handle);
    }
    return lock == LockAttempt::Taken;
}
