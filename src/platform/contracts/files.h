// SPDX-License-Identifier: GPL-3.0-or-later
// The file operations that the system needs. Paths are those of the system (platform/base/paths.h).
#pragma once

#include <string>
#include <utility>

namespace Scripting {

// An existing file.
class File {
 public:
    explicit File(std::string path) : m_path(std::move(path)) {}
    enum class Existing { Overwrite, Keep };
    // Copies the file to a full path. The copy appears complete or not at all. Raises 58 "File already
    // exists" if it is there and is to be kept, 76 if the folder is missing, 75 if it cannot be written, 61
    // "Disk full".
    void Copy(const std::string& destination, Existing existing = Existing::Overwrite) const;

 private:
    std::string m_path;
};

class FileSystemObject {
 public:
    bool FileExists(const std::string& path) const;
    // Raises 53 "File not found".
    File GetFile(const std::string& path) const;
};

}  // namespace Scripting
