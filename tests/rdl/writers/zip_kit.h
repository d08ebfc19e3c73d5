// SPDX-License-Identifier: GPL-3.0-or-later
// Files inside a ZIP archive, for tests of the formats that are one.
#pragma once

#include <zlib.h>

#include <cstddef>
#include <string>

namespace rdl::writers::test {

inline std::size_t ZipNumber(const std::string& zip, std::size_t at, std::size_t length) {
    std::size_t number = 0;
    for (std::size_t i = length; i-- > 0;) {
        number = number << 8 | static_cast<unsigned char>(zip.at(at + i));
    }
    return number;
}

// Returns the file `name`, found by the archive's directory; an empty text if there is none.
inline std::string ZipPart(const std::string& zip, const std::string& name) {
    constexpr std::size_t HeaderSize = 46, LocalSize = 30;
    for (std::size_t at = zip.find("PK\x01\x02"); at != std::string::npos;
         at = zip.find("PK\x01\x02", at + 4)) {
        const std::size_t packed = ZipNumber(zip, at + 20, 4), size = ZipNumber(zip, at + 24, 4);
        const std::size_t local = ZipNumber(zip, at + 42, 4);
        if (zip.compare(at + HeaderSize, ZipNumber(zip, at + 28, 2), name) != 0) {
            continue;
        }
        const std::size_t begin =
            local + LocalSize + ZipNumber(zip, local + 26, 2) + ZipNumber(zip, local + 28, 2);
        if (ZipNumber(zip, at + 10, 2) == 0) {
            return zip.substr(begin, size);
        }
        std::string content(size, '\0');
        z_stream stream{};
        inflateInit2(&stream, -MAX_WBITS);
        stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(zip.data() + begin));
        stream.avail_in = static_cast<uInt>(packed);
        stream.next_out = reinterpret_cast<Bytef*>(content.data());
        stream.avail_out = static_cast<uInt>(size);
        inflate(&stream, Z_FINISH);
        inflateEnd(&stream);
        return content;
    }
    return {};
}

}  // namespace rdl::writers::test
