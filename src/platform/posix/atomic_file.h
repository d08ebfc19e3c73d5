// SPDX-License-Identifier: GPL-3.0-or-later
// Files that appear complete or not at all, and temporary files. Paths are those of the machine.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "platform/posix/unique_fd.h"

// A file with a temporary name in the folder of its target. Commit renames it to the target once its bytes
// are on the disk (see Lasting). Without Commit the destructor deletes it. A link is followed. A device or a
// pipe cannot appear at once and is written directly. The leftovers of a killed process are deleted when the
// next file is made in the folder (held_name.h).
//
// A replaced file passes on its owner, group and mode, as far as permitted. A new file is for its owner only;
// with Readers::Mask it has the mode that the user's file mask gives. A file for its owner that replaces one
// that everybody could read is still readable by its owner only.
//
// Errors are RuntimeError 76 (folder missing), 61 (disk full), 58 (the target exists and must not be
// replaced), 67 (too many open files), 7 (out of memory), 75 (anything else), each with the target's path.
class AtomicFile {
 public:
    enum class IfThere { Replace, Fail };
    enum class Readers { Owner, Mask };
    // Brief: the file is needed by this process only, and nobody waits for the disk.
    enum class Lasting { OnDisk, Brief };
    explicit AtomicFile(std::filesystem::path target, IfThere ifThere = IfThere::Replace,
                        Readers readers = Readers::Owner, Lasting lasting = Lasting::OnDisk);
    // Writes to an open file, which it closes. Another process gives it its name: Commit only closes it.
    // `target` is the name that errors have.
    AtomicFile(std::filesystem::path target, UniqueFd file);
    ~AtomicFile();
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;

    void Write(std::string_view bytes);
    void Commit();
    // Returns the descriptor of the unfinished file, for another process that writes it. The object keeps it.
    int Handle() const { return m_file; }

 private:
    [[noreturn]] void Raise(int code) const;
    void MakeTemporary();
    int GiveName() const;

    std::filesystem::path m_target;
    IfThere m_ifThere;
    Readers m_readers;
    Lasting m_lasting;
    std::string m_temporary;  // name in the folder; empty: the target is written directly
    int m_folder = -1;
    int m_file = -1;
};

// Copies a file to `target`. Raises RuntimeError 53 if the source is missing, 75 if it cannot be read or if
// both are the same file, and otherwise as AtomicFile.
void CopyFileWhole(const std::filesystem::path& source, const std::filesystem::path& target,
                   AtomicFile::IfThere ifThere = AtomicFile::IfThere::Replace);

// Returns TMPDIR if it is the absolute path of a folder that can be written, else /tmp; never the current
// folder. Raises RuntimeError 75 with both names if /tmp cannot be written either.
std::filesystem::path TemporaryPlace();

// Returns the handle of an open file without a name in TemporaryPlace, for reading and writing. The caller
// closes it; then the file is gone. Raises RuntimeError 61, 67, 7 or 75 with the folder's name.
int OpenTemporaryFile();

// A folder in TemporaryPlace, for its owner only. The destructor removes it with its contents. The
// constructor removes what killed processes left under the same prefix. Raises as OpenTemporaryFile.
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
