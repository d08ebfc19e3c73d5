// A folder for one mail's attachment.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace rdl::engine {

// Made with mode 0700 under the machine's folder for temporary files and removed with everything in it. Those
// of processes that died before they could do so are removed when a new one is made. Raises RuntimeError 75.
class PrivateFolder {
 public:
    PrivateFolder();
    ~PrivateFolder();
    PrivateFolder(const PrivateFolder&) = delete;
    PrivateFolder& operator=(const PrivateFolder&) = delete;
    const std::filesystem::path& Path() const { return m_path; }

 private:
    std::filesystem::path m_path;
};

// A title as the name of a file: separators, marks that other systems refuse and control characters become _,
// and its length is bounded. Never empty.
std::string SafeFileName(std::string_view title);

}  // namespace rdl::engine
