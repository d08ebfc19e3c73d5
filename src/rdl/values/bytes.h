// SPDX-License-Identifier: GPL-3.0-or-later
// Numbers in binary files.
#pragma once

#include <bit>
#include <cstdint>
#include <string_view>

namespace rdl {

// Returns the number without a sign that at most eight bytes make in this order.
inline std::uint64_t NumberOfBytes(std::string_view bytes, std::endian order) {
    std::uint64_t number = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const char byte = order == std::endian::little ? bytes[bytes.size() - 1 - i] : bytes[i];
        number = number << 8 | static_cast<unsigned char>(byte);
    }
    return number;
}

}  // namespace rdl
