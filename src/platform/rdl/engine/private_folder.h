// A folder for one mail's attachment.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "platform/posix/atomic_file.h"

namespace rdl::engine {

// A HeldFolder with the prefix of exports. Raises as that does.
class PrivateFolder {
 public:
    PrivateFolder();
    const std::filesystem::path& Path() const { return m_folder.Path(); }

 private:
    HeldFolder m_folder;
};

// A title as the name of a file: separators, marks that other systems refuse and control characters become _,
// and its length is bounded. Never empty.
std::string SafeFileName(std::string_view title);

}  // namespace rdl::engine
