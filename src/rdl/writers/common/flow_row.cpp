// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/common/flow_row.h"

namespace rdl::writers {

void FlowCell::Take(const layout::BoxStyle& box) {
    leftBorder = box.left;
    topBorder = box.top;
    rightBorder = box.right;
    bottomBorder = box.bottom;
    background = box.background;
    vAlign = box.vAlign;
    writingMode = box.writingMode;
}

}  // namespace rdl::writers
