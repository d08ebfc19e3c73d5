// A temporary folder for the attachment of one mail.
#pragma once

#include <filesystem>

#include "platform/posix/atomic_file.h"

namespace reports {

// A HeldFolder with the prefix of exports. Raises as HeldFolder.
class PrivateFolder {
 public:
    PrivateFolder();
    const std::filesystem::path& Path() const { return m_folder.Path(); }

 private:
    HeldFolder m_folder;
};

}  // namespace reports
