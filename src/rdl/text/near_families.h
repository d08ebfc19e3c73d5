// SPDX-License-Identifier: GPL-3.0-or-later
// Free families that stand in for the usual ones of reports: metric-compatible ones, else those with the
// nearest widths.
#pragma once

#include <span>
#include <string_view>
#include <vector>

namespace rdl::text {

// Returns the families that stand in for `family`, the nearest first; empty if there is no row for it.
std::span<const std::string_view> NearFamilies(std::string_view family);
// Returns every family that has such a row.
std::vector<std::string_view> FamiliesWithNearOnes();

}  // namespace rdl::text
