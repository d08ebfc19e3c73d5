// SPDX-License-Identifier: GPL-3.0-or-later
// The numbers in the file of a picture, which may end anywhere.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace rdl::image {

// Beyond the end of the file every byte is 0. The file must outlive the object.
class Bytes {
 public:
    explicit Bytes(std::string_view bytes) : m_bytes(bytes) {}
    std::size_t size() const { return m_bytes.size(); }
    std::uint32_t At(std::size_t at) const {
        return at < m_bytes.size() ? static_cast<unsigned char>(m_bytes[at]) : 0;
    }
    std::uint32_t Little16(std::size_t at) const { return At(at) | At(at + 1) << 8; }
    std::uint32_t Little32(std::size_t at) const { return Little16(at) | Little16(at + 2) << 16; }
    std::uint32_t Big16(std::size_t at) const { return At(at) << 8 | At(at + 1); }
    std::uint32_t Big32(std::size_t at) const { return Big16(at) << 16 | Big16(at + 2); }

 private:
    std::string_view m_bytes;
};

}  // namespace rdl::image
