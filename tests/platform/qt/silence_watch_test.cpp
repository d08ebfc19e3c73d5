// SPDX-License-Identifier: GPL-3.0-or-later
// A watch over a call that may wait for ever.
#include "platform/qt/silence_watch.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

// Until the condition holds, at most for the time; without computing in between, but for the look.
template <typename Condition>
bool Waited(std::chrono::milliseconds most, Condition isMet) {
    for (const auto end = Clock::now() + most; !isMet() && Clock::now() < end;) {
        std::this_thread::sleep_for(1ms);
    }
    return isMet();
}

}  // namespace

TEST(SilenceWatch, TellsOfAThreadThatWaits) {
    std::atomic<int> calls{0};
    const auto begin = Clock::now();
    std::atomic<std::chrono::milliseconds> told{0ms};
    {
        const SilenceWatch watch(100ms, [&] {
            told = std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - begin);
            ++calls;
        });
        std::this_thread::sleep_for(2s);
    }
    EXPECT_EQ(calls, 1);
    EXPECT_GE(told.load(), 100ms);
}

TEST(SilenceWatch, SaysNothingOfAThreadThatIsAnsweredSlowly) {
    std::atomic<int> calls{0};
    const SilenceWatch watch(2s, [&] { ++calls; });
    EXPECT_FALSE(Waited(4s, [&] { return calls > 0; }));
}

TEST(SilenceWatch, SaysNothingAfterItsEnd) {
    std::atomic<int> calls{0};
    const auto begin = Clock::now();
    {
        const SilenceWatch watch(500ms, [&] { ++calls; });
    }
    EXPECT_LT(Clock::now() - begin, 450ms);
    std::this_thread::sleep_for(700ms);
    EXPECT_EQ(calls, 0);
}
