// Files that appear whole or not at all, and temporary ones. Paths are the machine's.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

// A file under a temporary name in the folder of its target. Commit gives it the target's name once its bytes
// are on the disk; without Commit it goes away. A link is followed; a device or a pipe cannot appear whole
// and is written as the bytes come. What a killed process left in the folder goes with the next file that is
// made there (held_name.h).
//
// A file that is replaced hands its owner, group and mode over, as far as that is permitted. A new one is for
// its owner only, or, for Readers::Mask, has the mode that the user's file mask gives. A file for its owner
// that takes the place of one that everybody could read is readable by its owner only all the same.
//
// Errors are RuntimeError 76 (no such folder), 61 (disk full), 58 (it is there and must not be replaced), 67
// (too many open files), 7 (no memory), 75 (anything else), each with the target's path.
class AtomicFile {
 public:
    enum class IfThere { Replace, Fail };
    enum class Readers { Owner, Mask };
    explicit AtomicFile(std::filesystem::path target, IfThere ifThere = IfThere::Replace,
                        Readers readers = Readers::Owner);
    ~AtomicFile();
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;

    void Write(std::string_view bytes);
    void Commit();

 private:
    [[noreturn]] void Raise(int code) const;
    void MakeTemporary();
    int GiveName() const;

    std::filesystem::path m_target;
    IfThere m_ifThere;
    Readers m_readers;
    std::string m_temporary;  // its name in the folder; empty: the target itself is being written
    int m_folder = -1;
    int m_file = -1;
};

// Copies a file to `target`. RuntimeError 53 or 75 when the source is missing or cannot be read, 75 when
// both are the same file, otherwise as AtomicFile.
void CopyFileWhole(const std::filesystem::path& source, const std::filesystem::path& target,
                   AtomicFile::IfThere ifThere = AtomicFile::IfThere::Replace);

// TMPDIR where it is the whole path of a folder that can be written, else /tmp; never the working folder.
// Raises RuntimeError 75, with both names, when that cannot be written either.
std::filesystem::path TemporaryPlace();

// A file without a name in TemporaryPlace, for reading and writing, gone when the handle is closed: that is
// the caller's. Raises RuntimeError 61, 67, 7 or 75 with the folder.
int OpenTemporaryFile();

// A folder in TemporaryPlace, for its owner only, removed with everything in it. What killed processes left
// under the same prefix goes when one is made. Raises as OpenTemporaryFile.
class HeldFolder {
 public:
    explicit HeldFolder(std::string_view prefix);
    ~HeldFolder();
    HeldFolder(const HeldFolder&) = delete;
    HeldFolder& operator=(const HeldFolder&) = delete;
    const std::filesystem::path& Path() const { return m_path; }

 private:
    std::filesystem::path m_path;
    int m_handle = -1;
};
