// SPDX-License-Identifier: GPL-3.0-or-later
// The rows of a data set in memory.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "rdl/values/value.h"

namespace rdl {

struct Table {
    std::vector<std::string> fieldNames;  // query fields, then calculated ones
    std::vector<bool> missing;            // true for fields that the query did not return
    std::vector<Value> cells;             // row after row
    bool caseSensitive = false;           // filters are case-sensitive
    std::size_t RowCount() const { return fieldNames.empty() ? 0 : cells.size() / fieldNames.size(); }
    const Value& At(std::size_t row, std::size_t field) const {
        return cells[row * fieldNames.size() + field];
    }
};

}  // namespace rdl
