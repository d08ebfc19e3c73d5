// SPDX-License-Identifier: GPL-3.0-or-later
// Rows that stand in a report: values by the name of a data field. They are in memory while they are few,
// then in a temporary file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "rdl/spool/spool.h"

namespace rdl {

// How many bytes of rows are in memory.
inline constexpr std::size_t RowsMemory = std::size_t{1} << 20;

// Not copyable: readers refer to it.
class InlineRows {
 public:
    // Names and their values; a field that is Null is missing.
    using Row = std::vector<std::pair<std::string_view, std::string_view>>;

    // Raises the errors of Spool.
    void Add(const Row& row);
    std::size_t Count() const { return m_count; }
    // Every name that a row has, once.
    const std::vector<std::string>& Names() const { return m_names; }

    // Reads the rows in order. They must outlive it.
    class Reader {
     public:
        // Indexes of names and values, which are valid until the next call of Next.
        using Cells = std::vector<std::pair<std::size_t, std::string_view>>;

        explicit Reader(InlineRows& rows) : m_bytes(rows.m_spool) {}
        // Moves to the next row; false after the last one.
        bool Next();
        const Cells& Row() const { return m_cells; }

     private:
        SpoolReader m_bytes;
        Cells m_cells;
    };

 private:
    std::uint32_t IndexOf(std::string_view name);

    std::vector<std::string> m_names;
    std::unordered_map<std::string, std::uint32_t> m_indexes;
    std::string m_record;
    std::size_t m_count = 0;
    Spool m_spool{RowsMemory};  // of each row its length, then index, length and bytes of each value
};

}  // namespace rdl
