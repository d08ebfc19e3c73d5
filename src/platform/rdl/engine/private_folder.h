// A folder for one mail's attachment.
#pragma once

#include <filesystem>

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

}  // namespace rdl::engine
