// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace rdl::layout {

// Lengths that differ by less are the same: sums of widths and heights are rounded.
constexpr double Tolerance = 0.01;  // points

}  // namespace rdl::layout
