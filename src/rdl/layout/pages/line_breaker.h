// SPDX-License-Identifier: GPL-3.0-or-later
// Line breaking opportunities, by these rules of UAX #14: LB4 to LB8 (line ends, spaces), LB13 and LB14
// (closing and opening marks; only ! ? ; : also after spaces), LB18 (after spaces), LB21 (small kana and
// other marks that begin no line), LB25 for a digit after a hyphen, LB31 around ideographs and after hyphens.
// Other characters have no break between them. The rules are kept here because those of a library change with
// its version, and the lines and pages of a report would change with them.
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
