// Images that stand in files beside the report or in the other folders of its run.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace rdl::engine {

// Reads each image once, unless there are very many. Only regular files are read, of a bounded size; nothing
// is fetched from a network.
class ImageFiles {
 public:
    explicit ImageFiles(std::vector<std::string> folders) : m_folders(std::move(folders)) {}
    // The bytes by a path or file URI; null with the reason in `why`.
    std::shared_ptr<const std::string> Load(const std::string& source, std::string& why);

 private:
    // Empty: there is none.
    std::filesystem::path Find(const std::string& name) const;

    std::vector<std::string> m_folders;
    std::map<std::string, std::shared_ptr<const std::string>> m_loaded;
    std::uintmax_t m_size = 0;  // of those
};

}  // namespace rdl::engine
