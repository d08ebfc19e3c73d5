// A lock between processes.
#pragma once

#include <filesystem>

// Holds the lock file while it lives; the file is made for its owner only and stays. RuntimeError 75 when it
// cannot be made or another process does not give it back for 10 seconds.
class FileLock {
 public:
    explicit FileLock(const std::filesystem::path& path);
    ~FileLock();
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

 private:
    int m_file;
};
