// SPDX-License-Identifier: GPL-3.0-or-later
// Copies of report files in the cache that are put back if the command fails: another schedule may run the
// former copy.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace tools {

// Used by one program at a time: only inside a transaction that writes.
class CacheChange {
 public:
    CacheChange() = default;
    ~CacheChange() { PutBack(); }
    CacheChange(const CacheChange&) = delete;
    CacheChange& operator=(const CacheChange&) = delete;

    // Copies the report file, a path of the system, as Global::CopyToCache does, and returns the path of the
    // copy. The same file is copied once. Errors pass to the caller.
    std::string Copy(const std::string& original);
    // The new copies stay.
    void Keep();
    // The former copies are there again, and a copy that had no former one is gone.
    void PutBack() noexcept;

 private:
    struct Former {
        std::filesystem::path copy, aside;
        bool isThere = false;
    };
    std::vector<Former> m_former;
    std::map<std::string, std::string> m_originals;  // of each copy
};

}  // namespace tools
