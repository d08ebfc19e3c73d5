// SPDX-License-Identifier: GPL-3.0-or-later
// Scales of axes: computes round ends and steps from the numbers shown.
#pragma once

#include <optional>
#include <vector>

namespace rdl::layout {

struct ScaleRequest {
    double low = 0, high = 0;  // range of the numbers; ignored unless `any`
    bool any = false;
    bool whole = false;  // integers only: no fractional steps
    bool includeZero = true;
    std::optional<double> minimum, maximum, interval;  // set by the report
    // Extra space beyond the numbers for what is drawn around them; ignored at an end that the report sets.
    bool headroom = false, footroom = false;
    bool logarithmic = false;
    double base = 10;
    int mostTicks = 8;  // maximum number of ticks that fit
};

struct Scale {
    double low = 0, high = 1, step = 1;
    bool logarithmic = false;
    double base = 10;
    std::vector<double> ticks;
    // Returns 0 at the low end and 1 at the high end, beyond these outside; NaN for values that a logarithmic
    // scale cannot show.
    double Share(double value) const;
    // Returns the minor ticks, `minorStep` apart, or a fifth of `step` if it is 0.
    std::vector<double> MinorTicks(double minorStep) const;
};

// Returns a scale with low < high; `ticks` may be empty. Does not fail: a maximum that is not above the
// minimum, a base that is not above 1 and an interval that gives more than 200 ticks are ignored.
Scale MakeScale(const ScaleRequest& request);
// The same for days since 0001-01-01: ticks are at days, weeks or the first day of months and years.
Scale MakeDateScale(const ScaleRequest& request);

}  // namespace rdl::layout
