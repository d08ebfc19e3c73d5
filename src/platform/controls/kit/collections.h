// What the collections of the controls have in common: they count from 1, and keys are theirs alone.
#pragma once

#include <cstddef>

#include "platform/contracts/runtime.h"

// The place of member `index` of `count`, from 0. 35600 when there is none of that number.
inline std::size_t PlaceOf(int index, std::size_t count) {
    constexpr std::int32_t IndexOutOfBounds = 35600;
    if (index < 1 || static_cast<std::size_t>(index) > count) {
        throw RuntimeError(IndexOutOfBounds, "Index out of bounds");
    }
    return static_cast<std::size_t>(index - 1);
}
