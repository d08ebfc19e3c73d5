// SPDX-License-Identifier: GPL-3.0-or-later
// Keywords in labels, replaced by data of the point: #VALY, #PERCENT{P1}, #SERIESNAME ...
#pragma once

#include <string>

#include "rdl/layout/drawing/chart/data.h"

namespace rdl::layout {

// Returns `text` with its keywords replaced. If `mark` is null, keywords about a point stay.
std::string ChartKeywords(const std::string& text, const ChartRow& row, const ChartMark* mark,
                          const std::string& category, const Culture& culture);

}  // namespace rdl::layout
