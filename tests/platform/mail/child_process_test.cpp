#include "platform/mail/child_process.h"

#include <gtest/gtest.h>

#include <chrono>

using mailer::RunChild;

TEST(ChildProcess, GivesOutputComplaintAndExitCode) {
    const auto result = RunChild({"/bin/sh", "-c", "echo out; echo bad >&2; exit 7"}, -1, 10, 100);
    EXPECT_TRUE(result.started);
    EXPECT_EQ(result.output, "out\n");
    EXPECT_EQ(result.complaint, "bad\n");
    EXPECT_EQ(result.exitCode, 7);
}

TEST(ChildProcess, MissingProgramIsNotStarted) {
    EXPECT_FALSE(RunChild({"/no/such/program"}, -1, 10, 100).started);
}

TEST(ChildProcess, SilentOrEndlessProgramsAreEnded) {
    const auto start = std::chrono::steady_clock::now();
    EXPECT_TRUE(RunChild({"/bin/sh", "-c", "sleep 30 & sleep 30"}, -1, 1, 100).timedOut);
    EXPECT_TRUE(RunChild({"/bin/sh", "-c", "exec >&- 2>&-; sleep 30"}, -1, 1, 100).timedOut);
    EXPECT_TRUE(RunChild({"yes"}, -1, 10, 1000).tooMuch);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
}

TEST(ChildProcess, LongComplaintsDoNotBlockIt) {
    const auto result = RunChild({"/bin/sh", "-c", "head -c 500000 /dev/zero >&2; exit 0"}, -1, 10, 100);
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_LT(result.complaint.size(), 20000u);
}
