// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/drawing/scale.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <limits>

namespace rdl::layout {
namespace {

constexpr int MostTicks = 200;
constexpr double Rounding = 1e-9;       // of a step: what sums of steps are off by
constexpr double LargestPower = 1e280;  // a base more is still finite
constexpr double Largest = 1e300;       // beyond, differences would be infinite

// The smallest of 1, 2 and 5 times a power of ten that is not less.
double NiceStep(double least) {
    const double power = std::pow(10, std::floor(std::log10(least)));
    for (const double factor : {1.0, 2.0, 5.0}) {
        if (factor * power >= least * (1 - Rounding)) {
            return factor * power;
        }
    }
    return 10 * power;
}

void AddTicks(Scale& scale, double step, std::vector<double>& ticks) {
    const double first = std::ceil(scale.low / step - Rounding);
    for (int i = 0; i <= MostTicks * 10; ++i) {
        const double tick = (first + i) * step;
        if (tick > scale.high + step * Rounding) {
            return;
        }
        ticks.push_back(tick == 0 ? 0 : tick);  // never -0
    }
}

Scale Linear(const ScaleRequest& request) {
    double low = std::clamp(request.any ? request.low : 0, -Largest, Largest);
    double high = std::clamp(request.any ? request.high : 1, -Largest, Largest);
    if (request.includeZero) {
        low = std::min(low, 0.0);
        high = std::max(high, 0.0);
    }
    low = request.minimum.value_or(low);
    high = request.maximum.value_or(high);
    if (!(high > low)) {  // one number, or ends that contradict each other
        const double margin = low == 0 ? 1 : std::abs(low) / 2;
        if (request.minimum || !request.maximum) {
            high = low + margin;
        } else {
            low = high - margin;
        }
        if (request.any && !request.includeZero && !request.minimum && !request.maximum) {
            low -= margin;
        }
    }
    Scale scale;
    scale.step = NiceStep((high - low) / std::max(1, request.mostTicks));
    if (request.whole && scale.step < 1) {
        scale.step = 1;
    }
    if (request.interval && *request.interval > 0 && (high - low) / *request.interval <= MostTicks) {
        scale.step = *request.interval;
    }
    scale.low = request.minimum ? low : std::floor(low / scale.step + Rounding) * scale.step;
    scale.high = request.maximum ? high : std::ceil(high / scale.step - Rounding) * scale.step;
    constexpr double Near = 0.5;  // of a step
    if (request.headroom && request.any && !request.maximum &&
        request.high > scale.high - Near * scale.step) {
        scale.high += scale.step;
    }
    if (request.footroom && request.any && !request.minimum && request.low < scale.low + Near * scale.step) {
        scale.low -= scale.step;
    }
    AddTicks(scale, scale.step, scale.ticks);
    return scale;
}

Scale Logarithmic(const ScaleRequest& request) {
    Scale scale;
    scale.logarithmic = true;
    scale.base = request.base > 1 && request.base <= 1e6 ? request.base : 10;
    const auto power = [&](double value) { return std::log(value) / std::log(scale.base); };
    const bool hasMinimum = request.minimum && *request.minimum > 0;
    const double wanted = hasMinimum ? *request.minimum : request.any && request.low > 0 ? request.low : 1;
    const double low = std::clamp(wanted, 1 / LargestPower, LargestPower);
    double high = std::min(request.maximum.value_or(request.any ? request.high : scale.base), LargestPower);
    high = high > low ? high : low * scale.base;
    double first = std::floor(power(low) + Rounding);
    if (request.footroom && !request.minimum && power(low) - first < 0.05) {
        first -= 1;  // a column of the lowest number would not be seen
    }
    const double last = std::max(std::ceil(power(high) - Rounding), first + 1);
    scale.low = request.minimum && *request.minimum > 0 ? low : std::pow(scale.base, first);
    scale.high = request.maximum && *request.maximum > low ? high : std::pow(scale.base, last);
    scale.step = std::max(1.0, std::ceil((last - first) / std::max(1, request.mostTicks)));
    for (int i = 0; first + i * scale.step <= last + Rounding; ++i) {
        const double value = std::pow(scale.base, first + i * scale.step);
        if (value >= scale.low * (1 - Rounding) && value <= scale.high * (1 + Rounding)) {
            scale.ticks.push_back(value);
        }
    }
    return scale;
}

}  // namespace

double Scale::Share(double value) const {
    if (!logarithmic) {
        return (value - low) / (high - low);
    }
    return value > 0 ? std::log(value / low) / std::log(high / low)
                     : std::numeric_limits<double>::quiet_NaN();
}

std::vector<double> Scale::MinorTicks(double minorStep) const {
    std::vector<double> minor;
    if (logarithmic) {
        for (const double tick : ticks) {
            for (int i = 2; i < base && i < 10; ++i) {
                if (tick * i < high) {
                    minor.push_back(tick * i);
                }
            }
        }
        return minor;
    }
    const double wanted = minorStep > 0 && minorStep < step ? minorStep : step / 5;
    if ((high - low) / wanted > MostTicks) {
        return minor;
    }
    Scale copy = *this;
    AddTicks(copy, wanted, minor);
    return minor;
}

Scale MakeDateScale(const ScaleRequest& request) {
    using namespace std::chrono;
    constexpr double DaysInMonth = 30.44, LastDay = 3'652'058;  // of the year 9999
    const sys_days first{year{1} / January / 1};
    Scale scale;
    scale.low = std::clamp(request.minimum.value_or(request.low), 0.0, LastDay - 2);
    scale.high = std::clamp(request.maximum.value_or(request.high), scale.low + 1, LastDay);
    const double least = (scale.high - scale.low) / std::max(1, request.mostTicks);
    for (const double step : {1.0, 2.0, 7.0, 14.0}) {
        if (least <= step) {
            scale.step = step;
            scale.low = std::floor(scale.low);
            AddTicks(scale, 1, scale.ticks);
            const double begin = scale.ticks.front();
            std::erase_if(scale.ticks, [&](double tick) { return std::fmod(tick - begin, step) != 0; });
            return scale;
        }
    }
    int months = 1;
    for (const int step : {1, 2, 3, 6, 12, 24, 60, 120, 240, 600, 1200, 6000, 12'000}) {
        months = step;
        if (least <= step * DaysInMonth) {
            break;
        }
    }
    scale.step = months * DaysInMonth;
    const year_month_day begin{first + days{static_cast<int>(scale.low)}};
    const int firstMonth =
        (static_cast<int>(begin.year()) * 12 + static_cast<int>(static_cast<unsigned>(begin.month())) - 1) /
        months * months;
    for (int month = firstMonth; scale.ticks.size() < MostTicks; month += months) {
        const sys_days day{year{month / 12} / static_cast<int>(month % 12 + 1) / 1};
        const auto tick = static_cast<double>((day - first).count());
        if (tick > scale.high) {
            break;
        }
        if (tick >= scale.low) {
            scale.ticks.push_back(tick);
        }
    }
    return scale;
}

Scale MakeScale(const ScaleRequest& request) {
    return request.logarithmic ? Logarithmic(request) : Linear(request);
}

}  // namespace rdl::layout
