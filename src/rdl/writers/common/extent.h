// SPDX-License-Identifier: GPL-3.0-or-later
// Where an item is in its container, in points: sizes may be negative.
#pragma once

#include <algorithm>

#include "rdl/layout/model/instance.h"

namespace rdl::writers {

inline double Top(const layout::Instance& item) {
    return std::min(item.y, item.y + item.height);
}
inline double Bottom(const layout::Instance& item) {
    return std::max(item.y, item.y + item.height);
}
inline double Left(const layout::Instance& item) {
    return std::min(item.x, item.x + item.width);
}
inline double Right(const layout::Instance& item) {
    return std::max(item.x, item.x + item.width);
}

}  // namespace rdl::writers
