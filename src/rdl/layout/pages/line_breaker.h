// SPDX-License-Identifier: GPL-3.0-or-later
// Line breaking opportunities; a simplified form of UAX #14.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace rdl::layout {

// Text without a break opportunity; split only if wider than a line. `end` includes trailing spaces,
// `visibleEnd` excludes them, as they may overhang the line's end.
struct BreakUnit {
    std::size_t begin = 0, visibleEnd = 0, end = 0;
    bool hardBreak = false;  // a mandatory break follows
};

// Whether the line ends with a soft hyphen, which is visible only there.
bool EndsWithSoftHyphen(std::string_view text);

// Returns the units in order, without line feeds and carriage returns. Breaks are after spaces and hyphens
// (also soft ones) and around ideographs, but not before closing punctuation.
void FindBreaks(std::string_view text, std::vector<BreakUnit>& units);

}  // namespace rdl::layout
