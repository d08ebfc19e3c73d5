// SPDX-License-Identifier: GPL-3.0-or-later
// The shared string table (MS-XLS, 2.4.265 SST) with its Continue records (2.4.58).
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace rdl::writers {

class XlsStrings {
 public:
    // Returns the index of a text, truncated to the limit of a cell.
    std::uint32_t Index(std::string_view text);
    // Returns the record with its Continue records.
    std::string Records() const;

 private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
    };
    std::unordered_map<std::string, std::uint32_t, Hash, std::equal_to<>> m_indexes;
    std::vector<const std::string*> m_texts;
    std::uint32_t m_uses = 0;
};

}  // namespace rdl::writers
