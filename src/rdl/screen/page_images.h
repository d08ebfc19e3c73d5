// The images of the pages that are put by: the bytes of each once, out of memory.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "rdl/writers/common/spool.h"

namespace rdl::screen {

class PageImages {
 public:
    // The number by which At gives the same bytes.
    std::uint32_t Put(const std::shared_ptr<const std::string>& bytes);
    // The same pointer as long as anybody holds it.
    std::shared_ptr<const std::string> At(std::uint32_t number);

 private:
    struct Kept {
        std::weak_ptr<const std::string> bytes;
        std::size_t begin, size;
    };
    writers::Spool m_spool;
    std::vector<Kept> m_kept;
    std::map<const std::string*, std::uint32_t> m_byAddress;
};

}  // namespace rdl::screen
