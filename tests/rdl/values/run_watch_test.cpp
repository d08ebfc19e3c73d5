// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/values/run_watch.h"

#include <gtest/gtest.h>
#include <time.h>

#include <string>
#include <thread>
#include <vector>

#include "rdl/raises.h"
#include "rdl/values/error.h"

namespace rdl {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

// What CheckBounds says; empty when it lets the run go on. Bounds are measured some times a second only.
std::string Said(RunWatch& watch) {
    std::this_thread::sleep_for(milliseconds(60));
    return ErrorRaisedBy([&] { watch.CheckBounds(); });
}

void Spin(std::chrono::milliseconds time) {
    const auto used = [] {
        timespec now{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
        return seconds(now.tv_sec) + std::chrono::nanoseconds(now.tv_nsec);
    };
    const auto begin = used();
    while (used() - begin < time) {
    }
}

TEST(RunWatch, LetsARunWithinItsBoundsGoOn) {
    const auto watch = std::make_shared<RunWatch>();
    const RunWatch::Work work(watch);
    const RunWatch::Data data(watch);
    EXPECT_EQ(Said(*watch), "");
}

TEST(RunWatch, EndsARunThatTakesTooMuchOfTheProcessor) {
    const auto watch = std::make_shared<RunWatch>(RunBounds{seconds(0), seconds(60), 4096});
    const RunWatch::Work work(watch);
    Spin(milliseconds(2));
    EXPECT_EQ(Said(*watch), "The report takes more than 0 minutes of the processor");
    EXPECT_EQ(Said(*watch), "The report takes more than 0 minutes of the processor");
}

TEST(RunWatch, TimeBetweenPiecesOfWorkDoesNotCount) {
    const auto watch = std::make_shared<RunWatch>(RunBounds{milliseconds(100), seconds(60), 4096});
    for (int piece = 0; piece < 2; ++piece) {
        {
            const RunWatch::Work work(watch);
            EXPECT_EQ(Said(*watch), "");
        }
        Spin(milliseconds(110));
    }
}

TEST(RunWatch, PiecesOfWorkAddUp) {
    const auto watch = std::make_shared<RunWatch>(RunBounds{milliseconds(100), seconds(60), 4096});
    {
        const RunWatch::Work work(watch);
        Spin(milliseconds(60));
    }
    const RunWatch::Work work(watch);
    EXPECT_EQ(Said(*watch), "");
    Spin(milliseconds(60));
    EXPECT_EQ(Said(*watch), "The report takes more than 100 milliseconds of the processor");
}

TEST(RunWatch, EndsARunThatWaitsTooLongForItsData) {
    const auto watch = std::make_shared<RunWatch>(RunBounds{seconds(600), seconds(0), 4096});
    const RunWatch::Work work(watch);
    EXPECT_EQ(Said(*watch), "");
    const RunWatch::Data data(watch);
    EXPECT_EQ(Said(*watch), "The data of the report takes longer than 0 minutes");
}

TEST(RunWatch, EndsARunThatTakesTooMuchMemory) {
    const auto watch = std::make_shared<RunWatch>(RunBounds{seconds(600), seconds(600), 64});
    const RunWatch::Work work(watch);
    EXPECT_EQ(Said(*watch), "");
    const std::vector<char> large(100u << 20, 'x');
    EXPECT_EQ(Said(*watch), "The report takes more than 64 MB of memory");
    EXPECT_EQ(large.back(), 'x');
}

TEST(RunWatch, WithoutAWatchWorkIsNotBounded) {
    const RunWatch::Work work(nullptr);
    const RunWatch::Data data(nullptr);
}

}  // namespace
}  // namespace rdl
