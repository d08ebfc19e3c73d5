// SPDX-License-Identifier: GPL-3.0-or-later
// What the collections of the controls share: they count from 1, and a key is unique in its collection.
#pragma once

#include <cstddef>

#include "platform/contracts/runtime.h"

// Returns the index from 0 of member `index` (from 1) of `count`. Raises 35600 if there is no such member.
inline std::size_t PlaceOf(int index, std::size_t count) {
    constexpr std::int32_t IndexOutOfBounds = 35600;
    if (index < 1 || static_cast<std::size_t>(index) > count) {
        throw RuntimeError(IndexOutOfBounds, "Index out of bounds");
    }
    return static_cast<std::size_t>(index - 1);
}
