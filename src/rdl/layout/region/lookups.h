// SPDX-License-Identifier: GPL-3.0-or-later
// Lookup, LookupSet and MultiLookup: an index of a data set's rows, built on first use.
#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "rdl/data/common/table.h"
#include "rdl/expr/language/expression.h"
#include "rdl/expr/operations/compare.h"

namespace rdl::layout {

class Lookups {
 public:
    // Returns the rows with an equal key, in the data set's order. `keyOf` returns the key of a row.
    template <typename KeyOf>
    const std::vector<std::uint32_t>& Find(int call, std::size_t rowCount, const Value& key, KeyOf keyOf) {
        Index& index = m_indexes[call];
        if (!index.made) {
            index.made = true;
            for (std::size_t row = 0; row < rowCount; ++row) {
                index.rows[keyOf(row)].push_back(static_cast<std::uint32_t>(row));
            }
        }
        const auto found = index.rows.find(key);
        return found == index.rows.end() ? m_none : found->second;
    }

 private:
    struct HashValue {
        std::size_t operator()(const Value& value) const { return expr::Hash(value); }
    };
    struct SameValue {
        bool operator()(const Value& left, const Value& right) const {
            return expr::Compare(left, right) == 0;
        }
    };
    struct Index {
        bool made = false;
        std::unordered_map<Value, std::vector<std::uint32_t>, HashValue, SameValue> rows;
    };
    std::unordered_map<int, Index> m_indexes;
    std::vector<std::uint32_t> m_none;  // the empty result
};

}  // namespace rdl::layout
