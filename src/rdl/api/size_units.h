// SPDX-License-Identifier: GPL-3.0-or-later
// The units of sizes in reports (MS-RDL, Size).
#pragma once

#include <string_view>

namespace rdl {

struct SizeUnit {
    std::string_view name;
    double points;  // 1/72 inch
};
inline constexpr SizeUnit SizeUnits[] = {
    {"in", 72}, {"cm", 72 / 2.54}, {"mm", 72 / 25.4}, {"pt", 1}, {"pc", 12}};

// Points: the largest size of a report, 455 inches. It is the limit of report designers, which also keeps
// sums finite.
inline constexpr double MaxSize = 455 * 72.0;

}  // namespace rdl
