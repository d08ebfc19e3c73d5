// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/regfile/file_lock.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>

#include "platform/contracts/runtime.h"
#include "platform/posix/held_name.h"

FileLock::FileLock(const std::filesystem::path& path)
    : m_file(open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR)) {
    if (m_file >= 0 && !WaitForLock(m_file, std::chrono::seconds(10))) {
        close(m_file);
        m_file = -1;
    }
    if (m_file < 0) {
        throw RuntimeError(err::PathFileAccess, "The lock file \"" + path.string() + "\" cannot be had");
    }
}

FileLock::~FileLock() {
    close(m_file);
}
