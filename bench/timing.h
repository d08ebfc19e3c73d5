// SPDX-License-Identifier: GPL-3.0-or-later
// Times of repeated measurements.
#pragma once

#include <algorithm>
#include <chrono>
#include <vector>

// Returns how long the call takes, in seconds.
template <typename Body>
double Seconds(Body body) {
    const auto start = std::chrono::steady_clock::now();
    body();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// `values` must not be empty.
inline double Median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}
