// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/posix/running_mark.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include "platform/posix/lock_attempt.h"

namespace {

// Open for writing: a network file system gives no exclusive lock without.
UniqueFd OpenMark(const std::filesystem::path& folder, int flags) {
    const std::filesystem::path file = folder / "PressroomLive.running";
    return UniqueFd(open(file.c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW | flags, S_IRUSR | S_IWUSR));
}

}  // namespace

void MarkRunning(const std::filesystem::path& folder) {
    UniqueFd file = OpenMark(folder, O_CREAT);
    if (file.Get() >= 0) {
        flock(file.Get(), LOCK_SH);
        file.Release();  // open as long as the process
    }
}

SchedulersKeptOut::SchedulersKeptOut(const std::filesystem::path& folder) : m_file(OpenMark(folder, 0)) {
    m_isRunning = m_file.Get() >= 0 && TryLock(m_file.Get()) == LockAttempt::Refused;
}
