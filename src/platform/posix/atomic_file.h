// Files that appear whole or not at all, on machine paths.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

// A file under a temporary name in the folder of its target, readable by its owner only. Commit gives it the
// target's name once its bytes are on the disk; without Commit it goes away. A link is followed; a device or
// a pipe cannot appear whole and is written as the bytes come. What a killed process left in the folder goes
// with the next file that is made there. Errors are RuntimeError 76 (no such folder), 61 (disk full), 58 (it
// is there and must not be replaced), 75 (anything else), each with the target's path.
class AtomicFile {
 public:
    enum class IfThere { Replace, Fail };
    explicit AtomicFile(std::filesystem::path target, IfThere ifThere = IfThere::Replace);
    ~AtomicFile();
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;

    void Write(std::string_view bytes);
    void Commit();

 private:
    [[noreturn]] void Raise(int code) const;

    std::filesystem::path m_target;
    IfThere m_ifThere;
    std::string m_temporary;  // empty: the target itself is being written
    int m_file = -1;
};

// Copies a file to `target`. RuntimeError 53 or 75 when the source is missing or cannot be read, 75 when
// both are the same file, otherwise as AtomicFile.
void CopyFileWhole(const std::filesystem::path& source, const std::filesystem::path& target,
                   AtomicFile::IfThere ifThere = AtomicFile::IfThere::Replace);
