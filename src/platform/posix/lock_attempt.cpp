// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/posix/lock_attempt.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <cerrno>

LockAttempt TryLock(int handle) {
    int result = 0;
    do {
        result = flock(handle, LOCK_EX | LOCK_NB);
    } while (result != 0 && errno == EINTR);
    if (result == 0) {
        return LockAttempt::Taken;
    }
    return errno == EWOULDBLOCK ? LockAttempt::Refused : LockAttempt::Unknown;
}

bool StandsFor(int folder, const std::string& name, int handle) {
    struct stat named {};
    struct stat opened {};
    return fstatat(folder, name.c_str(), &named, AT_SYMLINK_NOFOLLOW) == 0 && fstat(handle, &opened) == 0 &&
           named.st_dev == opened.st_dev && named.st_ino == opened.st_ino;
}
