// Images that stand in files beside the report.
#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <string>

namespace rdl::engine {

// Reads each image once. Only regular files are read, of a bounded size; nothing is fetched from a network.
class ImageFiles {
 public:
    explicit ImageFiles(std::filesystem::path folder) : m_folder(std::move(folder)) {}
    // The bytes by a path or file URI; null with the reason in `why`.
    std::shared_ptr<const std::string> Load(const std::string& source, std::string& why);

 private:
    std::filesystem::path m_folder;
    std::map<std::string, std::shared_ptr<const std::string>> m_loaded;
};

}  // namespace rdl::engine
