// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>

namespace rdl {

// An index that is not negative, as containers want it.
constexpr std::size_t At(int index) {
    return static_cast<std::size_t>(index);
}

}  // namespace rdl
