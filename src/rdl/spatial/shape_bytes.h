// SPDX-License-Identifier: GPL-3.0-or-later
// Numbers in binary files, in either order of bytes.
#pragma once

#include <bit>
#include <cstdint>
#include <string_view>

#include "rdl/values/bytes.h"
#include "rdl/values/error.h"

namespace rdl::spatial {

// Every function raises rdl::Error if the bytes end before what it reads.
class Bytes {
 public:
    explicit Bytes(std::string_view bytes) : m_bytes(bytes) {}

    std::size_t Left() const { return m_bytes.size(); }
    std::string_view Take(std::size_t count) {
        if (count > m_bytes.size()) {
            throw Error("it ends in the middle of a value");
        }
        const std::string_view taken = m_bytes.substr(0, count);
        m_bytes.remove_prefix(count);
        return taken;
    }
    unsigned char Byte() { return static_cast<unsigned char>(Take(1).front()); }
    std::uint32_t Number(std::endian order = std::endian::little) {
        return static_cast<std::uint32_t>(NumberOfBytes(Take(4), order));
    }
    double Real(std::endian order = std::endian::little) {
        return std::bit_cast<double>(NumberOfBytes(Take(8), order));
    }
    // Reads a count of parts of at least `size` bytes. Raises rdl::Error if the bytes cannot hold so many.
    std::size_t Count(std::size_t size, std::endian order = std::endian::little) {
        const std::size_t count = Number(order);
        if (count > Left() / size) {
            throw Error("it has room for less than the " + std::to_string(count) +
                        " parts that it announces");
        }
        return count;
    }

 private:
    std::string_view m_bytes;
};

}  // namespace rdl::spatial
