// SPDX-License-Identifier: GPL-3.0-or-later
// Images of stored pages: the bytes of each once, outside of memory.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "rdl/spool/spool.h"

namespace rdl::screen {

class PageImages {
 public:
    // Stores the bytes and returns their number for At.
    std::uint32_t Put(const std::shared_ptr<const std::string>& bytes);
    // Returns the bytes; the same pointer while somebody holds it.
    std::shared_ptr<const std::string> At(std::uint32_t number);

 private:
    struct Kept {
        std::weak_ptr<const std::string> bytes;
        std::size_t begin, size;
    };
    Spool m_spool;
    std::vector<Kept> m_kept;
    std::map<const std::string*, std::uint32_t> m_byAddress;
};

}  // namespace rdl::screen
