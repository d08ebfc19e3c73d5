// A folder for one mail's attachment.
#pragma once

#include <filesystem>

#include "platform/posix/atomic_file.h"

namespace reports {

// A HeldFolder with the prefix of exports. Raises as that does.
class PrivateFolder {
 public:
    PrivateFolder();
    const std::filesystem::path& Path() const { return m_folder.Path(); }

 private:
    HeldFolder m_folder;
};

}  // namespace reports
