// Scales of axes: from the numbers that are shown to round ends and steps.
#pragma once

#include <optional>
#include <vector>

namespace rdl::layout {

struct ScaleRequest {
    double low = 0, high = 0;  // of the numbers; ignored unless `any`
    bool any = false;
    bool whole = false;  // counts: no steps between whole numbers
    bool includeZero = true;
    std::optional<double> minimum, maximum, interval;  // as the report says
    // Room beyond the numbers, for what is drawn around them; not where the report says an end.
    bool headroom = false, footroom = false;
    bool logarithmic = false;
    double base = 10;
    int mostTicks = 8;  // what there is room for
};

struct Scale {
    double low = 0, high = 1, step = 1;
    bool logarithmic = false;
    double base = 10;
    std::vector<double> ticks;
    // 0 at the low end, 1 at the high one, beyond for what is outside; NaN for what a logarithmic scale has
    // no place for.
    double Share(double value) const;
    // Between the ticks: `step` apart, or a fifth of the scale's own when it is 0.
    std::vector<double> MinorTicks(double minorStep) const;
};

Scale MakeScale(const ScaleRequest& request);
// Of days, counted from 0001-01-01: ticks are at days, weeks or firsts of months and years.
Scale MakeDateScale(const ScaleRequest& request);

}  // namespace rdl::layout
