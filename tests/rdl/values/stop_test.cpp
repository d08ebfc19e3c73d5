// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/values/stop.h"

#include <gtest/gtest.h>

#include <thread>

#include "rdl/raises.h"
#include "rdl/values/run_watch.h"

namespace rdl {
namespace {

TEST(Stop, EndsTheRunOfItsThread) {
    const auto signal = std::make_shared<StopSignal>();
    RunWatch watch;
    {
        const StopsAt stops(signal);
        EXPECT_EQ(ErrorRaisedBy([&] { watch.CheckBounds(); }), "");
        signal->Give();
        EXPECT_TRUE(IsStopped());
        EXPECT_EQ(ErrorRaisedBy([&] { watch.CheckBounds(); }), "The run was stopped");
    }
    EXPECT_FALSE(IsStopped());
    EXPECT_EQ(ErrorRaisedBy([&] { watch.CheckBounds(); }), "");
}

TEST(Stop, LeavesOtherThreadsAlone) {
    const auto signal = std::make_shared<StopSignal>();
    const StopsAt stops(signal);
    signal->Give();
    bool isOtherStopped = true;
    std::thread([&] { isOtherStopped = IsStopped(); }).join();
    EXPECT_TRUE(IsStopped());
    EXPECT_FALSE(isOtherStopped);
}

}  // namespace
}  // namespace rdl
