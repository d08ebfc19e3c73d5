// SPDX-License-Identifier: GPL-3.0-or-later
// The units of sizes in reports (MS-RDL, Size).
#pragma once

#include <string_view>

#include "rdl/values/named.h"

namespace rdl {

inline constexpr double PointsPerInch = 72, InchesPerMeter = 1 / 0.0254;

struct SizeUnit {
    std::string_view name;
    double points;
};
inline constexpr SizeUnit SizeUnits[] = {
    {"in", PointsPerInch}, {"cm", PointsPerInch / 2.54}, {"mm", PointsPerInch / 25.4}, {"pt", 1}, {"pc", 12}};
static_assert(NamesDiffer(SizeUnits));

// Points: the largest size of a report, 455 inches. It is the limit of report designers, which also keeps
// sums finite.
inline constexpr double MaxSize = 455 * PointsPerInch;

}  // namespace rdl
