// SPDX-License-Identifier: GPL-3.0-or-later
// A data file that this process can read and cannot write: another user's, or one on a read-only file system.
#pragma once

#include <sys/stat.h>

#include <filesystem>
#include <string>

// Returns true if SQLite could not write the file, or could not make the logs that it needs beside it.
// Symbolic links in `file` are resolved.
bool IsWriteProtected(const std::filesystem::path& file);

// How such a file is opened: the name for sqlite3_open_v2 with SQLITE_OPEN_URI. Neither makes a file.
enum class ReadOnlyUse {
    Shared,    // with the logs and locks of the programs that write it
    AsItLies,  // as if nobody wrote it: without logs and locks. WAL mode needs this where no log lies there
};
std::string ReadOnlyName(const std::filesystem::path& file, ReadOnlyUse use);

// Returns the path of a log with rows in it that lies beside the file, or an empty path. A program is writing
// the file or has ended in the middle of its work: the file alone is then not whole.
std::filesystem::path LogWithRows(const std::filesystem::path& file);

// What changes when a file is written.
class FileStamp {
 public:
    explicit FileStamp(const std::filesystem::path& file);
    bool operator==(const FileStamp& other) const;

 private:
    struct stat m_status {};
};
