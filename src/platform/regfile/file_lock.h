// SPDX-License-Identifier: GPL-3.0-or-later
// A lock between processes.
#pragma once

#include <filesystem>

// Holds the lock file while it lives. The file is made for its owner only and is not deleted. Raises
// RuntimeError 75 if the file cannot be made or another process holds the lock for 10 seconds.
class FileLock {
 public:
    explicit FileLock(const std::filesystem::path& path);
    ~FileLock();
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

 private:
    int m_file;
};
