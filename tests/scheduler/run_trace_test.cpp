// SPDX-License-Identifier: GPL-3.0-or-later
// What a run that was cut off leaves for the next start.
#include "scheduler/RunTrace.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/database.h"
#include "support/temporary_folder.h"

namespace Global {
namespace {

class RunTraceTest : public testing::Test {
 protected:
    std::filesystem::path File() const { return database.Folder() / "PressroomLive.underway"; }
    // A process that ends in the middle of a run.
    static void Cut(RunKind kind, const std::string& key, const std::string& title) {
        const pid_t child = fork();
        if (child == 0) {
            RunTrace trace;
            trace.Begin(kind, key, title);
            _exit(0);
        }
        waitpid(child, nullptr, 0);
    }
    fakes::TestDatabase database;
};

TEST_F(RunTraceTest, RunThatWasCutOffIsTakenOnce) {
    EXPECT_FALSE(TakeRunTrace());
    Cut(RunKind::Package, "12", "Sales and\nstock");
    const auto run = TakeRunTrace();
    ASSERT_TRUE(run);
    EXPECT_EQ(run->kind, RunKind::Package);
    EXPECT_EQ(run->reportID, "12");
    EXPECT_EQ(run->title, "Sales and stock");
    EXPECT_FALSE(TakeRunTrace());
    EXPECT_FALSE(std::filesystem::exists(File()));
}

TEST_F(RunTraceTest, RunThatEndsLeavesNothing) {
    RunTrace trace;
    trace.End();
    trace.Begin(RunKind::Schedule, "5", "Sales");
    struct stat facts {};
    ASSERT_EQ(stat(File().c_str(), &facts), 0);
    EXPECT_EQ(facts.st_mode & 0777, 0600U);
    trace.Begin(RunKind::Schedule, "6", "Stock");
    EXPECT_EQ(ReadBytes(File()), "schedule 6 Stock\n");
    trace.End();
    EXPECT_FALSE(std::filesystem::exists(File()));
}

TEST_F(RunTraceTest, RunUnderWayIsNotTaken) {
    RunTrace trace;
    trace.Begin(RunKind::Schedule, "5", "Sales");
    EXPECT_FALSE(TakeRunTrace());
    RunTrace another;
    another.Begin(RunKind::Schedule, "6", "Stock");
    another.End();
    EXPECT_EQ(ReadBytes(File()), "schedule 5 Sales\n");
}

TEST_F(RunTraceTest, LongTitlesAreCut) {
    Cut(RunKind::Schedule, "5", std::string(20'000, 'x'));
    const auto run = TakeRunTrace();
    ASSERT_TRUE(run);
    EXPECT_EQ(run->title, std::string(1000, 'x'));
}

TEST_F(RunTraceTest, AnyOtherTextIsNoTrace) {
    for (const char* text : {"", "\n", "schedule", "schedule 5\n", "letter 5 Sales\n", "schedule 5 Sal"}) {
        WriteBytes(File(), text);
        EXPECT_FALSE(TakeRunTrace()) << text;
        EXPECT_FALSE(std::filesystem::exists(File()));
    }
    std::filesystem::create_directory(File());
    EXPECT_FALSE(TakeRunTrace());
    RunTrace trace;
    trace.Begin(RunKind::Schedule, "5", "Sales");
    trace.End();
    EXPECT_TRUE(std::filesystem::exists(File()));
}

}  // namespace
}  // namespace Global
