// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/posix/child_process.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <string>
#include <thread>

#include "support/temporary_folder.h"

TEST(ChildProcess, GivesOutputComplaintAndExitCode) {
    const auto result = RunChild({"/bin/sh", "-c", "echo out; echo bad >&2; exit 7"}, -1, 10, 100);
    EXPECT_TRUE(result.started);
    EXPECT_EQ(result.output, "out\n");
    EXPECT_EQ(result.complaint, "bad\n");
    EXPECT_EQ(result.exitCode, 7);
}

TEST(ChildProcess, MissingProgramIsNotStarted) {
    const auto result = RunChild({"/no/such/program"}, -1, 10, 100);
    EXPECT_FALSE(result.started);
    EXPECT_EQ(result.startError, ENOENT);
}

TEST(ChildProcess, SignalThatEndedItIsNamed) {
    const auto killed = RunChild({"/bin/sh", "-c", "kill -9 $$"}, -1, 10, 100);
    EXPECT_EQ(killed.exitCode, -1);
    EXPECT_EQ(EndOf(killed), "was ended by signal 9 (Killed)");
    EXPECT_EQ(EndOf(RunChild({"/bin/sh", "-c", "exit 7"}, -1, 10, 100)), "ended with exit code 7");
}

TEST(ChildProcess, SilentOrEndlessProgramsAreEnded) {
    const auto start = std::chrono::steady_clock::now();
    EXPECT_TRUE(RunChild({"/bin/sh", "-c", "sleep 30 & sleep 30"}, -1, 1, 100).timedOut);
    EXPECT_TRUE(RunChild({"/bin/sh", "-c", "exec >&- 2>&-; sleep 30"}, -1, 1, 100).timedOut);
    EXPECT_TRUE(RunChild({"yes"}, -1, 10, 1000).tooMuch);
    const auto chatty =
        RunChild({"/bin/sh", "-c", "yes | head -c 1200000; exit 0"}, -1, 10, 1000, {}, Excess::IsDropped);
    EXPECT_EQ(chatty.exitCode, 0);
    EXPECT_EQ(chatty.output.size(), 1000U);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
}

TEST(ChildProcess, LongComplaintsDoNotBlockIt) {
    const auto result = RunChild({"/bin/sh", "-c", "head -c 500000 /dev/zero >&2; exit 0"}, -1, 10, 100);
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_LT(result.complaint.size(), 20000u);
}

TEST(ChildProcess, ItsEndCountsThoughAChildOfItsOwnHoldsItsOutput) {
    const auto start = std::chrono::steady_clock::now();
    const auto taken =
        RunChild({"/bin/sh", "-c", "echo taken; echo noted >&2; sleep 4 & exit 0"}, -1, 2, 100);
    EXPECT_FALSE(taken.timedOut);
    EXPECT_EQ(taken.exitCode, 0);
    EXPECT_EQ(taken.output, "taken\n");
    EXPECT_EQ(taken.complaint, "noted\n");
    const auto refused = RunChild({"/bin/sh", "-c", "sleep 4 & exit 3"}, -1, 2, 100);
    EXPECT_FALSE(refused.timedOut);
    EXPECT_EQ(refused.exitCode, 3);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));
}

TEST(ChildProcess, WhatItLeftRunningGoesOn) {
    const TemporaryFolder folder;
    const std::string mark = (folder / "mark").string();
    EXPECT_EQ(
        RunChild({"/bin/sh", "-c", "(sleep 0.2; echo done > '" + mark + "') & exit 0"}, -1, 5, 100).exitCode,
        0);
    for (int glance = 0; glance < 100 && !std::filesystem::exists(mark); ++glance) {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    EXPECT_TRUE(std::filesystem::exists(mark));
}

TEST(ChildProcess, AllThatItWroteBeforeItsEndIsThere) {
    for (int run = 0; run < 20; ++run) {
        const auto result =
            RunChild({"/bin/sh", "-c", "head -c 60000 /dev/zero; sleep 1 & exit 0"}, -1, 5, 100000);
        ASSERT_EQ(result.output.size(), 60000u);
    }
}
