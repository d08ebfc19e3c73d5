// SPDX-License-Identifier: GPL-3.0-or-later
// Tables whose rows have a member `name`.
#pragma once

#include <cstddef>
#include <string_view>

namespace rdl {

// Whether no two rows have the same name. Stands in a static_assert below a table: of two rows with one name
// only the first would ever be found.
template <typename Row, std::size_t Count>
constexpr bool NamesDiffer(const Row (&rows)[Count]) {
    for (std::size_t i = 0; i < Count; ++i) {
        for (std::size_t j = i + 1; j < Count; ++j) {
            if (rows[i].name == rows[j].name) {
                return false;
            }
        }
    }
    return true;
}

// Returns the row with the name; null if there is none.
template <typename Row, std::size_t Count>
constexpr const Row* FindNamed(const Row (&rows)[Count], std::string_view name) {
    for (const Row& row : rows) {
        if (row.name == name) {
            return &row;
        }
    }
    return nullptr;
}

}  // namespace rdl
