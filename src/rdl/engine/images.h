// SPDX-License-Identifier: GPL-3.0-or-later
// Loads image files next to the report or in the other folders of its run.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace rdl::engine {

// Caches images up to a total size. Reads only regular files of bounded size, never from a network.
class ImageFiles {
 public:
    explicit ImageFiles(std::vector<std::string> folders) : m_folders(std::move(folders)) {}
    // Returns the bytes of a path or file URI; null with the reason in `why` on failure.
    std::shared_ptr<const std::string> Load(const std::string& source, std::string& why);

 private:
    // Returns the file's path; empty if there is none.
    std::filesystem::path Find(const std::string& name) const;

    std::vector<std::string> m_folders;
    std::map<std::string, std::shared_ptr<const std::string>> m_loaded;
    std::uintmax_t m_size = 0;  // total size of m_loaded
};

}  // namespace rdl::engine
