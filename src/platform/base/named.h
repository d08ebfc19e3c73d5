// SPDX-License-Identifier: GPL-3.0-or-later
// Tables whose rows have a member `name`. The report engine has its own form in rdl/values/named.h, which
// tells upper from lower case.
#pragma once

#include <cstddef>
#include <iterator>

#include "platform/base/ascii.h"

// Whether no two rows have the same name, without regard to case. Stands in a static_assert below a table: of
// two rows with one name only the first would ever be found.
template <typename Rows>
constexpr bool NamesDiffer(const Rows& rows) {
    for (std::size_t at = 0; at < std::size(rows); ++at) {
        for (std::size_t later = at + 1; later < std::size(rows); ++later) {
            if (SameAscii(rows[at].name, rows[later].name)) {
                return false;
            }
        }
    }
    return true;
}
