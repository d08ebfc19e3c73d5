// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/xls/border_code.h"

namespace rdl::writers {

using layout::LineStyle;

unsigned BorderCode(const layout::Border& border) {
    const bool wide = border.width >= 1.5F;
    switch (border.style) {
        case LineStyle::None:
            return 0;
        case LineStyle::Dotted:
            return 4;
        case LineStyle::Dashed:
            return wide ? 8 : 3;
        case LineStyle::Double:
            return 6;
        case LineStyle::DashDot:
            return wide ? 10 : 9;
        case LineStyle::DashDotDot:
            return wide ? 12 : 11;
        default:
            break;
    }
    return border.width >= 2.5F ? 5 : wide ? 2 : border.width < 0.5F ? 7 : 1;
}

}  // namespace rdl::writers
