// SPDX-License-Identifier: GPL-3.0-or-later
// How the cost of something grows with its size, whatever the speed of the machine and whatever else runs on
// it.
#pragma once

#include <ctime>

#include <algorithm>
#include <limits>

// Returns the seconds of processor time that the calling thread has used.
inline double ThreadSeconds() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

// Returns how many times the processor time of `work(small)` the one of `work(10 * small)` is: about 10 where
// the cost grows as the size does, 100 where it grows as the square. `work` returns the seconds that it
// measured.
template <class Work>
double CostOfTenTimes(int small, Work work) {
    double least = std::numeric_limits<double>::max();
    for (int i = 0; i < 3; ++i) {
        least = std::min(least, work(small));
    }
    return std::min(work(10 * small), work(10 * small)) / least;
}

// Above the noise of a linear cost, far below a square one.
inline constexpr double SquareBegins = 40;
