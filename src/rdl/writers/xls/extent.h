// SPDX-License-Identifier: GPL-3.0-or-later
// What decides where an item of a sheet goes.
#pragma once

#include "rdl/layout/model/instance.h"
#include "rdl/writers/common/extent.h"

namespace rdl::writers {

inline constexpr double Near = 1.0;  // points: edges so close to each other are one

// Whether its background has a colour.
inline bool IsFilled(const layout::Instance& item) {
    return item.box && layout::IsVisible(item.box->background);
}

inline bool IsText(const layout::Instance& item) {
    return item.kind == layout::InstanceKind::Text;
}

}  // namespace rdl::writers
