// The file operations that the system asks for. Paths are the system's (platform/paths.h).
#pragma once

#include <string>
#include <utility>

namespace Scripting {

// A file that exists.
class File {
 public:
    explicit File(std::string path) : m_path(std::move(path)) {}
    // Copies to the full path. The copy appears whole or not at all. Raises 58 "File already exists" when it
    // must not overwrite, 76 when the folder is missing, 75 when it cannot be written, 61 "Disk full".
    void Copy(const std::string& destination, bool overWriteFiles = true) const;

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
