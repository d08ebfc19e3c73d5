// SPDX-License-Identifier: GPL-3.0-or-later
// Where an item is in its container, in points: sizes may be negative.
#pragma once

#include <algorithm>

#include "rdl/layout/model/instance.h"

namespace rdl::writers {

inline constexpr double Near = 1.0;  // points: edges so close to each other are one

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

// Whether its background has a colour.
inline bool IsFilled(const layout::Instance& item) {
    return item.box && item.box->background >> 24;
}

inline bool IsText(const layout::Instance& item) {
    return item.kind == layout::InstanceKind::Text;
}

}  // namespace rdl::writers
