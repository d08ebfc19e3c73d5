// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/contracts/files.h"

#include <system_error>

#include "platform/base/paths.h"
#include "platform/contracts/runtime.h"
#include "platform/posix/atomic_file.h"

namespace Scripting {

void File::Copy(const std::string& destination, Existing existing) const {
    CopyFileWhole(paths::ToMachine(m_path), paths::ToMachine(destination),
                  existing == Existing::Overwrite ? AtomicFile::IfThere::Replace : AtomicFile::IfThere::Fail);
}

bool FileSystemObject::FileExists(const std::string& path) const {
    try {
        std::error_code error;
        return std::filesystem::is_regular_file(paths::ToMachine(path), error);
    } catch (const RuntimeError&) {
        return false;  // an impossible path, such as one on another drive
    }
}

File FileSystemObject::GetFile(const std::string& path) const {
    if (!FileExists(path)) {
        throw RuntimeError(err::FileNotFound, RuntimeError(err::FileNotFound).Description() + ": \"" +
                                                  paths::ForUser(path) + "\"");
    }
    return File(path);
}

}  // namespace Scripting
