// SPDX-License-Identifier: GPL-3.0-or-later
// Tables whose rows have a member `name`, or are pairs of a name and a value.
#pragma once

#include <cstddef>
#include <iterator>
#include <string_view>

namespace rdl {

template <typename Row>
constexpr std::string_view NameOf(const Row& row) {
    if constexpr (requires { row.name; }) {
        return row.name;
    } else {
        return row.first;
    }
}

// Whether no two rows have the same name. Stands in a static_assert below a table: of two rows with one name
// only the first would ever be found.
template <typename Rows>
constexpr bool NamesDiffer(const Rows& rows) {
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        for (std::size_t j = i + 1; j < std::size(rows); ++j) {
            if (NameOf(rows[i]) == NameOf(rows[j])) {
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
