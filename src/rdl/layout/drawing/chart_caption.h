// SPDX-License-Identifier: GPL-3.0-or-later
// A styled text in a chart, gauge or map: a title, the name of an axis.
#pragma once

#include <string>

#include "rdl/layout/model/style.h"

namespace rdl::layout {

struct ChartCaption {
    std::string text, position;
    CharStylePtr style;
    BoxStylePtr box;
};

}  // namespace rdl::layout
