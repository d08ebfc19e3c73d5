// The texts of a workbook, each once, and the record chain that holds them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace rdl::writers {

class XlsStrings {
 public:
    // The index of a text; longer ones than a cell holds are cut.
    std::uint32_t Index(std::string_view text);
    // The record with what continues it.
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
