// SPDX-License-Identifier: GPL-3.0-or-later
// Numbers in binary files, in either order of bytes.
#pragma once

#include <bit>
#include <cstdint>
#include <string_view>

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
    std::uint32_t Number(bool littleEndian = true) {
        return static_cast<std::uint32_t>(Assemble(Take(4), littleEndian));
    }
    double Real(bool littleEndian = true) { return std::bit_cast<double>(Assemble(Take(8), littleEndian)); }
    // Reads a count of parts of at least `size` bytes. Raises rdl::Error if the bytes cannot hold so many.
    std::size_t Count(std::size_t size, bool littleEndian = true) {
        const std::size_t count = Number(littleEndian);
        if (count > Left() / size) {
            throw Error("it has room for less than the " + std::to_string(count) +
                        " parts that it announces");
        }
        return count;
    }

 private:
    static std::uint64_t Assemble(std::string_view bytes, bool littleEndian) {
        std::uint64_t number = 0;
        for (std::size_t i = 0; i < bytes.size(); ++i) {
            const char byte = littleEndian ? bytes[bytes.size() - 1 - i] : bytes[i];
            number = number << 8 | static_cast<unsigned char>(byte);
        }
        return number;
    }

    std::string_view m_bytes;
};

}  // namespace rdl::spatial
