// SPDX-License-Identifier: GPL-3.0-or-later
// Shapefiles and their tables made by hand.
#pragma once

#include <string>
#include <vector>

#include "rdl/spatial/shape_kit.h"

namespace rdl::spatial::test {

inline std::string ShapeFile(const std::vector<std::string>& records) {
    std::string bytes = Big(9994) + std::string(96, '\0');
    std::uint32_t number = 0;
    for (const std::string& record : records) {
        bytes += Big(++number) + Big(static_cast<std::uint32_t>(record.size() / 2)) + record;
    }
    return bytes;
}

inline std::string Parts(std::uint32_t kind, const std::vector<std::uint32_t>& begins, std::uint32_t count,
                         const std::string& points) {
    std::string bytes = Little(kind) + std::string(32, '\0') +
                        Little(static_cast<std::uint32_t>(begins.size())) + Little(count);
    for (const std::uint32_t begin : begins) {
        bytes += Little(begin);
    }
    return bytes + points;
}

inline std::string Short(std::size_t number) {
    return Little(static_cast<std::uint32_t>(number)).substr(0, 2);
}

// A table of a text of 6 bytes and a number of 5.
inline std::string ShapeTable(const std::vector<std::string>& rows) {
    const auto column = [](std::string name, char type, char size) {
        name.resize(11, '\0');
        return name + type + std::string(4, '\0') + size + std::string(15, '\0');
    };
    std::string bytes = "\x03\x20\x01\x01" + Little(static_cast<std::uint32_t>(rows.size())) + Short(97) +
                        Short(12) + std::string(20, '\0') + column("NAME", 'C', 6) + column("COUNT", 'N', 5) +
                        "\r";
    for (const std::string& row : rows) {
        bytes += " " + row;
    }
    return bytes + "\x1A";
}

}  // namespace rdl::spatial::test
