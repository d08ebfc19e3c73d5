#include "platform/regfile/file_lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <thread>

#include "platform/runtime.h"

FileLock::FileLock(const std::filesystem::path& path)
    : m_file(open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR)) {
    using namespace std::chrono_literals;
    const auto deadline = std::chrono::steady_clock::now() + 10s;
    bool locked = false;
    while (m_file >= 0 && !locked) {
        locked = flock(m_file, LOCK_EX | LOCK_NB) == 0;
        const bool mayWait = !locked && (errno == EWOULDBLOCK || errno == EINTR);
        if (!locked && (!mayWait || std::chrono::steady_clock::now() >= deadline)) {
            close(m_file);
            m_file = -1;
        } else if (!locked) {
            std::this_thread::sleep_for(2ms);
        }
    }
    if (m_file < 0) {
        throw RuntimeError(err::PathFileAccess, "The lock file \"" + path.string() + "\" cannot be had");
    }
}

FileLock::~FileLock() {
    close(m_file);
}
