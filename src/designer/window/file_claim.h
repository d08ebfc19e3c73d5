// SPDX-License-Identifier: GPL-3.0-or-later
// Which report files are open in windows of the designer. A window claims the file that it saves to; windows
// of one process share a claim, those of other processes of this user find it taken. The claim is a lock that
// ends with its process, however that ends.
#pragma once

#include <filesystem>
#include <memory>

namespace designer {

class FileClaim {
 public:
    // Claims the file in place of the one before, which is released. Returns false, and claims nothing, if a
    // window of another process has it. Where nothing can be locked every file is free.
    bool Take(const std::filesystem::path& file);
    void Release() { m_lock.reset(); }

    // Whether any window, of this process or another one, has claimed the file.
    static bool IsTaken(const std::filesystem::path& file);

 private:
    struct Lock;
    static std::shared_ptr<Lock> Find(const std::filesystem::path& name);

    std::shared_ptr<Lock> m_lock;
};

}  // namespace designer
