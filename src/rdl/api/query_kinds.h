// SPDX-License-Identifier: GPL-3.0-or-later
// What the text of a query is, and how long it may take (MS-RDL, CommandType and Timeout).
#pragma once

#include <algorithm>
#include <iterator>
#include <string_view>

#include "rdl/values/ascii.h"
#include "rdl/values/named.h"

namespace rdl {

enum class QueryKind { Text, StoredProcedure, Table };

struct QueryKindRow {
    std::string_view name;  // as in a report
    QueryKind kind;
};

inline constexpr QueryKindRow QueryKinds[] = {
    {"Text", QueryKind::Text},
    {"StoredProcedure", QueryKind::StoredProcedure},
    {"TableDirect", QueryKind::Table},
};
static_assert(NamesDiffer(QueryKinds));

// Returns the kind of the word, without regard to case; null if there is none.
inline const QueryKindRow* FindQueryKind(std::string_view word) {
    const auto* const found =
        std::find_if(std::begin(QueryKinds), std::end(QueryKinds),
                     [word](const QueryKindRow& row) { return EqualNoCase(row.name, word); });
    return found == std::end(QueryKinds) ? nullptr : found;
}

// Of a time limit.
inline constexpr int MostQuerySeconds = 1'000'000;

}  // namespace rdl
