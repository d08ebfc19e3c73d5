// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace rdl {

// Makes room for `count` more entries. One call for many entries takes what they need and no more; many calls
// for a few each double the room, so that they take linear time.
template <typename Entry>
void ReserveMore(std::vector<Entry>& entries, std::size_t count) {
    const std::size_t wanted = entries.size() + count;
    if (wanted > entries.capacity()) {
        entries.reserve(std::max(wanted, 2 * entries.capacity()));
    }
}

}  // namespace rdl
